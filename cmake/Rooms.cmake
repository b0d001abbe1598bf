# One target per folder ("room"). Includes are written from src/, and a room sees only the rooms it
# links, so the walls between folders are kept by the build.

# Line numbers are all that the traces need; full tables of symbols double the time of a build.
set(CMAKE_CXX_FLAGS_DEBUG "-O0 -g1")
# Hardened as Debian hardens its own programs.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG -D_FORTIFY_SOURCE=2 -fstack-protector-strong")
set(CMAKE_EXE_LINKER_FLAGS_RELWITHDEBINFO "-Wl,-z,relro,-z,now")

add_library(tavoline_options INTERFACE)
target_compile_features(tavoline_options INTERFACE cxx_std_20)
target_include_directories(tavoline_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(tavoline_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
  -Wimplicit-fallthrough -Wextra-semi -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 14)
  # When optimising, it takes the inactive members of a variant for uninitialised reads.
  target_compile_options(tavoline_options INTERFACE -Wno-maybe-uninitialized)
endif()
if(TAVOLINE_SANITIZE)
  target_compile_options(tavoline_options INTERFACE -fsanitize=address,undefined
    -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(tavoline_options INTERFACE -fsanitize=address,undefined)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE_PROGRAM})
endif()

# tavoline_room(NAME SOURCES a.cpp ... LINK rooms-and-libraries ...)
function(tavoline_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(${name} PUBLIC tavoline_options ${ROOM_LINK})
endfunction()

# tavoline_test(NAME SOURCES a.cpp ... CASES a.txt ... LINK rooms ...): one test program, its cases known to ctest.
# Those of the texts are registered from TAVOLINE_CASES by one of the sources.
function(tavoline_test name)
  cmake_parse_arguments(TEST "" "" "SOURCES;CASES;LINK" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  if(TEST_CASES)
    list(TRANSFORM TEST_CASES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    set_target_properties(${name} PROPERTIES LINK_DEPENDS "${TEST_CASES}")
    list(JOIN TEST_CASES " " cases)
    target_compile_definitions(${name} PRIVATE
      "TAVOLINE_CASES=\"${cases}\"" "TAVOLINE_FOLDER=\"${CMAKE_CURRENT_SOURCE_DIR}/\"")
  endif()
  target_link_libraries(${name} PRIVATE tavoline_options ${TEST_LINK} GTest::gtest GTest::gmock)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300 ENVIRONMENT QT_QPA_PLATFORM=offscreen)
endfunction()

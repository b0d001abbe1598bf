# Rooms in which Qt lives: automatic moc, uic and rcc, strictness, and one precompiled header.

add_library(tavoline_qt_options INTERFACE)
target_link_libraries(tavoline_qt_options INTERFACE tavoline_options Qt6::Widgets)
target_compile_definitions(tavoline_qt_options INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_USE_QSTRINGBUILDER QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# The headers that every screen reads, compiled once for all rooms.
file(WRITE ${CMAKE_BINARY_DIR}/qt_pch.cpp "")
add_library(tavoline_qt_pch STATIC ${CMAKE_BINARY_DIR}/qt_pch.cpp)
target_link_libraries(tavoline_qt_pch PUBLIC tavoline_qt_options)
target_precompile_headers(tavoline_qt_pch PRIVATE
  <QtWidgets/QtWidgets> <functional> <map> <memory> <optional> <string> <string_view> <variant> <vector>)

# tavoline_qt_room(NAME SOURCES a.cpp form.ui ... LINK rooms-and-libraries ...)
function(tavoline_qt_room name)
  tavoline_room(${name} ${ARGN})
  target_link_libraries(${name} PUBLIC tavoline_qt_options)
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
  target_precompile_headers(${name} REUSE_FROM tavoline_qt_pch)
endfunction()

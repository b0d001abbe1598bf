# What is installed and where, and the Debian package made of it.

set(APPLICATION_ID org.tavoline.Tavoline)
set(PACKAGING ${CMAKE_CURRENT_LIST_DIR})

# Compressed as Debian wants it (at its best, and without the hour, so that the same sources make the same package).
function(install_compressed file destination)
  cmake_path(GET file FILENAME name)
  set(compressed ${CMAKE_CURRENT_BINARY_DIR}/${destination}/${name}.gz)
  cmake_path(GET compressed PARENT_PATH folder)
  file(MAKE_DIRECTORY ${folder})
  execute_process(COMMAND gzip -9nc INPUT_FILE ${PACKAGING}/${file} OUTPUT_FILE ${compressed} COMMAND_ERROR_IS_FATAL ANY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PACKAGING}/${file})
  install(FILES ${compressed} DESTINATION ${destination})
endfunction()

# install_program(TARGET): the program and its manual, in English and French.
function(install_program target)
  install(TARGETS ${target} RUNTIME)
  install_compressed(man/${target}.1 ${CMAKE_INSTALL_MANDIR}/man1)
  install_compressed(man/fr/${target}.1 ${CMAKE_INSTALL_MANDIR}/fr/man1)
endfunction()

install(FILES ${PACKAGING}/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
foreach(page depannage deploy importer store)
  install(FILES ${CMAKE_SOURCE_DIR}/docs/${page}.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
endforeach()
install_compressed(changelog ${CMAKE_INSTALL_DOCDIR})
install_program(tavoline-store)
if(TARGET tavoline)
  install_program(tavoline)
  install(DIRECTORY ${CMAKE_SOURCE_DIR}/share/tavoline DESTINATION ${CMAKE_INSTALL_DATADIR})
  install(DIRECTORY ${CMAKE_BINARY_DIR}/share/tavoline/livre DESTINATION ${CMAKE_INSTALL_DATADIR}/tavoline)
  install(FILES ${PACKAGING}/desktop/${APPLICATION_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${PACKAGING}/desktop/${APPLICATION_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${PACKAGING}/desktop/${APPLICATION_ID}.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavoline)
set(CPACK_PACKAGE_CONTACT "The Tavoline maintainers <maintainers@tavoline.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION "French screens on a map of the room: orders by touch, tickets, cash
desks and their closings, articles and stock. All data lies in one SQLite
file that any SQLite tool can read.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no library name tells: SVG icons, the icons themselves, the fonts of screens and documents, French words.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, breeze-icon-theme, fonts-liberation, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "cups, fonts-noto-color-emoji")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "postgresql-client")  # `backup` of a store on a server
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)  # what is installed has been built by name
include(CPack)

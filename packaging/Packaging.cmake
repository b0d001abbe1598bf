# What is installed and where, and the Debian package made of it.

set(APPLICATION_ID org.tavoline.Tavoline)
set(PACKAGING ${CMAKE_CURRENT_LIST_DIR})

# Two packages, of which a machine has one: `tavoline`, the program of the tills with its tool, and `tavoline-store`, the
# tool alone, for servers and machines without Qt (its demo has no pictures).
set(TOOL_DOCS ${CMAKE_INSTALL_DATADIR}/doc/tavoline-store)
set(TILL_DOCS ${CMAKE_INSTALL_DATADIR}/doc/tavoline)

# Compressed as Debian wants it (at its best, and without the hour, so that the same sources make the same package).
function(install_compressed file destination component)
  cmake_path(GET file FILENAME name)
  set(compressed ${CMAKE_CURRENT_BINARY_DIR}/${destination}/${name}.gz)
  cmake_path(GET compressed PARENT_PATH folder)
  file(MAKE_DIRECTORY ${folder})
  execute_process(COMMAND gzip -9nc INPUT_FILE ${PACKAGING}/${file} OUTPUT_FILE ${compressed} COMMAND_ERROR_IS_FATAL ANY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PACKAGING}/${file})
  install(FILES ${compressed} DESTINATION ${destination} COMPONENT ${component})
endfunction()

# install_program(TARGET NAME COMPONENT): the program, and its manual in English and French.
function(install_program target name component)
  install(TARGETS ${target} RUNTIME COMPONENT ${component} ${ARGN})
  install_compressed(man/${name}.1 ${CMAKE_INSTALL_MANDIR}/man1 ${component})
  install_compressed(man/fr/${name}.1 ${CMAKE_INSTALL_MANDIR}/fr/man1 ${component})
endfunction()

# install_documentation(COMPONENT FOLDER PAGES...): what every package has, and these pages beside it.
function(install_documentation component folder)
  list(TRANSFORM ARGN PREPEND ${CMAKE_SOURCE_DIR}/docs/)
  list(TRANSFORM ARGN APPEND .md)
  install(FILES ${PACKAGING}/copyright ${ARGN} DESTINATION ${folder} COMPONENT ${component})
  install_compressed(changelog ${folder} ${component})
endfunction()

# A software centre fetches pictures from the web only: whoever publishes docs/screens says where.
set(TAVOLINE_PICTURES "" CACHE STRING "Web address of docs/screens, for the pictures of software centres")
function(install_metainfo)
  set(metainfo ${PACKAGING}/desktop/${APPLICATION_ID}.metainfo.xml)
  if(TAVOLINE_PICTURES)
    set(pictures "")
    foreach(each "map;Le plan de salle;The map of the room" "order;Une commande;An order"
        "closing;La clôture du soir;The evening's closing" "statistics;Les chiffres du mois;A month's figures")
      list(POP_FRONT each picture french english)
      string(APPEND pictures "    <screenshot>\n      <caption>${english}</caption>\n"
        "      <caption xml:lang=\"fr\">${french}</caption>\n"
        "      <image width=\"1024\" height=\"768\">${TAVOLINE_PICTURES}/${picture}.png</image>\n    </screenshot>\n")
    endforeach()
    string(REPLACE "<screenshot>\n      <caption>The map" "<screenshot type=\"default\">\n      <caption>The map"
      pictures "${pictures}")
    file(READ ${metainfo} text)
    string(REPLACE "  <categories>" "  <screenshots>\n${pictures}  </screenshots>\n  <categories>" text "${text}")
    set(metainfo ${CMAKE_CURRENT_BINARY_DIR}/${APPLICATION_ID}.metainfo.xml)
    file(WRITE ${metainfo} "${text}")
  endif()
  install(FILES ${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT till)
endfunction()

install_documentation(tool ${TOOL_DOCS} deploy importer store)
set(CPACK_COMPONENTS_ALL tool)
if(NOT TARGET tavoline)
  install_program(tavoline-store tavoline-store tool)
else()
  list(APPEND CPACK_COMPONENTS_ALL till)
  install_program(tavoline-store-alone tavoline-store tool OPTIONAL)
  install_program(tavoline-store tavoline-store till)
  install_program(tavoline tavoline till)
  install_documentation(till ${TILL_DOCS} depannage deploy importer store)
  install(DIRECTORY ${CMAKE_SOURCE_DIR}/share/tavoline ${CMAKE_BINARY_DIR}/share/tavoline
    DESTINATION ${CMAKE_INSTALL_DATADIR} COMPONENT till)
  install(FILES ${PACKAGING}/desktop/${APPLICATION_ID}.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT till)
  install_metainfo()
  install(FILES ${PACKAGING}/desktop/${APPLICATION_ID}.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT till)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGE_NAME tavoline)
set(CPACK_PACKAGE_CONTACT "The Tavoline maintainers <maintainers@tavoline.invalid>")
# The long descriptions; the short one is the project's.
set(CPACK_DEBIAN_TILL_PACKAGE_NAME tavoline)
set(CPACK_DEBIAN_TILL_DESCRIPTION "French screens on a map of the room: orders by touch, tickets, cash desks
and their closings, articles and stock, purchases, statistics, and a book
for the owner. The data lie in one SQLite file, or on a PostgreSQL server.")
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME tavoline-store)
set(CPACK_DEBIAN_TOOL_DESCRIPTION "The tool alone, for servers: it makes, checks, backs up, upgrades, imports
and exports the stores of Tavoline, in a file or on a server. Needs no screens.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no library name tells: SVG icons, the icons themselves, the fonts of screens and documents, French words.
set(CPACK_DEBIAN_TILL_PACKAGE_DEPENDS "libqt6svg6, breeze-icon-theme, fonts-liberation, qt6-translations-l10n")
set(CPACK_DEBIAN_TILL_PACKAGE_RECOMMENDS "cups, fonts-noto-color-emoji")
foreach(relation CONFLICTS REPLACES PROVIDES)
  set(CPACK_DEBIAN_TILL_PACKAGE_${relation} tavoline-store)
  set(CPACK_DEBIAN_TOOL_PACKAGE_${relation} tavoline)
endforeach()
unset(CPACK_DEBIAN_TOOL_PACKAGE_PROVIDES)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "postgresql-client")  # `backup` of a store on a server
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)  # what is installed has been built by name
include(CPack)

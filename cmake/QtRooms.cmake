# Rooms in which Qt lives: automatic moc, uic and rcc, and strictness. No precompiled header: with Qt's it weighs
# 300 MB that every compilation would read, and it keeps ccache from sharing objects between checkouts.

# For rooms without widgets; the others stand on it.
add_library(tavoline_qt_core INTERFACE)
target_link_libraries(tavoline_qt_core INTERFACE tavoline_options Qt6::Core)
target_compile_definitions(tavoline_qt_core INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_USE_QSTRINGBUILDER QT_DISABLE_DEPRECATED_BEFORE=0x060400)

add_library(tavoline_qt_options INTERFACE)
target_link_libraries(tavoline_qt_options INTERFACE tavoline_qt_core Qt6::Widgets)

# tavoline_qt_room(NAME SOURCES a.cpp form.ui ... LINK rooms-and-libraries ...)
function(tavoline_qt_room name)
  tavoline_room(${name} ${ARGN})
  target_link_libraries(${name} PUBLIC tavoline_qt_options)
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
  # Other rooms read this room's screens, and so the headers made from its forms.
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/include)
endfunction()

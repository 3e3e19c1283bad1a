# What a desktop needs to know of the program beside the program itself.
set(application app.mirrolet.Mirrolet)
install(FILES data/${application}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES data/icons/${application}.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES data/icons/${application}-symbolic.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps)
install(FILES data/mirrolet.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# The name that Debian's rules ask for is as good as any other.
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)

# A bus searches no PATH, KWin knows a program by the path in its entry only, and `cmake --install --prefix` may choose
# another place than was configured.
foreach(file ${application}.service ${application}.desktop)
  install(CODE "
    get_filename_component(program \"${CMAKE_INSTALL_BINDIR}/mirrolet\" ABSOLUTE BASE_DIR \"\${CMAKE_INSTALL_PREFIX}\")
    configure_file(\"${PROJECT_SOURCE_DIR}/data/${file}.in\" \"${PROJECT_BINARY_DIR}/${file}\" @ONLY)")
endforeach()
install(FILES ${PROJECT_BINARY_DIR}/${application}.service DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
install(FILES ${PROJECT_BINARY_DIR}/${application}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)

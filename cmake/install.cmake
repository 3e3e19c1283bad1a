# What a desktop needs to know of the program beside the program itself.
set(application app.mirrolet.Mirrolet)
install(FILES data/${application}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES data/${application}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES data/icons/${application}.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES data/icons/${application}-symbolic.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps)
install(FILES data/mirrolet.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# The name that Debian's rules ask for is as good as any other.
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)

# A bus searches no PATH, and `cmake --install --prefix` may choose another place than was configured.
set(service ${PROJECT_BINARY_DIR}/${application}.service)
install(CODE "
  get_filename_component(program \"${CMAKE_INSTALL_BINDIR}/mirrolet\" ABSOLUTE BASE_DIR \"\${CMAKE_INSTALL_PREFIX}\")
  configure_file(\"${PROJECT_SOURCE_DIR}/data/${application}.service.in\" \"${service}\" @ONLY)")
install(FILES ${service} DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)

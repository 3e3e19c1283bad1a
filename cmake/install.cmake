# What a desktop needs to know of the program beside the program itself.
install(FILES data/app.mirrolet.Mirrolet.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES data/app.mirrolet.Mirrolet.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES data/icons/app.mirrolet.Mirrolet.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES data/icons/app.mirrolet.Mirrolet-symbolic.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps)
install(FILES data/mirrolet.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# Code for Wayland protocols, generated at build time from the descriptions that distributions package. No description is
# part of this tree.
find_package(PlasmaWaylandProtocols REQUIRED)
pkg_check_modules(WAYLAND REQUIRED IMPORTED_TARGET wayland-client)
pkg_check_modules(PIPEWIRE REQUIRED IMPORTED_TARGET libpipewire-0.3)
pkg_get_variable(WAYLAND_SCANNER wayland-scanner wayland_scanner)
pkg_get_variable(WAYLAND_PROTOCOLS wayland-protocols pkgdatadir)

# mirrolet_protocols(NAME FILE...): the object library NAME with the client's side of each protocol description. The header
# of file.xml is <file-client-protocol.h>.
function(mirrolet_protocols name)
  set(folder ${PROJECT_BINARY_DIR}/protocols/${name})
  file(MAKE_DIRECTORY ${folder})
  set(made)
  foreach(description IN LISTS ARGN)
    get_filename_component(protocol ${description} NAME_WE)
    set(header ${folder}/${protocol}-client-protocol.h)
    set(code ${folder}/${protocol}-protocol.c)
    add_custom_command(OUTPUT ${header} DEPENDS ${description} VERBATIM
      COMMAND ${WAYLAND_SCANNER} client-header ${description} ${header})
    add_custom_command(OUTPUT ${code} DEPENDS ${description} VERBATIM
      COMMAND ${WAYLAND_SCANNER} private-code ${description} ${code})
    list(APPEND made ${header} ${code})
  endforeach()
  add_library(${name} OBJECT ${made})
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON UNITY_BUILD OFF EXPORT_COMPILE_COMMANDS OFF)
  target_include_directories(${name} SYSTEM PUBLIC ${folder})
  target_link_libraries(${name} PUBLIC PkgConfig::WAYLAND)
endfunction()

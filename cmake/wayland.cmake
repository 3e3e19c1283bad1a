# Code for Wayland protocols, generated at build time from the descriptions that distributions package. Descriptions that
# Debian 12 does not package are in platform/desktop/wayland/protocols, and are used where no package has them.
find_package(PlasmaWaylandProtocols REQUIRED)
pkg_check_modules(WAYLAND REQUIRED IMPORTED_TARGET wayland-client)
pkg_check_modules(WAYLAND_SERVER REQUIRED IMPORTED_TARGET wayland-server)
pkg_check_modules(PIPEWIRE REQUIRED IMPORTED_TARGET libpipewire-0.3)
pkg_get_variable(WAYLAND_SCANNER wayland-scanner wayland_scanner)
pkg_get_variable(WAYLAND_PROTOCOLS wayland-protocols pkgdatadir)
pkg_get_variable(WLR_PROTOCOLS wlr-protocols pkgdatadir)

# mirrolet_description(VARIABLE NAME FOLDER): sets VARIABLE to the description NAME.xml in the packages' FOLDER, or to the
# description of this tree if no package has it.
function(mirrolet_description variable name folder)
  set(description ${folder}/${name}.xml)
  if(NOT EXISTS ${description})
    set(description ${PROJECT_SOURCE_DIR}/platform/desktop/wayland/protocols/${name}.xml)
  endif()
  set(${variable} ${description} PARENT_SCOPE)
endfunction()

set(STAGING ${WAYLAND_PROTOCOLS}/staging)
mirrolet_description(EXT_LIST ext-foreign-toplevel-list-v1 ${STAGING}/ext-foreign-toplevel-list)
mirrolet_description(EXT_SOURCE ext-image-capture-source-v1 ${STAGING}/ext-image-capture-source)
mirrolet_description(EXT_CAPTURE ext-image-copy-capture-v1 ${STAGING}/ext-image-copy-capture)
mirrolet_description(WLR_LIST wlr-foreign-toplevel-management-unstable-v1 ${WLR_PROTOCOLS}/unstable)
# The protocols with which compositors other than KWin and mutter show their windows.
set(STANDARD_PROTOCOLS ${EXT_LIST} ${EXT_SOURCE} ${EXT_CAPTURE} ${WLR_LIST})

# mirrolet_protocols(NAME [SERVER] FILE...): the object library NAME with the client's side of each protocol description, or
# with the compositor's side. The header of file.xml is <file-client-protocol.h> or <file-server-protocol.h>.
function(mirrolet_protocols name)
  cmake_parse_arguments(PARSE_ARGV 1 protocols "SERVER" "" "")
  if(protocols_SERVER)
    set(side server)
  else()
    set(side client)
  endif()
  set(folder ${PROJECT_BINARY_DIR}/protocols/${name})
  file(MAKE_DIRECTORY ${folder})
  set(made)
  foreach(description IN LISTS protocols_UNPARSED_ARGUMENTS)
    get_filename_component(protocol ${description} NAME_WE)
    set(header ${folder}/${protocol}-${side}-protocol.h)
    set(code ${folder}/${protocol}-protocol.c)
    add_custom_command(OUTPUT ${header} DEPENDS ${description} VERBATIM
      COMMAND ${WAYLAND_SCANNER} ${side}-header ${description} ${header})
    add_custom_command(OUTPUT ${code} DEPENDS ${description} VERBATIM
      COMMAND ${WAYLAND_SCANNER} private-code ${description} ${code})
    list(APPEND made ${header} ${code})
  endforeach()
  add_library(${name} OBJECT ${made})
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON UNITY_BUILD OFF EXPORT_COMPILE_COMMANDS OFF)
  target_include_directories(${name} SYSTEM PUBLIC ${folder})
  target_link_libraries(${name} PUBLIC $<IF:$<BOOL:${protocols_SERVER}>,PkgConfig::WAYLAND_SERVER,PkgConfig::WAYLAND>)
endfunction()

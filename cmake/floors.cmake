# The floors of the program. Each is a library of its own, and its headers are reached through an include root of its own
# below the build folder, where links lead to the sources. A target finds the headers of the floors that it links and no
# others, so the compiler refuses an #include that runs up. tests/checks/header-bounds holds the rest.

function(mirrolet_sources variable)
  set(found)
  foreach(folder IN LISTS ARGN)
    file(GLOB here CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp ${PROJECT_SOURCE_DIR}/${folder}/*.qrc)
    list(APPEND found ${here})
  endforeach()
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# mirrolet_floor(NAME FOLDER...): the library mirrolet_NAME from all sources in the folders.
function(mirrolet_floor name)
  mirrolet_sources(sources ${ARGN})
  list(REMOVE_ITEM sources ${PROJECT_SOURCE_DIR}/app/main.cpp)
  add_library(mirrolet_${name} STATIC ${sources})
  set(root ${PROJECT_BINARY_DIR}/include/${name})
  file(REMOVE_RECURSE ${root})
  foreach(folder IN LISTS ARGN)
    file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
    file(MAKE_DIRECTORY ${root}/${folder})
    foreach(header IN LISTS headers)
      get_filename_component(file ${header} NAME)
      file(CREATE_LINK ${header} ${root}/${folder}/${file} SYMBOLIC)
    endforeach()
  endforeach()
  target_include_directories(mirrolet_${name} PUBLIC ${root})
  set_target_properties(mirrolet_${name} PROPERTIES MIRROLET_FOLDERS "${ARGN}")
endfunction()

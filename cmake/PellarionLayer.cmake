# pellarion_layer(<target> USES <layers and libraries that this one may include>)
#
# Makes the calling folder, with its sub-folders, one layer of the program: a static library of all its sources. Of the
# sub-folders posix/ and windows/ it takes the one of the system that is built for.
#
# Headers are included by their path from the root of the project. Those of a layer are linked into an include folder
# of its own (build/include/<target>), which only the layers that name it under USES can see: an include against the
# order of the layers does not compile. Headers below posix/ and windows/ are seen by the layer alone, and by
# whoever names <target>_backend.
function(pellarion_layer target)
  cmake_parse_arguments(ARG "" "" "USES" ${ARGN})
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.cpp)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.h)
  if(WIN32)
    set(other_system "(^|/)posix/")
  else()
    set(other_system "(^|/)windows/")
  endif()
  list(FILTER sources EXCLUDE REGEX ${other_system})
  list(FILTER headers EXCLUDE REGEX ${other_system})
  set(backend ${headers})
  list(FILTER headers EXCLUDE REGEX "(^|/)(posix|windows)/")
  list(FILTER backend INCLUDE REGEX "(^|/)(posix|windows)/")

  add_library(${target} STATIC ${sources} ${headers} ${backend})
  pellarion_stage(${PROJECT_BINARY_DIR}/include/${target}/${folder} "${headers}")
  target_include_directories(${target} PUBLIC ${PROJECT_BINARY_DIR}/include/${target})
  target_link_libraries(${target} PUBLIC ${ARG_USES} PRIVATE pellarion_options)
  if(backend)
    pellarion_stage(${PROJECT_BINARY_DIR}/include/${target}_backend/${folder} "${backend}")
    add_library(${target}_backend INTERFACE)
    target_include_directories(${target}_backend INTERFACE ${PROJECT_BINARY_DIR}/include/${target}_backend)
    target_include_directories(${target} PRIVATE ${PROJECT_BINARY_DIR}/include/${target}_backend)
  endif()
  pellarion_header_check(${target} ${folder} "${headers}")
endfunction()

# Links headers of the calling folder into another folder, where there is nothing else then.
function(pellarion_stage stage headers)
  file(REMOVE_RECURSE ${stage})
  foreach(header IN LISTS headers)
    get_filename_component(folder ${stage}/${header} DIRECTORY)
    file(MAKE_DIRECTORY ${folder})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${stage}/${header} SYMBOLIC)
  endforeach()
endfunction()

# Each header compiled alone, with nothing but the layers that its own may see: part of the target header_check, which
# is built on demand.
add_custom_target(header_check)
function(pellarion_header_check target folder headers)
  set(sources)
  foreach(header IN LISTS headers)
    string(MAKE_C_IDENTIFIER ${header} name)
    set(source ${PROJECT_BINARY_DIR}/header_check/${target}/${name}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${folder}/${header}\"\n")
    list(APPEND sources ${source})
  endforeach()
  if(sources)
    add_library(${target}_headers OBJECT EXCLUDE_FROM_ALL ${sources})
    target_link_libraries(${target}_headers PRIVATE ${target} pellarion_options)
    add_dependencies(header_check ${target}_headers)
  endif()
endfunction()

# pellarion_layer(<target>
#                 FOLDER  <folder the headers are included by, such as "platform">
#                 HEADERS <public headers, relative to the calling folder>
#                 SOURCES <sources>
#                 USES    <layers and libraries that this one may include>)
#
# Makes one layer of the program a static library. Its public headers, and no others, are linked into an
# include folder of its own (build/include/<target>/<folder>/), which only the layers that name it under
# USES can see: an include against the direction of the house does not compile.
# Headers that are not public are included by their plain name from sources beside them.
function(pellarion_layer target)
  cmake_parse_arguments(ARG "" "FOLDER" "HEADERS;SOURCES;USES" ${ARGN})
  add_library(${target} STATIC ${ARG_SOURCES} ${ARG_HEADERS})
  set(stage ${PROJECT_BINARY_DIR}/include/${target})
  file(REMOVE_RECURSE ${stage})
  file(MAKE_DIRECTORY ${stage})
  foreach(header IN LISTS ARG_HEADERS)
    get_filename_component(folder ${stage}/${ARG_FOLDER}/${header} DIRECTORY)
    file(MAKE_DIRECTORY ${folder})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${stage}/${ARG_FOLDER}/${header} SYMBOLIC)
  endforeach()
  target_include_directories(${target} PUBLIC ${stage})
  target_link_libraries(${target} PUBLIC ${ARG_USES} PRIVATE pellarion_options)
  pellarion_header_check(${target} ${ARG_FOLDER} "${ARG_HEADERS}")
endfunction()

# Each public header compiled alone, with nothing but the layers that its own may see: part of the target
# header_check, which is built on demand.
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

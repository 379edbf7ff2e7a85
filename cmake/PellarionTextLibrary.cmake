# pellarion_text_library(<library> <source>)
#
# Makes a resource-only Windows library of a .rc file, which may include "app/TextIds.h": no code, no entry point, no
# symbols, no time stamp, so that the same texts give the same bytes. MinGW's binutils do it on every system; windres
# would look for a MinGW compiler to preprocess with, but any C preprocessor will do.
find_program(PELLARION_WINDRES NAMES x86_64-w64-mingw32-windres windres REQUIRED)
find_program(PELLARION_PE_LD NAMES x86_64-w64-mingw32-ld REQUIRED)

function(pellarion_text_library library source)
  get_filename_component(name ${library} NAME_WE)
  set(object ${CMAKE_CURRENT_BINARY_DIR}/${name}.o)
  add_custom_command(
    OUTPUT ${library}
    COMMAND
      ${PELLARION_WINDRES} --codepage=65001 --preprocessor=${CMAKE_CXX_COMPILER} --preprocessor-arg=-E
      --preprocessor-arg=-xc --preprocessor-arg=-DRC_INVOKED --include-dir=${PROJECT_SOURCE_DIR} --input-format=rc
      --output-format=coff ${source} ${object}
    COMMAND ${PELLARION_PE_LD} -shared -e 0 --subsystem windows --strip-all --no-insert-timestamp -o ${library}
            ${object}
    DEPENDS ${source} ${PROJECT_SOURCE_DIR}/app/TextIds.h
    COMMENT "Building text library ${name}.dll"
    VERBATIM)
endfunction()

# Compiler settings that every target of the project shares.

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_library(pellarion_options INTERFACE)
target_compile_options(
  pellarion_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Werror
            # GCC 12 sees overlaps in std::string's operator+ at -O3 that are none (its bug 105651).
            $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

if(PELLARION_SANITIZE)
  # For everything, so that the libraries of one program agree. Line numbers are all that a report needs.
  if(NOT PELLARION_FUZZ)
    set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1 -DNDEBUG")
  endif()
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(PELLARION_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

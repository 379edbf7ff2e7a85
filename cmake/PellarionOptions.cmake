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
  # For everything, so that the libraries of one program agree. Line numbers are all that a report needs; assertions stay.
  if(PELLARION_FUZZ)
    set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g")
  else()
    set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1")
  endif()
  add_compile_options(-fsanitize=${PELLARION_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${PELLARION_SANITIZE})
  # With them GCC 12 sees uninitialised members in std::regex that are none (its bug 105562).
  target_compile_options(pellarion_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
if(PELLARION_SANITIZE STREQUAL "thread" AND EXISTS /proc/sys/vm/mmap_rnd_bits)
  # Its programs do not start where the system places memory at more random addresses than this.
  file(READ /proc/sys/vm/mmap_rnd_bits random_bits)
  if(random_bits GREATER 28)
    set(CMAKE_CROSSCOMPILING_EMULATOR setarch -R)
  endif()
endif()
if(PELLARION_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# The standard library checks its own pre-conditions wherever assert() does.
if(PELLARION_SANITIZE OR CMAKE_BUILD_TYPE STREQUAL "Debug")
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

# What users get is hardened: a stack that notices when it is overrun, addresses that differ at each start, tables that
# are read-only once the program has started, and calls of the C library that check the size of what they fill.
# tests/program/program_file.py checks the result. Control-flow marks are left out: the system's own start-up code
# has none, and one object without them takes them off the whole program.
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
  if(WIN32)
    add_link_options(-fstack-protector-strong -Wl,--dynamicbase,--high-entropy-va,--nxcompat)
  else()
    string(APPEND CMAKE_CXX_FLAGS " -fPIE") # in front of what a loadable module asks for
    string(APPEND CMAKE_EXE_LINKER_FLAGS " -pie")
    add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
  endif()
endif()

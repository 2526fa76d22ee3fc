# Compiler flags, cache and linker, the same for every target.

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Debug, Release or RelWithDebInfo" FORCE)
endif()

add_compile_options(-Wall -Wextra -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 reports reads of freed or uninitialised memory and copies beyond the end inside inlined standard library code
  # that aren't there.
  add_compile_options(-Wno-maybe-uninitialized -Wno-free-nonheap-object -Wno-restrict -Wno-stringop-overflow
    -Wno-stringop-overread -Wno-array-bounds)
else()
  # The other compiler counts changes of the sign among the conversions.
  add_compile_options(-Wno-sign-conversion)
endif()

# One kind of position independent code in programs and libraries, so that they share precompiled headers.
add_compile_options(-fPIC)
# One set of words in all sources that use the toolkit, for the same reason: Q_EMIT instead of emit.
add_compile_definitions(QT_NO_KEYWORDS)

if(ZN_SANITIZE)
  # Without optimisation, which would double the time to compile. The check of virtual tables needs type information
  # that the database driver does not export.
  set(sanitizers -fsanitize=${ZN_SANITIZE} -fno-sanitize=vptr)
  add_compile_options(${sanitizers} -fno-omit-frame-pointer -g1)
  add_link_options(${sanitizers})
endif()

if(ZN_FUZZ)
  # What libFuzzer needs to see which ways through the code an input takes; a first fault ends the program.
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize=vptr -fno-sanitize-recover=all
    -fno-omit-frame-pointer -g1)
  add_link_options(-fsanitize=address,undefined -fno-sanitize=vptr)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Paths relative to the source folder, so that every checkout shares one cache.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE_PROGRAM})
endif()

find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
  add_link_options(-fuse-ld=mold)
endif()

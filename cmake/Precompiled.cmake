# Headers that are compiled once for many targets; what is in them stands in cmake/precompiled/. Sources include what
# they use all the same: clang-tidy and builds without precompiled headers (CMAKE_DISABLE_PRECOMPILE_HEADERS) would fail
# otherwise.
#
#   zn_precompiled_header(NAME LINK <libraries whose flags the users have, too>)
function(zn_precompiled_header name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  set(source ${CMAKE_BINARY_DIR}/precompiled/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Carries the precompiled header.\n")
  add_library(zn_precompiled_${name} OBJECT ${source})
  target_include_directories(zn_precompiled_${name} PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(zn_precompiled_${name} PRIVATE ${ARG_LINK})
  # In angle brackets: the generated header then names no path of this checkout, so that all share the compiler cache.
  target_precompile_headers(zn_precompiled_${name} PRIVATE <cmake/precompiled/${name}.h>)
endfunction()

# Lets a target's sources begin with one of them.
function(zn_use_precompiled target name)
  target_precompile_headers(${target} REUSE_FROM zn_precompiled_${name})
endfunction()

zn_precompiled_header(plain LINK fmt::fmt ICU::i18n ICU::uc)
zn_precompiled_header(database LINK fmt::fmt ICU::i18n ICU::uc soci_core)
zn_precompiled_header(windows LINK fmt::fmt ICU::i18n ICU::uc Qt6::Widgets)
zn_precompiled_header(kernel LINK fmt::fmt ICU::i18n ICU::uc)
target_include_directories(zn_precompiled_kernel SYSTEM PRIVATE ${OpenCASCADE_INCLUDE_DIR})

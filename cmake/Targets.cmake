# Libraries and test programs by folder; src/floors.txt says who links whom.

# The list as variables: ZN_FLOORS, the folders and files with lines of their own, and ZN_FLOORS_<folder>, what each may
# include.
function(zn_read_floors)
  set_property(DIRECTORY ${CMAKE_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/floors.txt)
  file(STRINGS ${CMAKE_SOURCE_DIR}/src/floors.txt lines REGEX "^[^#]")
  set(places)
  foreach(line IN LISTS lines)
    if(line MATCHES "^([A-Za-z/.]+): ")
      set(place ${CMAKE_MATCH_1})
      list(APPEND places ${place})
      set(below_${place} "")
    else()
      string(REPLACE " " "" line "${line}")
      string(REPLACE "," ";" below_${place} "${line}")
    endif()
    set(ZN_FLOORS_${place} "${below_${place}}" PARENT_SCOPE)
  endforeach()
  set(ZN_FLOORS "${places}" PARENT_SCOPE)
endfunction()

# The name of a folder's library: zn_addin_macro for addin/macro.
function(zn_target_of place result)
  string(REPLACE "/" "_" name ${place})
  set(${result} zn_${name} PARENT_SCOPE)
endfunction()

# The libraries that a place of the list may link.
function(zn_floors_below place result)
  if(NOT place IN_LIST ZN_FLOORS)
    message(FATAL_ERROR "src/floors.txt says nothing of '${place}'.")
  endif()
  set(targets)
  foreach(below IN LISTS ZN_FLOORS_${place})
    zn_target_of(${below} target)
    list(APPEND targets ${target})
  endforeach()
  set(${result} "${targets}" PARENT_SCOPE)
endfunction()

# The static library of a folder below src/, linked to the floors below it.
#
#   zn_folder(PLACE [PRECOMPILED <header>] [EXCEPT <files>] [SHOWS <libraries>] [USES <libraries>])
#
# Takes every .cpp of the folder and of the folders below it that the list doesn't name. SHOWS are libraries from outside
# that its headers include, USES those that only its sources do. A folder of headers becomes an interface.
# PRECOMPILED names a header of cmake/precompiled/ ("plain" by default) or is "none".
function(zn_folder place)
  cmake_parse_arguments(ARG "" "PRECOMPILED" "EXCEPT;SHOWS;USES" ${ARGN})
  set(root ${CMAKE_SOURCE_DIR}/src/${place})
  file(GLOB_RECURSE sources RELATIVE ${root} CONFIGURE_DEPENDS ${root}/*.cpp)
  list(REMOVE_ITEM sources ${ARG_EXCEPT})
  foreach(other IN LISTS ZN_FLOORS)
    if(other MATCHES "^${place}/(.*)$")
      list(FILTER sources EXCLUDE REGEX "^${CMAKE_MATCH_1}(/|$)")
    endif()
  endforeach()
  list(TRANSFORM sources PREPEND ${root}/)
  zn_target_of(${place} target)
  zn_floors_below(${place} below)
  if(sources)
    add_library(${target} STATIC ${sources})
    target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${target} PUBLIC ${below} ${ARG_SHOWS} PRIVATE ${ARG_USES})
    if(NOT ARG_PRECOMPILED)
      set(ARG_PRECOMPILED plain)
    endif()
    if(NOT ARG_PRECOMPILED STREQUAL none)
      zn_use_precompiled(${target} ${ARG_PRECOMPILED})
    endif()
  else()
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${target} INTERFACE ${below} ${ARG_SHOWS})
  endif()
endfunction()

# A library that is loaded by its file name.
#
#   zn_module(NAME SOURCES <files below src> [LINK <libraries>])
function(zn_module name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  list(TRANSFORM ARG_SOURCES PREPEND ${CMAKE_SOURCE_DIR}/src/)
  add_library(${name} MODULE ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PRIVATE ${ARG_LINK})
  zn_program(${name})
endfunction()

# Counts a target among the programs: what `cmake --build … --target programs` makes, without the tests.
function(zn_program name)
  if(NOT TARGET programs)
    add_custom_target(programs)
  endif()
  add_dependencies(programs ${name})
endfunction()

# The test program of a folder below tests/: every .cpp of it, with the shared support.
#
#   zn_tests(FOLDER [WINDOWS] [LINK <libraries>] [SOURCES <more files>] [NEEDS <targets that must be built>])
#
# Links the library of the folder of the same name below src/, if there is one. WINDOWS: most of its sources use the
# toolkit.
function(zn_tests folder)
  cmake_parse_arguments(ARG "WINDOWS" "" "LINK;SOURCES;NEEDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*.cpp)
  string(REPLACE "/" "_" name ${folder})
  add_executable(test_${name} ${sources} ${ARG_SOURCES})
  if(TARGET zn_${name})
    target_link_libraries(test_${name} PRIVATE zn_${name})
  endif()
  target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(test_${name} PRIVATE ${ARG_LINK} zn_test_support GTest::gmock GTest::gtest GTest::gtest_main)
  if(ARG_WINDOWS)
    target_link_libraries(test_${name} PRIVATE Qt6::Widgets Qt6::Test)
    zn_use_precompiled(test_${name} windowtests)
  else()
    zn_use_precompiled(test_${name} tests)
  endif()
  target_compile_definitions(test_${name} PRIVATE
    ZN_SOURCE_DIR="${CMAKE_SOURCE_DIR}" ZN_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  if(ARG_NEEDS)
    add_dependencies(test_${name} ${ARG_NEEDS})
  endif()
  gtest_discover_tests(test_${name} TEST_PREFIX "${folder}." DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()

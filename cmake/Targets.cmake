# One static library a folder, linked only to the floors below it.
#
#   zn_library(NAME FOLDER <folder below src> [GLOB <patterns>] LINK <libraries>)
#
# Takes every .cpp of the folder itself (not of folders below it), unless GLOB names patterns.
function(zn_library name)
  cmake_parse_arguments(ARG "" "FOLDER" "GLOB;LINK" ${ARGN})
  if(NOT ARG_GLOB)
    set(ARG_GLOB *.cpp)
  endif()
  list(TRANSFORM ARG_GLOB PREPEND ${CMAKE_SOURCE_DIR}/src/${ARG_FOLDER}/)
  file(GLOB sources CONFIGURE_DEPENDS ${ARG_GLOB})
  if(sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_LINK})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} INTERFACE ${ARG_LINK})
  endif()
endfunction()

# One test program a folder below tests: every .cpp of it, with the shared support.
#
#   zn_tests(FOLDER LINK <libraries>)
function(zn_tests folder)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*.cpp)
  if(NOT sources)
    return()
  endif()
  string(REPLACE "/" "_" name ${folder})
  add_executable(test_${name} ${sources})
  target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(test_${name} PRIVATE ${ARG_LINK} zn_test_support GTest::gmock GTest::gtest GTest::gtest_main)
  target_compile_definitions(test_${name} PRIVATE
    ZN_SOURCE_DIR="${CMAKE_SOURCE_DIR}" ZN_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  gtest_discover_tests(test_${name} TEST_PREFIX "${folder}." DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()

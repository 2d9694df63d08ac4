# Helpers that give every subsystem folder the same shape: one library, one test program.

# tsaw_library(NAME SOURCES... [LINKS libs...])
function(tsaw_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_LINKS})
endfunction()

# tsaw_tests(NAME SOURCES... LINKS libs...): one GoogleTest program whose cases CTest discovers.
function(tsaw_tests name)
  if(NOT TSAW_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} tsaw_testing GTest::gtest GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ENVIRONMENT "TSAW_DEBUG=0")
endfunction()

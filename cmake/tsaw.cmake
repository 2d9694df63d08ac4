# Helpers that give every subsystem folder the same shape: one library, one test program.

# tsaw_library(NAME SOURCES... [LINKS libs...])
function(tsaw_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_LINKS})
  # The wizard's plug-in module links these libraries into a shared object.
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()

# tsaw_tests(NAME SOURCES... LINKS libs... [ENV VAR=value]): one GoogleTest program whose cases
# CTest discovers, run with TSAW_DEBUG=0 and, when given, one more variable (widget tests:
# QT_QPA_PLATFORM=offscreen). One only: the discovery flattens a list of settings.
function(tsaw_tests name)
  if(NOT TSAW_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;ENV" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} tsaw_testing GTest::gtest GTest::gtest_main)
  set(extra)
  if(ARG_ENV)
    string(REGEX REPLACE "^([^=]*)=" "\\1=set:" modification "${ARG_ENV}")
    set(extra ENVIRONMENT_MODIFICATION "${modification}")
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ENVIRONMENT "TSAW_DEBUG=0" ${extra})
endfunction()

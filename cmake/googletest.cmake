# GoogleTest from Debian's source package, built with the flags of this build.
include(GoogleTest)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# A test program of ours, its cases known to ctest one by one.
#   quillon_test(NAME [SERIAL] SOURCES... LIBRARIES...)   SERIAL: with no other test beside it
function(quillon_test name)
  cmake_parse_arguments(ARG "SERIAL" "" "SOURCES;LIBRARIES;ENVIRONMENT" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  quillon_warnings(${name})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 120 RUN_SERIAL ${ARG_SERIAL} ENVIRONMENT "${ARG_ENVIRONMENT}")
endfunction()

# GoogleTest from Debian's source package, built with the flags of this build.
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# Test code is built to be compiled fast, not to run fast: no optimisation, natively line numbers alone, and
# the headers that every test includes compiled once for all of them.
set(quillon_fast_code "$<$<COMPILE_LANGUAGE:CXX>:-O0;$<$<CONFIG:RelWithDebInfo>:-g1>>")
foreach(library gtest gtest_main gmock gmock_main)
  target_compile_options(${library} PRIVATE ${quillon_fast_code})
  set_target_properties(${library} PROPERTIES UNITY_BUILD OFF)
endforeach()

file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/nothing.cpp CONTENT "")
function(quillon_test_headers name)
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/nothing.cpp)
  quillon_warnings(${name})
  target_link_libraries(${name} PRIVATE GTest::gmock)
  target_compile_options(${name} PRIVATE ${quillon_fast_code})
  target_precompile_headers(${name} PRIVATE ${ARGN}
    <functional> <memory> <optional> <string> <vector> <gmock/gmock.h> <gtest/gtest.h>)
endfunction()
quillon_test_headers(test_headers)
if(WIN32)
  quillon_test_headers(test_headers_platform ${CMAKE_SOURCE_DIR}/src/com/platform.h <nlohmann/json.hpp>)
  target_include_directories(test_headers_platform SYSTEM PRIVATE ${CMAKE_BINARY_DIR}/json)
endif()

#   quillon_test_code(TARGET [PLATFORM])   PLATFORM: its sources include the platform's headers
function(quillon_test_code target)
  cmake_parse_arguments(ARG "PLATFORM" "" "" ${ARGN})
  target_compile_options(${target} PRIVATE ${quillon_fast_code})
  set(headers test_headers)
  if(ARG_PLATFORM)
    set(headers test_headers_platform)
  endif()
  target_precompile_headers(${target} REUSE_FROM ${headers})
endfunction()

# A test that is not run again while nothing of it has changed since it passed (scripts/unless_passed.sh).
#   quillon_add_test(NAME COMMAND... [DEPENDS FILES...])   DEPENDS: what decides its outcome
function(quillon_add_test name)
  cmake_parse_arguments(ARG "" "" "COMMAND;DEPENDS" ${ARGN})
  add_test(NAME ${name} COMMAND ${CMAKE_SOURCE_DIR}/scripts/unless_passed.sh
    ${CMAKE_BINARY_DIR}/passed ${name} ${ARG_DEPENDS} -- ${ARG_COMMAND})
endfunction()

# A test program of ours. It is run as a whole, or in SHARDS parts, each a process of its own.
#   quillon_test(NAME [PLATFORM] [SHARDS n] SOURCES... LIBRARIES... [DEPENDS FILES...])
# Under Wine one runs after the other: all have one processor and one desktop.
function(quillon_test name)
  cmake_parse_arguments(ARG "PLATFORM" "SHARDS" "SOURCES;LIBRARIES;ENVIRONMENT;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  quillon_warnings(${name})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock_main)
  set(platform)
  if(ARG_PLATFORM)
    set(platform PLATFORM)
    target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/support/watchdog.cpp)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/tests)
  endif()
  quillon_test_code(${name} ${platform})
  set(shards 1)
  if(ARG_SHARDS)
    set(shards ${ARG_SHARDS})
  endif()
  math(EXPR last "${shards} - 1")
  foreach(shard RANGE ${last})
    set(test ${name})
    if(shards GREATER 1)
      set(test ${name}.${shard})
    endif()
    quillon_add_test(${test}
      COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${name}> --gtest_brief=1
      DEPENDS $<TARGET_FILE:${name}> ${ARG_DEPENDS})
    set_tests_properties(${test} PROPERTIES TIMEOUT 600
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${shards};GTEST_SHARD_INDEX=${shard};${ARG_ENVIRONMENT}")
    if(WIN32)
      set_tests_properties(${test} PROPERTIES RESOURCE_LOCK wine)
    endif()
  endforeach()
endfunction()

# The two interface targets that every target of this project links: warnings and sanitizers. Neither touches global
# flags, so that a dependency built along with us would keep its own.

# A newer compiler knows new warnings, which must not keep others from building this. The presets set it.
option(VORNRUN_WERROR "Take warnings for errors" OFF)

add_library(vornrun_warnings INTERFACE)
target_compile_options(vornrun_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${VORNRUN_WERROR}>:-Werror>)

add_library(vornrun_sanitizers INTERFACE)
if(VORNRUN_SANITIZE)
  target_compile_options(vornrun_sanitizers INTERFACE
      -fsanitize=${VORNRUN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(vornrun_sanitizers INTERFACE -fsanitize=${VORNRUN_SANITIZE})
  # The sanitizers' own code makes this warning of g++ speak of the standard library's initialised members.
  target_compile_options(vornrun_sanitizers INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# vornrun_test_suite(<name> [THREADED] SOURCES <file>... [LIBRARIES <target>...])
# One test program per source directory. Each test runs as a process of its own under CTest, so that process-wide
# counters (port and mode numbers) start afresh in every one. That costs about 15 ms a test, 40 s of processor time in
# all. THREADED marks the suites whose tests start threads: VORNRUN_TEST_SUITES=threaded leaves out all others.
set(VORNRUN_TEST_SUITES all CACHE STRING "Which test programs to build: all or threaded")
set_property(CACHE VORNRUN_TEST_SUITES PROPERTY STRINGS all threaded)

function(vornrun_test_suite name)
  cmake_parse_arguments(PARSE_ARGV 1 SUITE "THREADED" "" "SOURCES;LIBRARIES")
  set(left_out)
  if(VORNRUN_TEST_SUITES STREQUAL "threaded" AND NOT SUITE_THREADED)
    set(left_out EXCLUDE_FROM_ALL)
  endif()
  add_executable(${name} ${left_out} ${SUITE_SOURCES})
  target_precompile_headers(${name} REUSE_FROM vornrun_test_headers)
  target_link_libraries(${name} PRIVATE
      vornrun vornrun_test_support ${SUITE_LIBRARIES} GTest::gmock GTest::gtest GTest::gtest_main
      vornrun_warnings vornrun_sanitizers)
  if(NOT left_out)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES PROPERTIES TIMEOUT 300)
  endif()
endfunction()

# vornrun_check_headers(<target> FROM <directory>... LIBRARIES <target>...)
# A header that leans on what its user happened to include breaks the build, one without a guard the configuration. The
# source beside a header proves this by including the header first. Every other header gets a source of its own in an
# object library. Headers are found, not listed, since one that was forgotten in a list would go unchecked. Only builds
# that compile each source by itself, without precompiled headers, prove anything.
function(vornrun_check_headers target)
  cmake_parse_arguments(PARSE_ARGV 1 CHECK "" "" "FROM;LIBRARIES")
  set(sources)
  foreach(directory IN LISTS CHECK_FROM)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/${directory}/*.h")
    foreach(header IN LISTS headers)
      file(STRINGS "${PROJECT_SOURCE_DIR}/${header}" guard REGEX "^#pragma once$" LIMIT_COUNT 1)
      if(NOT guard)
        message(FATAL_ERROR "${header} has no line #pragma once")
      endif()
      string(REGEX REPLACE "\\.h$" ".cpp" source "${PROJECT_SOURCE_DIR}/${header}")
      if(EXISTS "${source}")
        file(STRINGS "${source}" first_include REGEX "^#include" LIMIT_COUNT 1)
        if(first_include STREQUAL "#include \"${header}\"")
          continue()
        endif()
      endif()
      set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}/${header}.cpp")
      file(GENERATE OUTPUT "${source}" CONTENT "#include \"${header}\"\n")
      list(APPEND sources "${source}")
    endforeach()
  endforeach()
  add_library(${target} OBJECT ${sources})
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${target} PRIVATE ${CHECK_LIBRARIES} vornrun_warnings vornrun_sanitizers)
  target_compile_options(${target} PRIVATE -g0 -O0)
endfunction()

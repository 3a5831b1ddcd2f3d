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

# vornrun_test_suite(<name> SOURCES <file>... [LIBRARIES <target>...])
# One test program per source directory. Each test runs as a process of its own under CTest, so that process-wide
# counters (port and mode numbers) start afresh in every one.
function(vornrun_test_suite name)
  cmake_parse_arguments(PARSE_ARGV 1 SUITE "" "" "SOURCES;LIBRARIES")
  add_executable(${name} ${SUITE_SOURCES})
  target_link_libraries(${name} PRIVATE
      vornrun vornrun_test_support ${SUITE_LIBRARIES} GTest::gmock GTest::gtest GTest::gtest_main
      vornrun_warnings vornrun_sanitizers)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()

# vornrun_check_headers(<target> FROM <directory>... LIBRARIES <target>...)
# An object library with one source per header of these directories, which includes that header first, twice and alone:
# a header that leans on what its user happened to include, or that has no guard, breaks the build. Headers are found,
# not listed, since one that was forgotten in a list would go unchecked.
function(vornrun_check_headers target)
  cmake_parse_arguments(PARSE_ARGV 1 CHECK "" "" "FROM;LIBRARIES")
  set(sources)
  foreach(directory IN LISTS CHECK_FROM)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/${directory}/*.h")
    foreach(header IN LISTS headers)
      set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}/${header}.cpp")
      set(text "#include \"${header}\"\n#include \"${header}\"\n")
      file(GENERATE OUTPUT "${source}" CONTENT "${text}")
      list(APPEND sources "${source}")
    endforeach()
  endforeach()
  add_library(${target} OBJECT ${sources})
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${target} PRIVATE ${CHECK_LIBRARIES} vornrun_warnings vornrun_sanitizers)
  target_compile_options(${target} PRIVATE -g0 -O0)
endfunction()

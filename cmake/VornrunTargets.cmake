# The two interface targets that every target of this project links: warnings and sanitizers. Neither touches global
# flags, so that a dependency built along with us would keep its own.

add_library(vornrun_warnings INTERFACE)
target_compile_options(vornrun_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

add_library(vornrun_sanitizers INTERFACE)
if(VORNRUN_SANITIZE)
  target_compile_options(vornrun_sanitizers INTERFACE
      -fsanitize=${VORNRUN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(vornrun_sanitizers INTERFACE -fsanitize=${VORNRUN_SANITIZE})
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

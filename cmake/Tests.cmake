# How test programs are built. GoogleTest is built here, from source, since packaged ones are 64-bit.

set(BKOQ_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest")
if(NOT EXISTS ${BKOQ_GOOGLETEST_DIR}/CMakeLists.txt)
  message(FATAL_ERROR "The tests need the sources of GoogleTest, which are not in "
                      "${BKOQ_GOOGLETEST_DIR}. On Debian install them: apt-get install googletest; "
                      "or set BKOQ_GOOGLETEST_DIR; or build without tests: -DBKOQ_BUILD_TESTS=OFF")
endif()
set(BUILD_GMOCK OFF)
set(INSTALL_GTEST OFF)
add_subdirectory(${BKOQ_GOOGLETEST_DIR} googletest EXCLUDE_FROM_ALL)
include(GoogleTest)
# Tests take far longer to compile than to run.
target_compile_options(gtest PRIVATE -O0)
target_compile_options(gtest_main PRIVATE -O0)

# bkoq_test_program(<name> SOURCES <files> LIBRARIES <targets> WRAP <functions>)
# A program that links the objects of a library can make functions fail that the library calls: its
# calls of those after WRAP go to what the tests define as __wrap_<function>().
function(bkoq_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;WRAP")
  add_executable(${name} ${arg_SOURCES})
  bkoq_target(${name})
  target_compile_options(${name} PRIVATE -O0)
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} gtest_main)
  # Half of that time goes into this header, where there are many sources.
  list(LENGTH arg_SOURCES count)
  if(count GREATER 5)
    target_precompile_headers(${name} PRIVATE <gtest/gtest.h>)
  endif()
  foreach(function ${arg_WRAP})
    target_link_options(${name} PRIVATE -Wl,--wrap=${function})
  endforeach()
  # Apart, a test has a name in ctest; together they share the start of a process, which takes a
  # sanitizer longer than most tests.
  if(BKOQ_TESTS_APART)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60)
  else()
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
  endif()
endfunction()

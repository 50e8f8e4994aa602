# The test programs. GoogleTest is built here, from source, since packaged ones are 64-bit.

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

# bkoq_test_program(<name> SOURCES <files> LIBRARIES <targets>): does nothing without files.
function(bkoq_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  if(NOT arg_SOURCES)
    return()
  endif()
  add_executable(${name} ${arg_SOURCES})
  bkoq_target(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} gtest_main)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60)
endfunction()

function(bkoq_add_tests)
  bkoq_collect_tests(sources rw/*_test.cpp)
  bkoq_test_program(rw_test SOURCES ${sources} LIBRARIES bkrw)

  if(TARGET bkoq)
    # As a client sees the library.
    bkoq_collect_tests(sources model/*_test.cpp transfer/*_test.cpp transfer_old/*_test.cpp)
    bkoq_collect_tests(shared testing/*.cpp)
    if(sources)
      bkoq_test_program(bkoq_test SOURCES ${sources} ${shared} LIBRARIES bkoq)
    endif()

    # From inside, with allocations that the tests can make fail.
    bkoq_collect_tests(sources transfer/internal/*_test.cpp)
    if(sources)
      bkoq_test_program(bkoq_internal_test SOURCES ${sources} ${shared}
                        LIBRARIES bkoq_objects bkrw)
      target_link_options(bkoq_internal_test PRIVATE -Wl,--wrap=malloc -Wl,--wrap=realloc
                          -Wl,--wrap=strdup)
    endif()
  endif()

  if(TARGET bkoqkit)
    bkoq_collect_tests(sources kit/*_test.cpp)
    bkoq_test_program(kit_test SOURCES ${sources} LIBRARIES bkoqkit)
  endif()

  add_test(NAME install
           COMMAND ${PROJECT_SOURCE_DIR}/cmake/install_test.sh ${CMAKE_COMMAND}
                   ${PROJECT_BINARY_DIR} ${CMAKE_CXX_COMPILER})
endfunction()

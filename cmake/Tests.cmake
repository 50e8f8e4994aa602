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
  # Tests take far longer to compile than to run.
  target_compile_options(${name} PRIVATE -O0)
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} gtest_main)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60)
endfunction()

# The same with WRAP <functions>. Tests of internals link the objects of a library, so that its calls
# of these functions go to what the tests define as __wrap_<function>() and can be made to fail.
function(bkoq_internal_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;WRAP")
  bkoq_test_program(${name} SOURCES ${arg_SOURCES} LIBRARIES ${arg_LIBRARIES})
  foreach(function ${arg_WRAP})
    target_link_options(${name} PRIVATE -Wl,--wrap=${function})
  endforeach()
endfunction()

function(bkoq_add_tests)
  bkoq_collect_tests(sources rw/*_test.cpp)
  bkoq_test_program(rw_test SOURCES ${sources} LIBRARIES bkrw)

  bkoq_collect_tests(sources rw/internal/*_test.cpp)
  bkoq_internal_test_program(rw_internal_test SOURCES ${sources} LIBRARIES bkrw_objects
                             WRAP malloc realloc)

  if(TARGET bkoq)
    # As a client sees the library.
    bkoq_collect_tests(sources model/*_test.cpp transfer/*_test.cpp transfer_old/*_test.cpp)
    bkoq_collect_tests(shared testing/*.cpp examples/*_job.cpp examples/*_jobs.cpp)
    if(sources)
      bkoq_test_program(bkoq_test SOURCES ${sources} ${shared} LIBRARIES bkoq)
    endif()

    bkoq_collect_tests(sources transfer/internal/*.cpp)
    if(sources)
      bkoq_internal_test_program(bkoq_internal_test SOURCES ${sources} ${shared}
                                 LIBRARIES bkoq_objects bkrw bkoqkit
                                 WRAP malloc realloc)
    endif()
  endif()

  if(TARGET bkoqkit)
    bkoq_collect_tests(sources kit/*_test.cpp)
    bkoq_test_program(kit_test SOURCES ${sources} LIBRARIES bkoqkit)
  endif()

  add_test(NAME headers COMMAND ${PROJECT_SOURCE_DIR}/testing/headers_test.sh ${PROJECT_SOURCE_DIR})

  # Instruments add symbols of their own, and a client without the sanitizers' run-time library cannot
  # load what was built with them.
  if(BKOQ_SANITIZE OR BKOQ_COVERAGE)
    return()
  endif()
  foreach(library bkrw bkoq bkoqkit)
    if(TARGET ${library})
      add_test(NAME ${library}.exports COMMAND ${PROJECT_SOURCE_DIR}/cmake/exports_test.sh
               $<TARGET_FILE:${library}> ${PROJECT_SOURCE_DIR}/cmake/exports/${library}.txt)
    endif()
  endforeach()
  if(TARGET bkoq)
    set(flags)
    if(CMAKE_CXX_FLAGS MATCHES "-m32")
      set(flags -m32)
    endif()
    add_test(NAME bkoq.install COMMAND ${PROJECT_SOURCE_DIR}/cmake/install_test.sh
             ${CMAKE_COMMAND} ${PROJECT_BINARY_DIR} ${CMAKE_GENERATOR} ${CMAKE_C_COMPILER}
             ${CMAKE_CXX_COMPILER} ${flags})
  endif()
endfunction()

# What the libraries, tools and tests of the project have in common.

# Sets `out` to the sources that match the patterns, tests left out.
function(bkoq_collect out)
  file(GLOB sources CONFIGURE_DEPENDS ${ARGN})
  list(FILTER sources EXCLUDE REGEX "_test\\.cpp$")
  set(${out} "${sources}" PARENT_SCOPE)
endfunction()

# Counts what is executed of the targets of this folder. clang++'s counters are of the source: its
# branches are the conditions that are written there. (g++ counts in every folder.)
macro(bkoq_count_with_clang)
  if(BKOQ_COVERAGE AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # Tests choose the environment of what they run, so the file is named here.
    set(counting -fprofile-instr-generate=${PROJECT_BINARY_DIR}/counters/%m.profraw)
    add_compile_options(${counting} -fcoverage-mapping)
    add_link_options(${counting})
  endif()
endmacro()

# Warnings, visibility and the include root of the project's own sources.
function(bkoq_target target)
  target_compile_options(${target} PRIVATE -Wall -Wextra)
  # Three public classes have no virtual destructor, as their tables demand, and are only ever held
  # as exactly what they are; clang++ warns of it inside std::unique_ptr.
  target_compile_options(${target} PRIVATE
    $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wno-delete-non-abstract-non-virtual-dtor>)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
  set_target_properties(${target} PROPERTIES C_VISIBILITY_PRESET hidden
                        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# A shared library that is installed and exported, with its alias bkoq::<target>. Client and library
# must see one copy of each variable (so no -Bsymbolic), but the library calls its own functions
# directly: in 32 bits the way through the table of symbols costs more than most of them.
function(bkoq_library target)
  bkoq_target(${target})
  add_library(bkoq::${target} ALIAS ${target})
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>)
  target_compile_features(${target} INTERFACE cxx_std_11)
  bkoq_harden(${target})
  bkoq_harden_link(${target})
  set(exports ${PROJECT_SOURCE_DIR}/cmake/exports/${target}.map)
  target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions -Wl,--version-script=${exports})
  set_target_properties(${target} PROPERTIES LINK_DEPENDS ${exports})
  set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION}
                        SOVERSION ${PROJECT_VERSION_MAJOR} INSTALL_RPATH "$ORIGIN")
  install(TARGETS ${target} EXPORT bkoq-targets
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${target}
                  NAMELINK_COMPONENT development
          INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endfunction()

# The same, from an object library <target>_objects, to which bkoq_add_folder() adds: tests of
# internals link the objects, since the shared library hides what is inside.
function(bkoq_library_from_objects target)
  add_library(${target}_objects OBJECT)
  bkoq_target(${target}_objects)
  bkoq_harden(${target}_objects)
  set_target_properties(${target}_objects PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target}_objects PRIVATE -fno-semantic-interposition -fno-plt)
  if(NOT BKOQ_SANITIZE AND NOT BKOQ_COVERAGE)
    # A client waits for what is in here: a fiftieth less with -O3.
    target_compile_options(${target}_objects PRIVATE $<$<CONFIG:RelWithDebInfo,Release>:-O3>)
  endif()
  target_include_directories(${target}_objects PUBLIC ${PROJECT_SOURCE_DIR}/include)

  add_library(${target} SHARED $<TARGET_OBJECTS:${target}_objects>)
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
  bkoq_library(${target})
endfunction()

# Adds the sources of this folder to the library, and its unit tests to <library>_test, which sees
# the library as a client does. Those named after INTERNAL_TESTS look inside and go to
# <library>_internal_test.
function(bkoq_add_folder library)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "INTERNAL_TESTS")
  bkoq_collect(sources ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  target_sources(${library}_objects PRIVATE ${sources})
  list(TRANSFORM arg_INTERNAL_TESTS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  file(GLOB tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*_test.cpp)
  if(arg_INTERNAL_TESTS)
    list(REMOVE_ITEM tests ${arg_INTERNAL_TESTS})
  endif()
  set_property(GLOBAL APPEND PROPERTY ${library}_tests ${tests})
  set_property(GLOBAL APPEND PROPERTY ${library}_internal_tests ${arg_INTERNAL_TESTS})
endfunction()

# How what ships is hardened and made reproducible. tests/install/hardening_test.sh checks the files.

# Files are the same wherever the project lies: paths in them start at the source folder and the build
# folder, and libraries of the build find each other from where they lie.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
include(CheckPIESupported)
check_pie_supported()

# Flags of a library or program that ships.
function(bkoq_harden target)
  if(NOT BKOQ_COVERAGE)
    # gcov finds the sources by their paths. Of two prefixes that fit, the later one is taken.
    target_compile_options(${target} PRIVATE -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
                           -ffile-prefix-map=${PROJECT_BINARY_DIR}=./build)
  endif()
  if(BKOQ_SANITIZE OR BKOQ_COVERAGE)
    return()
  endif()
  target_compile_options(${target} PRIVATE -fstack-protector-strong -fcf-protection=full)
  # Some compilers define it themselves. It needs optimization.
  target_compile_options(${target} PRIVATE
                         "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
endfunction()

# The same for linking. With every call bound when the program is loaded, the tables of calls are
# read-only from then on; and a client's first flattening, which is often its only one, waits for none.
function(bkoq_harden_link target)
  target_link_options(${target} PRIVATE -Wl,-z,now -Wl,-z,relro -Wl,-z,noexecstack)
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()

# Chooses the 32-bit toolchain where the compiler's own target is x86-64, and says what to install
# where it cannot build for 32 bits. Included before project(), whose own message for a compiler
# without its 32-bit parts does not name the cause.

set(bkoq_ilp32_reason
    "The job records are a 32-bit little-endian interface with 4-byte pointers, so the library is \
built for such a target only (ILP32).")
set(bkoq_ilp32_remedy "On Debian (x86-64) install the compiler's 32-bit parts: apt-get install \
g++-multilib")

# Sets `out` to the command that project() will take as the compiler of `lang`, empty if unknown.
function(bkoq_compiler_command lang variable names out)
  if(DEFINED CMAKE_${lang}_COMPILER)
    set(command "${CMAKE_${lang}_COMPILER}")
  elseif(NOT "$ENV{${variable}}" STREQUAL "")
    separate_arguments(command UNIX_COMMAND "$ENV{${variable}}")
  else()
    find_program(found NAMES ${names} NO_CACHE)
    set(command "${found}")
    if(NOT command)
      set(command "")
    endif()
  endif()
  set(${out} "${command}" PARENT_SCOPE)
endfunction()

if(NOT DEFINED CMAKE_TOOLCHAIN_FILE AND "$ENV{CMAKE_TOOLCHAIN_FILE}" STREQUAL "")
  set(bkoq_probe "${CMAKE_CURRENT_BINARY_DIR}/ilp32-probe")
  bkoq_compiler_command(CXX CXX "c++;g++;clang++" bkoq_cxx)
  bkoq_compiler_command(C CC "cc;gcc;clang" bkoq_c)
  if(bkoq_cxx)
    execute_process(COMMAND ${bkoq_cxx} -dumpmachine OUTPUT_VARIABLE bkoq_machine
                    ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
  endif()
  if(bkoq_machine MATCHES "^x86_64")
    file(WRITE "${bkoq_probe}/probe.cpp"
         "#include <stdlib.h>\n#include <new>\nint main() { delete new (std::nothrow) int; }\n")
    file(WRITE "${bkoq_probe}/probe.c" "#include <stdlib.h>\nint main(void) { free(malloc(1)); }\n")
    foreach(compiler IN ITEMS cxx c)
      if(compiler STREQUAL "cxx")
        set(source probe.cpp)
      else()
        set(source probe.c)
      endif()
      if(bkoq_${compiler})
        execute_process(
          COMMAND ${bkoq_${compiler}} -m32 "${bkoq_probe}/${source}" -o "${bkoq_probe}/probe"
          RESULT_VARIABLE bkoq_result ERROR_VARIABLE bkoq_error OUTPUT_QUIET)
        if(NOT bkoq_result EQUAL 0)
          message(FATAL_ERROR "${bkoq_ilp32_reason}\n${bkoq_${compiler}} -m32 cannot build for it. "
                              "${bkoq_ilp32_remedy}\nThe compiler said:\n${bkoq_error}")
        endif()
      endif()
    endforeach()
    set(CMAKE_TOOLCHAIN_FILE "${CMAKE_CURRENT_LIST_DIR}/ilp32.cmake"
        CACHE FILEPATH "Toolchain that builds for 32 bits")
  endif()
endif()

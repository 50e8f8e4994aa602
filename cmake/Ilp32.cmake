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

# Sets `out` to whether the command builds and links a program with -m32, and `error` to what it
# said if not.
function(bkoq_try_m32 source text out error)
  set(probe "${CMAKE_CURRENT_BINARY_DIR}/ilp32-probe")
  file(WRITE "${probe}/${source}" "${text}")
  execute_process(COMMAND ${ARGN} -m32 "${probe}/${source}" -o "${probe}/probe"
                  RESULT_VARIABLE result ERROR_VARIABLE said OUTPUT_QUIET)
  if(result EQUAL 0)
    set(${out} ON PARENT_SCOPE)
  else()
    set(${out} OFF PARENT_SCOPE)
    set(${error} "${said}" PARENT_SCOPE)
  endif()
endfunction()

# Sets the toolchain file, unless the user has given one.
function(bkoq_choose_ilp32)
  if(DEFINED CMAKE_TOOLCHAIN_FILE OR NOT "$ENV{CMAKE_TOOLCHAIN_FILE}" STREQUAL "")
    return()
  endif()
  bkoq_compiler_command(CXX CXX "c++;g++;clang++" cxx)
  bkoq_compiler_command(C CC "cc;gcc;clang" c)
  if(NOT cxx OR NOT c)
    return() # project() says that there is no compiler
  endif()
  execute_process(COMMAND ${cxx} -dumpmachine OUTPUT_VARIABLE machine ERROR_QUIET)
  if(NOT machine MATCHES "^x86_64")
    return()
  endif()
  bkoq_try_m32(probe.cpp "#include <new>\nint main() { delete new (std::nothrow) int; }\n"
               works error ${cxx})
  if(works)
    bkoq_try_m32(probe.c "#include <stdlib.h>\nint main(void) { free(malloc(1)); }\n"
                 works error ${c})
  endif()
  if(NOT works)
    message(FATAL_ERROR "${bkoq_ilp32_reason}\nThe compiler cannot build for it with -m32. "
                        "${bkoq_ilp32_remedy}\nIt said:\n${error}")
  endif()
  set(CMAKE_TOOLCHAIN_FILE "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/ilp32.cmake"
      CACHE FILEPATH "Toolchain that builds for 32 bits")
endfunction()

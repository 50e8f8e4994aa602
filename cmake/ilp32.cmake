# Toolchain for 32-bit x86 on a 64-bit host. The flag must be in force before project(), or CMake
# takes the target for a 64-bit one and installs into the wrong folder.
foreach(lang C CXX)
  set(CMAKE_${lang}_FLAGS_INIT "-m32")
  # Flags given by the user take the place of the initial ones.
  if(DEFINED CACHE{CMAKE_${lang}_FLAGS} AND NOT "$CACHE{CMAKE_${lang}_FLAGS}" MATCHES "-m32")
    set(CMAKE_${lang}_FLAGS "-m32 $CACHE{CMAKE_${lang}_FLAGS}" CACHE STRING "" FORCE)
  endif()
endforeach()

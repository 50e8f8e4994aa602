# What an installation holds beside the libraries: headers, the CMake package, the pkg-config files,
# documents and examples. Each component is a package: scripts/package makes those of Debian.
include(CMakePackageConfigHelpers)

set(BKOQ_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/bkoq CACHE STRING
    "Where find_package() looks; on Debian not in lib32")
set(package_dir ${BKOQ_CMAKE_DIR})

install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
        FILES_MATCHING PATTERN "*.h")

configure_package_config_file(cmake/bkoq-config.cmake.in bkoq-config.cmake
                              INSTALL_DESTINATION ${package_dir})
# The configuration itself turns away clients whose pointers are of another size: it can say why.
write_basic_package_version_file(bkoq-config-version.cmake COMPATIBILITY SameMajorVersion
                                 ARCH_INDEPENDENT)
install(EXPORT bkoq-targets NAMESPACE bkoq:: DESTINATION ${package_dir} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/bkoq-config.cmake ${PROJECT_BINARY_DIR}/bkoq-config-version.cmake
        DESTINATION ${package_dir} COMPONENT development)

# find_package() finds the build folder as well, by -Dbkoq_DIR or CMAKE_PREFIX_PATH.
export(EXPORT bkoq-targets NAMESPACE bkoq::)

# The file finds the rest from where it lies itself, so that it holds for the prefix given at
# install time too.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  message(FATAL_ERROR "CMAKE_INSTALL_LIBDIR and CMAKE_INSTALL_INCLUDEDIR must be relative to the "
                      "prefix")
endif()
file(RELATIVE_PATH pc_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
foreach(library bkrw bkoq bkoqkit)
  configure_file(cmake/${library}.pc.in ${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()

# What help texts and headers name.
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation
        FILES_MATCHING PATTERN "*.md" PATTERN "*.schema.json" PATTERN "performance-*.svg"
        PATTERN testing.md EXCLUDE
        PATTERN site EXCLUDE)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation
        PATTERN CMakeLists.txt EXCLUDE PATTERN __pycache__ EXCLUDE)

# cmake --install: library, headers, CMake package, pkg-config file. The package works from wherever it is moved to.
# Two components: runtime, what programs need, and development, what building them needs.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/velum")

install(TARGETS velum EXPORT velumTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)
install(EXPORT velumTargets NAMESPACE velum:: DESTINATION "${package_dir}" COMPONENT development)

get_property(subsystems GLOBAL PROPERTY VELUM_SUBSYSTEMS)
list(JOIN subsystems " " VELUM_SUBSYSTEMS)
configure_package_config_file(cmake/velumConfig.cmake.in
  "${PROJECT_BINARY_DIR}/package/velumConfig.cmake" INSTALL_DESTINATION "${package_dir}"
  PATH_VARS VELUM_INSTALLED_DATA)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/velumConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/package/velumConfig.cmake"
  "${PROJECT_BINARY_DIR}/package/velumConfigVersion.cmake"
  cmake/VelumDeployData.cmake
  DESTINATION "${package_dir}" COMPONENT development)

# The prefix is worked out from where the file lies, so that a moved tree still links.
file(RELATIVE_PATH VELUM_PC_TO_PREFIX
  "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" VELUM_PC_TO_PREFIX "${VELUM_PC_TO_PREFIX}")
configure_file(cmake/velum.pc.in "${PROJECT_BINARY_DIR}/package/velum.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/velum.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)

# gdb finds this by the name of the library that it belongs to, below the folder that it loads from by itself.
install(FILES cmake/gdb/printers.py
  DESTINATION "${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR}"
  RENAME "libvelum.so.${PROJECT_VERSION}-gdb.py" COMPONENT development)

# The text device on Cairo, for programs to start from.
install(DIRECTORY examples/common
  DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/libvelum-dev/examples" COMPONENT development
  FILES_MATCHING PATTERN "*.h" PATTERN "*.cpp")

if(PROJECT_IS_TOP_LEVEL)
  include(VelumPackages)
endif()

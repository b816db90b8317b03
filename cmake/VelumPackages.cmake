# cpack -G DEB: the runtime package, named after the library's SONAME, libvelum-dev, and the debug symbols as packages of their own.
# tools/package builds them as they should be: for the prefix /usr, with debug information.
set(soname "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
set(runtime_package "libvelum${soname}")

find_program(VELUM_GZIP gzip)
if(NOT VELUM_GZIP)
  return()
endif()

# What Debian asks of every package's folder of documents.
set(documents "${PROJECT_BINARY_DIR}/package/documents")
file(MAKE_DIRECTORY "${documents}")
foreach(pair "CHANGELOG.md:changelog" "cmake/debian/changelog:changelog.Debian")
  string(REPLACE ":" ";" pair "${pair}")
  list(GET pair 0 source)
  list(GET pair 1 target)
  execute_process(COMMAND "${VELUM_GZIP}" -9nc "${PROJECT_SOURCE_DIR}/${source}"
    OUTPUT_FILE "${documents}/${target}.gz" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
foreach(pair "runtime:${runtime_package}" "development:libvelum-dev" "symbols:${runtime_package}-dbgsym")
  string(REPLACE ":" ";" pair "${pair}")
  list(GET pair 0 component)
  list(GET pair 1 package)
  install(FILES cmake/debian/copyright "${documents}/changelog.gz" "${documents}/changelog.Debian.gz"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}" COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

# Debuggers look for what was stripped off by the number of the build.
install(CODE "set(library \"$<TARGET_FILE:velum>\")\nset(objcopy \"${CMAKE_OBJCOPY}\")\nset(readelf \"${CMAKE_READELF}\")"
  COMPONENT symbols EXCLUDE_FROM_ALL)
install(SCRIPT cmake/InstallDebugSymbols.cmake COMPONENT symbols EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "The Velum developers")
set(CPACK_PACKAGE_CONTACT "The Velum developers <developers@velum.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_COMPONENTS_ALL runtime development symbols)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(about "Strings and errors, files and settings, math text with its own layout,
stroked and outline faces, polygons and clipping, matrices and solvers,
statistics and their charts, image registration, dates and number formats,
colours and bitmaps, for programs that draw scientific figures.")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${about}\n\nThis package has what programs need to run.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/cmake/debian/triggers")

set(CPACK_COMPONENT_SYMBOLS_DESCRIPTION "${about}\n\nThis package has what debuggers need to tell functions and lines.")
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_NAME ${runtime_package}-dbgsym)
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_SECTION debug)
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_DEPENDS
  "${runtime_package} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${about}\n\nThis package has what building programs needs.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvelum-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
# Some headers name types of Boost.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${runtime_package} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), libboost-dev (>= 1.74)")

# Drawing with the sources in its folder of examples.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "libpango1.0-dev")

include(CPack)

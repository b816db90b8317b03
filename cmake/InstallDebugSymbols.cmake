# Puts the debug information of `library` where debuggers look for it.
execute_process(COMMAND "${readelf}" --notes "${library}" OUTPUT_VARIABLE notes COMMAND_ERROR_IS_FATAL ANY)
if(NOT notes MATCHES "Build ID: ([0-9a-f][0-9a-f])([0-9a-f]+)")
  message(FATAL_ERROR "${library} has no build number")
endif()
set(folder "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/lib/debug/.build-id/${CMAKE_MATCH_1}")
set(file "${folder}/${CMAKE_MATCH_2}.debug")
message(STATUS "Installing: ${file}")
file(MAKE_DIRECTORY "${folder}")
execute_process(COMMAND "${objcopy}" --only-keep-debug --compress-debug-sections "${library}" "${file}"
  COMMAND_ERROR_IS_FATAL ANY)
file(CHMOD "${file}" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

# velum_deploy_data(TARGET): puts the library's data, the folder of its symbol sets and Colors.ini, beside a program, where the library
# looks for them at run time. VELUM_DATA_FOLDER is where the data lie.

function(velum_deploy_data target)
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND "${CMAKE_COMMAND}" -E copy_directory "${VELUM_DATA_FOLDER}" "$<TARGET_FILE_DIR:${target}>"
    VERBATIM)
  # Where the data are new, the program is linked again and gets them. All sets are made at once, so one tells of all.
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS
    "${VELUM_DATA_FOLDER}/Symbols/default.sym" "${VELUM_DATA_FOLDER}/Colors.ini")
  if(TARGET velum_symbols)
    add_dependencies(${target} velum_symbols)
  endif()
endfunction()

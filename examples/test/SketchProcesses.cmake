# Runs SCRIPT, which saves sketch.sketch and draws sketch.png, by PROGRAM in FOLDER. Fails unless a second process that loads the
# one draws the other to the last byte, and a third one tells that the file is damaged once a byte of it is.
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")

function(run lines status)
  file(WRITE "${FOLDER}/script" "${lines}")
  execute_process(COMMAND "${PROGRAM}" script WORKING_DIRECTORY "${FOLDER}"
    RESULT_VARIABLE got OUTPUT_VARIABLE said ERROR_VARIABLE complained)
  message("${said}${complained}")
  if(NOT got STREQUAL status)
    message(FATAL_ERROR "the status is ${got}, not ${status}")
  endif()
  set(complained "${complained}" PARENT_SCOPE)
endfunction()

file(READ "${SCRIPT}" lines)
run("${lines}" 0)
run("load sketch.sketch\ndraw again.png\nsave again.sketch\n" 0)
foreach(kind png sketch)
  file(SHA256 "${FOLDER}/sketch.${kind}" first)
  file(SHA256 "${FOLDER}/again.${kind}" second)
  if(NOT first STREQUAL second)
    message(FATAL_ERROR "sketch.${kind} and again.${kind} differ")
  endif()
endforeach()

execute_process(COMMAND sh -c "printf x | dd of=sketch.sketch bs=1 seek=1000 conv=notrunc status=none"
  WORKING_DIRECTORY "${FOLDER}" COMMAND_ERROR_IS_FATAL ANY)
run("load sketch.sketch\n" 1)
if(NOT complained MATCHES "script:1: File '.*sketch.sketch' cannot be read because the file is damaged")
  message(FATAL_ERROR "it does not say that the file is damaged")
endif()

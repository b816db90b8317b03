# Runs PROGRAM with ARGUMENTS in the empty folder FOLDER; it reads the file INPUT if that is given. Fails unless its exit status is
# STATUS, its output and messages together match the regular expression SAYS, or are the text of the file OUTPUT where that is
# given, and it makes the files MAKES and no other.
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")
set(input "")
if(INPUT)
  set(input INPUT_FILE "${INPUT}")
endif()
execute_process(
  COMMAND "${PROGRAM}" ${ARGUMENTS} ${input}
  WORKING_DIRECTORY "${FOLDER}"
  RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE complained)
message("${said}${complained}")
# The address sanitizer wonders, once, at a signal's second stack.
string(REGEX REPLACE "==[0-9]+==WARNING: ASan is ignoring requested __asan_handle_no_return[^\n]*\n[^\n]*\n[^\n]*\n" ""
  complained "${complained}")
if(NOT status STREQUAL STATUS)
  message(FATAL_ERROR "the status is ${status}, not ${STATUS}")
endif()
if(DEFINED OUTPUT)
  file(READ "${OUTPUT}" output)
  if(NOT "${said}${complained}" STREQUAL "${output}")
    message(FATAL_ERROR "it does not say '${output}'")
  endif()
elseif(NOT "${said}${complained}" MATCHES "${SAYS}")
  message(FATAL_ERROR "it does not say ${SAYS}")
endif()
if(NOT status EQUAL 0 AND (said OR NOT complained))
  message(FATAL_ERROR "the complaint belongs to the error stream, and nothing to the output")
endif()
file(GLOB_RECURSE made RELATIVE "${FOLDER}" "${FOLDER}/*")
list(SORT made)
list(SORT MAKES)
if(NOT made STREQUAL MAKES)
  message(FATAL_ERROR "it made '${made}', not '${MAKES}'")
endif()

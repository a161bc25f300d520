# Runs PROGRAM with ARGUMENTS in the empty FOLDER: it has to end with STATUS, print what matches PATTERN (both outputs, one
# after the other) and leave nothing behind.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
set(ENV{TMPDIR} ${FOLDER})
unset(ENV{VOR_TRACE})
execute_process(COMMAND ${PROGRAM} ${ARGUMENTS} WORKING_DIRECTORY ${FOLDER}
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
message("${output}${errors}")

file(GLOB_RECURSE left LIST_DIRECTORIES ON ${FOLDER}/*)
if(NOT status STREQUAL STATUS)
  message(FATAL_ERROR "the status is ${status}, not ${STATUS}")
elseif(NOT "${output}${errors}" MATCHES "${PATTERN}")
  message(FATAL_ERROR "the output does not match ${PATTERN}")
elseif(left)
  message(FATAL_ERROR "left behind: ${left}")
endif()

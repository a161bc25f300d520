# LIBRARY exports what LIST says, neither more nor less.
execute_process(COMMAND ${NM} --dynamic --defined-only --just-symbols --with-symbol-versions ${LIBRARY}
  COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C sort COMMAND_ERROR_IS_FATAL ANY OUTPUT_FILE ${EXPORTED})
execute_process(COMMAND diff --unified=0 ${LIST} ${EXPORTED} RESULT_VARIABLE differs)
if(differs)
  message(FATAL_ERROR "the exported symbols are not those of ${LIST}; if that is meant, run scripts/renew-symbols")
endif()

# Runs a recipe and compares what it prints with the text file beside it.
# cmake -DPROGRAM=... -DKEPT=... -DPRINTED=... -P compare.cmake
execute_process(COMMAND "${PROGRAM}" OUTPUT_FILE "${PRINTED}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${CMAKE_COMMAND}" -E compare_files --ignore-eol "${PRINTED}" "${KEPT}" RESULT_VARIABLE differs)
if(differs)
  file(READ "${PRINTED}" printed)
  message(FATAL_ERROR "the recipe printed what ${KEPT} does not hold (kept in ${PRINTED}):\n${printed}")
endif()

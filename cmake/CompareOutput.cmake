# cmake -DPROGRAM=... -DARGUMENTS=a;b -DEXPECTED=file -P CompareOutput.cmake
# Runs a program and fails unless it succeeds and prints exactly the file.
execute_process(COMMAND ${PROGRAM} ${ARGUMENTS} OUTPUT_VARIABLE output RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ended with ${status}:\n${output}")
endif()
file(READ ${EXPECTED} expected)
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "${PROGRAM} printed\n${output}\ninstead of\n${expected}")
endif()

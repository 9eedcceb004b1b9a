# cmake -DSOURCE=folder -DBINARY=folder -DSETTINGS=file -DGENERATOR=name -DOPTIONS=-Da=b;...
#   [-DEXPECTED=file] -P RunConsumer.cmake
# Configures and builds a project of its own, and compares what its program prints with the file. Without a file
# it compiles the program's source alone.
execute_process(
  COMMAND ${CMAKE_COMMAND} -C ${SETTINGS} -S ${SOURCE} -B ${BINARY} -G ${GENERATOR} ${OPTIONS}
  COMMAND_ERROR_IS_FATAL ANY)
if(NOT EXPECTED)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${BINARY} --target consumer COMMAND_ERROR_IS_FATAL ANY)
  return()
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BINARY} --parallel COMMAND_ERROR_IS_FATAL ANY)
set(PROGRAM ${BINARY}/consumer)
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/CompareOutput.cmake)

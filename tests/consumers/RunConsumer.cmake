# cmake -DSOURCE=folder -DBINARY=folder -DSETTINGS=file -DGENERATOR=name -DOPTIONS=-Da=b;...
#   -DEXPECTED=file -P RunConsumer.cmake
# Configures and builds a project of its own, and compares what its program prints with the file.
execute_process(
  COMMAND ${CMAKE_COMMAND} -C ${SETTINGS} -S ${SOURCE} -B ${BINARY} -G ${GENERATOR} ${OPTIONS}
  COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BINARY} --parallel COMMAND_ERROR_IS_FATAL ANY)
set(PROGRAM ${BINARY}/consumer)
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/CompareOutput.cmake)

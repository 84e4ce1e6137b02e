# Builds the example of an application against the installed and moved package.
include("${SETTINGS}")
file(REMOVE_RECURSE "${WORK}/consumer")
execute_process(
  COMMAND "${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${SOURCE}/examples/consumer" -B
          "${WORK}/consumer" "-DCMAKE_PREFIX_PATH=${WORK}/moved" ${CONFIGURE_ARGUMENTS}
          COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${CMAKE_COMMAND}" --build "${WORK}/consumer" COMMAND_ERROR_IS_FATAL ANY)

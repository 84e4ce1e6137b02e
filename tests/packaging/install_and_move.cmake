# Installs the build and moves what was installed: nothing may depend on where it lay at first.
include("${SETTINGS}")
file(REMOVE_RECURSE "${WORK}/first" "${WORK}/moved")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/first"
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME "${WORK}/first" "${WORK}/moved")

# Before version 1.0 programs are bound to the minor version that they were linked with.
include("${SETTINGS}")
string(REGEX REPLACE "\\.[0-9]+$" "" short_version "${VERSION}")
set(expected "libexiv2_wrapper.so.${short_version}")
execute_process(COMMAND "${OBJDUMP}" -p "${LIBRARY}" OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
if(NOT headers MATCHES "SONAME +([^ \n]+)" OR NOT CMAKE_MATCH_1 STREQUAL expected)
  message(FATAL_ERROR "The library calls itself ${CMAKE_MATCH_1}, not ${expected}")
endif()

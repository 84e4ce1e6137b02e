# Compiles the example with what pkg-config says of the installed and moved package, and starts it.
include("${SETTINGS}")
set(ENV{PKG_CONFIG_PATH} "${WORK}/moved/${LIBDIR}/pkgconfig")
if(NOT PKG_CONFIG)
  message(FATAL_ERROR "pkg-config isn't installed")
endif()
execute_process(COMMAND "${PKG_CONFIG}" --modversion exiv2_wrapper OUTPUT_VARIABLE version
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(NOT version STREQUAL VERSION)
  message(FATAL_ERROR "pkg-config calls version ${VERSION} ${version}")
endif()
execute_process(COMMAND "${PKG_CONFIG}" --cflags --libs exiv2_wrapper OUTPUT_VARIABLE flags
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
set(program "${WORK}/consumer_by_pkg_config")
execute_process(COMMAND "${COMPILER}" -std=c++17 "${SOURCE}/examples/consumer/main.cpp" ${flags} -o
                        "${program}" COMMAND_ERROR_IS_FATAL ANY)

set(ENV{LD_LIBRARY_PATH} "${WORK}/moved/${LIBDIR}")
execute_process(COMMAND "${program}" RESULT_VARIABLE code ERROR_VARIABLE error)
if(NOT code EQUAL 2 OR NOT error STREQUAL "usage: consumer TOOLS PHOTO\n")
  message(FATAL_ERROR "The program ended with ${code}: ${error}")
endif()

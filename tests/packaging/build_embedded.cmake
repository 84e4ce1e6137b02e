# Builds the example of an editor that contains the library's sources and brings its own logger and
# utilities. Kept between runs, since it compiles the whole library.
include("${SETTINGS}")

# embed(ARGUMENT...): configures and builds the editor, then installs it. `installed` receives the
# files that came with it.
macro(embed)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${SOURCE}/examples/embedded" -B
            "${WORK}/embedded" ${CONFIGURE_ARGUMENTS} ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND "${CMAKE_COMMAND}" --build "${WORK}/embedded" --parallel 2
                          COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE "${WORK}/embedded_installed")
  execute_process(COMMAND "${CMAKE_COMMAND}" --install "${WORK}/embedded" --prefix
                          "${WORK}/embedded_installed" COMMAND_ERROR_IS_FATAL ANY)
  file(GLOB_RECURSE installed RELATIVE "${WORK}/embedded_installed" "${WORK}/embedded_installed/*")
endmacro()

# An editor that wants the library's files installed doesn't get stand-ins for its own libraries.
embed(-DEXIV2_WRAPPER_INSTALL=ON)
if(NOT installed MATCHES "include/exiv2_wrapper/exiv2_wrapper.h" OR installed MATCHES "vesk_")
  message(FATAL_ERROR "The library's installation is another: ${installed}")
endif()

# An editor that doesn't, installs nothing of the library with itself.
embed(-DEXIV2_WRAPPER_INSTALL=OFF)
if(installed)
  message(FATAL_ERROR "The library installs with the editor that contains it: ${installed}")
endif()

file(GLOB_RECURSE stand_ins "${WORK}/embedded/*/host/*vesk_*")
if(stand_ins)
  message(FATAL_ERROR "Stand-ins were built beside the editor's own libraries: ${stand_ins}")
endif()
if(RUNTIME)
  file(COPY ${RUNTIME} DESTINATION "${WORK}/embedded/bin")
endif()

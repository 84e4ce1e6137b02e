# Packs the build and compares what the archive holds with what belongs into it.
include("${SETTINGS}")
file(REMOVE_RECURSE "${WORK}/archive")
execute_process(COMMAND "${CPACK}" --config "${BUILD}/CPackConfig.cmake" -B "${WORK}/archive"
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB archives "${WORK}/archive/exiv2_wrapper-${VERSION}-*")
list(FILTER archives EXCLUDE REGEX "sha256$")
list(LENGTH archives count)
if(NOT count EQUAL 1)
  message(FATAL_ERROR "One archive was expected: ${archives}")
endif()
cmake_path(GET archives FILENAME name)
if(PLATFORM STREQUAL "Windows")
  set(pattern "-windows-x64\\.zip$")
else()
  set(pattern "-${PLATFORM}-[^-]+\\.tar\\.gz$")
endif()
if(NOT name MATCHES "${pattern}")
  message(FATAL_ERROR "The archive's name is ${name}, not ${pattern}")
endif()

file(ARCHIVE_EXTRACT INPUT "${archives}" DESTINATION "${WORK}/archive/extracted")
string(REGEX REPLACE "\\.(zip|tar\\.gz)$" "" name "${name}")
set(extracted "${WORK}/archive/extracted/${name}")
file(GLOB_RECURSE found RELATIVE "${extracted}" "${extracted}/*")

set(expected
    include/exiv2_wrapper/exiv2_wrapper.h
    include/vesk_common/vesk_common.h
    include/vesk_logger/log_sink.h
    include/vesk_logger/vesk_logger.h
    ${LIBDIR}/cmake/exiv2_wrapper/exiv2_wrapperConfig.cmake
    ${LIBDIR}/cmake/exiv2_wrapper/exiv2_wrapperConfigVersion.cmake
    ${LIBDIR}/cmake/exiv2_wrapper/exiv2_wrapperTargets.cmake
    ${LIBDIR}/pkgconfig/exiv2_wrapper.pc)
foreach(library exiv2_wrapper vesk_common vesk_logger)
  if(PLATFORM STREQUAL "Windows")
    list(APPEND expected bin/${SHARED_PREFIX}${library}.dll
         ${LIBDIR}/${IMPORT_PREFIX}${library}${IMPORT_SUFFIX})
  else()
    string(REGEX REPLACE "\\.[0-9]+$" "" short_version "${VERSION}")
    list(APPEND expected ${LIBDIR}/lib${library}.so ${LIBDIR}/lib${library}.so.${short_version}
         ${LIBDIR}/lib${library}.so.${VERSION})
  endif()
endforeach()
foreach(library IN LISTS RUNTIME)
  cmake_path(GET library FILENAME library)
  list(APPEND expected "bin/${library}")
endforeach()
if(PLATFORM STREQUAL "Windows")
  # What makes it a package that is unpacked and used.
  file(GLOB guides RELATIVE "${SOURCE}/docs" "${SOURCE}/docs/*.md")
  file(GLOB_RECURSE examples RELATIVE "${SOURCE}" "${SOURCE}/examples/*")
  list(FILTER examples EXCLUDE REGEX "^examples/embedded/")
  set(documents README.md CHANGELOG.md ${guides} ${examples})
  if(TOOLS)
    list(APPEND documents licences/CLI11.txt licences/nlohmann-json.txt)
  endif()
  if(RUNTIME)
    list(APPEND documents photoinfo.txt licences/gcc.txt licences/gpl-3.txt licences/mingw-w64.txt)
  endif()
  list(TRANSFORM documents PREPEND doc/)
  list(APPEND expected LICENCES.txt ${documents})
  if(EXIV2_TOOL)
    set(tools exiv2.exe README.md LICENSE COPYING SOURCE.txt licences/exiv2.txt licences/expat.txt
              licences/libz-mingw-w64.txt)
    list(TRANSFORM tools PREPEND tools/)
    list(APPEND expected ${tools})
  endif()
endif()
list(FILTER found EXCLUDE REGEX "exiv2_wrapperTargets-[a-z]+\\.cmake$")  # one a configuration

set(missing ${expected})
list(REMOVE_ITEM missing ${found})
set(unexpected ${found})
list(REMOVE_ITEM unexpected ${expected})
if(TOOLS)
  # The command-line tool with what belongs to it.
  if(NOT unexpected MATCHES "(^|;)bin/photoinfo(\\.exe)?(;|$)")
    list(APPEND missing bin/photoinfo)
  endif()
  list(FILTER unexpected EXCLUDE REGEX "^(bin/photoinfo(\\.exe)?|share/.*photoinfo.*)$")
endif()
if(missing OR unexpected)
  message(FATAL_ERROR "In ${name}\n  missing: ${missing}\n  not expected: ${unexpected}")
endif()

# Nothing carries symbols. MSVC keeps them in other files.
set(binaries ${found})
list(FILTER binaries INCLUDE REGEX "(^bin/.+|\\.exe|\\.so\\.[0-9.]+)$")
if(OBJDUMP)
  foreach(binary IN LISTS binaries)
    execute_process(COMMAND "${OBJDUMP}" --syms "${extracted}/${binary}" OUTPUT_VARIABLE symbols
                            COMMAND_ERROR_IS_FATAL ANY)
    if(NOT symbols MATCHES "no symbols")
      message(FATAL_ERROR "${binary} isn't stripped")
    endif()
  endforeach()
endif()

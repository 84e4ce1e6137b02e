# What the archive for Windows holds beside what is installed on every platform: our exiv2.exe, the
# documents and the licences. The folder tools is where photoinfo looks for both tools.
set(files "${PROJECT_SOURCE_DIR}/cmake/package")
set(made "${PROJECT_BINARY_DIR}/package")

# exiv2.exe with its licence, its manual and the way to its source.
if(TARGET exiv2_tool)
  set(tool "${PROJECT_SOURCE_DIR}/tools/exiv2")
  set(EXIV2_WRAPPER_ORIGIN "${EXIV2_WRAPPER_LIBEXIV2}/origin")
  set(EXIV2_WRAPPER_SOURCES "")
  if(EXISTS "${EXIV2_WRAPPER_ORIGIN}/sources")
    file(READ "${EXIV2_WRAPPER_ORIGIN}/sources" EXIV2_WRAPPER_SOURCES)
  endif()
  configure_file("${files}/SOURCE.txt.in" "${made}/SOURCE.txt" @ONLY)
  install(TARGETS exiv2_tool RUNTIME DESTINATION tools ${runtime})
  install(FILES "${tool}/README.md" "${tool}/LICENSE" "${tool}/COPYING" "${made}/SOURCE.txt"
          DESTINATION tools ${runtime})
  install(DIRECTORY "${EXIV2_WRAPPER_ORIGIN}/" DESTINATION tools/licences ${runtime}
          FILES_MATCHING PATTERN "*.txt")
endif()

# The documents lie side by side, so their links are made to fit; what isn't in the package is named
# without a link.
file(GLOB documents CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/docs/*.md")
foreach(document IN LISTS documents ITEMS "${PROJECT_SOURCE_DIR}/README.md"
                                          "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${document}")
  file(READ "${document}" text)
  string(REPLACE "](../" "](" text "${text}")
  string(REPLACE "](docs/" "](" text "${text}")
  string(REPLACE "](tools/exiv2/" "](../tools/" text "${text}")
  string(REPLACE "](exiv2_wrapper/exiv2_wrapper.h" "](../include/exiv2_wrapper/exiv2_wrapper.h" text
                 "${text}")
  string(REGEX REPLACE "\\[([^]]*)\\]\\((exiv2_wrapper|host|samples|scripts|tests|examples/embedded)[^)]*\\)"
                       "\\1" text "${text}")
  string(REPLACE "[CONTRIBUTING.md](CONTRIBUTING.md)" "CONTRIBUTING.md" text "${text}")
  cmake_path(GET document FILENAME name)
  file(WRITE "${made}/doc/${name}" "${text}")
  install(FILES "${made}/doc/${name}" DESTINATION doc ${runtime})
endforeach()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION doc ${development}
        PATTERN "embedded" EXCLUDE)

# photoinfo's manual as plain text.
find_program(EXIV2_WRAPPER_GROFF groff)
if(TARGET photoinfo AND EXIV2_WRAPPER_GROFF)
  set(manual "${PROJECT_BINARY_DIR}/tools/photoinfo/photoinfo.1")
  execute_process(COMMAND "${EXIV2_WRAPPER_GROFF}" -man -Tascii -P-bcou "${manual}"
                  OUTPUT_FILE "${made}/doc/photoinfo.txt" COMMAND_ERROR_IS_FATAL ANY)
  install(FILES "${made}/doc/photoinfo.txt" DESTINATION doc ${runtime})
elseif(TARGET photoinfo)
  message(STATUS "groff not found: an archive has photoinfo without its manual")
endif()

# exiv2_wrapper_install_terms(NAME FILE): the licence of something in the package that isn't ours.
function(exiv2_wrapper_install_terms name file)
  if(EXISTS "${file}")
    install(FILES "${file}" RENAME "${name}.txt" DESTINATION doc/licences ${runtime})
  else()
    message(STATUS "The licence of ${name} not found: an archive is without it")
  endif()
endfunction()
configure_file("${files}/LICENCES.txt.in" "${made}/LICENCES.txt" @ONLY)
install(FILES "${made}/LICENCES.txt" DESTINATION . ${runtime})
if(TARGET photoinfo)
  get_target_property(json_terms exiv2_wrapper_json EXIV2_WRAPPER_TERMS)
  get_target_property(cli11_terms exiv2_wrapper_cli11 EXIV2_WRAPPER_TERMS)
  exiv2_wrapper_install_terms(nlohmann-json "${json_terms}")
  exiv2_wrapper_install_terms(CLI11 "${cli11_terms}")
endif()
if(MINGW)
  exiv2_wrapper_install_terms(gcc /usr/share/doc/gcc-mingw-w64-base/copyright)
  exiv2_wrapper_install_terms(gpl-3 /usr/share/common-licenses/GPL-3)
  exiv2_wrapper_install_terms(mingw-w64 /usr/share/doc/mingw-w64-x86-64-dev/copyright)
endif()

# Installation and archives. Everything is found relative to what asks for it, so an installed tree
# may be moved as a whole.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(runtime COMPONENT exiv2_wrapper_runtime)
set(development COMPONENT exiv2_wrapper_development)
set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/exiv2_wrapper")

# The stand-ins are part of the package, for the library can't be linked without them. A host's own
# libraries in their place are the host's to install.
set(EXIV2_WRAPPER_STAND_INS "")
foreach(target vesk_logger vesk_common)
  get_target_property(folder ${target} SOURCE_DIR)
  if(folder STREQUAL "${PROJECT_SOURCE_DIR}/host")
    list(APPEND EXIV2_WRAPPER_STAND_INS ${target})
  endif()
endforeach()

if(NOT WIN32)
  set_target_properties(exiv2_wrapper ${EXIV2_WRAPPER_STAND_INS} PROPERTIES INSTALL_RPATH "$ORIGIN")
endif()
install(
  TARGETS exiv2_wrapper ${EXIV2_WRAPPER_STAND_INS}
  EXPORT exiv2_wrapperTargets
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" ${runtime}
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" ${runtime} NAMELINK_${development}
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" ${development}
  INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(
  FILES "${PROJECT_SOURCE_DIR}/exiv2_wrapper/exiv2_wrapper.h"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/exiv2_wrapper" ${development})
foreach(target IN LISTS EXIV2_WRAPPER_STAND_INS)
  install(
    DIRECTORY "${PROJECT_SOURCE_DIR}/host/${target}"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" ${development}
    FILES_MATCHING PATTERN "*.h")
endforeach()
foreach(library IN LISTS EXIV2_WRAPPER_MINGW_RUNTIME)
  install(FILES "${library}" DESTINATION "${CMAKE_INSTALL_BINDIR}" ${runtime})
  # As the targets are; most of the compiler's files are symbols.
  cmake_path(GET library FILENAME name)
  set(installed "\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/${name}")
  install(CODE "if(CMAKE_INSTALL_DO_STRIP)
  execute_process(COMMAND \"${CMAKE_STRIP}\" \"${installed}\" COMMAND_ERROR_IS_FATAL ANY)
endif()" ${runtime})
endforeach()

if(TARGET photoinfo)
  if(NOT WIN32)
    file(RELATIVE_PATH libraries "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    set_target_properties(photoinfo PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
  endif()
  install(TARGETS photoinfo RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" ${runtime})
  # Its manual, and what shells complete its command line by, where they look for these.
  if(NOT WIN32)
    set(shell "${PROJECT_SOURCE_DIR}/tools/photoinfo/shell")
    install(FILES "${PROJECT_BINARY_DIR}/tools/photoinfo/photoinfo.1"
            DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" ${runtime})
    install(FILES "${shell}/photoinfo.bash" RENAME photoinfo
            DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" ${runtime})
    install(FILES "${shell}/_photoinfo"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" ${runtime})
    install(FILES "${shell}/photoinfo.fish"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" ${runtime})
  endif()
endif()

# find_package(exiv2_wrapper CONFIG)
install(
  EXPORT exiv2_wrapperTargets
  NAMESPACE exiv2_wrapper::
  DESTINATION "${package_folder}" ${development})
set(EXIV2_WRAPPER_MINGW_RUNTIME_NAMES "")
foreach(library IN LISTS EXIV2_WRAPPER_MINGW_RUNTIME)
  cmake_path(GET library FILENAME name)
  list(APPEND EXIV2_WRAPPER_MINGW_RUNTIME_NAMES "${name}")
endforeach()
list(JOIN EXIV2_WRAPPER_MINGW_RUNTIME_NAMES " " EXIV2_WRAPPER_MINGW_RUNTIME_NAMES)
list(JOIN EXIV2_WRAPPER_STAND_INS " " EXIV2_WRAPPER_STAND_IN_NAMES)
configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/exiv2_wrapperConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/exiv2_wrapperConfig.cmake"
  INSTALL_DESTINATION "${package_folder}"
  PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/exiv2_wrapperConfigVersion.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(
  FILES "${PROJECT_BINARY_DIR}/exiv2_wrapperConfig.cmake"
        "${PROJECT_BINARY_DIR}/exiv2_wrapperConfigVersion.cmake"
  DESTINATION "${package_folder}" ${development})

# pkg-config knows the folder of the file that it reads. Folders outside the prefix don't move.
file(RELATIVE_PATH to_prefix "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" EXIV2_WRAPPER_PC_PREFIX "\${pcfiledir}/${to_prefix}")
foreach(kind LIBDIR INCLUDEDIR)
  set(folder "${CMAKE_INSTALL_${kind}}")
  cmake_path(ABSOLUTE_PATH folder BASE_DIRECTORY "\${prefix}" OUTPUT_VARIABLE EXIV2_WRAPPER_PC_${kind})
endforeach()
configure_file("${PROJECT_SOURCE_DIR}/cmake/exiv2_wrapper.pc.in"
               "${PROJECT_BINARY_DIR}/exiv2_wrapper.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/exiv2_wrapper.pc"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" ${development})

# The archives that cpack makes. The one for Windows is what a user unpacks and starts.
if(PROJECT_IS_TOP_LEVEL)
  if(WIN32)
    include(package/WindowsPackage)
    set(CPACK_GENERATOR ZIP)
    set(system windows-x64)
  else()
    set(CPACK_GENERATOR TGZ)
    set(system "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}")
  endif()
  set(CPACK_PACKAGE_FILE_NAME "exiv2_wrapper-${PROJECT_VERSION}-${system}")
  set(CPACK_STRIP_FILES ON)
  set(CPACK_VERBATIM_VARIABLES ON)
  include(CPack)
endif()

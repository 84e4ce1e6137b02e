# 64-bit Windows by MinGW-w64, its programs run through Wine. The posix thread model brings
# std::thread and std::future; the C++ runtime is shared so that exceptions cross the DLL boundary.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Packages come from MinGW's own folder or from where CMAKE_PREFIX_PATH says, never from this machine.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Windows shares a page with every process, always at the same address. Wine can't start a program
# whose heap happens to lie there, which random addresses bring about once in some thousand starts.
execute_process(COMMAND setarch --addr-no-randomize true
                RESULT_VARIABLE setarch_result OUTPUT_QUIET ERROR_QUIET)
set(fixed_addresses)
if(setarch_result EQUAL 0)
  set(fixed_addresses setarch --addr-no-randomize)
endif()

find_program(EXIV2_WRAPPER_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(EXIV2_WRAPPER_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR
      ${fixed_addresses} env WINEDEBUG=-all "WINEPREFIX=${CMAKE_BINARY_DIR}/wine"
      "${EXIV2_WRAPPER_WINE}")
endif()

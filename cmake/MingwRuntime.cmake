# EXIV2_WRAPPER_MINGW_RUNTIME: the DLLs of MinGW's C++ runtime, in full. They lie beside the library
# wherever it goes. Empty for other compilers.
set(EXIV2_WRAPPER_MINGW_RUNTIME "")
if(MINGW)
  # Clang uses the same runtime, but doesn't know where it lies.
  set(gcc "${CMAKE_CXX_COMPILER}")
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(gcc x86_64-w64-mingw32-g++-posix)
  endif()
  cmake_path(GET CMAKE_CXX_COMPILER PARENT_PATH compiler_folder)
  foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND "${gcc}" -print-file-name=${library}
                    OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${found}")
      set(found "${compiler_folder}/${library}")
    endif()
    file(REAL_PATH "${found}" found)
    list(APPEND EXIV2_WRAPPER_MINGW_RUNTIME "${found}")
  endforeach()
endif()

# EXIV2_WRAPPER_LINK_BY_LLD: MinGW's programs are linked by LLD, which Clang starts, since GCC starts
# none but its own for Windows: a tenth of a second a program of tests for four. What is shipped is
# linked by GCC.
if(EXIV2_WRAPPER_LINK_BY_LLD)
  execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-libgcc-file-name
                  OUTPUT_VARIABLE gcc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  cmake_path(GET gcc PARENT_PATH gcc)
  set(linker clang++ --target=x86_64-w64-windows-gnu --sysroot=/usr/x86_64-w64-mingw32 -fuse-ld=lld
             "-L${gcc}")
  list(JOIN linker " " linker)
  foreach(rule CMAKE_CXX_LINK_EXECUTABLE CMAKE_CXX_CREATE_SHARED_LIBRARY)
    string(REPLACE "<CMAKE_CXX_COMPILER>" "${linker}" ${rule} "${${rule}} -lpthread")
  endforeach()
endif()

# For photoinfo's folder and the tests'. EXIV2_WRAPPER_LINK_BY_LLD: programs for Windows are linked by LLD,
# which takes a tenth of a second for four of GNU ld. Clang starts it, since GCC starts none but its own
# for Windows. The package's build is linked as ever.
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

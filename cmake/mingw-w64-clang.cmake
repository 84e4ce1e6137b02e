# The same Windows build by Clang: another pair of eyes on code that MSVC is to compile. It takes the
# C++ library, the start-up code and the resource compiler of MinGW-w64's GCC, whose folders it
# doesn't find by itself.
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")

execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-libgcc-file-name
                OUTPUT_VARIABLE libgcc OUTPUT_STRIP_TRAILING_WHITESPACE)
cmake_path(GET libgcc PARENT_PATH gcc)

set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-windows-gnu)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-windows-gnu)
set(CMAKE_OBJDUMP x86_64-w64-mingw32-objdump)
set(CMAKE_SYSROOT /usr/x86_64-w64-mingw32)
set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES "${gcc}/include/c++"
                                           "${gcc}/include/c++/x86_64-w64-mingw32")
# That library keeps its thread-local variables in GCC's way.
set(CMAKE_CXX_FLAGS_INIT -femulated-tls)
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -L${gcc} -lpthread")
endforeach()

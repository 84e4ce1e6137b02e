# What a build for Windows by GCC can leave to Clang, each for the folder that calls it and those below.
if(EXIV2_WRAPPER_LINK_BY_LLD OR EXIV2_WRAPPER_TESTS_BY_CLANG)
  execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-libgcc-file-name
                  OUTPUT_VARIABLE mingw_gcc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  cmake_path(GET mingw_gcc PARENT_PATH mingw_gcc)
  set(mingw_clang "clang++ --target=x86_64-w64-windows-gnu --sysroot=/usr/x86_64-w64-mingw32")
endif()

# With EXIV2_WRAPPER_LINK_BY_LLD programs are linked by LLD, which takes a tenth of a second for four of
# GNU ld. Clang starts it, since GCC starts none but its own for Windows. The package's build is linked
# as ever.
macro(exiv2_wrapper_link_by_lld)
  if(EXIV2_WRAPPER_LINK_BY_LLD)
    foreach(rule CMAKE_CXX_LINK_EXECUTABLE CMAKE_CXX_CREATE_SHARED_LIBRARY)
      string(REPLACE "<CMAKE_CXX_COMPILER>" "${mingw_clang} -fuse-ld=lld -L${mingw_gcc}" ${rule}
                     "${${rule}} -lpthread")
    endforeach()
  endif()
endmacro()

# With EXIV2_WRAPPER_TESTS_BY_CLANG sources are compiled by Clang, in half the time. For tests: what they
# test is GCC's work. Its C++ library has its thread-local variables in GCC's own way.
macro(exiv2_wrapper_compile_by_clang)
  if(EXIV2_WRAPPER_TESTS_BY_CLANG)
    set(headers "-isystem ${mingw_gcc}/include/c++ -isystem ${mingw_gcc}/include/c++/x86_64-w64-mingw32")
    string(REPLACE "<CMAKE_CXX_COMPILER>"
                   "${mingw_clang} ${headers} -femulated-tls -Wno-unknown-warning-option"
                   CMAKE_CXX_COMPILE_OBJECT "${CMAKE_CXX_COMPILE_OBJECT}")
    # As CMake has them for Clang.
    set(CMAKE_PCH_EXTENSION .pch)
    set(CMAKE_PCH_PROLOGUE "#pragma clang system_header")
    set(CMAKE_CXX_COMPILE_OPTIONS_INSTANTIATE_TEMPLATES_PCH -fpch-instantiate-templates)
    set(CMAKE_CXX_COMPILE_OPTIONS_USE_PCH -Xclang -include-pch -Xclang <PCH_FILE> -Xclang -include
                                          -Xclang <PCH_HEADER>)
    set(CMAKE_CXX_COMPILE_OPTIONS_CREATE_PCH -Xclang -emit-pch -Xclang -include -Xclang
                                             <PCH_HEADER> -x c++-header)
  endif()
endmacro()

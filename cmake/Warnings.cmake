# exiv2_wrapper_warnings: how our own code is compiled. Linked privately by every target of ours,
# never by a host's.
add_library(exiv2_wrapper_warnings INTERFACE)

# <windows.h> without the macros min and max, the rarely used headers and the narrow calls.
if(WIN32)
  target_compile_definitions(exiv2_wrapper_warnings INTERFACE UNICODE _UNICODE NOMINMAX
                                                              WIN32_LEAN_AND_MEAN)
endif()

if(MSVC)
  target_compile_options(exiv2_wrapper_warnings INTERFACE /W4 /permissive- /utf-8 /Zc:__cplusplus)
  # Standard functions, such as std::getenv, that this compiler calls deprecated.
  target_compile_definitions(exiv2_wrapper_warnings INTERFACE _CRT_SECURE_NO_WARNINGS)
  if(EXIV2_WRAPPER_WARNINGS_AS_ERRORS)
    target_compile_options(exiv2_wrapper_warnings INTERFACE /WX)
  endif()
else()
  target_compile_options(
    exiv2_wrapper_warnings
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wconversion
              -Wsign-conversion
              -Wshadow
              -Wold-style-cast
              -Wnon-virtual-dtor
              -Woverloaded-virtual
              # GCC 12 sees overlapping copies where a text is put before a temporary string.
              $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
  if(EXIV2_WRAPPER_WARNINGS_AS_ERRORS)
    target_compile_options(exiv2_wrapper_warnings INTERFACE -Werror)
  endif()
endif()

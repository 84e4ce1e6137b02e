# cmake -DHEADER=<file> -P check_header_includes.cmake
# Fails when the header includes anything but the standard library's headers, whose names are one
# word without a dot.
file(STRINGS "${HEADER}" includes REGEX "^[ \t]*#[ \t]*include")
if(NOT includes)
  message(FATAL_ERROR "${HEADER} includes nothing; is it the right file?")
endif()
foreach(line IN LISTS includes)
  if(NOT line MATCHES "^#include <[a-z_0-9]+>$")
    message(FATAL_ERROR "${HEADER} includes something that isn't standard C++:\n  ${line}")
  endif()
endforeach()

# CLI11 and nlohmann-json consist of headers only and serve every platform, so a cross build takes
# them from the building machine: through a folder of links, since that machine's own system
# headers beside them must not be seen by another platform's compiler. Where they aren't installed,
# they are fetched.
include(FetchContent)

# exiv2_wrapper_header_package(TARGET FOLDER PROBE DEBIAN_PACKAGE REPOSITORY TAG): an interface library
# with the headers FOLDER/..., of which FOLDER/PROBE is one. Its property EXIV2_WRAPPER_TERMS is a file
# with the package's licence.
function(exiv2_wrapper_header_package target folder probe debian_package repository tag)
  find_path(${target}_HEADERS "${folder}/${probe}" PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
  set(headers "${${target}_HEADERS}")
  set(terms "/usr/share/doc/${debian_package}/copyright")
  if(NOT headers)
    FetchContent_Declare(${target} GIT_REPOSITORY "${repository}" GIT_TAG "${tag}" GIT_SHALLOW ON)
    FetchContent_Populate(${target})
    set(headers "${${target}_SOURCE_DIR}/include")
    file(GLOB terms "${${target}_SOURCE_DIR}/LICENSE*")
  endif()
  set(staged "${PROJECT_BINARY_DIR}/header_packages/${target}")
  file(MAKE_DIRECTORY "${staged}")
  file(CREATE_LINK "${headers}/${folder}" "${staged}/${folder}" COPY_ON_ERROR SYMBOLIC)
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE "${staged}")
  set_target_properties(${target} PROPERTIES EXIV2_WRAPPER_TERMS "${terms}")
endfunction()

if(NOT TARGET exiv2_wrapper_json)
  exiv2_wrapper_header_package(exiv2_wrapper_json nlohmann json.hpp nlohmann-json3-dev
                               https://github.com/nlohmann/json.git v3.11.2)
  exiv2_wrapper_header_package(exiv2_wrapper_cli11 CLI CLI.hpp libcli11-dev
                               https://github.com/CLIUtils/CLI11.git v2.1.2)
endif()

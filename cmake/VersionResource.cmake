# exiv2_wrapper_add_version_resource(TARGET DESCRIPTION): what the properties of the target's file show
# in the Explorer, and what an installer compares. Other platforms have nothing of the kind.
if(WIN32)
  enable_language(RC)
endif()

# An object library of its own, for the resource compiler doesn't understand a target's other options.
function(exiv2_wrapper_add_version_resource target description)
  if(NOT WIN32)
    return()
  endif()
  set(draft "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc.in")
  set(resource "${CMAKE_CURRENT_BINARY_DIR}/$<CONFIG>/${target}.rc")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/version.rc.in" "${draft}" @ONLY)
  file(GENERATE OUTPUT "${resource}" INPUT "${draft}" TARGET ${target})
  add_library(${target}_version OBJECT "${resource}")
  target_sources(${target} PRIVATE $<TARGET_OBJECTS:${target}_version>)
endfunction()

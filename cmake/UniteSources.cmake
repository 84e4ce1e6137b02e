# exiv2_wrapper_unite_sources(TARGET [folder...]): compiles the sources of a program or library of ours
# as one, or those of each of these folders as one and others alone, where EXIV2_WRAPPER_UNITE_SOURCES
# says so: most of them spend their time on the same large headers and templates. Names in unnamed
# namespaces are therefore unique within a target or folder. Sources for one platform stay alone, since
# the system's headers are full of macros, unless a generator expression picks them. Call it when the target has all of its sources.
function(exiv2_wrapper_unite_sources target)
  get_target_property(sources ${target} SOURCES)
  set(mode BATCH)
  if(ARGN)
    set(mode GROUP)
    foreach(source IN LISTS sources)
      cmake_path(GET source PARENT_PATH folder)
      cmake_path(GET folder FILENAME folder)
      if(folder IN_LIST ARGN)
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder})
      endif()
    endforeach()
  endif()
  list(FILTER sources INCLUDE REGEX "_(posix|win32|linux)(_test)?[.]cpp$")
  set_source_files_properties(${sources} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  set_target_properties(
    ${target} PROPERTIES UNITY_BUILD ${EXIV2_WRAPPER_UNITE_SOURCES} UNITY_BUILD_MODE ${mode}
                         UNITY_BUILD_BATCH_SIZE 0)
endfunction()

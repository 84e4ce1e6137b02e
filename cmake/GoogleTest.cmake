# GoogleTest from its sources, so that it is built with the same flags as its users: sanitizers and
# the Windows build need that. Debian installs the sources; where they aren't, they are fetched.
if(NOT TARGET gtest)
  find_path(EXIV2_WRAPPER_GOOGLETEST_SOURCES googletest/CMakeLists.txt PATHS /usr/src/googletest
            NO_CMAKE_FIND_ROOT_PATH)
  set(sources "${EXIV2_WRAPPER_GOOGLETEST_SOURCES}")
  if(NOT sources)
    include(FetchContent)
    FetchContent_Declare(googletest GIT_REPOSITORY https://github.com/google/googletest.git
                         GIT_TAG release-1.12.1 GIT_SHALLOW ON)
    FetchContent_Populate(googletest)
    set(sources "${googletest_SOURCE_DIR}")
  endif()
  set(INSTALL_GTEST OFF)
  set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
  add_subdirectory("${sources}" googletest EXCLUDE_FROM_ALL SYSTEM)
endif()

# Included by libexiv2's own project when scripts/libexiv2.sh compiles its sources several at a time: these
# define names that others define too.
set(alone ini.cpp nikonmn_int.cpp pentaxmn_int.cpp)
list(TRANSFORM alone PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/src/")
cmake_language(DEFER CALL set_source_files_properties ${alone} DIRECTORY src PROPERTIES
               SKIP_UNITY_BUILD_INCLUSION ON)

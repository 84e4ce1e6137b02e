# cmake -DLIBRARY=<file> -DLIST_SYMBOLS=<command> -DDEMANGLE=<c++filt> -DEXPECTED=<list>
#       -DWORK=<folder> -P check_exported_symbols.cmake
# Compares what the shared library exports with a list: one demangled symbol a line, sorted, with
# the names shortened as below.
execute_process(COMMAND ${LIST_SYMBOLS} "${LIBRARY}" OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)

# nm prints "address type symbol", objdump a table "[ 0] symbol" or "[ 0] +base[ 1] number symbol"
# behind a title.
string(REGEX REPLACE "^.*\\[Ordinal/Name Pointer\\] Table[^\n]*\n" "" output "${output}")
string(REGEX MATCHALL "(\n|^)([0-9a-f]+ [A-Za-z]|[ \t]*\\[ *[0-9]+\\][^\n]*) +[^ \n]+" lines "${output}")
set(mangled "")
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^.* " "" symbol "${line}")
  string(APPEND mangled "${symbol}\n")
endforeach()
file(WRITE "${WORK}/exported_symbols.mangled" "${mangled}")
execute_process(COMMAND "${DEMANGLE}" INPUT_FILE "${WORK}/exported_symbols.mangled"
                OUTPUT_VARIABLE found COMMAND_ERROR_IS_FATAL ANY)

# The same text for both platforms, whose 64-bit integers are of different types, and short names
# for the standard library's long ones.
string(REPLACE "std::__cxx11::" "std::" found "${found}")
string(REPLACE "std::filesystem::__cxx11::" "std::filesystem::" found "${found}")
string(REPLACE "[abi:cxx11]" "" found "${found}")
string(REPLACE "std::basic_string<char, std::char_traits<char>, std::allocator<char> >"
               "std::string" found "${found}")
string(REPLACE "std::string >" "std::string>" found "${found}")
string(REPLACE "long long" "long" found "${found}")
string(STRIP "${found}" found)
string(REPLACE "\n" ";" found "${found}")
list(REMOVE_DUPLICATES found)
list(SORT found)

file(STRINGS "${EXPECTED}" expected)
set(missing ${expected})
list(REMOVE_ITEM missing ${found})
set(unexpected ${found})
list(REMOVE_ITEM unexpected ${expected})
if(missing OR unexpected)
  list(JOIN missing "\n  " missing)
  list(JOIN unexpected "\n  " unexpected)
  message(
    FATAL_ERROR
      "The exports of ${LIBRARY} differ from ${EXPECTED}.\n"
      "Listed, but not exported:\n  ${missing}\n" "Exported, but not listed:\n  ${unexpected}\n")
endif()
list(LENGTH found count)
message(STATUS "${count} exported symbols, as listed")

# Writes the .def file of a DLL from its export list and its object files.
# cmake -DLIBRARY=zan.dll -DLIST=... -DNM=... -DDEF=... "-DOBJECTS=a;b" -P make_def.cmake
#
# The list has the mangled names of Linux. On Windows, size_t and int64_t are mangled as 'y' and 'x' instead of 'm' and 'l',
# so names are compared with these letters replaced.
cmake_minimum_required(VERSION 3.25)
function(linux_name out symbol)
  string(REPLACE "y" "m" symbol "${symbol}")
  string(REPLACE "x" "l" symbol "${symbol}")
  set(${out} "${symbol}" PARENT_SCOPE)
endfunction()

execute_process(COMMAND "${NM}" --defined-only --extern-only --format=posix ${OBJECTS} OUTPUT_VARIABLE output
                COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+ [A-Z] [^\n]*" lines "${output}")
foreach(line IN LISTS lines)
  string(REGEX MATCH "^([^ ]+) ([A-Z])" line "${line}")
  linux_name(key "${CMAKE_MATCH_1}")
  list(APPEND names_${key} "${CMAKE_MATCH_1}")
  set(kind_${CMAKE_MATCH_1} ${CMAKE_MATCH_2})
endforeach()

file(STRINGS "${LIST}" listed REGEX "^[^#]")
set(exports "")
foreach(symbol IN LISTS listed)
  linux_name(key "${symbol}")
  list(REMOVE_DUPLICATES names_${key})
  list(LENGTH names_${key} count)
  if(NOT count EQUAL 1)
    message(FATAL_ERROR "${LIST}: for '${symbol}' the object files have '${names_${key}}'")
  endif()
  set(name ${names_${key}})
  string(APPEND exports "  ${name}")
  if(NOT kind_${name} STREQUAL "T")
    string(APPEND exports " DATA")
  endif()
  string(APPEND exports "\n")
endforeach()
file(WRITE "${DEF}" "LIBRARY ${LIBRARY}\nEXPORTS\n${exports}")

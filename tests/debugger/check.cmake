# Compares what gdb prints for the records in values.cpp with shown.txt. The program need not run for that.
# cmake -DGDB=... -DPROGRAM=... -DSCRIPT=... -P check.cmake
foreach(value IN ITEMS " fixed16" " fixed24" " plain" " ratios" " pt" " lpt" " fpt" " rects" " lrect" " frects" " drect"
                       " v2" " v3" " v4" " kinds" " solid" " sameSolid" "/r frects[0]")
  list(APPEND commands -ex "print${value}")
endforeach()
execute_process(
  COMMAND "${GDB}" -nx -batch -x "${SCRIPT}" ${commands} "${PROGRAM}"
  OUTPUT_VARIABLE shown
  ERROR_VARIABLE errors COMMAND_ERROR_IS_FATAL ANY)
file(READ "${CMAKE_CURRENT_LIST_DIR}/shown.txt" expected)
if(NOT shown STREQUAL expected)
  message(FATAL_ERROR "gdb printed\n${shown}\nexpected\n${expected}${errors}")
endif()

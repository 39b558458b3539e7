# What gdb shows of the values before the program runs, compared with what it should.
# cmake -DGDB=... -DPROGRAM=... -DSCRIPT=... -P check.cmake
execute_process(
  COMMAND "${GDB}" -nx -batch -x "${SCRIPT}" -x "${CMAKE_CURRENT_LIST_DIR}/show.gdb" "${PROGRAM}"
  OUTPUT_VARIABLE shown
  ERROR_VARIABLE errors COMMAND_ERROR_IS_FATAL ANY)
file(READ "${CMAKE_CURRENT_LIST_DIR}/shown.txt" expected)
if(NOT shown STREQUAL expected)
  message(FATAL_ERROR "gdb showed\n${shown}\nand not\n${expected}${errors}")
endif()

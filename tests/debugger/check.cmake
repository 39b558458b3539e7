# Compares what gdb prints for the records in values.cpp, and for the outlines in layers.cpp, with shown.txt. The first
# program need not run for that, the second one must.
# cmake -DGDB=... -DVALUES=... -DLAYERS=... -DSCRIPT=... -P check.cmake
function(gdb result)
  execute_process(COMMAND "${GDB}" -nx -batch -x "${SCRIPT}" ${ARGN} OUTPUT_VARIABLE shown COMMAND_ERROR_IS_FATAL ANY)
  set(${result} "${shown}" PARENT_SCOPE)
endfunction()

foreach(value IN ITEMS " fixed16" " fixed24" " plain" " ratios" " pt" " lpt" " fpt" " rects" " lrect" " frects" " drect"
                       " v2" " v3" " v4" " kinds" " solid" " sameSolid" "/r frects[0]")
  list(APPEND commands -ex "print${value}")
endforeach()
gdb(values ${commands} "${VALUES}")
gdb(layers -ex "break pointsOf" -ex run -ex up -ex "print flat" -ex "print solid" -ex "print reference" -ex "print untransformed"
    "${LAYERS}")
# Without what gdb says about the run itself.
string(REGEX REPLACE "^.*\n(\\$1 = )" "\\1" layers "${layers}")
file(READ "${CMAKE_CURRENT_LIST_DIR}/shown.txt" expected)
if(NOT "${values}${layers}" STREQUAL expected)
  message(FATAL_ERROR "gdb printed\n${values}${layers}\nexpected\n${expected}")
endif()

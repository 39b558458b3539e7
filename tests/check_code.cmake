# Looks into a built library for what must never be in it: fused or x87 arithmetic, and code that runs when it is loaded.
# cmake -DLIBRARY=... -DOBJDUMP=... -DREADELF=... -P check_code.cmake
execute_process(COMMAND "${OBJDUMP}" -d --no-show-raw-insn "${LIBRARY}" OUTPUT_VARIABLE code RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "${OBJDUMP} failed on ${LIBRARY}")
endif()
string(REGEX MATCHALL "[\t ](mulsd|ret)" ordinary "${code}")
list(LENGTH ordinary count)
if(count LESS 10)
  message(FATAL_ERROR "the disassembly of ${LIBRARY} was not understood")
endif()
string(REGEX MATCH "\n[^\n]*[\t ](vfn?m(add|sub)[a-z0-9]*|f(ld|st|add|sub|mul|div|ild|ist|sqrt|com|ucom|sin|cos|chs|abs|xch)[a-z0-9]*)[\t ][^\n]*"
             found "${code}")
if(found)
  message(FATAL_ERROR "fused or x87 arithmetic in ${LIBRARY}:${found}")
endif()

execute_process(COMMAND "${READELF}" -SW "${LIBRARY}" OUTPUT_VARIABLE sections COMMAND_ERROR_IS_FATAL ANY)
# One pointer: the compiler's own frame_dummy.
if(NOT sections MATCHES "\\.init_array +INIT_ARRAY +[0-9a-f]+ +[0-9a-f]+ +000008 ")
  message(FATAL_ERROR "${LIBRARY} runs code of its own when it is loaded:\n${sections}")
endif()
message(STATUS "no fused or x87 arithmetic, nothing runs at load")

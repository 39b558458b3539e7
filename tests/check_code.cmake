# Disassembles a library and fails if it contains fused or x87 arithmetic, code that runs when it is loaded, or, on Windows,
# aligned 32-byte moves to or from memory; or if the object file of a kernel defines an inline function: the linker keeps one
# copy of it, which could be the one compiled for AVX2.
# cmake -DFILES=... -DKERNELS=... -DOBJDUMP=... -DREADELF=... -P check_code.cmake
# cmake -DFILES=... -DARITHMETIC_ONLY=ON -DOBJDUMP=... -P check_code.cmake
# FILES is the library, on Windows its object files; KERNELS are the object files compiled for one instruction set. The
# second form is for programs, and for what is linked for Windows, which contains code of the C runtime.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND "${OBJDUMP}" -d --no-show-raw-insn ${FILES} OUTPUT_VARIABLE code COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[\t ](mulsd|ret)" ordinary "${code}")
list(LENGTH ordinary count)
if(count LESS 10)
  message(FATAL_ERROR "the disassembly of ${FILES} has an unexpected format")
endif()
string(REGEX MATCH "\n[^\n]*[\t ](vfn?m(add|sub)[a-z0-9]*|f(ld|st|add|sub|mul|div|ild|ist|sqrt|com|ucom|sin|cos|chs|abs|xch)[a-z0-9]*)[\t ][^\n]*"
             found "${code}")
if(found)
  message(FATAL_ERROR "fused or x87 arithmetic in ${FILES}:${found}")
endif()
if(ARITHMETIC_ONLY)
  message(STATUS "no fused or x87 arithmetic")
  return()
endif()

foreach(kernel IN LISTS KERNELS)
  execute_process(COMMAND "${OBJDUMP}" -h "${kernel}" OUTPUT_VARIABLE sections COMMAND_ERROR_IS_FATAL ANY)
  # An inline function has a section of its own, of which the linker keeps one copy. That may be this one, although other
  # code calls it on processors without the instruction set.
  if(NOT sections MATCHES "\\.text" OR sections MATCHES "\\.text[.$]_")
    message(FATAL_ERROR "${kernel} is no object file, or defines an inline function:\n${sections}")
  endif()
endforeach()

if(FILES MATCHES "\\.obj")
  # Windows aligns the stack to 16 bytes, and GCC does not align it further for the 32-byte values that it spills.
  string(REGEX MATCH "\n[^\n]*vmov(ap[sd]|dqa)[^\n]*(ymm[^\n]*\\(|\\([^\n]*ymm)[^\n]*" found "${code}")
  if(found)
    message(FATAL_ERROR "an aligned move of 32 bytes to or from memory:${found}")
  endif()
  execute_process(COMMAND "${OBJDUMP}" -h ${FILES} OUTPUT_VARIABLE sections COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCH "\\.ctors" runs "${sections}")
else()
  execute_process(COMMAND "${READELF}" -SW "${FILES}" OUTPUT_VARIABLE sections COMMAND_ERROR_IS_FATAL ANY)
  # One pointer of 8 bytes: the compiler's own frame_dummy.
  if(NOT sections MATCHES "\\.init_array +INIT_ARRAY +[0-9a-f]+ +[0-9a-f]+ +000008 ")
    set(runs TRUE)
  endif()
endif()
if(runs)
  message(FATAL_ERROR "${FILES}: code runs when it is loaded:\n${sections}")
endif()
message(STATUS "no fused or x87 arithmetic, nothing runs at load")

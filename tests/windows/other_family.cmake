# Builds a host with the tools of the other family and runs it.
# cmake -DSOURCE=... -DBIN=folder of the DLLs -DLIB=folder of the import libraries "-DHEADERS=standard C++ headers"
#       -DCLANG=... -DLINKER=... -DRUN=... -P other_family.cmake
cmake_minimum_required(VERSION 3.25)
list(TRANSFORM HEADERS PREPEND "-isystem")
execute_process(
  COMMAND "${CLANG}" --target=x86_64-pc-windows-msvc -std=c++17 -O1 -ffreestanding -fno-exceptions -Wall -Wextra -Wpedantic
          -Werror -D__STRICT_ANSI__ -nostdinc++ ${HEADERS} "-I${SOURCE}" "-I${SOURCE}/include" -c
          "${SOURCE}/tests/windows/other_family.cpp" -o "${BIN}/other_family.obj"
  COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${LINKER}" /nologo /nodefaultlib /subsystem:console /entry:entry "${BIN}/other_family.obj"
                        "${LIB}/zan.lib" "${LIB}/zan_platform.lib" "/out:${BIN}/other_family.exe"
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${RUN} "${BIN}/other_family.exe" RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "check ${failed} of other_family.cpp failed")
endif()

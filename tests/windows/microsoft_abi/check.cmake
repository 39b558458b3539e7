# Builds host.cpp and, in C, layer_check.c and examples/c_host/layer.c for the Microsoft ABI with the files of the unpacked
# zip, and runs them.
# cmake -DPREFIX=the unpacked zip -DWORK=... -DGENERATOR=... "-DHEADERS=standard C++ headers" -DCLANG=... -DLINKER=... -DRUN=... -P check.cmake
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND "${CMAKE_COMMAND}" --fresh -S "${CMAKE_CURRENT_LIST_DIR}" -B "${WORK}" -G "${GENERATOR}"
                        "-DCMAKE_PREFIX_PATH=${PREFIX}" COMMAND_ERROR_IS_FATAL ANY)
file(READ "${WORK}/libraries.txt" libraries)
list(TRANSFORM HEADERS PREPEND "-isystem")
execute_process(
  COMMAND "${CLANG}" --target=x86_64-pc-windows-msvc -std=c++17 -O1 -ffreestanding -fno-exceptions -Wall -Wextra -Wpedantic
          -Werror -D__STRICT_ANSI__ -nostdinc++ ${HEADERS} "-I${PREFIX}/include" -c "${CMAKE_CURRENT_LIST_DIR}/host.cpp" -o
          "${WORK}/host.obj"
  COMMAND_ERROR_IS_FATAL ANY)
set(c_host "${CMAKE_CURRENT_LIST_DIR}/../../../examples/c_host")
execute_process(
  COMMAND "${CLANG}" -xc --target=x86_64-pc-windows-msvc -std=c11 -O1 -ffreestanding -Wall -Wextra -Wpedantic -Werror
          "-I${PREFIX}/include" "-I${c_host}" -c "${CMAKE_CURRENT_LIST_DIR}/layer_check.c" "${c_host}/layer.c"
  WORKING_DIRECTORY "${WORK}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${LINKER}" /nologo /nodefaultlib /subsystem:console /entry:entry "${WORK}/host.obj"
                        "${WORK}/layer_check.o" "${WORK}/layer.o" ${libraries}
                        "/out:${WORK}/host.exe" COMMAND_ERROR_IS_FATAL ANY)
set(ENV{WINEPATH} "${PREFIX}/bin")
execute_process(COMMAND ${RUN} "${WORK}/host.exe" RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "check ${failed} of host.cpp failed")
endif()

# Makes zan-VERSION-windows-x86_64.zip from a build for Windows, in the build's folder "package".
# cmake -DBUILD=... -DVERSION=... -P make_zip.cmake
cmake_minimum_required(VERSION 3.25)
set(name "zan-${VERSION}-windows-x86_64")
file(REMOVE_RECURSE "${BUILD}/package")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${BUILD}/package/${name}" --strip
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
# The files that the documentation promises.
foreach(file IN ITEMS bin/zan.dll bin/zan_platform.dll bin/zan-selfcheck.exe bin/libstdc++-6.dll bin/libgcc_s_seh-1.dll bin/libwinpthread-1.dll
                      lib/libzan.dll.a lib/zan.lib lib/zan.def lib/cmake/zan/zan-config.cmake include/zan/zan.h
                      docs/windows.md README.md examples/own_platform/host_platform.cpp licences/gcc.txt licences/winpthreads.txt LICENSE CHANGELOG.md)
  if(NOT EXISTS "${BUILD}/package/${name}/${file}")
    message(FATAL_ERROR "the package lacks ${file}")
  endif()
endforeach()
execute_process(COMMAND "${CMAKE_COMMAND}" -E tar cf "${name}.zip" --format=zip "${name}"
                WORKING_DIRECTORY "${BUILD}/package" COMMAND_ERROR_IS_FATAL ANY)
message(STATUS "${BUILD}/package/${name}.zip")

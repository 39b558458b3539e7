# Goes the ways from zan to a running program, each beginning where a host programmer begins.
# cmake -DWAY=... -DBUILD=build directory of zan -DCXX=... -DGENERATOR=... [-DRUN=what runs the program] -P check.cmake
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH source)
cmake_path(GET source PARENT_PATH source)
set(work "${BUILD}/stranger")
set(prefix "${work}/moved")

# Configures afresh and builds; the objects are kept, so that zan's sources are not compiled anew each time. For the same
# reason the ways that compile them share a directory.
set(directory "${work}/${WAY}")
if(WAY MATCHES "add_subdirectory|own_platform")
  set(directory "${work}/sources")
endif()
function(build_project from)
  execute_process(COMMAND "${CMAKE_COMMAND}" --fresh -S "${from}" -B "${directory}" -G "${GENERATOR}"
                          "-DCMAKE_CXX_COMPILER=${CXX}" ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND "${CMAKE_COMMAND}" --build "${directory}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(run_program program expected)
  execute_process(COMMAND ${RUN} "${program}" OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "\r" "" output "${output}")
  if(NOT output STREQUAL expected)
    message(FATAL_ERROR "${program} said\n${output}\nand not\n${expected}")
  endif()
endfunction()

set(stranger_says "kind 1\nreport 0x110014: the library has already been started.\nresult 12\n")

if(WAY STREQUAL "install")
  # An installation that has been moved is as good as one that has not.
  file(REMOVE_RECURSE "${work}/prefix" "${prefix}")
  execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${work}/prefix" COMMAND_ERROR_IS_FATAL ANY)
  file(RENAME "${work}/prefix" "${prefix}")

elseif(WAY STREQUAL "find_package")
  build_project("${source}/tests/stranger" "-DCMAKE_PREFIX_PATH=${prefix}")
  run_program("${directory}/stranger" "${stranger_says}")

elseif(WAY STREQUAL "other_versions")
  foreach(version IN ITEMS 17 19 18.999)
    find_package(zan ${version} CONFIG QUIET PATHS "${prefix}" NO_DEFAULT_PATH)
    if(zan_FOUND OR NOT zan_CONSIDERED_VERSIONS MATCHES "^18\\.")
      message(FATAL_ERROR "zan ${version}: found is '${zan_FOUND}', looked at '${zan_CONSIDERED_VERSIONS}'")
    endif()
  endforeach()

elseif(WAY STREQUAL "pkg_config")
  file(GLOB_RECURSE pc "${prefix}/*/zan.pc")
  cmake_path(GET pc PARENT_PATH pc_dir)
  cmake_path(GET pc_dir PARENT_PATH lib_dir)
  set(ENV{PKG_CONFIG_PATH} "${pc_dir}")
  set(ENV{LD_LIBRARY_PATH} "${lib_dir}")
  file(MAKE_DIRECTORY "${directory}")
  execute_process(
    COMMAND sh -ec "$0 -std=c++17 stranger.cpp $(pkg-config --cflags --libs zan zan-platform) -o $1" "${CXX}"
            "${directory}/stranger" WORKING_DIRECTORY "${source}/tests/stranger" COMMAND_ERROR_IS_FATAL ANY)
  run_program("${directory}/stranger" "${stranger_says}")

elseif(WAY STREQUAL "add_subdirectory")
  build_project("${source}/tests/stranger" "-DZAN_SOURCE=${source}"
                "-DCMAKE_PROJECT_stranger_INCLUDE=${source}/tests/stranger/untouched.cmake")
  run_program("${directory}/stranger" "${stranger_says}")

elseif(WAY STREQUAL "own_platform")
  build_project("${source}/examples/own_platform")
  run_program("${directory}/host" "host received report 0x110014, severity 8: host's text for platform error 12\n")

elseif(WAY STREQUAL "zip")
  # The package for Windows: with the toolchain that made it, and found by the other tool family's build.
  execute_process(COMMAND "${CMAKE_COMMAND}" "-DBUILD=${BUILD}" "-DVERSION=${VERSION}" -P "${source}/cmake/make_zip.cmake"
                  COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE "${prefix}")
  file(ARCHIVE_EXTRACT INPUT "${BUILD}/package/zan-${VERSION}-windows-x86_64.zip" DESTINATION "${prefix}")
  set(prefix "${prefix}/zan-${VERSION}-windows-x86_64")
  build_project("${source}/tests/stranger" "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
  set(ENV{WINEPATH} "${prefix}/bin")
  run_program("${work}/${WAY}/stranger.exe" "${stranger_says}")

else()
  message(FATAL_ERROR "no such way: '${WAY}'")
endif()

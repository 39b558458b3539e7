# Builds projects that use zan, each in one of the documented cases, and runs their programs.
# cmake -DCASE=... -DBUILD=zan's build directory -DCXX=... -DGENERATOR=... [-DRUN=emulator] -P check.cmake
# The case zip also takes -DVERSION=... and -DTOOLCHAIN=...
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH source)
cmake_path(GET source PARENT_PATH source)
set(work "${BUILD}/consumer")
set(prefix "${work}/moved")

# Configures from scratch and builds. Objects are kept, and the cases that compile zan's sources share a directory, so that
# zan is compiled only once.
set(directory "${work}/${CASE}")
if(CASE MATCHES "^(add_subdirectory|own_platform)$")
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
    message(FATAL_ERROR "${program} printed\n${output}\nexpected\n${expected}")
  endif()
endfunction()

# Lets pkg-config and the loader find the installation.
macro(use_pkg_config)
  file(GLOB_RECURSE pc "${prefix}/*/zan.pc")
  cmake_path(GET pc PARENT_PATH pc_dir)
  cmake_path(GET pc_dir PARENT_PATH lib_dir)
  set(ENV{PKG_CONFIG_PATH} "${pc_dir}")
  set(ENV{LD_LIBRARY_PATH} "${lib_dir}")
endmacro()

set(c_host_prints "4 outline points, the mouse is on the layer\n")
set(consumer_prints "kind 1\nreport 0x110014: the library has already been started.\nresult 12\n")
file(READ "${source}/examples/own_platform/printed.txt" own_platform_prints)

if(CASE STREQUAL "install")
  # The other cases use the moved installation.
  file(REMOVE_RECURSE "${work}/prefix" "${prefix}")
  execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${work}/prefix" COMMAND_ERROR_IS_FATAL ANY)
  file(RENAME "${work}/prefix" "${prefix}")
  # Links between the installed pages lead to installed files.
  file(GLOB_RECURSE pages "${prefix}/*.md")
  set(links 0)
  foreach(page IN LISTS pages)
    cmake_path(GET page PARENT_PATH folder)
    file(READ "${page}" text)
    # Brackets and semicolons have a meaning in CMake's lists.
    string(REPLACE "](" "<link>" text "${text}")
    string(REGEX REPLACE "[][;]" "" text "${text}")
    string(REGEX MATCHALL "<link>[A-Za-z0-9_./-]+[)#]" found "${text}")
    foreach(link IN LISTS found)
      string(REGEX REPLACE "<link>(.*).$" "\\1" link "${link}")
      math(EXPR links "${links} + 1")
      if(NOT EXISTS "${folder}/${link}")
        message(FATAL_ERROR "${page}: no file ${link}")
      endif()
    endforeach()
  endforeach()
  if(links LESS 20)
    message(FATAL_ERROR "only ${links} links in ${pages}")
  endif()

elseif(CASE STREQUAL "find_package")
  build_project("${source}/tests/consumer" "-DCMAKE_PREFIX_PATH=${prefix}")
  run_program("${directory}/consumer" "${consumer_prints}")

elseif(CASE STREQUAL "first_program")
  set(recipes "${source}/examples/recipes")
  file(REMOVE_RECURSE "${directory}.from")
  file(COPY "${recipes}/first_program/CMakeLists.txt" "${recipes}/layer.cpp" DESTINATION "${directory}.from")
  build_project("${directory}.from" "-DCMAKE_PREFIX_PATH=${prefix}")
  file(READ "${recipes}/layer.txt" expected)
  run_program("${directory}/layer" "${expected}")

elseif(CASE STREQUAL "other_versions")
  foreach(version IN ITEMS 17 19 18.999)
    find_package(zan ${version} CONFIG QUIET PATHS "${prefix}" NO_DEFAULT_PATH)
    if(zan_FOUND OR NOT zan_CONSIDERED_VERSIONS MATCHES "^18\\.")
      message(FATAL_ERROR "zan ${version}: found: '${zan_FOUND}', considered: '${zan_CONSIDERED_VERSIONS}'")
    endif()
  endforeach()

elseif(CASE STREQUAL "pkg_config")
  use_pkg_config()
  file(MAKE_DIRECTORY "${directory}")
  execute_process(
    COMMAND sh -ec "$0 -std=c++17 consumer.cpp $(pkg-config --cflags --libs zan zan-platform) -o $1" "${CXX}"
            "${directory}/consumer" WORKING_DIRECTORY "${source}/tests/consumer" COMMAND_ERROR_IS_FATAL ANY)
  run_program("${directory}/consumer" "${consumer_prints}")

elseif(CASE STREQUAL "c_host")
  build_project("${source}/examples/c_host" "-DCMAKE_PREFIX_PATH=${prefix}")
  run_program("${directory}/c_host" "${c_host_prints}")

elseif(CASE STREQUAL "add_subdirectory")
  build_project("${source}/tests/consumer" "-DZAN_SOURCE=${source}"
                "-DCMAKE_PROJECT_consumer_INCLUDE=${source}/tests/consumer/untouched.cmake")
  run_program("${directory}/consumer" "${consumer_prints}")

elseif(CASE STREQUAL "own_platform")
  build_project("${source}/examples/own_platform" "-DZAN_SOURCE=${source}")
  run_program("${directory}/host" "${own_platform_prints}")

elseif(CASE STREQUAL "own_platform_find_package")
  build_project("${source}/examples/own_platform" "-DCMAKE_PREFIX_PATH=${prefix}")
  run_program("${directory}/host" "${own_platform_prints}")

elseif(CASE STREQUAL "own_platform_pkg_config")
  use_pkg_config()
  file(REMOVE_RECURSE "${directory}")
  file(COPY "${source}/examples/own_platform/" DESTINATION "${directory}")
  execute_process(COMMAND sh -e build.sh WORKING_DIRECTORY "${directory}" COMMAND_ERROR_IS_FATAL ANY)
  set(ENV{LD_LIBRARY_PATH} "$ENV{LD_LIBRARY_PATH}:${directory}")
  run_program("${directory}/host" "${own_platform_prints}")

elseif(CASE STREQUAL "zip")
  # The zip for Windows, used with the toolchain that made it. tests/windows/microsoft_abi uses the unpacked files too.
  execute_process(COMMAND "${CMAKE_COMMAND}" "-DBUILD=${BUILD}" "-DVERSION=${VERSION}" -P "${source}/cmake/make_zip.cmake"
                  COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE "${prefix}")
  file(ARCHIVE_EXTRACT INPUT "${BUILD}/package/zan-${VERSION}-windows-x86_64.zip" DESTINATION "${prefix}")
  set(prefix "${prefix}/zan-${VERSION}-windows-x86_64")
  build_project("${source}/tests/consumer" "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
  set(ENV{WINEPATH} "${prefix}/bin")
  run_program("${directory}/consumer.exe" "${consumer_prints}")
  set(directory "${work}/zip_c_host")
  build_project("${source}/examples/c_host" "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
  run_program("${directory}/c_host.exe" "${c_host_prints}")

else()
  message(FATAL_ERROR "unknown case: '${CASE}'")
endif()

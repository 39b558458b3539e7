# The version is in CMakeLists.txt and in the newest heading of the changelog, and in no file of the folders below.
# cmake -DVERSION=... -DSOURCE=... -P check_version.cmake
file(STRINGS "${SOURCE}/CHANGELOG.md" headings REGEX "^## ")
list(GET headings 0 newest)
if(NOT newest STREQUAL "## ${VERSION}")
  message(FATAL_ERROR "the newest heading of CHANGELOG.md is \"${newest}\", the version is ${VERSION}")
endif()
string(REPLACE "." "\\." pattern "${VERSION}")
foreach(folder IN ITEMS abi bench cmake debug docs examples frame geom2d include matrix packaging platform poly scalar
                        space tests tools web)
  file(GLOB_RECURSE files "${SOURCE}/${folder}/*")
  foreach(file IN LISTS files)
    file(STRINGS "${file}" lines REGEX "(^|[^0-9.])${pattern}([^0-9.]|$)")
    if(lines)
      message(FATAL_ERROR "${file} repeats the version:\n${lines}")
    endif()
  endforeach()
endforeach()

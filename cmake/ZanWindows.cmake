# What is different about the libraries on Windows: the .def file, import libraries for both tool families, the version
# resource.
find_program(ZAN_LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14
             DOC "Makes the import libraries for the Microsoft tool family (zan.lib)")

# A DLL that exports its list, named as its target. Makes TARGET.def, libTARGET.dll.a and, where llvm-dlltool is found,
# TARGET.lib, all beside the DLL's import library.
function(zan_windows_library target list description objects)
  set_target_properties(${target} PROPERTIES PREFIX "" ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/version.rc.in" "${target}.rc" @ONLY)
  # A library of its own, since windres knows none of the compiler's options.
  add_library(${target}_version OBJECT "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
  target_sources(${target} PRIVATE "$<TARGET_OBJECTS:${target}_version>")

  set(def "${PROJECT_BINARY_DIR}/lib/${target}.def")
  file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
  add_custom_command(
    TARGET ${target} PRE_LINK
    COMMAND "${CMAKE_COMMAND}" -DLIBRARY=${target}.dll "-DLIST=${list}" "-DNM=${CMAKE_NM}" "-DDEF=${def}"
            "-DOBJECTS=$<FILTER:${objects},INCLUDE,cpp>" -P
            "${PROJECT_SOURCE_DIR}/cmake/make_def.cmake"
    VERBATIM)
  target_link_options(${target} PRIVATE "${def}")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${list}")
  if(ZAN_LLVM_DLLTOOL)
    add_custom_command(
      TARGET ${target} POST_BUILD
      COMMAND "${ZAN_LLVM_DLLTOOL}" -m i386:x86-64 -d "${def}" -l "${PROJECT_BINARY_DIR}/lib/${target}.lib"
      BYPRODUCTS "${PROJECT_BINARY_DIR}/lib/${target}.lib"
      VERBATIM)
  endif()
endfunction()

# The compiler's DLLs that zan's own need beside them. Host and library share one C++ runtime, since exceptions and
# containers cross between them.
set(ZAN_RUNTIME_DLLS "")
foreach(name IN ITEMS libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${name} OUTPUT_VARIABLE path
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(IS_ABSOLUTE "${path}")
    file(REAL_PATH "${path}" path)
    list(APPEND ZAN_RUNTIME_DLLS "${path}")
  endif()
endforeach()

# What an installation has on Windows alone: the .def files and the other family's import libraries, the compiler's DLLs
# with their licences, and zan's own.
function(zan_install_for_windows)
  foreach(target IN ITEMS zan zan_platform)
    install(FILES "${PROJECT_BINARY_DIR}/lib/${target}.def" DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev)
    if(ZAN_LLVM_DLLTOOL)
      install(FILES "${PROJECT_BINARY_DIR}/lib/${target}.lib" DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev)
    endif()
  endforeach()
  install(FILES ${ZAN_RUNTIME_DLLS} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
  # Debian's statements of the licences of its compiler and of its threads library, and the text that the first refers to.
  install(FILES /usr/share/doc/gcc-mingw-w64-base/copyright DESTINATION licences COMPONENT runtime RENAME gcc.txt OPTIONAL)
  install(FILES /usr/share/doc/mingw-w64-common/copyright DESTINATION licences COMPONENT runtime RENAME winpthreads.txt
          OPTIONAL)
  install(FILES /usr/share/common-licenses/GPL-3 DESTINATION licences COMPONENT runtime RENAME gpl-3.txt OPTIONAL)
  install(FILES LICENSE CHANGELOG.md README.md DESTINATION . COMPONENT dev)
endfunction()

if(PROJECT_IS_TOP_LEVEL)
  # A program finds the DLLs that lie beside it.
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
  file(COPY ${ZAN_RUNTIME_DLLS} DESTINATION "${CMAKE_BINARY_DIR}/bin")
endif()

# Header-only packages of the build machine, for a cross build: copied, since the machine's own include folder must stay
# out of a search for another system's headers.
if(PROJECT_IS_TOP_LEVEL AND CMAKE_CROSSCOMPILING AND CMAKE_PREFIX_PATH)
  foreach(folder IN ITEMS include/catch2 lib/cmake/Catch2)
    if(EXISTS "/usr/${folder}")
      cmake_path(GET folder PARENT_PATH parent)
      # The files left out would name the machine's own binaries.
      file(COPY "/usr/${folder}" DESTINATION "${CMAKE_PREFIX_PATH}/${parent}" PATTERN "*Targets-*.cmake" EXCLUDE)
    endif()
  endforeach()
endif()

# The libraries on Windows: .def files, import libraries for MinGW and for Microsoft's tools, version resources.
find_program(ZAN_LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14
             DOC "Makes the import libraries for Microsoft's tools (zan.lib)")

# zan_use_windows_runtime(TARGET): the target's code calls the system's C runtime where MinGW would link code of its own, which
# has x87 arithmetic: the functions of mathematics, and printf.
function(zan_use_windows_runtime target)
  if(NOT MINGW)
    return()
  endif()
  # GCC would replace a sine and a cosine of the same angle by sincos, which the system does not have.
  target_compile_options(${target} PRIVATE -include "${PROJECT_SOURCE_DIR}/cmake/mingw_stdio.h" -fno-builtin-sin
                                           -fno-builtin-cos)
  if(NOT TARGET zan_msvcrt_math)
    set(library "${PROJECT_BINARY_DIR}/lib/libmsvcrt_math.a")
    set(def "${PROJECT_SOURCE_DIR}/cmake/msvcrt_math.def")
    file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
    add_custom_command(OUTPUT "${library}" COMMAND "${CMAKE_DLLTOOL}" -d "${def}" -l "${library}" DEPENDS "${def}" VERBATIM)
    add_custom_target(zan_msvcrt_math DEPENDS "${library}")
    set_property(TARGET zan_msvcrt_math PROPERTY ZAN_LIBRARY "${library}")
  endif()
  get_target_property(type ${target} TYPE)
  if(NOT type STREQUAL "OBJECT_LIBRARY")
    add_dependencies(${target} zan_msvcrt_math)
    get_target_property(library zan_msvcrt_math ZAN_LIBRARY)
    target_link_libraries(${target} PRIVATE "${library}")
    # Makes the linker take ldexp from the library above: MinGW's ldexpf, which is linked after that library, needs it.
    target_link_options(${target} PRIVATE LINKER:--undefined=ldexp)
  endif()
endfunction()

# zan_windows_library(TARGET EXPORT-LIST DESCRIPTION OBJECTS)
# Makes TARGET a DLL that exports its list. In the folder lib, makes TARGET.def, libTARGET.dll.a and, if llvm-dlltool was
# found, TARGET.lib.
function(zan_windows_library target list description objects)
  set_target_properties(${target} PROPERTIES PREFIX "" ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/version.rc.in" "${target}.rc" @ONLY)
  # A target of its own, since windres does not accept the compiler's options.
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

# The DLLs of the compiler's runtime. A host and zan share them, since exceptions and containers are passed between them.
set(ZAN_RUNTIME_DLLS "")
foreach(name IN ITEMS libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${name} OUTPUT_VARIABLE path
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(IS_ABSOLUTE "${path}")
    file(REAL_PATH "${path}" path)
    list(APPEND ZAN_RUNTIME_DLLS "${path}")
  endif()
endforeach()

# Files that only an installation for Windows has: the .def files and the import libraries for Microsoft's tools, the
# runtime's DLLs, and licences.
function(zan_install_for_windows)
  foreach(target IN ITEMS zan zan_platform)
    install(FILES "${PROJECT_BINARY_DIR}/lib/${target}.def" DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev)
    if(ZAN_LLVM_DLLTOOL)
      install(FILES "${PROJECT_BINARY_DIR}/lib/${target}.lib" DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev)
    endif()
  endforeach()
  install(FILES ${ZAN_RUNTIME_DLLS} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
  # The licences of the compiler's runtime and of the threads library, and the text that the first refers to.
  install(FILES /usr/share/doc/gcc-mingw-w64-base/copyright DESTINATION licences COMPONENT runtime RENAME gcc.txt OPTIONAL)
  install(FILES /usr/share/doc/mingw-w64-common/copyright DESTINATION licences COMPONENT runtime RENAME winpthreads.txt
          OPTIONAL)
  install(FILES /usr/share/common-licenses/GPL-3 DESTINATION licences COMPONENT runtime RENAME gpl-3.txt OPTIONAL)
  install(FILES LICENSE DESTINATION . COMPONENT dev)
endfunction()

if(PROJECT_IS_TOP_LEVEL)
  # Programs load DLLs from their own folder.
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
  file(COPY ${ZAN_RUNTIME_DLLS} DESTINATION "${CMAKE_BINARY_DIR}/bin")
endif()

# Copies header-only packages of the build machine for a cross build, whose search for headers must not find the rest of
# /usr/include.
if(PROJECT_IS_TOP_LEVEL AND CMAKE_CROSSCOMPILING AND CMAKE_PREFIX_PATH)
  foreach(folder IN ITEMS include/catch2 lib/cmake/Catch2)
    if(EXISTS "/usr/${folder}")
      cmake_path(GET folder PARENT_PATH parent)
      # The excluded files name libraries of the build machine.
      file(COPY "/usr/${folder}" DESTINATION "${CMAKE_PREFIX_PATH}/${parent}" PATTERN "*Targets-*.cmake" EXCLUDE)
    endif()
  endforeach()
endif()

# How zan's libraries and programs are compiled and linked: warnings, visibility, versions, the export lists.

# For those who work on zan: inside somebody else's project the warnings are theirs.
function(zan_warnings target)
  if(PROJECT_IS_TOP_LEVEL AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  endif()
endfunction()

# Links a library with an export list: a file with one symbol a line and comments behind '#', as Linux spells them.
function(zan_link_export_list target list)
  set(path "${CMAKE_CURRENT_SOURCE_DIR}/${list}")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${path}")
  file(STRINGS "${path}" symbols REGEX "^[^#]")
  list(JOIN symbols ";\n    " joined)
  set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
  file(CONFIGURE OUTPUT "${script}" CONTENT "{\n  global:\n    @joined@;\n  local: *;\n};\n" @ONLY)
  target_link_options(${target} PRIVATE "LINKER:--version-script=${script}")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()

# A shared library with its export list and the description that Windows shows. The caller adds the sources.
function(zan_add_library target exports description)
  add_library(${target} SHARED)
  target_compile_features(${target} PUBLIC cxx_std_17 PRIVATE cxx_std_20)
  target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
  set_target_properties(
    ${target}
    PROPERTIES CXX_EXTENSIONS OFF
               UNITY_BUILD OFF
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               VERSION ${PROJECT_VERSION}
               SOVERSION ${PROJECT_VERSION_MAJOR})
  zan_warnings(${target})
  zan_exact_arithmetic(${target})
  if(WIN32)
    zan_windows_library(${target} ${exports} "${description}")
  else()
    zan_link_export_list(${target} ${exports})
  endif()
endfunction()

# The loops over arrays of points, for the library and, the same way, for the test that tries each form of them.
function(zan_add_point_kernels target)
  set(room "${PROJECT_SOURCE_DIR}/matrix")
  target_sources(${target} PRIVATE "${room}/point_kernels.cpp" "${room}/point_kernels_plain.cpp")
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|amd64")
    set(avx2 -mavx2 -mno-fma)
    target_sources(${target} PRIVATE "${room}/point_kernels_avx2.cpp")
    set_source_files_properties("${room}/point_kernels_avx2.cpp" TARGET_DIRECTORY ${target} PROPERTIES COMPILE_OPTIONS
                                                                                                       "${avx2}")
    target_compile_definitions(${target} PRIVATE ZAN_AVX2_KERNEL)
  endif()
endfunction()

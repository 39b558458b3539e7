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
  # The library's calls of its own exports go straight there, and may be inlined.
  target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  target_link_options(${target} PRIVATE "LINKER:--version-script=${script}" LINKER:-Bsymbolic-functions)
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
  # Where assertions are on, a null that is not allowed stops the process before it is used.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Debug>:-fsanitize=null;-fsanitize-undefined-trap-on-error>")
  elseif(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Debug>:-fsanitize=null;-fsanitize-trap=null>")
  endif()
  if(WIN32)
    zan_windows_library(${target} ${exports} "${description}")
  else()
    zan_link_export_list(${target} ${exports})
  endif()
endfunction()

# The forms of loops for several instruction sets, for the library and, the same way, for the tests that try each form.
# A file whose name ends in _avx2.cpp is compiled for AVX2.
function(zan_add_kernels target)
  set(sources
      frame/processor.cpp
      matrix/kernels/matrices.cpp
      matrix/kernels/matrices_plain.cpp
      matrix/kernels/points.cpp
      matrix/kernels/points_plain.cpp
      poly/kernels/edges_plain.cpp
      poly/kernels/turns_plain.cpp)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|amd64")
    set(avx2 matrix/kernels/matrices_avx2.cpp matrix/kernels/points_avx2.cpp poly/kernels/edges_avx2.cpp
             poly/kernels/turns_avx2.cpp)
    list(TRANSFORM avx2 PREPEND "${PROJECT_SOURCE_DIR}/")
    target_sources(${target} PRIVATE ${avx2})
    set_source_files_properties(${avx2} TARGET_DIRECTORY ${target} PROPERTIES COMPILE_OPTIONS "-mavx2;-mno-fma")
    target_compile_definitions(${target} PRIVATE ZAN_AVX2_KERNELS)
  endif()
  list(TRANSFORM sources PREPEND "${PROJECT_SOURCE_DIR}/")
  target_sources(${target} PRIVATE ${sources})
endfunction()

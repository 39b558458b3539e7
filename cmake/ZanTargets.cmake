# How zan's libraries and programs are compiled and linked: warnings, visibility, versions, export lists, kernels.

# Warnings, unless zan is part of another project: that project decides about them.
function(zan_warnings target)
  if(PROJECT_IS_TOP_LEVEL AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  endif()
endfunction()

# How the code of zan's shared libraries is compiled, whether it is linked into one of them or into a test.
function(zan_library_code target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/include")
  set_target_properties(
    ${target}
    PROPERTIES CXX_EXTENSIONS OFF
               UNITY_BUILD OFF
               POSITION_INDEPENDENT_CODE ON
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON)
  zan_warnings(${target})
  zan_exact_arithmetic(${target})
  if(WIN32)
    zan_use_windows_runtime(${target})
  else()
    # The compiler may inline exported functions: a call from inside the library cannot reach another definition.
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  endif()
  # In debug builds a null pointer that an operation does not allow traps before it is dereferenced.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Debug>:-fsanitize=null;-fsanitize-undefined-trap-on-error>")
  elseif(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Debug>:-fsanitize=null;-fsanitize-trap=null>")
  endif()
endfunction()

# Links a shared library with an export list: a file with one symbol a line, as Linux spells them. Lines that begin with
# '#' are comments.
function(zan_link_export_list target list)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${list}")
  file(STRINGS "${list}" symbols REGEX "^[^#]")
  list(JOIN symbols ";\n    " joined)
  set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
  file(CONFIGURE OUTPUT "${script}" CONTENT "{\n  global:\n    @joined@;\n  local: *;\n};\n" @ONLY)
  # Calls of the library's own exports do not go through the procedure linkage table.
  target_link_options(${target} PRIVATE "LINKER:--version-script=${script}" LINKER:-Bsymbolic-functions)
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()

# zan_add_shared_library(TARGET EXPORT-LIST DESCRIPTION [OBJECT-LIBRARY...])
# The description is shown by Windows. The caller adds further sources.
function(zan_add_shared_library target exports description)
  add_library(${target} SHARED)
  zan_library_code(${target})
  target_compile_features(${target} PUBLIC cxx_std_17)
  set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  set(objects "$<TARGET_OBJECTS:${target}>")
  foreach(library IN LISTS ARGN)
    target_sources(${target} PRIVATE "$<TARGET_OBJECTS:${library}>")
    list(APPEND objects "$<TARGET_OBJECTS:${library}>")
  endforeach()
  if(WIN32)
    zan_windows_library(${target} "${exports}" "${description}" "${objects}")
  else()
    zan_link_export_list(${target} "${exports}")
  endif()
endfunction()

# Adds kernels of two lanes to the library, if the target has NEON or WebAssembly SIMD; there they take the place of the
# plain kernels. Elsewhere they are only tested, compiled for what all processors have.
function(zan_add_lanes_kernels)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64|wasm32")
    target_sources(zan_objects PRIVATE ${ARGN})
    target_compile_definitions(zan_objects PRIVATE ZAN_LANES_KERNELS)
    if(CMAKE_SYSTEM_PROCESSOR STREQUAL "wasm32")
      set_source_files_properties(${ARGN} TARGET_DIRECTORY zan_objects PROPERTIES COMPILE_OPTIONS -msimd128)
    endif()
  else()
    list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
    set_property(GLOBAL APPEND PROPERTY ZAN_KERNELS_ONLY_TESTED ${ARGN})
  endif()
endfunction()

# Adds kernels for AVX2 to the library, if compiler and target have it. They are compiled without FMA, which would change
# the last bits of answers.
function(zan_add_avx2_kernels)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|amd64")
    target_sources(zan_objects PRIVATE ${ARGN})
    set_source_files_properties(${ARGN} TARGET_DIRECTORY zan_objects PROPERTIES COMPILE_OPTIONS "-mavx2;-mno-fma")
    target_compile_definitions(zan_objects PRIVATE ZAN_AVX2_KERNELS)
  endif()
endfunction()

# Exact arithmetic: every answer is defined to the last bit, so the compiler must keep the order of operations as written.
# Options that keep it, and a check for flags that give it up.

# Fails if a compiler flag gives up exact arithmetic.
function(zan_require_exact_arithmetic)
  set(flags "${CMAKE_CXX_FLAGS}")
  foreach(type IN LISTS CMAKE_BUILD_TYPE CMAKE_CONFIGURATION_TYPES)
    string(TOUPPER "${type}" upper)
    string(APPEND flags " ${CMAKE_CXX_FLAGS_${upper}}")
  endforeach()
  get_directory_property(options COMPILE_OPTIONS)
  string(APPEND flags " ${options}")
  if(flags MATCHES
     "-ffast-math|-Ofast|-funsafe-math-optimizations|-fassociative-math|-freciprocal-math|-ffinite-math-only|-fno-signed-zeros|-mfpmath=387|[/-]fp:fast"
  )
    # Indented: CMake does not wrap indented lines.
    message(FATAL_ERROR "  zan: '${CMAKE_MATCH_0}' is refused, since every answer is defined to the last bit.")
  endif()
  if(NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
    message(FATAL_ERROR "zan: a 64-bit target is needed.")
  endif()
endfunction()

# Compiles a target with exact arithmetic.
function(zan_exact_arithmetic target)
  if(CMAKE_CXX_COMPILER_FRONTEND_VARIANT STREQUAL "MSVC" OR MSVC)
    target_compile_options(${target} PRIVATE /fp:precise)
  else()
    target_compile_options(${target} PRIVATE -ffp-contract=off)
    # Where FMA instructions are allowed, GCC 12 contracts u*c - d*s, u*s + d*c in spite of the option above.
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|amd64")
      target_compile_options(${target} PRIVATE -mno-fma -mno-fma4)
      # GCC spills 32-byte values with aligned moves, although Windows aligns the stack to 16 bytes only (GCC bug 54412).
      if(MINGW AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -Wa,-muse-unaligned-vector-move)
      endif()
    endif()
  endif()
endfunction()

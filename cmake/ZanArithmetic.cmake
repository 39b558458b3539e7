# The stated order of operations is the result, to the last bit: what the compiler may not change, and a refusal of the
# flags that would let it.

# Stops a build whose flags give up exact arithmetic.
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
    # Indented, or CMake would break the line.
    message(FATAL_ERROR "  zan: '${CMAKE_MATCH_0}' is refused, since every answer is defined to the last bit.")
  endif()
  if(NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
    message(FATAL_ERROR "zan: a 64-bit target is needed.")
  endif()
endfunction()

# What zan's own code is compiled with, by compiler and not by platform.
function(zan_exact_arithmetic target)
  if(CMAKE_CXX_COMPILER_FRONTEND_VARIANT STREQUAL "MSVC" OR MSVC)
    target_compile_options(${target} PRIVATE /fp:precise)
  else()
    target_compile_options(${target} PRIVATE -ffp-contract=off)
    # GCC 12 contracts u*c - d*s, u*s + d*c in spite of the option above where FMA instructions may be used.
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|amd64")
      target_compile_options(${target} PRIVATE -mno-fma -mno-fma4)
      # On Windows, GCC spills 32-byte values to a stack that it leaves aligned to 16 (its bug 54412).
      if(MINGW AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -Wa,-muse-unaligned-vector-move)
      endif()
    endif()
  endif()
endfunction()

// Lanes: the doubles of one vector register, for kernels. Arithmetic and comparisons are operators (a * b + c < d, also
// with one double for all lanes): the vector extensions of GCC and clang. Intrinsics are used only where these have
// nothing.
//
// Everything is in an unnamed namespace: a kernel's file must share no function with files that are compiled for other
// instruction sets.
#ifndef ZAN_FRAME_LANES_H
#define ZAN_FRAME_LANES_H

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__aarch64__)
#include <arm_neon.h>
#elif defined(__wasm_simd128__)
#include <wasm_simd128.h>
#endif

namespace {

/// The width of the hardware: GCC 12 passes wider vectors through memory.
constexpr int kLanes = 2;
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));
/// The result of a comparison: all bits of a lane are set where it holds, none elsewhere.
using Mask = decltype(Lanes{} < Lanes{});

inline Lanes all(double x) { return Lanes{x, x}; }

/// At any alignment of a double.
inline Lanes load(const double* from) {
    Lanes lanes;
    __builtin_memcpy(&lanes, from, sizeof lanes);
    return lanes;
}
inline void store(double* to, Lanes lanes) { __builtin_memcpy(to, &lanes, sizeof lanes); }

/// A low or high lane of a, and one of b.
inline Lanes lows(Lanes a, Lanes b) { return __builtin_shufflevector(a, b, 0, 2); }
inline Lanes highs(Lanes a, Lanes b) { return __builtin_shufflevector(a, b, 1, 3); }
inline Lanes lowHigh(Lanes a, Lanes b) { return __builtin_shufflevector(a, b, 0, 3); }
inline Lanes highLow(Lanes a, Lanes b) { return __builtin_shufflevector(a, b, 1, 2); }

inline Lanes abs(Lanes a) { return reinterpret_cast<Lanes>(reinterpret_cast<Mask>(a) & 0x7FFFFFFFFFFFFFFF); }

/// One bit for each lane of a mask.
inline unsigned bitsOf(Mask mask) {
#if defined(__SSE2__)
    return static_cast<unsigned>(_mm_movemask_pd(reinterpret_cast<__m128d>(mask)));
#elif defined(__wasm_simd128__)
    return static_cast<unsigned>(wasm_i64x2_bitmask(reinterpret_cast<v128_t>(mask)));
#else
    return static_cast<unsigned>((mask[0] & 1) | (mask[1] & 2));
#endif
}
inline bool anyOf(Mask mask) {
#if defined(__wasm_simd128__)
    return wasm_v128_any_true(reinterpret_cast<v128_t>(mask));
#else
    return bitsOf(mask) != 0;
#endif
}

}  // namespace

#endif  // ZAN_FRAME_LANES_H

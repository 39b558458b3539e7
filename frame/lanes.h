// Lanes: the doubles of one vector register, for kernels. Arithmetic and comparisons are operators (a * b + c < d, also
// with one double for all lanes): the vector extensions of GCC and clang. Intrinsics are used only where these have
// nothing. The width is that of the instruction set for which the including file is compiled: GCC 12 passes wider
// vectors through memory.
//
// Everything is in an unnamed namespace: a kernel's file must share no function with files that are compiled for other
// instruction sets.
#ifndef ZAN_FRAME_LANES_H
#define ZAN_FRAME_LANES_H

#if defined(__x86_64__)
#include <immintrin.h>
#elif defined(__wasm_simd128__)
#include <wasm_simd128.h>
#endif

#include <cstdint>

namespace {

#if defined(__AVX2__)
inline constexpr int kLanes = 4;
#else
inline constexpr int kLanes = 2;  // SSE2, NEON, WebAssembly SIMD
#endif
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));
/// The result of a comparison: all bits of a lane are set where it holds, none elsewhere.
using Mask = decltype(Lanes{} < Lanes{});

inline Lanes all(double x) {
#if defined(__AVX2__)
    return Lanes{x, x, x, x};
#else
    return Lanes{x, x};
#endif
}

/// At any alignment of a double.
inline Lanes load(const double* from) {
    Lanes lanes;
    __builtin_memcpy(&lanes, from, sizeof lanes);
    return lanes;
}
inline void store(double* to, Lanes lanes) { __builtin_memcpy(to, &lanes, sizeof lanes); }

inline Lanes abs(Lanes a) { return reinterpret_cast<Lanes>(reinterpret_cast<Mask>(a) & INT64_MAX); }

/// The sign bit of each lane: of a mask, one bit for each lane where it holds.
inline unsigned signBits(Lanes a) {
#if defined(__AVX2__)
    return static_cast<unsigned>(_mm256_movemask_pd(a));
#elif defined(__x86_64__)
    return static_cast<unsigned>(_mm_movemask_pd(a));
#elif defined(__wasm_simd128__)
    return wasm_i64x2_bitmask(reinterpret_cast<v128_t>(a));
#else
    const auto bits = reinterpret_cast<Mask>(a) < 0;
    return static_cast<unsigned>((bits[0] & 1) | (bits[1] & 2));
#endif
}
inline unsigned bitsOf(Mask mask) { return signBits(reinterpret_cast<Lanes>(mask)); }
inline bool anyOf(Mask mask) {
#if defined(__wasm_simd128__)
    return wasm_v128_any_true(reinterpret_cast<v128_t>(mask));
#else
    return bitsOf(mask) != 0;
#endif
}

/// The lanes a[0], b[0], a[2], b[2] and a[1], b[1], a[3], b[3].
inline Lanes evenLanes(Lanes a, Lanes b) {
#if defined(__AVX2__)
    return __builtin_shufflevector(a, b, 0, 4, 2, 6);
#else
    return __builtin_shufflevector(a, b, 0, 2);
#endif
}
inline Lanes oddLanes(Lanes a, Lanes b) {
#if defined(__AVX2__)
    return __builtin_shufflevector(a, b, 1, 5, 3, 7);
#else
    return __builtin_shufflevector(a, b, 1, 3);
#endif
}

/// One coordinate in each register, of as many points as there are lanes.
struct XY {
    Lanes x, y;
};
/// As many consecutive points as there are lanes, in their order. Each begins with x and y; stride is the distance from
/// one point to the next, in doubles.
inline XY loadXY(const double* p, int64_t stride = 2) {
#if defined(__AVX2__)
    const auto halves = [](const double* low, const double* high) {
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(low)), _mm_loadu_pd(high), 1);
    };
    const Lanes a = halves(p, p + 2 * stride), b = halves(p + stride, p + 3 * stride);
#else
    const Lanes a = load(p), b = load(p + stride);
#endif
    return {evenLanes(a, b), oddLanes(a, b)};
}
inline XY loadXY(const float* p) {
#if defined(__AVX2__)
    const __m128 a = _mm_loadu_ps(p), b = _mm_loadu_ps(p + 4);
    return {_mm256_cvtps_pd(_mm_shuffle_ps(a, b, 0x88)), _mm256_cvtps_pd(_mm_shuffle_ps(a, b, 0xDD))};
#else
    return {Lanes{p[0], p[2]}, Lanes{p[1], p[3]}};
#endif
}

}  // namespace

#endif  // ZAN_FRAME_LANES_H

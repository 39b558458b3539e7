// The look at edges with AVX2, four at a time. This file is compiled for AVX2: it may include nothing that defines a
// function.
#include <immintrin.h>

#include <cstdint>

#include "poly/kernels/edges.h"

namespace {

// Four numbers, one a vertex.
using Lanes = __m256d;

Lanes all(double x) { return _mm256_set1_pd(x); }
Lanes less(Lanes a, Lanes b) { return _mm256_cmp_pd(a, b, _CMP_LT_OQ); }
// One bit a lane.
uint64_t bitsOf(Lanes mask) { return static_cast<unsigned>(_mm256_movemask_pd(mask)); }

struct Vertices {
    Lanes x, y;
};

Vertices load(const double* v) {
    const auto halves = [v](int low, int high) {
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(v + low)), _mm_loadu_pd(v + high), 1);
    };
    const Lanes even = halves(0, 4);
    const Lanes odd = halves(2, 6);
    return {_mm256_unpacklo_pd(even, odd), _mm256_unpackhi_pd(even, odd)};
}
Vertices load(const float* v) {
    const __m128 a = _mm_loadu_ps(v);
    const __m128 b = _mm_loadu_ps(v + 4);
    return {_mm256_cvtps_pd(_mm_shuffle_ps(a, b, 0x88)), _mm256_cvtps_pd(_mm_shuffle_ps(a, b, 0xDD))};
}

// Both ends are beyond the margin on the same side.
Lanes farAside(Lanes start, Lanes end, Lanes margin) {
    const Lanes minus = _mm256_xor_pd(margin, all(-0.0));
    return _mm256_or_pd(_mm256_and_pd(less(margin, start), less(margin, end)),
                        _mm256_and_pd(less(start, minus), less(end, minus)));
}

template <bool kNear, class T>
zan::EdgeBits scan(const void* vertices, int32_t edges, const zan::HitTarget& target) {
    const auto* first = static_cast<const T*>(vertices);
    const Lanes x = all(target.x), y = all(target.y), margin = all(target.margin);
    zan::EdgeBits bits = {0, 0};
    for (int32_t next = 0; next < edges; next += 4) {
        const int32_t i = next < edges - 4 ? next : edges - 4;  // the last block overlaps the one before
        const T* v = first + 2 * static_cast<int64_t>(i);
        const Vertices start = load(v), end = load(v + 2);
        bits.spanning |= bitsOf(_mm256_xor_pd(less(start.x, x), less(end.x, x))) << i;
        if constexpr (kNear) {
            const auto far = [&](Lanes a, Lanes b, Lanes at) {
                return farAside(_mm256_sub_pd(a, at), _mm256_sub_pd(b, at), margin);
            };
            bits.near |= (~bitsOf(_mm256_or_pd(far(start.x, end.x, x), far(start.y, end.y, y))) & 0xF) << i;
        }
    }
    return bits;
}

}  // namespace

const zan::EdgeKernel zan::kAvx2EdgeKernel = {
    "avx2", 4, {scan<false, double>, scan<true, double>, scan<false, float>, scan<true, float>}};

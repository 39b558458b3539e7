// The look at edges with AVX2, four at a time. This file is compiled for AVX2: it may include nothing that defines a
// function.
#include "poly/kernels/edges.h"

#include <immintrin.h>

#include <cstdint>

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

// One coordinate of four vertices.
Lanes gather(const double* a, const double* b, const double* c, const double* d) {
    const __m128d low = _mm_loadh_pd(_mm_load_sd(a), b), high = _mm_loadh_pd(_mm_load_sd(c), d);
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(low), high, 1);
}
Lanes gather(const float* a, const float* b, const float* c, const float* d) {
    return _mm256_cvtps_pd(_mm_setr_ps(*a, *b, *c, *d));
}
Lanes plus(Lanes a, Lanes b) { return _mm256_add_pd(a, b); }
Lanes minus(Lanes a, Lanes b) { return _mm256_sub_pd(a, b); }
Lanes times(Lanes a, Lanes b) { return _mm256_mul_pd(a, b); }
Lanes size(Lanes a) { return _mm256_andnot_pd(all(-0.0), a); }

// Each lane does what the plain form does, one coordinate at a time is loaded: a host has often just stored it.
template <bool kNear, class T>
zan::FewEdges few(const void* vertices, int32_t count, const zan::HitTarget& target) {
    const auto* v = static_cast<const T*>(vertices);
    const auto at = [v, count](int32_t i) { return i < count ? v + 2 * static_cast<int64_t>(i) : v; };
    const T *v1 = at(1), *v2 = at(2), *v3 = at(3);
    constexpr int kNext = 0x39;
    const Lanes startX = gather(v, v1, v2, v3), startY = gather(v + 1, v1 + 1, v2 + 1, v3 + 1);
    const Lanes endX = _mm256_permute4x64_pd(startX, kNext), endY = _mm256_permute4x64_pd(startY, kNext);
    const Lanes x = all(target.x);
    const Lanes startsLeft = less(startX, x), spans = _mm256_xor_pd(startsLeft, less(endX, x));
    const Lanes b = minus(startX, endX), c = minus(startY, endY);
    const Lanes ac = times(minus(x, endX), c), hb = times(minus(endY, all(target.y)), b), cross = plus(ac, hb);
    Lanes enough =
        plus(plus(times(plus(size(ac), size(hb)), all(0x1p-45)), times(size(b), all(target.ySize))), all(0x1p-1000));
    if constexpr (kNear) enough = plus(enough, times(plus(size(b), size(c)), all(target.margin)));
    const Lanes told = less(enough, size(cross));
    const Lanes above = _mm256_and_pd(spans, _mm256_xor_pd(less(all(0.0), cross), startsLeft));
    const uint64_t asked = (uint64_t{1} << count) - 1;
    const uint64_t close = (kNear ? ~bitsOf(told) : bitsOf(_mm256_andnot_pd(told, spans))) & asked;
    return {static_cast<uint32_t>(bitsOf(_mm256_and_pd(told, above)) & asked), static_cast<uint32_t>(close)};
}

}  // namespace

const zan::EdgeKernel zan::kAvx2EdgeKernel = {
    "avx2",
    4,
    {scan<false, double>, scan<true, double>, scan<false, float>, scan<true, float>},
    {few<false, double>, few<true, double>, few<false, float>, few<true, float>}};

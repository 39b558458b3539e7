// The AVX2 kernel of the hit test, four edges at a time. Compiled for AVX2: includes nothing that defines a function.
#include "poly/kernels/edges.h"

#include <immintrin.h>

#include <cstdint>

namespace {

// One number for each of four vertices.
using Lanes = __m256d;

Lanes all(double x) { return _mm256_set1_pd(x); }
Lanes plus(Lanes a, Lanes b) { return _mm256_add_pd(a, b); }
Lanes minus(Lanes a, Lanes b) { return _mm256_sub_pd(a, b); }
Lanes times(Lanes a, Lanes b) { return _mm256_mul_pd(a, b); }
Lanes abs(Lanes a) { return _mm256_andnot_pd(all(-0.0), a); }
Lanes less(Lanes a, Lanes b) { return _mm256_cmp_pd(a, b, _CMP_LT_OQ); }
// One bit per lane.
uint64_t bitsOf(Lanes mask) { return static_cast<unsigned>(_mm256_movemask_pd(mask)); }

struct Vertices {
    Lanes x, y;
};

// Four consecutive vertices. Both overloads give the lanes the order of the vertices.
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

// Both ends, relative to the point, are more than the margin away on the same side.
Lanes bothFar(Lanes start, Lanes end, Lanes margin) {
    const Lanes negative = _mm256_xor_pd(margin, all(-0.0));
    return _mm256_or_pd(_mm256_and_pd(less(margin, start), less(margin, end)),
                        _mm256_and_pd(less(start, negative), less(end, negative)));
}

template <bool kTolerant, class T>
zan::EdgeBits scan(const void* vertices, int32_t edges, const zan::HitQuery& query) {
    const auto* first = static_cast<const T*>(vertices);
    const Lanes x = all(query.x), y = all(query.y), margin = all(query.margin);
    zan::EdgeBits bits = {0, 0};
    for (int32_t next = 0; next < edges; next += 4) {
        const int32_t i = next < edges - 4 ? next : edges - 4;  // the last block overlaps the one before
        const T* v = first + 2 * static_cast<int64_t>(i);
        const Vertices start = load(v), end = load(v + 2);
        bits.spanning |= bitsOf(_mm256_xor_pd(less(start.x, x), less(end.x, x))) << i;
        if constexpr (kTolerant) {
            const Lanes farX = bothFar(minus(start.x, x), minus(end.x, x), margin);
            const Lanes farY = bothFar(minus(start.y, y), minus(end.y, y), margin);
            bits.maybeNear |= (~bitsOf(_mm256_or_pd(farX, farY)) & 0xF) << i;
        }
    }
    return bits;
}

// One coordinate of four vertices, loaded one by one: the caller has often just stored them one by one, and a wider
// load would defeat store-to-load forwarding.
Lanes gather(const double* a, const double* b, const double* c, const double* d) {
    const __m128d low = _mm_loadh_pd(_mm_load_sd(a), b), high = _mm_loadh_pd(_mm_load_sd(c), d);
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(low), high, 1);
}
Lanes gather(const float* a, const float* b, const float* c, const float* d) {
    return _mm256_cvtps_pd(_mm_setr_ps(*a, *b, *c, *d));
}

// Each lane does the operations of classifyEdge in the same order. Lanes from count on hold the first vertex and are
// masked out at the end.
template <bool kTolerant, class T>
zan::EdgeClasses scanSmallOutline(const void* vertices, int32_t count, const zan::HitQuery& query) {
    const auto* v = static_cast<const T*>(vertices);
    const auto vertex = [v, count](int32_t i) { return i < count ? v + 2 * static_cast<int64_t>(i) : v; };
    const T *v1 = vertex(1), *v2 = vertex(2), *v3 = vertex(3);
    constexpr int kRotateByOne = 0x39;
    const Lanes startX = gather(v, v1, v2, v3), startY = gather(v + 1, v1 + 1, v2 + 1, v3 + 1);
    const Lanes endX = _mm256_permute4x64_pd(startX, kRotateByOne), endY = _mm256_permute4x64_pd(startY, kRotateByOne);
    const Lanes x = all(query.x);
    const Lanes startsLeft = less(startX, x), spans = _mm256_xor_pd(startsLeft, less(endX, x));
    const Lanes b = minus(startX, endX), c = minus(startY, endY);
    const Lanes ac = times(minus(x, endX), c), hb = times(minus(endY, all(query.y)), b), cross = plus(ac, hb);
    Lanes errorBound =
        plus(plus(times(plus(abs(ac), abs(hb)), all(0x1p-45)), times(abs(b), all(query.yTolerance))), all(0x1p-1000));
    if constexpr (kTolerant) errorBound = plus(errorBound, times(plus(abs(b), abs(c)), all(query.margin)));
    const Lanes certain = less(errorBound, abs(cross));
    const Lanes above = _mm256_and_pd(spans, _mm256_xor_pd(less(all(0.0), cross), startsLeft));
    const uint64_t valid = (uint64_t{1} << count) - 1;
    const uint64_t uncertain = (kTolerant ? ~bitsOf(certain) : bitsOf(_mm256_andnot_pd(certain, spans))) & valid;
    return {static_cast<uint32_t>(bitsOf(_mm256_and_pd(certain, above)) & valid), static_cast<uint32_t>(uncertain)};
}

}  // namespace

const zan::EdgeKernel zan::kAvx2EdgeKernel = {
    "avx2",
    4,
    {scan<kWithoutTolerance, double>, scan<kWithTolerance, double>, scan<kWithoutTolerance, float>,
     scan<kWithTolerance, float>},
    {scanSmallOutline<kWithoutTolerance, double>, scanSmallOutline<kWithTolerance, double>,
     scanSmallOutline<kWithoutTolerance, float>, scanSmallOutline<kWithTolerance, float>}};

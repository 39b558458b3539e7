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

// Where vertices lie relative to the point, bit i for vertex i. left, below: left of the point, below it. farX, farY:
// beyond the margin in x or y, on the side that `left` or `below` gives.
struct Outcodes {
    uint64_t left, farX, below, farY;
};

template <bool kTolerant>
Outcodes outcodes(const Vertices& v, const zan::HitQuery& query) {
    const Lanes x = all(query.x), y = all(query.y), margin = all(query.margin);
    const uint64_t left = bitsOf(less(v.x, x));
    if constexpr (!kTolerant) return {left, 0, 0, 0};
    return {left, bitsOf(less(margin, abs(minus(v.x, x)))), bitsOf(less(v.y, y)),
            bitsOf(less(margin, abs(minus(v.y, y))))};
}

// The outcodes of each vertex are found once, for the edge that starts there; those of the ends are the same shifted by
// one bit.
template <bool kTolerant, class T>
zan::EdgeBits scan(const void* vertices, int32_t edges, const zan::HitQuery& query) {
    const auto* first = static_cast<const T*>(vertices);
    const auto four = [first, &query](int64_t i) { return outcodes<kTolerant>(load(first + 2 * i), query); };
    Outcodes starts = {0, 0, 0, 0};
    for (int32_t next = 0; next < edges; next += 4) {
        const int32_t i = next < edges - 4 ? next : edges - 4;  // the last block overlaps the one before
        const Outcodes o = four(i);
        starts.left |= o.left << i;
        starts.farX |= o.farX << i;
        starts.below |= o.below << i;
        starts.farY |= o.farY << i;
    }
    const Outcodes last = four(edges - 3);  // bit 3 is for the last vertex
    const auto ends = [edges](uint64_t bits, uint64_t lastFour) { return bits >> 1 | (lastFour >> 3) << (edges - 1); };
    const uint64_t spanning = starts.left ^ ends(starts.left, last.left);
    if constexpr (!kTolerant) return {spanning, 0};
    const uint64_t crossesY = starts.below ^ ends(starts.below, last.below);
    const uint64_t bothFarX = starts.farX & ends(starts.farX, last.farX) & ~spanning;
    const uint64_t bothFarY = starts.farY & ends(starts.farY, last.farY) & ~crossesY;
    return {spanning, ~(bothFarX | bothFarY) & ~uint64_t{0} >> (64 - edges)};
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

// Classifies four edges: each lane does the operations of classifyEdge in the same order.
template <bool kTolerant>
[[gnu::always_inline]] inline zan::EdgeClasses classifyFour(const Vertices& start, const Vertices& end,
                                                            const zan::HitQuery& query) {
    const Lanes x = all(query.x);
    const Lanes startsLeft = less(start.x, x), spans = _mm256_xor_pd(startsLeft, less(end.x, x));
    const Lanes b = minus(start.x, end.x), c = minus(start.y, end.y);
    const Lanes ac = times(minus(x, end.x), c), hb = times(minus(end.y, all(query.y)), b), cross = plus(ac, hb);
    Lanes errorBound =
        plus(plus(times(plus(abs(ac), abs(hb)), all(0x1p-45)), times(abs(b), all(query.yTolerance))), all(0x1p-1000));
    if constexpr (kTolerant) errorBound = plus(errorBound, times(plus(abs(b), abs(c)), all(query.margin)));
    const Lanes certain = less(errorBound, abs(cross));
    const Lanes above = _mm256_and_pd(spans, _mm256_xor_pd(less(all(0.0), cross), startsLeft));
    const uint64_t uncertain = kTolerant ? ~bitsOf(certain) & 0xF : bitsOf(_mm256_andnot_pd(certain, spans));
    return {static_cast<uint32_t>(bitsOf(_mm256_and_pd(certain, above))), static_cast<uint32_t>(uncertain)};
}

// Lanes 1, 2 and 3 of a and lane 0 of b.
Lanes shifted(Lanes a, Lanes b) {
    constexpr int kFirstLane = 1, kRotateByOne = 0x39;
    return _mm256_permute4x64_pd(_mm256_blend_pd(a, b, kFirstLane), kRotateByOne);
}
// The vertices that follow those of a: b begins with the last of them.
Vertices next(const Vertices& a, const Vertices& b) { return {shifted(a.x, b.x), shifted(a.y, b.y)}; }

template <class T>
Vertices gatherFour(const T* v0, const T* v1, const T* v2, const T* v3) {
    return {gather(v0, v1, v2, v3), gather(v0 + 1, v1 + 1, v2 + 1, v3 + 1)};
}

// Always two blocks: a branch between them would be mispredicted where the number of vertices varies. Lanes from count
// on hold the first vertex and are masked out.
template <bool kTolerant, class T>
[[gnu::noinline]] zan::EdgeClasses scanTwoBlocks(const T* v, int32_t count, const zan::HitQuery& query) {
    const auto at = [v, count](int64_t i) { return v + 2 * (i & -static_cast<int64_t>(i < count)); };
    const Vertices first = gatherFour(v, at(1), at(2), at(3)), second = gatherFour(at(4), at(5), at(6), at(7));
    const zan::EdgeClasses low = classifyFour<kTolerant>(first, next(first, second), query);
    const zan::EdgeClasses high = classifyFour<kTolerant>(second, next(second, first), query);
    const uint32_t valid = (uint32_t{1} << count) - 1;
    return {(low.above | high.above << 4) & valid, (low.uncertain | high.uncertain << 4) & valid};
}

template <bool kTolerant, class T>
zan::EdgeClasses scanSmallOutline(const void* vertices, int32_t count, const zan::HitQuery& query) {
    const auto* v = static_cast<const T*>(vertices);
    if (count != 4) return scanTwoBlocks<kTolerant>(v, count, query);
    const Vertices four = gatherFour(v, v + 2, v + 4, v + 6);
    return classifyFour<kTolerant>(four, next(four, four), query);
}

}  // namespace

const zan::EdgeKernel zan::kAvx2EdgeKernel = {
    "AVX2",
    4,
    {scan<kWithoutTolerance, double>, scan<kWithTolerance, double>, scan<kWithoutTolerance, float>,
     scan<kWithTolerance, float>},
    {scanSmallOutline<kWithoutTolerance, double>, scanSmallOutline<kWithTolerance, double>,
     scanSmallOutline<kWithoutTolerance, float>, scanSmallOutline<kWithTolerance, float>}};

// The AVX2 kernel of the hit test, four edges at a time. Compiled for AVX2: includes nothing that defines a function
// for other files.
#include "poly/kernels/edges_lanes.h"

namespace {

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
[[gnu::always_inline]] inline zan::EdgeClasses classifyFour(const XY& start, const XY& end,
                                                            const zan::HitQuery& query) {
    const Mask startsLeft = start.x < query.x, spans = startsLeft ^ (end.x < query.x);
    const Lanes b = start.x - end.x, c = start.y - end.y;
    const Lanes ac = (query.x - end.x) * c, hb = (end.y - query.y) * b, cross = ac + hb;
    Lanes errorBound = (abs(ac) + abs(hb)) * 0x1p-45 + abs(b) * query.yTolerance + 0x1p-1000;
    if constexpr (kTolerant) errorBound += (abs(b) + abs(c)) * query.margin;
    const Mask certain = abs(cross) > errorBound;
    const Mask above = spans & ((cross > 0.0) ^ startsLeft);
    const unsigned uncertain = kTolerant ? bitsOf(certain) ^ 0xF : bitsOf(~certain & spans);
    return {bitsOf(certain & above), uncertain};
}

// Lanes 1, 2 and 3 of a and lane 0 of b.
Lanes shifted(Lanes a, Lanes b) {
    constexpr int kFirstLane = 1, kRotateByOne = 0x39;
    return _mm256_permute4x64_pd(_mm256_blend_pd(a, b, kFirstLane), kRotateByOne);
}
// The vertices that follow those of a: b begins with the last of them.
XY next(const XY& a, const XY& b) { return {shifted(a.x, b.x), shifted(a.y, b.y)}; }

template <class T>
XY gatherFour(const T* v0, const T* v1, const T* v2, const T* v3) {
    return {gather(v0, v1, v2, v3), gather(v0 + 1, v1 + 1, v2 + 1, v3 + 1)};
}

// Always two blocks: a branch between them would be mispredicted where the number of vertices varies. Lanes from count
// on hold the first vertex and are masked out.
template <bool kTolerant, class T>
[[gnu::noinline]] zan::EdgeClasses scanTwoBlocks(const T* v, int32_t count, const zan::HitQuery& query) {
    const auto at = [v, count](int64_t i) { return v + 2 * (i & -static_cast<int64_t>(i < count)); };
    const XY first = gatherFour(v, at(1), at(2), at(3)), second = gatherFour(at(4), at(5), at(6), at(7));
    const zan::EdgeClasses low = classifyFour<kTolerant>(first, next(first, second), query);
    const zan::EdgeClasses high = classifyFour<kTolerant>(second, next(second, first), query);
    const uint32_t valid = (uint32_t{1} << count) - 1;
    return {(low.above | high.above << 4) & valid, (low.uncertain | high.uncertain << 4) & valid};
}

template <bool kTolerant, class T>
zan::EdgeClasses scanSmallOutline(const void* vertices, int32_t count, const zan::HitQuery& query) {
    const auto* v = static_cast<const T*>(vertices);
    if (count != 4) return scanTwoBlocks<kTolerant>(v, count, query);
    const XY four = gatherFour(v, v + 2, v + 4, v + 6);
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

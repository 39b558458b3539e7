// The look at turns with AVX2, four at a time. This file is compiled for AVX2: it may include nothing that defines a
// function.
#include "poly/kernels/turns.h"

#include <immintrin.h>

#include <cstdint>

namespace {

// Four numbers, one a vertex.
using Lanes = __m256d;

struct Vertices {
    Lanes x, y;
};

Vertices load(const double* v, int64_t stride) {
    const auto halves = [](const double* low, const double* high) {
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(low)), _mm_loadu_pd(high), 1);
    };
    const Lanes even = halves(v, v + 2 * stride);
    const Lanes odd = halves(v + stride, v + 3 * stride);
    return {_mm256_unpacklo_pd(even, odd), _mm256_unpackhi_pd(even, odd)};
}
Lanes size(Lanes a) { return _mm256_andnot_pd(_mm256_set1_pd(-0.0), a); }

int64_t scan(const double* vertices, int64_t stride, int64_t turns, zan::Turns& seen) {
    constexpr int kAll = 0xF;
    int64_t done = 0;
    int lefts = seen.left ? 1 : 0, rights = seen.right ? 1 : 0;
    for (; done <= turns - 4 && !(lefts != 0 && rights != 0); done += 4) {
        const double* v = vertices + done * stride;
        const Vertices from = load(v, stride), at = load(v + stride, stride), to = load(v + 2 * stride, stride);
        const Lanes a = _mm256_mul_pd(_mm256_sub_pd(at.x, from.x), _mm256_sub_pd(to.y, at.y));
        const Lanes b = _mm256_mul_pd(_mm256_sub_pd(to.x, at.x), _mm256_sub_pd(at.y, from.y));
        const Lanes cross = _mm256_sub_pd(a, b);
        const Lanes enough = _mm256_add_pd(_mm256_mul_pd(_mm256_add_pd(size(a), size(b)), _mm256_set1_pd(0x1p-46)),
                                           _mm256_set1_pd(0x1p-1040));
        if (_mm256_movemask_pd(_mm256_cmp_pd(size(cross), enough, _CMP_GT_OQ)) != kAll) break;
        const int right = _mm256_movemask_pd(cross);
        lefts |= right ^ kAll;
        rights |= right;
    }
    seen = {lefts != 0, rights != 0};
    return done;
}

}  // namespace

const zan::TurnKernel zan::kAvx2TurnKernel = {"avx2", scan};

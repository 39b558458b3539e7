// The AVX2 kernel of the convexity test, four turns at a time. Compiled for AVX2: includes nothing that defines a
// function.
#include "poly/kernels/turns.h"

#include <immintrin.h>

#include <cstdint>

namespace {

// One number for each of four vertices.
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
Lanes abs(Lanes a) { return _mm256_andnot_pd(_mm256_set1_pd(-0.0), a); }

// Each lane does the operations of addTurn's first bound in the same order. A block with a turn within that bound is
// left to the plain kernel.
int64_t scan(const double* vertices, int64_t stride, int64_t turns, zan::Turns& found) {
    constexpr int kAllLanes = 0xF;
    int64_t done = 0;
    int left = found.left ? 1 : 0, right = found.right ? 1 : 0;
    for (; done <= turns - 4 && !(left != 0 && right != 0); done += 4) {
        const double* v = vertices + done * stride;
        const Vertices from = load(v, stride), at = load(v + stride, stride), to = load(v + 2 * stride, stride);
        const Lanes a = _mm256_mul_pd(_mm256_sub_pd(at.x, from.x), _mm256_sub_pd(to.y, at.y));
        const Lanes b = _mm256_mul_pd(_mm256_sub_pd(to.x, at.x), _mm256_sub_pd(at.y, from.y));
        const Lanes cross = _mm256_sub_pd(a, b);
        const Lanes errorBound = _mm256_add_pd(_mm256_mul_pd(_mm256_add_pd(abs(a), abs(b)), _mm256_set1_pd(0x1p-46)),
                                               _mm256_set1_pd(0x1p-1040));
        if (_mm256_movemask_pd(_mm256_cmp_pd(abs(cross), errorBound, _CMP_GT_OQ)) != kAllLanes) break;
        const int rightLanes = _mm256_movemask_pd(cross);  // the sign bits
        left |= rightLanes ^ kAllLanes;
        right |= rightLanes;
    }
    found = {left != 0, right != 0};
    return done;
}

}  // namespace

const zan::TurnKernel zan::kAvx2TurnKernel = {"AVX2", scan};

// The loops over arrays of points with AVX2, mostly four points at a time. Each lane does the operations of
// point_rules.h in their order, without fused ones. What is less than a block, and all from a block that has something
// special, is for the plain form. This file is compiled for AVX2: it may include nothing that defines a function.
#include "matrix/kernels/points.h"

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace {

// Four numbers, one a point or one a component.
using Lanes = __m256d;

Lanes all(double x) { return _mm256_set1_pd(x); }
Lanes times(Lanes a, Lanes b) { return _mm256_mul_pd(a, b); }
Lanes plus(Lanes a, Lanes b) { return _mm256_add_pd(a, b); }
Lanes over(Lanes a, Lanes b) { return _mm256_div_pd(a, b); }

// All bits of a lane where low < x < high, none for NaN.
Lanes between(Lanes x, double low, double high) {
    return _mm256_and_pd(_mm256_cmp_pd(x, all(low), _CMP_GT_OQ), _mm256_cmp_pd(x, all(high), _CMP_LT_OQ));
}
Lanes nearZero(Lanes w) { return between(w, -1e-12, 1e-12); }
// One bit a lane.
int bitsOf(Lanes mask) { return _mm256_movemask_pd(mask); }

// The coordinates of four points, one array a coordinate.
struct Plane {
    Lanes x, y;
};
struct Space {
    Lanes x, y, z;
};

// The order of the points is 0, 2, 1, 3.
Plane loadPlane(const double* p) {
    const Lanes a = _mm256_loadu_pd(p);
    const Lanes b = _mm256_loadu_pd(p + 4);
    return {_mm256_unpacklo_pd(a, b), _mm256_unpackhi_pd(a, b)};
}
void storePlane(double* p, const Plane& q) {
    _mm256_storeu_pd(p, _mm256_unpacklo_pd(q.x, q.y));
    _mm256_storeu_pd(p + 4, _mm256_unpackhi_pd(q.x, q.y));
}

Space loadSpace(const double* p) {
    const auto halves = [p](int low, int high) {
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(p + low)), _mm_loadu_pd(p + high), 1);
    };
    const Lanes a = halves(0, 6);   // x0 y0 x2 y2
    const Lanes b = halves(2, 8);   // z0 x1 z2 x3
    const Lanes c = halves(4, 10);  // y1 z1 y3 z3
    return {_mm256_shuffle_pd(a, b, 0xA), _mm256_shuffle_pd(a, c, 0x5), _mm256_shuffle_pd(b, c, 0xA)};
}
void storeSpace(double* p, const Space& q) {
    const auto halves = [p](int low, int high, Lanes lanes) {
        _mm_storeu_pd(p + low, _mm256_castpd256_pd128(lanes));
        _mm_storeu_pd(p + high, _mm256_extractf128_pd(lanes, 1));
    };
    halves(0, 6, _mm256_unpacklo_pd(q.x, q.y));
    halves(2, 8, _mm256_shuffle_pd(q.z, q.x, 0xA));
    halves(4, 10, _mm256_unpackhi_pd(q.y, q.z));
}

// Calls block(first double of four points) for each whole block, until one returns false.
template <zan::PointTransform transform, std::ptrdiff_t components, class Block>
int32_t blocks(const void* matrix, int32_t count, void* points, Block block) {
    auto* p = static_cast<double*>(points);
    int32_t done = 0;
    for (; done <= count - 4; done += 4, p += 4 * components) {
        if (!block(p)) break;
    }
    return done == count ? count : zan::transformRest(transform, matrix, done, count, points);
}

// Two points in the lanes.
int32_t affine2(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    auto* p = static_cast<double*>(points);
    const Lanes row0 = _mm256_setr_pd(m[0], m[1], m[0], m[1]);
    const Lanes row1 = _mm256_setr_pd(m[3], m[4], m[3], m[4]);
    const Lanes row2 = _mm256_setr_pd(m[6], m[7], m[6], m[7]);
    const auto product = [&](Lanes q) {
        const Lanes x = _mm256_movedup_pd(q), y = _mm256_permute_pd(q, 0xF);
        return plus(plus(times(x, row0), times(y, row1)), row2);
    };
    int32_t done = 0;
    for (; done <= count - 2; done += 2, p += 4) _mm256_storeu_pd(p, product(_mm256_loadu_pd(p)));
    if (done < count) _mm_storeu_pd(p, _mm256_castpd256_pd128(product(_mm256_castpd128_pd256(_mm_loadu_pd(p)))));
    return count;
}

// A column of a matrix in every lane.
struct Column {
    Lanes k0, k1, k2;
};
Column column3(const double* m, int j) { return {all(m[j]), all(m[3 + j]), all(m[6 + j])}; }

int32_t product3(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    const Column c0 = column3(m, 0), c1 = column3(m, 1), c2 = column3(m, 2);
    return blocks<zan::kProduct3, 3>(matrix, count, points, [&](double* p) {
        const Space q = loadSpace(p);
        const auto dot = [&q](const Column& c) {
            return plus(plus(times(q.x, c.k0), times(q.y, c.k1)), times(q.z, c.k2));
        };
        storeSpace(p, {dot(c0), dot(c1), dot(c2)});
        return true;
    });
}

template <bool guard>
int32_t quotient3(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    const Column c0 = column3(m, 0), c1 = column3(m, 1), c2 = column3(m, 2);
    constexpr auto transform = guard ? zan::kGuardedQuotient3 : zan::kQuotient3;
    return blocks<transform, 3>(matrix, count, points, [&](double* p) {
        const Space q = loadSpace(p);
        const auto dot = [&q](const Column& c) {
            return plus(plus(times(q.x, c.k0), times(q.y, c.k1)), times(q.z, c.k2));
        };
        const Lanes w = dot(c2);
        if (guard && bitsOf(nearZero(w)) != 0) return false;
        storeSpace(p, {over(dot(c0), w), over(dot(c1), w), all(1.0)});
        return true;
    });
}

int32_t guardedQuotient2(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    const Column c0 = column3(m, 0), c1 = column3(m, 1), c2 = column3(m, 2);
    return blocks<zan::kGuardedQuotient2, 2>(matrix, count, points, [&](double* p) {
        const Plane q = loadPlane(p);
        const auto dot = [&q](const Column& c) { return plus(plus(times(q.x, c.k0), times(q.y, c.k1)), c.k2); };
        const Lanes w = dot(c2);
        if (bitsOf(nearZero(w)) != 0) return false;
        storePlane(p, {over(dot(c0), w), over(dot(c1), w)});
        return true;
    });
}

// Component j of (x, y, z, 1) times a Zan_Matrix4.
Lanes dot4(const Space& q, const double* m, int j) {
    const Lanes xy = plus(times(q.x, all(m[j])), times(q.y, all(m[4 + j])));
    return plus(plus(xy, times(q.z, all(m[8 + j]))), all(m[12 + j]));
}

int32_t affine3(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    return blocks<zan::kAffine3, 3>(matrix, count, points, [m](double* p) {
        const Space q = loadSpace(p);
        storeSpace(p, {dot4(q, m, 0), dot4(q, m, 1), dot4(q, m, 2)});
        return true;
    });
}

// 1 / w, without the wait for a division where every w is 1.
Lanes reciprocal(Lanes w) {
    const Lanes one = all(1.0);
    return bitsOf(_mm256_cmp_pd(w, one, _CMP_NEQ_UQ)) == 0 ? one : over(one, w);
}

// A homogeneous point of space, its four components in the lanes.
struct Rows {
    Lanes r0, r1, r2, r3;
};
Rows rows4(const void* matrix) {
    const auto* m = static_cast<const double*>(matrix);
    return {_mm256_loadu_pd(m), _mm256_loadu_pd(m + 4), _mm256_loadu_pd(m + 8), _mm256_loadu_pd(m + 12)};
}
Lanes productOf(const double* p, const Rows& m) {
    const Lanes xy = plus(times(_mm256_broadcast_sd(p), m.r0), times(_mm256_broadcast_sd(p + 1), m.r1));
    return plus(plus(xy, times(_mm256_broadcast_sd(p + 2), m.r2)), times(_mm256_broadcast_sd(p + 3), m.r3));
}

// A point of space with 1 as its w. One coordinate at a time is loaded: a host has often just stored it.
Lanes spaceProduct(const double* p, const Rows& m) {
    const Lanes xy = plus(times(_mm256_broadcast_sd(p), m.r0), times(_mm256_broadcast_sd(p + 1), m.r1));
    return plus(plus(xy, times(_mm256_broadcast_sd(p + 2), m.r2)), m.r3);
}
// The last components of four points.
Lanes lastOf(Lanes q0, Lanes q1, Lanes q2, Lanes q3) {
    return _mm256_permute2f128_pd(_mm256_unpackhi_pd(q0, q1), _mm256_unpackhi_pd(q2, q3), 0x31);
}

// Times 1 / w. A block with a w near zero is left to the plain form by the guarded transform; the other takes 1 for
// such a point's factor, which changes no bit.
template <bool guard>
int32_t reciprocal3(const void* matrix, int32_t count, void* points) {
    const Rows m = rows4(matrix);
    constexpr auto transform = guard ? zan::kGuardedReciprocal3 : zan::kUnlessNearZero3;
    return blocks<transform, 3>(matrix, count, points, [&m](double* p) {
        const Lanes q0 = spaceProduct(p, m), q1 = spaceProduct(p + 3, m), q2 = spaceProduct(p + 6, m),
                    q3 = spaceProduct(p + 9, m);
        const Lanes w = lastOf(q0, q1, q2, q3);
        if (guard && bitsOf(nearZero(w)) != 0) return false;
        const Lanes r = reciprocal(guard ? w : _mm256_blendv_pd(w, all(1.0), nearZero(w)));
        // What is stored behind a point is where the next one goes.
        _mm256_storeu_pd(p, times(q0, _mm256_permute4x64_pd(r, 0x00)));
        _mm256_storeu_pd(p + 3, times(q1, _mm256_permute4x64_pd(r, 0x55)));
        _mm256_storeu_pd(p + 6, times(q2, _mm256_permute4x64_pd(r, 0xAA)));
        const Lanes last = times(q3, _mm256_permute4x64_pd(r, 0xFF));
        _mm_storeu_pd(p + 9, _mm256_castpd256_pd128(last));
        _mm_store_sd(p + 11, _mm256_extractf128_pd(last, 1));
        return true;
    });
}

int32_t product4(const void* matrix, int32_t count, void* points) {
    const Rows m = rows4(matrix);
    return blocks<zan::kProduct4, 4>(matrix, count, points, [&m](double* p) {
        for (int i = 0; i < 16; i += 4) _mm256_storeu_pd(p + i, productOf(p + i, m));
        return true;
    });
}

template <zan::PointTransform transform>
int32_t reciprocal4(const void* matrix, int32_t count, void* points) {
    const Rows m = rows4(matrix);
    return blocks<transform, 4>(matrix, count, points, [&m](double* p) {
        const Lanes q0 = productOf(p, m), q1 = productOf(p + 4, m), q2 = productOf(p + 8, m), q3 = productOf(p + 12, m);
        const Lanes w = lastOf(q0, q1, q2, q3);
        const int special = transform == zan::kReciprocal4 ? 0 : bitsOf(nearZero(w));
        if (transform == zan::kGuardedReciprocal4 && special != 0) return false;
        const Lanes r = reciprocal(w);
        const auto divided = [](Lanes q, Lanes factor) { return _mm256_blend_pd(times(q, factor), all(1.0), 0x8); };
        _mm256_storeu_pd(p, divided(q0, _mm256_permute4x64_pd(r, 0x00)));
        _mm256_storeu_pd(p + 4, divided(q1, _mm256_permute4x64_pd(r, 0x55)));
        _mm256_storeu_pd(p + 8, divided(q2, _mm256_permute4x64_pd(r, 0xAA)));
        _mm256_storeu_pd(p + 12, divided(q3, _mm256_permute4x64_pd(r, 0xFF)));
        if (special != 0) {
            if ((special & 1) != 0) _mm256_storeu_pd(p, q0);
            if ((special & 2) != 0) _mm256_storeu_pd(p + 4, q1);
            if ((special & 4) != 0) _mm256_storeu_pd(p + 8, q2);
            if ((special & 8) != 0) _mm256_storeu_pd(p + 12, q3);
        }
        return true;
    });
}

// To the nearest integer, halves upwards; the numbers are such that this fits.
__m128i rounded(Lanes x) {
    const Lanes sum = plus(x, all(0.5));
    const Lanes whole = _mm256_round_pd(sum, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
    const Lanes halfway = _mm256_cmp_pd(whole, sum, _CMP_EQ_OQ);
    const Lanes below = _mm256_blendv_pd(_mm256_sub_pd(x, all(0.5)), x, halfway);
    return _mm256_cvttpd_epi32(_mm256_blendv_pd(sum, below, x));  // by the sign; either way 0 becomes 0
}

// Calls block(points, where they go) for all the points that each 16 bytes hold. What is left goes through as the last
// 16 bytes, read while they are what they were.
template <zan::PointTransform transform, int32_t held, class Block>
int32_t integerBlocks(const void* matrix, int32_t count, void* points, Block block) {
    if (count < held) return zan::transformRest(transform, matrix, 0, count, points);
    auto* p = static_cast<char*>(points);
    auto* last = reinterpret_cast<__m128i_u*>(p + std::ptrdiff_t(count - held) * (16 / held));
    const __m128i kept = _mm_loadu_si128(last);
    int32_t done = 0;
    for (; done <= count - held; done += held, p += 16) {
        auto* to = reinterpret_cast<__m128i_u*>(p);
        if (!block(_mm_loadu_si128(to), to)) return zan::transformRest(transform, matrix, done, count, points);
    }
    return done == count || block(kept, last) ? count : zan::transformRest(transform, matrix, done, count, points);
}

int32_t roundedPoint(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    const Lanes row0 = _mm256_setr_pd(m[1], m[0], m[1], m[0]);  // v comes first
    const Lanes row1 = _mm256_setr_pd(m[4], m[3], m[4], m[3]);
    const Lanes row2 = _mm256_setr_pd(m[7], m[6], m[7], m[6]);
    const auto two = [&](__m128i vh) {
        const Lanes q = _mm256_cvtepi32_pd(vh);
        return plus(plus(times(_mm256_permute_pd(q, 0xF), row0), times(_mm256_movedup_pd(q), row1)), row2);
    };
    return integerBlocks<zan::kRoundedPoint, 4>(matrix, count, points, [&](__m128i vh, __m128i_u* to) {
        const Lanes a = two(_mm_cvtepi16_epi32(vh));
        const Lanes b = two(_mm_cvtepi16_epi32(_mm_srli_si128(vh, 8)));
        const Lanes fit = _mm256_and_pd(between(a, -32768.0, 32767.0), between(b, -32768.0, 32767.0));
        if (bitsOf(fit) != 0xF) return false;
        _mm_storeu_si128(to, _mm_packs_epi32(rounded(a), rounded(b)));
        return true;
    });
}

int32_t roundedFixedPoint(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    const Lanes row0 = _mm256_setr_pd(m[0], m[1], m[0], m[1]);
    const Lanes row1 = _mm256_setr_pd(m[3], m[4], m[3], m[4]);
    const Lanes row2 = times(_mm256_setr_pd(m[6], m[7], m[6], m[7]), all(65536.0));
    return integerBlocks<zan::kRoundedFixedPoint, 2>(matrix, count, points, [&](__m128i hv, __m128i_u* to) {
        const Lanes q = _mm256_cvtepi32_pd(hv);
        const Lanes a = plus(plus(times(_mm256_movedup_pd(q), row0), times(_mm256_permute_pd(q, 0xF), row1)), row2);
        if (bitsOf(between(a, -2147483648.0, 2147483647.0)) != 0xF) return false;
        _mm_storeu_si128(to, rounded(a));
        return true;
    });
}

// To the range of the members, NaN to 0, without the fraction.
__m128i clampedAndTruncated(Lanes x) {
    const Lanes clamped = _mm256_min_pd(all(32766.0), _mm256_max_pd(all(-32767.0), x));  // the second one for NaN
    return _mm256_cvttpd_epi32(_mm256_and_pd(clamped, _mm256_cmp_pd(x, x, _CMP_ORD_Q)));
}

int32_t clampedPoint(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    return integerBlocks<zan::kClampedPoint, 4>(matrix, count, points, [m](__m128i vh, __m128i_u* to) {
        const Lanes x = _mm256_cvtepi32_pd(_mm_srai_epi32(vh, 16));
        const Lanes y = _mm256_cvtepi32_pd(_mm_srai_epi32(_mm_slli_epi32(vh, 16), 16));
        const Space p = {x, y, all(0.0)};
        const Lanes w = dot4(p, m, 3);
        const Lanes r = reciprocal(_mm256_blendv_pd(w, all(1.0), nearZero(w)));
        const __m128i h = clampedAndTruncated(times(dot4(p, m, 0), r));
        const __m128i v = clampedAndTruncated(times(dot4(p, m, 1), r));
        _mm_storeu_si128(to, _mm_blend_epi16(v, _mm_slli_epi32(h, 16), 0xAA));
        return true;
    });
}

}  // namespace

const zan::PointKernel zan::kAvx2PointKernel = {
    "AVX2",
    {affine2, product3, quotient3<false>, quotient3<true>, guardedQuotient2, affine3, product4,
     reciprocal4<zan::kReciprocal4>, reciprocal4<zan::kGuardedReciprocal4>, reciprocal3<true>,
     reciprocal4<zan::kUnlessNearZero4>, reciprocal3<false>, roundedPoint, roundedFixedPoint, clampedPoint}};

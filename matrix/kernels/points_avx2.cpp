// The AVX2 kernel of the loops over arrays of points, mostly four points at a time. Each lane does the operations of
// point_rules.h in the same order, none fused. Where a block has a special point (w near zero, a coordinate that does
// not fit), most loops leave that block, or all points from it on, to the plain loop. This file is compiled for AVX2:
// it must not include a header that defines a function for other files.
#include "frame/lanes.h"
#include "matrix/kernels/points.h"

#include <cstddef>
#include <cstdint>

namespace {

static_assert(kLanes == 4);

Mask between(Lanes x, double low, double high) { return (x > low) & (x < high); }
Mask nearZero(Lanes w) { return abs(w) < 1e-12; }

// Four points, their coordinates in separate registers.
struct SpacePoints {
    Lanes x, y, z;
};

// The lanes hold points 0, 2, 1, 3.
XY loadPlane(const double* p) {
    const Lanes a = load(p), b = load(p + 4);
    return {evenLanes(a, b), oddLanes(a, b)};
}
void storePlane(double* p, const XY& q) {
    store(p, evenLanes(q.x, q.y));
    store(p + 4, oddLanes(q.x, q.y));
}

// The lanes hold points 0, 1, 2, 3.
SpacePoints loadSpace(const double* p) {
    const auto halves = [p](int low, int high) {
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(p + low)), _mm_loadu_pd(p + high), 1);
    };
    const Lanes a = halves(0, 6);   // x0 y0 x2 y2
    const Lanes b = halves(2, 8);   // z0 x1 z2 x3
    const Lanes c = halves(4, 10);  // y1 z1 y3 z3
    return {_mm256_shuffle_pd(a, b, 0xA), _mm256_shuffle_pd(a, c, 0x5), _mm256_shuffle_pd(b, c, 0xA)};
}
void storeSpace(double* p, const SpacePoints& q) {
    const auto halves = [p](int low, int high, Lanes lanes) {
        _mm_storeu_pd(p + low, _mm256_castpd256_pd128(lanes));
        _mm_storeu_pd(p + high, _mm256_extractf128_pd(lanes, 1));
    };
    halves(0, 6, evenLanes(q.x, q.y));
    halves(2, 8, _mm256_shuffle_pd(q.z, q.x, 0xA));
    halves(4, 10, oddLanes(q.y, q.z));
}

// Calls block(p) for each block of four points, p at its first coordinate. From a block that returns false, which must
// have stored nothing, the plain loop continues.
template <zan::PointTransform transform, std::ptrdiff_t components, class Block>
int32_t blocks(const void* matrix, int32_t count, void* points, Block block) {
    auto* p = static_cast<double*>(points);
    int32_t done = 0;
    for (; done <= count - 4; done += 4, p += 4 * components) {
        if (!block(p)) break;
    }
    return done == count ? count : zan::transformRest(transform, matrix, done, count, p);
}

// p[0], p[1], p[0], p[1]. Loads single elements: a wider load would defeat store-to-load forwarding if the caller has
// just stored the matrix.
Lanes alternating(const double* p) { return _mm256_blend_pd(all(p[0]), all(p[1]), 0xA); }

// Two points at a time, x and y of both in the lanes.
int32_t planeAffine(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    auto* p = static_cast<double*>(points);
    const Lanes row0 = alternating(m), row1 = alternating(m + 3), row2 = alternating(m + 6);
    const auto product = [&](Lanes q) {
        const Lanes x = _mm256_movedup_pd(q), y = _mm256_permute_pd(q, 0xF);
        return x * row0 + y * row1 + row2;
    };
    int32_t done = 0;
    for (; done <= count - 2; done += 2, p += 4) store(p, product(load(p)));
    if (done < count) _mm_storeu_pd(p, _mm256_castpd256_pd128(product(_mm256_castpd128_pd256(_mm_loadu_pd(p)))));
    return count;
}

// The elements of a column of a Zan_Matrix3, each in all lanes.
struct Column {
    Lanes k0, k1, k2;
};
Column column3(const double* m, int j) { return {all(m[j]), all(m[3 + j]), all(m[6 + j])}; }

int32_t planeProduct(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    const Column c0 = column3(m, 0), c1 = column3(m, 1), c2 = column3(m, 2);
    return blocks<&zan::PointKernel::planeProduct, 3>(matrix, count, points, [&](double* p) {
        const SpacePoints q = loadSpace(p);
        const auto dot = [&q](const Column& c) { return q.x * c.k0 + q.y * c.k1 + q.z * c.k2; };
        storeSpace(p, {dot(c0), dot(c1), dot(c2)});
        return true;
    });
}

template <zan::PointTransform transform>
int32_t planeDivide(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    const Column c0 = column3(m, 0), c1 = column3(m, 1), c2 = column3(m, 2);
    constexpr bool checked = transform == &zan::PointKernel::planeCheckedDivide;
    return blocks<transform, 3>(matrix, count, points, [&](double* p) {
        const SpacePoints q = loadSpace(p);
        const auto dot = [&q](const Column& c) { return q.x * c.k0 + q.y * c.k1 + q.z * c.k2; };
        const Lanes w = dot(c2);
        if (checked && anyOf(nearZero(w))) return false;
        storeSpace(p, {dot(c0) / w, dot(c1) / w, all(1.0)});
        return true;
    });
}

int32_t planeCheckedDivideXY(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    const Column c0 = column3(m, 0), c1 = column3(m, 1), c2 = column3(m, 2);
    return blocks<&zan::PointKernel::planeCheckedDivideXY, 2>(matrix, count, points, [&](double* p) {
        const XY q = loadPlane(p);
        const auto dot = [&q](const Column& c) { return q.x * c.k0 + q.y * c.k1 + c.k2; };
        const Lanes w = dot(c2);
        if (anyOf(nearZero(w))) return false;
        storePlane(p, {dot(c0) / w, dot(c1) / w});
        return true;
    });
}

// Component j of (x, y, z, 1) times a Zan_Matrix4.
Lanes dot4(const SpacePoints& q, const double* m, int j) {
    return q.x * m[j] + q.y * m[4 + j] + q.z * m[8 + j] + m[12 + j];
}

int32_t spaceAffine(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    return blocks<&zan::PointKernel::spaceAffine, 3>(matrix, count, points, [m](double* p) {
        const SpacePoints q = loadSpace(p);
        storeSpace(p, {dot4(q, m, 0), dot4(q, m, 1), dot4(q, m, 2)});
        return true;
    });
}

// 1 / w. When all four are 1, as with an affine matrix, the latency of the division is avoided.
Lanes reciprocal(Lanes w) { return anyOf(w != 1.0) ? 1.0 / w : all(1.0); }

struct Rows {
    Lanes r0, r1, r2, r3;
};
Rows rows4(const void* matrix) {
    const auto* m = static_cast<const double*>(matrix);
    return {load(m), load(m + 4), load(m + 8), load(m + 12)};
}
// A homogeneous point of space times a matrix, the components of the product in the lanes.
Lanes productOf(const double* p, const Rows& m) { return p[0] * m.r0 + p[1] * m.r1 + p[2] * m.r2 + p[3] * m.r3; }

// The same for (x, y, z, 1). Loads single coordinates: the caller has often just stored them, and a wider load would
// defeat store-to-load forwarding.
Lanes productOfXYZ(const double* p, const Rows& m) { return p[0] * m.r0 + p[1] * m.r1 + p[2] * m.r2 + m.r3; }
// The last components of four products.
Lanes lastOf(Lanes q0, Lanes q1, Lanes q2, Lanes q3) {
    return _mm256_permute2f128_pd(oddLanes(q0, q1), oddLanes(q2, q3), 0x31);
}

// What a block does when one of its w is near zero. In a checked loop it returns false, so that the plain loop
// continues from this block and stops at the point. In the others the plain loop transforms this block alone, since
// dividing all lanes would raise flags for points that are not divided.
template <zan::PointTransform transform, bool checked>
bool handleNearZero(const void* matrix, double* block) {
    if (!checked) zan::transformRest(transform, matrix, 0, 4, block);
    return !checked;
}

template <zan::PointTransform transform>
int32_t spaceDivideXYZ(const void* matrix, int32_t count, void* points) {
    const Rows m = rows4(matrix);
    constexpr bool checked = transform == &zan::PointKernel::spaceCheckedDivideXYZ;
    return blocks<transform, 3>(matrix, count, points, [&m, matrix](double* p) {
        const Lanes q0 = productOfXYZ(p, m), q1 = productOfXYZ(p + 3, m), q2 = productOfXYZ(p + 6, m),
                    q3 = productOfXYZ(p + 9, m);
        const Lanes w = lastOf(q0, q1, q2, q3);
        if (anyOf(nearZero(w))) return handleNearZero<transform, checked>(matrix, p);
        const Lanes r = reciprocal(w);
        // Each store writes four components; the next point's store overwrites the fourth.
        store(p, q0 * r[0]);
        store(p + 3, q1 * r[1]);
        store(p + 6, q2 * r[2]);
        const Lanes last = q3 * r[3];
        _mm_storeu_pd(p + 9, _mm256_castpd256_pd128(last));
        _mm_store_sd(p + 11, _mm256_extractf128_pd(last, 1));
        return true;
    });
}

int32_t spaceProduct(const void* matrix, int32_t count, void* points) {
    const Rows m = rows4(matrix);
    return blocks<&zan::PointKernel::spaceProduct, 4>(matrix, count, points, [&m](double* p) {
        for (int i = 0; i < 16; i += 4) store(p + i, productOf(p + i, m));
        return true;
    });
}

template <zan::PointTransform transform>
int32_t spaceDivide(const void* matrix, int32_t count, void* points) {
    const Rows m = rows4(matrix);
    return blocks<transform, 4>(matrix, count, points, [&m, matrix](double* p) {
        const Lanes q0 = productOf(p, m), q1 = productOf(p + 4, m), q2 = productOf(p + 8, m), q3 = productOf(p + 12, m);
        const Lanes w = lastOf(q0, q1, q2, q3);
        if (transform != &zan::PointKernel::spaceDivide && anyOf(nearZero(w))) {
            return handleNearZero<transform, transform == &zan::PointKernel::spaceCheckedDivide>(matrix, p);
        }
        const Lanes r = reciprocal(w);
        const auto divided = [](Lanes q, double factor) { return _mm256_blend_pd(q * factor, all(1.0), 0x8); };
        store(p, divided(q0, r[0]));
        store(p + 4, divided(q1, r[1]));
        store(p + 8, divided(q2, r[2]));
        store(p + 12, divided(q3, r[3]));
        return true;
    });
}

// Rounded to the nearest integer, halves toward plus infinity, by the steps of zan::roundFitting. The results must fit.
__m128i rounded(Lanes x) {
    const Lanes sum = x + 0.5;
    const Lanes whole = _mm256_round_pd(sum, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
    const Lanes negative = whole == sum ? x : x - 0.5;
    return _mm256_cvttpd_epi32(_mm256_blendv_pd(sum, negative, x));  // by the sign bit of x: -0 gives 0 either way
}

// Calls block(points, destination) for each block of 16 bytes, which holds blockSize points. A remainder is done as the
// array's last 16 bytes, which overlap the block before and are therefore loaded before anything is stored. From a
// block that returns false, which must have stored nothing, the plain loop continues.
template <zan::PointTransform transform, int32_t blockSize, class Block>
int32_t integerBlocks(const void* matrix, int32_t count, void* points, Block block) {
    if (count < blockSize) return zan::transformRest(transform, matrix, 0, count, points);
    auto* p = static_cast<char*>(points);
    auto* last = reinterpret_cast<__m128i_u*>(p + std::ptrdiff_t(count - blockSize) * (16 / blockSize));
    const __m128i kept = _mm_loadu_si128(last);
    int32_t done = 0;
    for (; done <= count - blockSize; done += blockSize, p += 16) {
        auto* to = reinterpret_cast<__m128i_u*>(p);
        if (!block(_mm_loadu_si128(to), to)) return zan::transformRest(transform, matrix, done, count, p);
    }
    return done == count || block(kept, last) ? count : zan::transformRest(transform, matrix, done, count, p);
}

int32_t planeRound16(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    const Lanes row0 = _mm256_setr_pd(m[1], m[0], m[1], m[0]);  // a Zan_Point stores v first
    const Lanes row1 = _mm256_setr_pd(m[4], m[3], m[4], m[3]);
    const Lanes row2 = _mm256_setr_pd(m[7], m[6], m[7], m[6]);
    const auto two = [&](__m128i vh) {
        const Lanes q = _mm256_cvtepi32_pd(vh);
        return _mm256_permute_pd(q, 0xF) * row0 + _mm256_movedup_pd(q) * row1 + row2;
    };
    return integerBlocks<&zan::PointKernel::planeRound16, 4>(matrix, count, points, [&](__m128i vh, __m128i_u* to) {
        const Lanes a = two(_mm_cvtepi16_epi32(vh));
        const Lanes b = two(_mm_cvtepi16_epi32(_mm_srli_si128(vh, 8)));
        if (bitsOf(between(a, -32768.0, 32767.0) & between(b, -32768.0, 32767.0)) != 0xF) return false;
        _mm_storeu_si128(to, _mm_packs_epi32(rounded(a), rounded(b)));
        return true;
    });
}

int32_t planeRoundFixed(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    const Lanes row0 = _mm256_setr_pd(m[0], m[1], m[0], m[1]);
    const Lanes row1 = _mm256_setr_pd(m[3], m[4], m[3], m[4]);
    const Lanes row2 = _mm256_setr_pd(m[6], m[7], m[6], m[7]) * 65536.0;
    return integerBlocks<&zan::PointKernel::planeRoundFixed, 2>(matrix, count, points, [&](__m128i hv, __m128i_u* to) {
        const Lanes q = _mm256_cvtepi32_pd(hv);
        const Lanes a = _mm256_movedup_pd(q) * row0 + _mm256_permute_pd(q, 0xF) * row1 + row2;
        if (bitsOf(between(a, -2147483648.0, 2147483647.0)) != 0xF) return false;
        _mm_storeu_si128(to, rounded(a));
        return true;
    });
}

// Clamped to -32767 to 32766 and truncated; NaN gives 0.
__m128i clampedAndTruncated(Lanes x) {
    const Lanes clamped = _mm256_min_pd(all(32766.0), _mm256_max_pd(all(-32767.0), x));
    return _mm256_cvttpd_epi32(_mm256_and_pd(clamped, _mm256_cmp_pd(x, x, _CMP_ORD_Q)));
}

int32_t spaceClamp16(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    return integerBlocks<&zan::PointKernel::spaceClamp16, 4>(matrix, count, points, [m](__m128i vh, __m128i_u* to) {
        const Lanes x = _mm256_cvtepi32_pd(_mm_srai_epi32(vh, 16));
        const Lanes y = _mm256_cvtepi32_pd(_mm_srai_epi32(_mm_slli_epi32(vh, 16), 16));
        const SpacePoints p = {x, y, all(0.0)};
        const Lanes w = dot4(p, m, 3);
        const Lanes r = reciprocal(nearZero(w) ? all(1.0) : w);
        const __m128i h = clampedAndTruncated(dot4(p, m, 0) * r);
        const __m128i v = clampedAndTruncated(dot4(p, m, 1) * r);
        _mm_storeu_si128(to, _mm_blend_epi16(v, _mm_slli_epi32(h, 16), 0xAA));
        return true;
    });
}

}  // namespace

const zan::PointKernel zan::kAvx2PointKernel = {
    .name = "AVX2",
    .planeAffine = planeAffine,
    .planeProduct = planeProduct,
    .planeDivide = planeDivide<&PointKernel::planeDivide>,
    .planeCheckedDivide = planeDivide<&PointKernel::planeCheckedDivide>,
    .planeCheckedDivideXY = planeCheckedDivideXY,
    .spaceAffine = spaceAffine,
    .spaceProduct = spaceProduct,
    .spaceDivide = spaceDivide<&PointKernel::spaceDivide>,
    .spaceCheckedDivide = spaceDivide<&PointKernel::spaceCheckedDivide>,
    .spaceCheckedDivideXYZ = spaceDivideXYZ<&PointKernel::spaceCheckedDivideXYZ>,
    .spaceDivideUnlessNearZero = spaceDivide<&PointKernel::spaceDivideUnlessNearZero>,
    .spaceDivideUnlessNearZeroXYZ = spaceDivideXYZ<&PointKernel::spaceDivideUnlessNearZeroXYZ>,
    .planeRound16 = planeRound16,
    .planeRoundFixed = planeRoundFixed,
    .spaceClamp16 = spaceClamp16,
};

// The AVX2 kernel of layers in space: all four corners and all four edges at a time. Each lane does the operations of
// the plain kernel in the same order. Compiled for AVX2: includes nothing that defines a function for other files.
#include "frame/lanes.h"
#include "poly/kernels/layers.h"

namespace {

static_assert(kLanes == 4);

// Comparisons give Lanes, as select and both take them.
Lanes less(Lanes a, Lanes b) { return _mm256_cmp_pd(a, b, _CMP_LT_OQ); }
Lanes both(Lanes a, Lanes b) { return _mm256_and_pd(a, b); }
Lanes select(Lanes mask, Lanes ifSet, Lanes ifClear) { return _mm256_blendv_pd(ifClear, ifSet, mask); }

struct Rows {
    Lanes r0, r1, r2, r3;
};
Rows rowsOf(const double* m) { return {load(m), load(m + 4), load(m + 8), load(m + 12)}; }

// Whether row 0 or row 1 has a squared length near zero: the sums of both, from left to right, in two lanes.
bool degenerate(const Rows& m) {
    const Lanes row0 = m.r0 * m.r0, row1 = m.r1 * m.r1;
    const Lanes even = evenLanes(row0, row1), odd = oddLanes(row0, row1);
    const __m128d firstTwo = _mm_add_pd(_mm256_castpd256_pd128(even), _mm256_castpd256_pd128(odd));
    const __m128d firstThree = _mm_add_pd(firstTwo, _mm256_extractf128_pd(even, 1));
    const __m128d sums = _mm_add_pd(firstThree, _mm256_extractf128_pd(odd, 1));
    return _mm_movemask_pd(_mm_cmplt_pd(sums, _mm_set1_pd(1e-12))) != 0;
}

// Corners are loaded as single numbers: the caller has just stored them one by one, and a wider load would defeat
// store-to-load forwarding.

// One coordinate of the four corners, from that of corner 0 on.
Lanes coordinateOf(const double* p) {
    const Lanes low = _mm256_blend_pd(_mm256_broadcast_sd(p), _mm256_broadcast_sd(p + 3), 0x2);
    const Lanes high = _mm256_blend_pd(_mm256_broadcast_sd(p + 6), _mm256_broadcast_sd(p + 9), 0x8);
    return _mm256_blend_pd(low, high, 0xC);
}

// The point (x, y, z, 1) times a matrix.
Lanes product(Lanes x, Lanes y, Lanes z, const Rows& m) { return x * m.r0 + y * m.r1 + z * m.r2 + m.r3; }
Lanes product(const double* p, const Rows& m) {
    return product(_mm256_broadcast_sd(p), _mm256_broadcast_sd(p + 1), _mm256_broadcast_sd(p + 2), m);
}
// w where it divides, 1 where it is near zero.
Lanes divisor(Lanes w) { return select(both(less(all(-1e-12), w), less(w, all(1e-12))), all(1.0), w); }
Lanes reciprocal(Lanes w) { return 1.0 / w; }

// x, y and z of a point. Nothing is stored behind them.
void storePoint(double* p, Lanes xyz) {
    _mm_storeu_pd(p, _mm256_castpd256_pd128(xyz));
    _mm_store_sd(p + 2, _mm256_extractf128_pd(xyz, 1));
}

// Inlined into both functions, so that the rows stay in registers.
[[gnu::always_inline]] inline void transformCorners(double* p, const Rows& m) {
    Lanes q0 = product(p, m), q1 = product(p + 3, m), q2 = product(p + 6, m), q3 = product(p + 9, m);
    const Lanes w = _mm256_permute2f128_pd(oddLanes(q0, q1), oddLanes(q2, q3), 0x31);
    const Lanes d = divisor(w);
    const Lanes divides = _mm256_cmp_pd(d, all(1.0), _CMP_NEQ_UQ);
    // Without a projection every w is 1. Then the division, on which all stores depend, is skipped.
    if (signBits(divides) != 0) {
        const Lanes r = reciprocal(d);
        q0 *= r[0];
        q1 *= r[1];
        q2 *= r[2];
        q3 *= r[3];
    }
    // Each store writes four components; the next corner's store overwrites the fourth.
    store(p, q0);
    store(p + 3, q1);
    store(p + 6, q2);
    storePoint(p + 9, q3);
}

bool toEye(const void* layerToEye, void* corners) {
    auto* p = static_cast<double*>(corners);
    const Rows m = rowsOf(static_cast<const double*>(layerToEye));
    if (degenerate(m)) return false;
    transformCorners(p, m);
    return true;
}

// The clip points of four edges. The ends of an edge that does not cross the plane are replaced by (0, 0, 0): its lane
// must raise no floating-point flag that the plain kernel, which does not clip that edge, would not raise. Not inlined,
// because it would spill registers also where no edge crosses.
[[gnu::noinline]] void clipEdges(const double* corners, unsigned behind, unsigned crossed, const double* m,
                                 double* clipPoints) {
    const auto mask = [](unsigned bits) {
        const __m256i bitOfLane = _mm256_setr_epi64x(1, 2, 4, 8);
        const __m256i set = _mm256_and_si256(_mm256_set1_epi64x(bits), bitOfLane);
        return _mm256_castsi256_pd(_mm256_cmpeq_epi64(set, bitOfLane));
    };
    const Lanes crosses = mask(crossed), startsBehind = mask(behind);
    struct Ends {
        Lanes front, behind;
    };
    const auto ends = [&](const double* coordinate) {
        constexpr int kRotateByOne = 0x39;
        const Lanes starts = coordinateOf(coordinate);
        const Lanes start = both(starts, crosses), end = both(_mm256_permute4x64_pd(starts, kRotateByOne), crosses);
        return Ends{select(startsBehind, end, start), select(startsBehind, start, end)};
    };
    const Ends x = ends(corners), y = ends(corners + 1), z = ends(corners + 2);
    const Lanes t = (0.1 - z.behind) / select(crosses, z.front - z.behind, all(1.0));  // front has the greater z
    const auto at = [t](const Ends& e) { return e.behind + (e.front - e.behind) * t; };
    const Lanes px = at(x), py = at(y), pz = at(z);
    const auto dot = [=](int column) {
        const double* k = m + column;
        return px * k[0] + py * k[4] + pz * k[8] + k[12];
    };
    const Lanes r = reciprocal(divisor(dot(3)));
    const Lanes qx = dot(0) * r, qy = dot(1) * r, qz = dot(2) * r;
    const auto storeHalves = [clipPoints](int low, int high, Lanes lanes) {
        _mm_storeu_pd(clipPoints + low, _mm256_castpd256_pd128(lanes));
        _mm_storeu_pd(clipPoints + high, _mm256_extractf128_pd(lanes, 1));
    };
    storeHalves(0, 6, evenLanes(qx, qy));
    storeHalves(2, 8, _mm256_shuffle_pd(qz, qx, 0xA));
    storeHalves(4, 10, oddLanes(qy, qz));
}

bool toScreen(const void* eyeToScreen, void* corners, void* clipPoints, bool* cornerBehind) {
    auto* p = static_cast<double*>(corners);
    auto* clip = static_cast<double*>(clipPoints);
    const auto* elements = static_cast<const double*>(eyeToScreen);
    const Rows m = rowsOf(elements);
    if (degenerate(m)) return false;
    const Lanes depth = coordinateOf(p + 2);
    const Lanes isNan = _mm256_cmp_pd(depth, depth, _CMP_UNORD_Q);
    // If a z is NaN, comparisons do not show which corners are behind.
    if (signBits(isNan) != 0) {
        return zan::kPlainLayerKernel.toScreen(eyeToScreen, corners, clipPoints, cornerBehind);
    }
    const unsigned behind = signBits(less(depth, all(0.1)));
    const unsigned bytes = behind * 0x204081 & 0x01010101;  // bit i becomes byte i
    static_assert(sizeof(bool) == 1);
    __builtin_memcpy(cornerBehind, &bytes, sizeof bytes);
    const unsigned crossed = (behind ^ (behind >> 1 | behind << 3)) & 0xF;
    if (crossed != 0) {
        clipEdges(p, behind, crossed, elements, clip);
    } else {
        const Lanes zero = all(0.0), q = product(zero, zero, zero, m);
        const Lanes point = q * reciprocal(divisor(all(q[3])));
        for (double* to = clip; to != clip + 9; to += 3) store(to, point);
        storePoint(clip + 9, point);
    }
    transformCorners(p, m);
    return true;
}

}  // namespace

const zan::LayerKernel zan::kAvx2LayerKernel = {"AVX2", toEye, toScreen};

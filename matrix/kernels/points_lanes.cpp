// The kernel of the loops over arrays of points for registers of two doubles: NEON, WebAssembly SIMD, and SSE2 in the
// tests. Each lane does the operations of point_rules.h in the same order. Two layouts: two components of one point
// share a register, or the same component of two points, whichever is faster. Conversions between integers and doubles
// gain nothing: the loops over integer points are the plain ones.
#include "frame/lanes.h"
#include "matrix/kernels/points.h"

#include <cstddef>

namespace {

static_assert(kLanes == 2);

// What a transform does where w is near zero.
enum NearZero { kDivide, kLeaveUndivided, kStop };

// ---- Components of one point in the lanes. clang 14 for WebAssembly has a bug: it may move the load of a number that
// is copied to all lanes, as p[0] in p[0] * row, behind a store to the same point. So every store here depends on all
// numbers of its point.

// Elements are loaded one by one: a wider load would defeat store-to-load forwarding where the caller has just stored
// the matrix.
struct PlaneRows {
    explicit PlaneRows(const double* m) : xy{{m[0], m[1]}, {m[3], m[4]}, {m[6], m[7]}} {}
    Lanes xy[3];
};
struct SpaceRows {
    explicit SpaceRows(const double* m)
        : xy{{m[0], m[1]}, {m[4], m[5]}, {m[8], m[9]}, {m[12], m[13]}},
          zw{{m[2], m[3]}, {m[6], m[7]}, {m[10], m[11]}, {m[14], m[15]}} {}
    Lanes xy[4], zw[4];
};

struct SpacePoint {
    Lanes xy, zw;
};

// A point times the matrix. The point has four components, or three and w = 1.
template <int32_t components>
SpacePoint product(const SpaceRows& m, const double* p) {
    const Lanes xy = p[0] * m.xy[0] + p[1] * m.xy[1] + p[2] * m.xy[2];
    const Lanes zw = p[0] * m.zw[0] + p[1] * m.zw[1] + p[2] * m.zw[2];
    if constexpr (components == 3) return {xy + m.xy[3], zw + m.zw[3]};
    return {xy + p[3] * m.xy[3], zw + p[3] * m.zw[3]};
}

template <int32_t components>
void storePoint(double* p, const SpacePoint& q) {
    store(p, q.xy);
    if constexpr (components == 3) {
        p[2] = q.zw[0];
    } else {
        store(p + 2, q.zw);
    }
}

// Transforms of one point. False: the loop stops at this point, which is unchanged.
bool planeAffine(const PlaneRows& m, double* p) {
    store(p, p[0] * m.xy[0] + p[1] * m.xy[1] + m.xy[2]);
    return true;
}
bool spaceProduct(const SpaceRows& m, double* p) {
    storePoint<4>(p, product<4>(m, p));
    return true;
}
template <int32_t components, NearZero nearZero>
bool spaceDivide(const SpaceRows& m, double* p) {
    const SpacePoint q = product<components>(m, p);
    const double w = q.zw[1];
    if (nearZero != kDivide && __builtin_fabs(w) < 1e-12) {
        if (nearZero == kStop) return false;
        storePoint<components>(p, q);
        return true;
    }
    const double r = 1.0 / w;
    storePoint<components>(p, {q.xy * r, Lanes{q.zw[0] * r, 1.0}});
    return true;
}

template <int32_t components, class Matrix, bool (*transform)(const Matrix&, double*)>
int32_t eachPoint(const void* matrix, int32_t count, void* points) {
    const Matrix m(static_cast<const double*>(matrix));
    auto* p = static_cast<double*>(points);
    for (int32_t i = 0; i < count; ++i, p += components) {
        if (!transform(m, p)) return i;
    }
    return count;
}

// ---- The same component of two points in the lanes.

// Each element of a Zan_Matrix3 in both lanes.
struct Matrix3 {
    explicit Matrix3(const double* m)
        : at{all(m[0]), all(m[1]), all(m[2]), all(m[3]), all(m[4]), all(m[5]), all(m[6]), all(m[7]), all(m[8])} {}
    Lanes at[9];
};
// Each element of a Zan_Matrix4 but those of its last column in both lanes; row 3 by itself.
struct Matrix4Affine {
    explicit Matrix4Affine(const double* m)
        : at{all(m[0]), all(m[1]), all(m[2]), all(m[4]), all(m[5]), all(m[6]), all(m[8]), all(m[9]), all(m[10])},
          row3{all(m[12]), all(m[13]), all(m[14])} {}
    Lanes at[9], row3[3];
};

struct XYZ {
    Lanes x, y, z;
};

Lanes lowHigh(Lanes a, Lanes b) { return __builtin_shufflevector(a, b, 0, 3); }
Lanes highLow(Lanes a, Lanes b) { return __builtin_shufflevector(a, b, 1, 2); }

void storeXY(double* p, const XY& q) {
    store(p, evenLanes(q.x, q.y));
    store(p + 2, oddLanes(q.x, q.y));
}
XYZ loadXYZ(const double* p) {
    const Lanes a = load(p), b = load(p + 2), c = load(p + 4);  // x0 y0, z0 x1, y1 z1
    return {lowHigh(a, b), highLow(a, c), lowHigh(b, c)};
}
void storeXYZ(double* p, const XYZ& q) {
    store(p, evenLanes(q.x, q.y));
    store(p + 2, lowHigh(q.z, q.x));
    store(p + 4, oddLanes(q.y, q.z));
}

// Component j of products.
Lanes product(const Matrix3& m, const XY& q, int j) { return q.x * m.at[j] + q.y * m.at[3 + j] + m.at[6 + j]; }
Lanes product(const Matrix3& m, const XYZ& q, int j) { return q.x * m.at[j] + q.y * m.at[3 + j] + q.z * m.at[6 + j]; }
Lanes product(const Matrix4Affine& m, const XYZ& q, int j) {
    return q.x * m.at[j] + q.y * m.at[3 + j] + q.z * m.at[6 + j] + m.row3[j];
}

// Transforms of two points. False: w of one of them is near zero, and both are unchanged.
template <class Matrix>
bool productsXYZ(const Matrix& m, double* p) {
    const XYZ q = loadXYZ(p);
    storeXYZ(p, {product(m, q, 0), product(m, q, 1), product(m, q, 2)});
    return true;
}
template <NearZero nearZero>
bool planeDivide(const Matrix3& m, double* p) {
    const XYZ q = loadXYZ(p);
    const Lanes w = product(m, q, 2);
    if (nearZero == kStop && anyOf(abs(w) < 1e-12)) return false;
    storeXYZ(p, {product(m, q, 0) / w, product(m, q, 1) / w, all(1.0)});
    return true;
}
bool planeDivideXY(const Matrix3& m, double* p) {
    const XY q = loadXY(p);
    const Lanes w = product(m, q, 2);
    if (anyOf(abs(w) < 1e-12)) return false;
    storeXY(p, {product(m, q, 0) / w, product(m, q, 1) / w});
    return true;
}

// Transforms two points after two points, stops where it cannot, and returns how many are transformed. Not inlined, so
// that its two calls share the code.
template <std::ptrdiff_t components, class Matrix, bool (*transform)(const Matrix&, double*)>
[[gnu::noinline]] int32_t wholePairs(const double* matrix, int32_t count, double* p) {
    const Matrix m(matrix);
    int32_t done = 0;
    for (; done + 1 < count && transform(m, p); done += 2) p += 2 * components;
    return done;
}

// A last point, or the first of two that cannot both be transformed, is transformed in a copy that holds it twice.
template <std::ptrdiff_t components, class Matrix, bool (*transform)(const Matrix&, double*)>
int32_t eachTwoPoints(const void* matrix, int32_t count, void* points) {
    const auto* m = static_cast<const double*>(matrix);
    auto* p = static_cast<double*>(points);
    const int32_t done = wholePairs<components, Matrix, transform>(m, count, p);
    if (done >= count) return count;
    p += components * done;
    double two[2 * components];
    for (int k = 0; k < components; ++k) two[k] = two[components + k] = p[k];
    if (wholePairs<components, Matrix, transform>(m, 2, two) == 0) return done;
    for (int k = 0; k < components; ++k) p[k] = two[k];
    return done + 1;
}

}  // namespace

const zan::PointKernel zan::kLanesPointKernel = {
    .name = "two lanes",
    .planeAffine = eachPoint<2, PlaneRows, ::planeAffine>,
    .planeProduct = eachTwoPoints<3, Matrix3, productsXYZ>,
    .planeDivide = eachTwoPoints<3, Matrix3, ::planeDivide<kDivide>>,
    .planeCheckedDivide = eachTwoPoints<3, Matrix3, ::planeDivide<kStop>>,
    .planeCheckedDivideXY = eachTwoPoints<2, Matrix3, planeDivideXY>,
    .spaceAffine = eachTwoPoints<3, Matrix4Affine, productsXYZ>,
    .spaceProduct = eachPoint<4, SpaceRows, ::spaceProduct>,
    .spaceDivide = eachPoint<4, SpaceRows, ::spaceDivide<4, kDivide>>,
    .spaceCheckedDivide = eachPoint<4, SpaceRows, ::spaceDivide<4, kStop>>,
    .spaceCheckedDivideXYZ = eachPoint<3, SpaceRows, ::spaceDivide<3, kStop>>,
    .spaceDivideUnlessNearZero = eachPoint<4, SpaceRows, ::spaceDivide<4, kLeaveUndivided>>,
    .spaceDivideUnlessNearZeroXYZ = eachPoint<3, SpaceRows, ::spaceDivide<3, kLeaveUndivided>>,
    .planeRound16 = planeRound16Plain,
    .planeRoundFixed = planeRoundFixedPlain,
    .spaceClamp16 = spaceClamp16Plain,
};

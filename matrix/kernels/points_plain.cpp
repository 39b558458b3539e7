// The plain kernel of the loops over arrays of points: one point after another.
#include "matrix/kernels/points.h"
#include "matrix/point_rules.h"
#include "scalar/rounding.h"

#include <cmath>
#include <limits>

namespace {

using zan::Vector2;
using zan::Vector3;
using zan::Vector4;

// A local copy, which the compiler can keep in registers while the loop stores points. Element by element: a block copy
// stores in pieces that later loads straddle, which defeats store-to-load forwarding.
template <class Matrix>
Matrix copyOf(const void* matrix);
template <>
Zan_Matrix3 copyOf(const void* matrix) {
    const auto& from = *static_cast<const Zan_Matrix3*>(matrix);
    Zan_Matrix3 m;
    m.m00 = from.m00, m.m01 = from.m01, m.m02 = from.m02;
    m.m10 = from.m10, m.m11 = from.m11, m.m12 = from.m12;
    m.m20 = from.m20, m.m21 = from.m21, m.m22 = from.m22;
    return m;
}
template <>
Zan_Matrix4 copyOf(const void* matrix) {
    const auto& from = *static_cast<const Zan_Matrix4*>(matrix);
    Zan_Matrix4 m;
    m.m00 = from.m00, m.m01 = from.m01, m.m02 = from.m02, m.m03 = from.m03;
    m.m10 = from.m10, m.m11 = from.m11, m.m12 = from.m12, m.m13 = from.m13;
    m.m20 = from.m20, m.m21 = from.m21, m.m22 = from.m22, m.m23 = from.m23;
    m.m30 = from.m30, m.m31 = from.m31, m.m32 = from.m32, m.m33 = from.m33;
    return m;
}

// The loop of a transform that never stops.
template <class Matrix, class Point, Point (*transformOne)(const Matrix&, const Point&)>
int32_t each(const void* matrix, int32_t count, void* array) {
    const auto m = copyOf<Matrix>(matrix);
    auto* points = static_cast<Point*>(array);
    for (int32_t i = 0; i < count; ++i) points[i] = transformOne(m, points[i]);
    return count;
}

Vector3 planeDivide(const Zan_Matrix3& m, const Vector3& p) { return zan::divided(zan::product(m, p)); }
Vector4 spaceDivide(const Zan_Matrix4& m, const Vector4& p) { return zan::divided(zan::product(m, p)); }
Vector4 spaceDivideUnlessNearZero(const Zan_Matrix4& m, const Vector4& p) {
    return zan::dividedUnlessNearZero(zan::product(m, p));
}
Vector3 spaceDivideUnlessNearZeroXYZ(const Zan_Matrix4& m, const Vector3& p) {
    return zan::dropLast(spaceDivideUnlessNearZero(m, Vector4(p)));
}

void store(const Vector3& from, Vector2& to) { to = zan::dropLast(from); }
void store(const Vector4& from, Vector3& to) { to = zan::dropLast(from); }
template <class Point>
void store(const Point& from, Point& to) {
    to = from;
}
double lastOf(const Vector3& p) { return p.z; }
double lastOf(const Vector4& p) { return p.w; }

// Stops at a w near zero. Homogeneous is the type of operand and product: Point itself or, for points without w, the
// type with one component more, which is 1 in the operand.
template <class Matrix, class Point, class Homogeneous = Point>
int32_t checkedDivide(const void* matrix, int32_t count, void* array) {
    const auto m = copyOf<Matrix>(matrix);
    auto* points = static_cast<Point*>(array);
    for (int32_t i = 0; i < count; ++i) {
        const Homogeneous q = zan::product(m, Homogeneous(points[i]));
        if (zan::nearZero(lastOf(q))) return i;
        store(zan::divided(q), points[i]);
    }
    return count;
}

// Stops where a coordinate does not fit. Coordinates are in steps of 1 / stepsPerUnit; the matrix is in whole units, so
// that only its translation is scaled to steps. A point's h is stored before its v is tested: a v that does not fit
// leaves the new h behind.
template <class Point, class Coordinate, int32_t stepsPerUnit>
int32_t roundPoints(const void* matrix, int32_t count, void* array) {
    constexpr double low = std::numeric_limits<Coordinate>::min();
    constexpr double high = std::numeric_limits<Coordinate>::max();
    auto m = copyOf<Zan_Matrix3>(matrix);
    if constexpr (stepsPerUnit != 1) {
        m.m20 *= stepsPerUnit;
        m.m21 *= stepsPerUnit;
    }
    auto* points = static_cast<Point*>(array);
    for (int32_t i = 0; i < count; ++i) {
        const Vector2 p = zan::affine(m, {double(points[i].h), double(points[i].v)});
        if (p.x >= high || p.x <= low) return i;
        points[i].h = static_cast<Coordinate>(zan::roundDouble<int32_t>(p.x));
        if (p.y >= high || p.y <= low) return i;
        points[i].v = static_cast<Coordinate>(zan::roundDouble<int32_t>(p.y));
    }
    return count;
}

int16_t clampedAndTruncated(double x) {
    if (x <= -32767.0) return -32767;
    if (x >= 32766.0) return 32766;
    return std::isnan(x) ? int16_t{0} : static_cast<int16_t>(x);
}
Zan_Point spaceClamp16(const Zan_Matrix4& m, const Zan_Point& p) {
    const Vector3 q = spaceDivideUnlessNearZeroXYZ(m, {double(p.h), double(p.v), 0.0});
    return {clampedAndTruncated(q.y), clampedAndTruncated(q.x)};
}

}  // namespace

int32_t zan::planeRound16Plain(const void* matrix, int32_t count, void* points) {
    return roundPoints<Zan_Point, int16_t, 1>(matrix, count, points);
}
int32_t zan::planeRoundFixedPlain(const void* matrix, int32_t count, void* points) {
    return roundPoints<Zan_FixedPoint, Zan_Fixed, 65536>(matrix, count, points);
}
int32_t zan::spaceClamp16Plain(const void* matrix, int32_t count, void* points) {
    return each<Zan_Matrix4, Zan_Point, spaceClamp16>(matrix, count, points);
}

const zan::PointKernel zan::kPlainPointKernel = {
    .name = "plain",
    .planeAffine = each<Zan_Matrix3, Vector2, affine>,
    .planeProduct = each<Zan_Matrix3, Vector3, product>,
    .planeDivide = each<Zan_Matrix3, Vector3, planeDivide>,
    .planeCheckedDivide = checkedDivide<Zan_Matrix3, Vector3>,
    .planeCheckedDivideXY = checkedDivide<Zan_Matrix3, Vector2, Vector3>,
    .spaceAffine = each<Zan_Matrix4, Vector3, affine>,
    .spaceProduct = each<Zan_Matrix4, Vector4, product>,
    .spaceDivide = each<Zan_Matrix4, Vector4, spaceDivide>,
    .spaceCheckedDivide = checkedDivide<Zan_Matrix4, Vector4>,
    .spaceCheckedDivideXYZ = checkedDivide<Zan_Matrix4, Vector3, Vector4>,
    .spaceDivideUnlessNearZero = each<Zan_Matrix4, Vector4, spaceDivideUnlessNearZero>,
    .spaceDivideUnlessNearZeroXYZ = each<Zan_Matrix4, Vector3, spaceDivideUnlessNearZeroXYZ>,
    .planeRound16 = planeRound16Plain,
    .planeRoundFixed = planeRoundFixedPlain,
    .spaceClamp16 = spaceClamp16Plain,
};

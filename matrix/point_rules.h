// The transforms of one point. Every operation on arrays gives the same bits for each point. Sums run from left to
// right.
#ifndef ZAN_MATRIX_POINT_RULES_H
#define ZAN_MATRIX_POINT_RULES_H

#include "matrix/vectors.h"
#include "zan/matrix.h"

namespace zan {

/// Without the projective column.
inline Vector2 affine(const Zan_Matrix3& m, const Vector2& p) {
    return {p.x * m.m00 + p.y * m.m10 + m.m20, p.x * m.m01 + p.y * m.m11 + m.m21};
}
inline Vector3 affine(const Zan_Matrix4& m, const Vector3& p) {
    return {p.x * m.m00 + p.y * m.m10 + p.z * m.m20 + m.m30, p.x * m.m01 + p.y * m.m11 + p.z * m.m21 + m.m31,
            p.x * m.m02 + p.y * m.m12 + p.z * m.m22 + m.m32};
}
/// Of a homogeneous point; not divided.
inline Vector3 product(const Zan_Matrix3& m, const Vector3& p) {
    return {p.x * m.m00 + p.y * m.m10 + p.z * m.m20, p.x * m.m01 + p.y * m.m11 + p.z * m.m21,
            p.x * m.m02 + p.y * m.m12 + p.z * m.m22};
}
inline Vector4 product(const Zan_Matrix4& m, const Vector4& p) {
    return {
        p.x * m.m00 + p.y * m.m10 + p.z * m.m20 + p.w * m.m30, p.x * m.m01 + p.y * m.m11 + p.z * m.m21 + p.w * m.m31,
        p.x * m.m02 + p.y * m.m12 + p.z * m.m22 + p.w * m.m32, p.x * m.m03 + p.y * m.m13 + p.z * m.m23 + p.w * m.m33};
}

/// Divided by w: in the plane each coordinate by a division, in space by one reciprocal, so that last bits differ.
inline Vector3 divided(const Vector3& p) { return {p.x / p.z, p.y / p.z, 1.0}; }
inline Vector4 divided(const Vector4& p) {
    const double r = 1.0 / p.w;
    return {p.x * r, p.y * r, p.z * r, 1.0};
}
inline Vector4 dividedUnlessNearZero(const Vector4& p) { return nearZero(p.w) ? p : divided(p); }

inline Vector2 dropLast(const Vector3& p) { return {p.x, p.y}; }
inline Vector3 dropLast(const Vector4& p) { return {p.x, p.y, p.z}; }

}  // namespace zan

#endif  // ZAN_MATRIX_POINT_RULES_H

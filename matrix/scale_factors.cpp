// The scale factors of a matrix: the lengths of its rows over all columns, the projective one included.
#include "matrix/point_rules.h"

#include <cmath>

using zan::Vector2;
using zan::Vector3;
using zan::Vector4;

Vector2 Zan_Matrix3::GetScaleSquared() const {
    return {Vector3(m00, m01, m02).LengthSquared(), Vector3(m10, m11, m12).LengthSquared()};
}
Vector2 Zan_Matrix3::GetScale() const {
    const Vector2 squared = GetScaleSquared();
    return {std::sqrt(squared.x), std::sqrt(squared.y)};
}

Vector3 Zan_Matrix4::GetScaleSquared() const {
    return {Vector4(m00, m01, m02, m03).LengthSquared(), Vector4(m10, m11, m12, m13).LengthSquared(),
            Vector4(m20, m21, m22, m23).LengthSquared()};
}
Vector3 Zan_Matrix4::GetScale() const {
    const Vector3 squared = GetScaleSquared();
    return {std::sqrt(squared.x), std::sqrt(squared.y), std::sqrt(squared.z)};
}

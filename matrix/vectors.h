// Vectors in double precision: the library's aliases, dot and cross products, lengths, and the test for a number near
// zero. Sums run from left to right.
#ifndef ZAN_MATRIX_VECTORS_H
#define ZAN_MATRIX_VECTORS_H

#include "zan/types.h"

#include <cmath>

namespace zan {

using Vector2 = Zan_Vector2T<double>;
using Vector3 = Zan_Vector3T<double>;
using Vector4 = Zan_Vector4T<double>;

/// The tolerance for a w to divide by, the length of an axis and the slope of a ray against a plane. False for NaN.
inline bool nearZero(double x) { return std::fabs(x) < 1e-12; }

inline double dot(const Vector3& a, const Vector3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vector3 cross(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vector3& v) { return std::sqrt(v.LengthSquared()); }

/// Scales v to unit length. Returns false and leaves v as it is when its length is at most 1e-12 or NaN.
inline bool normalize(Vector3& v) {
    const double size = length(v);
    if (!(size > 1e-12)) return false;
    const double reciprocal = 1 / size;
    v = {v.x * reciprocal, v.y * reciprocal, v.z * reciprocal};
    return true;
}

inline double dot(const Vector2& a, const Vector2& b) { return a.x * b.x + a.y * b.y; }
inline double length(const Vector2& v) { return std::sqrt(v.x * v.x + v.y * v.y); }

}  // namespace zan

#endif  // ZAN_MATRIX_VECTORS_H

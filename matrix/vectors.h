// What is as good as zero, dot and cross products and lengths, in the one order of sums that all of the library uses.
#ifndef ZAN_MATRIX_VECTORS_H
#define ZAN_MATRIX_VECTORS_H

#include "zan/types.h"

#include <cmath>

namespace zan {

/// A w that nothing is divided by, a length without direction, a ray along a plane. NaN is not near zero.
inline bool nearZero(double x) { return std::fabs(x) < 1e-12; }

inline double dot(const Zan_Vector3T<double>& a, const Zan_Vector3T<double>& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Zan_Vector3T<double> cross(const Zan_Vector3T<double>& a, const Zan_Vector3T<double>& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Zan_Vector3T<double>& v) { return std::sqrt(v.LengthSquared()); }

}  // namespace zan

#endif  // ZAN_MATRIX_VECTORS_H

// Dot products and lengths in the one order of sums that everything in space and beyond uses.
#ifndef ZAN_SPACE_LENGTH_H
#define ZAN_SPACE_LENGTH_H

#include "matrix/vectors.h"

#include <cmath>

namespace zan {

/// Brings a vector to unit length; false, and it stays as it is, when it is too short.
inline bool normalize(Zan_Vector3T<double>& v) {
    const double size = length(v);
    if (!(size > 1e-12)) return false;
    const double reciprocal = 1 / size;
    v = {v.x * reciprocal, v.y * reciprocal, v.z * reciprocal};
    return true;
}

inline double dot(const Zan_Vector2T<double>& a, const Zan_Vector2T<double>& b) { return a.x * b.x + a.y * b.y; }
inline double length(const Zan_Vector2T<double>& v) { return std::sqrt(v.x * v.x + v.y * v.y); }

}  // namespace zan

#endif  // ZAN_SPACE_LENGTH_H

// Dot products and lengths in the one order of sums that everything in space and beyond uses.
#ifndef ZAN_SPACE_LENGTH_H
#define ZAN_SPACE_LENGTH_H

#include <cmath>

#include "zan/types.h"

namespace zan {

inline double dot(const Zan_Vector3T<double>& a, const Zan_Vector3T<double>& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline double length(const Zan_Vector3T<double>& v) { return std::sqrt(v.LengthSquared()); }

inline double dot(const Zan_Vector2T<double>& a, const Zan_Vector2T<double>& b) { return a.x * b.x + a.y * b.y; }
inline double length(const Zan_Vector2T<double>& v) { return std::sqrt(v.x * v.x + v.y * v.y); }

/// Strictly between -1e-12 and 1e-12: too short, too flat or too parallel to divide by.
inline bool nearZero(double value) { return -1e-12 < value && value < 1e-12; }

}  // namespace zan

#endif  // ZAN_SPACE_LENGTH_H

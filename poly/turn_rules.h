// The plain form of the convexity test's predicate; inline, for polygons of a few vertices.
#ifndef ZAN_POLY_TURN_RULES_H
#define ZAN_POLY_TURN_RULES_H

#include "matrix/vectors.h"
#include "poly/kernels/turns.h"

#include <cmath>

namespace zan {

/// The error bound of the cross product of two edges; a cross product within it does not count as a turn.
inline double crossError(const Vector2& d1, const Vector2& d2) {
    constexpr double e = 0x1p-52;
    const double x1 = std::fabs(d1.x), y1 = std::fabs(d1.y), x2 = std::fabs(d2.x), y2 = std::fabs(d2.y);
    return (y1 * (x2 * e) + x2 * (y1 * e) + (x2 * e) * (y1 * e)) +
           (y2 * (x1 * e) + x1 * (y2 * e) + (y2 * e) * (x1 * e));
}

/// Adds the turn from edge d1 to edge d2 to those found: left when cross(d1, d2) > crossError, right when it is below
/// -crossError.
inline void addTurn(const Vector2& d1, const Vector2& d2, Turns& found) {
    const double a = d1.x * d2.y, b = d2.x * d1.y;
    const double cross = a - b;
    // A cheaper bound first, which decides most turns. crossError is about 2^-51 * (|a| + |b|); this one is 32 times as
    // much, which covers all rounding, and 2^-1040 covers underflow. Where a or b overflows it is infinite or NaN.
    const double errorBound = (std::fabs(a) + std::fabs(b)) * 0x1p-46 + 0x1p-1040;
    if (!(std::fabs(cross) > errorBound) && !(std::fabs(cross) > crossError(d1, d2))) return;
    found.left |= cross > 0;
    found.right |= !(cross > 0);
}

}  // namespace zan

#endif  // ZAN_POLY_TURN_RULES_H

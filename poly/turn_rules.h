// What a turn of a polygon is: the plain form, which is inline for polygons of a few vertices.
#ifndef ZAN_POLY_TURN_RULES_H
#define ZAN_POLY_TURN_RULES_H

#include "poly/kernels/turns.h"

#include <cmath>

namespace zan {

struct Delta {
    double x, y;
};

/// The rounding error of the cross product of two edges.
inline double crossError(const Delta& d1, const Delta& d2) {
    constexpr double e = 0x1p-52;
    const double x1 = std::fabs(d1.x), y1 = std::fabs(d1.y), x2 = std::fabs(d2.x), y2 = std::fabs(d2.y);
    return (y1 * (x2 * e) + x2 * (y1 * e) + (x2 * e) * (y1 * e)) +
           (y2 * (x1 * e) + x1 * (y2 * e) + (y2 * e) * (x1 * e));
}

/// Looks at the turn from one edge to the next, which counts when its cross product exceeds its rounding error.
inline void look(const Delta& d1, const Delta& d2, Turns& seen) {
    const double a = d1.x * d2.y, b = d2.x * d1.y;
    const double cross = a - b;
    // Never less than the rounding error, by far: most turns are wider, and only the others need it exactly.
    const double enough = (std::fabs(a) + std::fabs(b)) * 0x1p-46 + 0x1p-1040;
    if (!(std::fabs(cross) > enough) && !(std::fabs(cross) > crossError(d1, d2))) return;
    seen.left |= cross > 0;
    seen.right |= !(cross > 0);
}

}  // namespace zan

#endif  // ZAN_POLY_TURN_RULES_H

// The distance from a point to the line through a segment; inline, for the loops of the hit tests.
#ifndef ZAN_SPACE_SEGMENT_DISTANCE_H
#define ZAN_SPACE_SEGMENT_DISTANCE_H

#include "matrix/vectors.h"

#include <cmath>

namespace zan {

/// The computation of Zan_PerpDistTo2DLine.
inline void perpDistTo2DLine(const Vector2& p, const Vector2& a, const Vector2& b, bool& within, double& distance) {
    const Vector2 d(b.x - a.x, b.y - a.y);
    const Vector2 v(p.x - a.x, p.y - a.y);
    const double lengthSquared = dot(d, d);
    const double fromASquared = dot(v, v);
    const double segmentLength = std::sqrt(lengthSquared);
    // Not divided before the test: 1 / 0 would raise the divide-by-zero flag.
    const double reciprocal = segmentLength > 1e-12 ? 1 / segmentLength : 0;
    if (!nearZero(reciprocal)) {
        const Vector2 u(d.x * reciprocal, d.y * reciprocal);
        const double t = dot(u, v);
        // beyond is |v| > |d|, compared by the squares. Only squares within a relative 1e-14 can round to equal roots,
        // and only they need the second root.
        bool beyond = fromASquared > lengthSquared * (1 + 1e-14);
        if (!beyond && fromASquared > lengthSquared) beyond = std::sqrt(fromASquared) > segmentLength;
        within = !(t < 0) && !beyond;
        distance = length(Vector2(v.x - t * u.x, v.y - t * u.y));
    } else {
        within = false;
        distance = std::sqrt(fromASquared);
    }
}

}  // namespace zan

#endif  // ZAN_SPACE_SEGMENT_DISTANCE_H

// The distance from a point to a segment's line, inline for the loops of the hit tests.
#ifndef ZAN_SPACE_SEGMENT_DISTANCE_H
#define ZAN_SPACE_SEGMENT_DISTANCE_H

#include "space/length.h"

namespace zan {

/// Zan_PerpDistTo2DLine.
inline int32_t perpDistTo2DLine(const Zan_Vector2T<double>& p, const Zan_Vector2T<double>& a,
                                const Zan_Vector2T<double>& b, bool& within, double& distance) {
    const Zan_Vector2T<double> d(b.x - a.x, b.y - a.y);
    const Zan_Vector2T<double> v(p.x - a.x, p.y - a.y);
    const double segmentSquared = dot(d, d);
    const double fromASquared = dot(v, v);
    const double segment = std::sqrt(segmentSquared);
    const double reciprocal = 1 / segment;
    if (segment > 1e-12 && !nearZero(reciprocal)) {
        const Zan_Vector2T<double> u(d.x * reciprocal, d.y * reciprocal);
        const double t = dot(u, v);
        // |v| > |d|; their squares tell, except where they are so close that the roots may round to the same.
        bool beyond = fromASquared > segmentSquared * (1 + 1e-14);
        if (!beyond && fromASquared > segmentSquared) beyond = std::sqrt(fromASquared) > segment;
        within = !(t < 0) && !beyond;
        distance = length(Zan_Vector2T<double>(v.x - t * u.x, v.y - t * u.y));
    } else {
        within = false;
        distance = std::sqrt(fromASquared);
    }
    return 0;
}

}  // namespace zan

#endif  // ZAN_SPACE_SEGMENT_DISTANCE_H

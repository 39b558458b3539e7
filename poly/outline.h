// What the outlines of layers in the plane and in space share.
#ifndef ZAN_POLY_OUTLINE_H
#define ZAN_POLY_OUTLINE_H

#include "matrix/point_rules.h"
#include "poly/point_in_polygon.h"
#include "space/segment_distance.h"
#include "zan/poly.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace zan {

using Edge = std::pair<Vector2, Vector2>;

/// The index of a corner or edge, checked in builds with assertions.
inline int32_t checkedCorner(int32_t i) {
    assert(0 <= i && i < 4);
    return i;
}
/// The corner at the end of edge i.
inline int32_t nextCorner(int32_t i) { return (checkedCorner(i) + 1) % 4; }

/// Row 0 or row 1 has a squared length near zero: the layer is projected to a line or a point.
inline bool degenerate(const Zan_Matrix3& m) {
    return nearZero(Vector3(m.m00, m.m01, m.m02).LengthSquared()) ||
           nearZero(Vector3(m.m10, m.m11, m.m12).LengthSquared());
}
inline bool degenerate(const Zan_Matrix4& m) {
    return nearZero(Vector4(m.m00, m.m01, m.m02, m.m03).LengthSquared()) ||
           nearZero(Vector4(m.m10, m.m11, m.m12, m.m13).LengthSquared());
}

/// The least distance from p to an edge; -1 when GetEdge gives none of the four edges.
template <class Poly>
double minimumEdgeDistance(const Poly& poly, const Vector2& p) {
    double best = -1.0;
    for (int32_t i = 0; i < 4; ++i) {
        Edge edge;
        if (!poly.GetEdge(i, &edge)) continue;
        bool within = false;
        double distance = 0;
        perpDistTo2DLine(p, edge.first, edge.second, within, distance);
        if (!within) distance = std::sqrt(std::min(p.DistanceSquared(edge.first), p.DistanceSquared(edge.second)));
        if (best < 0 || best > distance) best = distance;
    }
    return best;
}

}  // namespace zan

#endif  // ZAN_POLY_OUTLINE_H

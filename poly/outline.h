// What the outlines of layers in the plane and in space have in common.
#ifndef ZAN_POLY_OUTLINE_H
#define ZAN_POLY_OUTLINE_H

#include "frame/report.h"
#include "matrix/point_rules.h"
#include "space/segment_distance.h"
#include "zan/poly.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace zan {

using Point = Zan_Vector2T<double>;
using Edge = std::pair<Point, Point>;

/// The index of a corner or edge as the host gave it.
inline int32_t corner(int32_t i) {
    assert(0 <= i && i < 4);
    return i;
}
/// The corner at the end of edge i.
inline int32_t nextCorner(int32_t i) { return (corner(i) + 1) % 4; }

/// One of the first two rows has next to no length: the layer is seen as nothing, or as a line.
inline bool degenerate(const Zan_Matrix3& m) {
    return nearZero(Vector3(m.m00, m.m01, m.m02).LengthSquared()) ||
           nearZero(Vector3(m.m10, m.m11, m.m12).LengthSquared());
}
inline bool degenerate(const Zan_Matrix4& m) {
    return nearZero(Vector4(m.m00, m.m01, m.m02, m.m03).LengthSquared()) ||
           nearZero(Vector4(m.m10, m.m11, m.m12, m.m13).LengthSquared());
}

/// Zan_IsFloatPointInConcavePoly for 1 vertex or more.
bool pointInside(const Point& p, const Point* outline, int32_t count, double tolerance);

/// -1 when GetEdge gives none of the four edges.
template <class Poly>
double minimumEdgeDistance(const Poly& poly, const Point& p) {
    double best = -1.0;
    for (int32_t i = 0; i < 4; ++i) {
        Edge edge;
        if (!poly.GetEdge(i, &edge)) continue;
        bool within = false;
        double distance = 0;
        throwIfFailed(perpDistTo2DLine(p, edge.first, edge.second, within, distance));
        if (!within) distance = std::sqrt(std::min(p.DistanceSquared(edge.first), p.DistanceSquared(edge.second)));
        if (best < 0 || best > distance) best = distance;
    }
    return best;
}

}  // namespace zan

#endif  // ZAN_POLY_OUTLINE_H

// Is a transformed quadrilateral seen edge-on?
#include "space/length.h"
#include "zan/space.h"

#include <algorithm>

int32_t Zan_IsQuadEdgeOn(const Zan_Matrix4* m, const Zan_Vector3T<double>* quad, double tolerance, bool orthographic,
                         bool* edgeOn) {
    *edgeOn = false;
    Zan_Vector3T<double> seen[4];
    std::copy_n(quad, 4, seen);
    Zan_Transform3DFloatPoints(m, 4, seen);
    Zan_PlaneEq plane;
    Zan_GetPlaneEquation(seen, 4, &plane, nullptr);
    Zan_Vector3T<double> sight(0, 0, 1);
    if (!orthographic) {
        sight = {(seen[0].x + seen[1].x + seen[2].x + seen[3].x) * 0.25,
                 (seen[0].y + seen[1].y + seen[2].y + seen[3].y) * 0.25,
                 (seen[0].z + seen[1].z + seen[2].z + seen[3].z) * 0.25};
    }
    Zan_Vector3T<double> normal(plane.a, plane.b, plane.c);
    if (!zan::normalize(normal) || !zan::normalize(sight)) return 0;
    const double cosine = zan::dot(sight, normal);
    *edgeOn = -tolerance < cosine && cosine < tolerance;
    return 0;
}

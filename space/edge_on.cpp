// Whether a transformed quadrilateral is seen edge-on.
#include "matrix/vectors.h"
#include "zan/space.h"

#include <algorithm>

using zan::Vector3;

int32_t Zan_IsQuadEdgeOn(const Zan_Matrix4* m, const Vector3* quad, double tolerance, bool orthographic, bool* edgeOn) {
    *edgeOn = false;
    Vector3 corners[4];
    std::copy_n(quad, 4, corners);
    Zan_Transform3DFloatPoints(m, 4, corners);
    Zan_PlaneEq plane;
    Zan_GetPlaneEquation(corners, 4, &plane, nullptr);
    Vector3 viewDirection(0, 0, 1);
    if (!orthographic) {
        viewDirection = {(corners[0].x + corners[1].x + corners[2].x + corners[3].x) * 0.25,
                         (corners[0].y + corners[1].y + corners[2].y + corners[3].y) * 0.25,
                         (corners[0].z + corners[1].z + corners[2].z + corners[3].z) * 0.25};
    }
    Vector3 normal(plane.a, plane.b, plane.c);
    if (!zan::normalize(normal) || !zan::normalize(viewDirection)) return 0;
    const double cosine = zan::dot(viewDirection, normal);
    *edgeOn = -tolerance < cosine && cosine < tolerance;
    return 0;
}

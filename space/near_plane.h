// Clipping a segment at the near plane; inline, for the edges of layer outlines.
#ifndef ZAN_SPACE_NEAR_PLANE_H
#define ZAN_SPACE_NEAR_PLANE_H

#include "matrix/vectors.h"
#include "zan/space.h"

#include <cmath>

namespace zan {

/// Where a segment with one end in front of the near plane and the other behind it crosses the plane.
inline Vector3 nearPlanePoint(const Vector3& front, const Vector3& behind) {
    const double t = (Zan_kNearPlaneZ - behind.z) / std::fabs(front.z - behind.z);
    return {behind.x + (front.x - behind.x) * t, behind.y + (front.y - behind.y) * t,
            behind.z + (front.z - behind.z) * t};
}

/// The computation of Zan_Clip3DLine. The ends are copies, so clipPoint may be one of the caller's ends.
inline void clipAtNearPlane(Vector3 a, Vector3 b, bool& aBehind, bool& bBehind, Vector3& clipPoint) {
    aBehind = bBehind = a.z < Zan_kNearPlaneZ && b.z < Zan_kNearPlaneZ;
    clipPoint = {0, 0, 0};
    if (aBehind || (a.z >= Zan_kNearPlaneZ && b.z >= Zan_kNearPlaneZ)) return;
    bBehind = a.z > b.z;
    aBehind = !bBehind;
    clipPoint = aBehind ? nearPlanePoint(b, a) : nearPlanePoint(a, b);
}

}  // namespace zan

#endif  // ZAN_SPACE_NEAR_PLANE_H

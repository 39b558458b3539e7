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

/// The computation of Zan_Clip3DLine. clipPoint may be one of the ends.
inline void clipAtNearPlane(const Vector3& a, const Vector3& b, bool& aBehind, bool& bBehind, Vector3& clipPoint) {
    const bool bothBehind = (a.z < Zan_kNearPlaneZ) & (b.z < Zan_kNearPlaneZ);
    const bool bothInFront = (a.z >= Zan_kNearPlaneZ) & (b.z >= Zan_kNearPlaneZ);
    if (bothBehind | bothInFront) {
        aBehind = bBehind = bothBehind;
        clipPoint = {0, 0, 0};
        return;
    }
    // By index, since a branch on which end is behind would mispredict.
    const Vector3* const ends[] = {&a, &b};
    bool* const flags[] = {&aBehind, &bBehind};
    const unsigned indexBehind = a.z > b.z ? 1 : 0;
    aBehind = bBehind = false;
    *flags[indexBehind] = true;
    clipPoint = nearPlanePoint(*ends[1 - indexBehind], *ends[indexBehind]);
}

}  // namespace zan

#endif  // ZAN_SPACE_NEAR_PLANE_H

// Clipping a segment at the near plane; inline, for the edges of layer outlines.
#ifndef ZAN_SPACE_NEAR_PLANE_H
#define ZAN_SPACE_NEAR_PLANE_H

#include "matrix/vectors.h"
#include "zan/space.h"

#include <cmath>
#include <utility>

namespace zan {

/// The computation of Zan_Clip3DLine. The ends are copies, so clipPoint may be one of the caller's ends.
inline void clipAtNearPlane(Vector3 a, Vector3 b, bool& aBehind, bool& bBehind, Vector3& clipPoint) {
    aBehind = bBehind = a.z < Zan_kNearPlaneZ && b.z < Zan_kNearPlaneZ;
    clipPoint = {0, 0, 0};
    if (aBehind || (a.z >= Zan_kNearPlaneZ && b.z >= Zan_kNearPlaneZ)) return;
    bBehind = a.z > b.z;
    aBehind = !bBehind;
    if (aBehind) std::swap(a, b);
    const double t = (Zan_kNearPlaneZ - b.z) / std::fabs(a.z - b.z);
    clipPoint = {b.x + (a.x - b.x) * t, b.y + (a.y - b.y) * t, b.z + (a.z - b.z) * t};
}

}  // namespace zan

#endif  // ZAN_SPACE_NEAR_PLANE_H

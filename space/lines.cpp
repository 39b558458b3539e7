// Segments: clipped at the near plane, clipped to a rectangle, and the distance from a point to their line. Nothing
// here reports.
#include "space/near_plane.h"
#include "space/segment_distance.h"
#include "zan/space.h"

#include <algorithm>

using zan::Vector2;
using zan::Vector3;

int32_t Zan_Clip3DLine(const Vector3* a, const Vector3* b, bool* aBehind, bool* bBehind, Vector3* clipPoint) {
    zan::clipAtNearPlane(*a, *b, *aBehind, *bBehind, *clipPoint);
    return 0;
}

int32_t Zan_PerpDistTo2DLine(const Vector2* p, const Vector2* a, const Vector2* b, bool* withinSegment,
                             double* distance) {
    bool within = false;
    zan::perpDistTo2DLine(*p, *a, *b, within, *distance);
    if (withinSegment != nullptr) *withinSegment = within;
    return 0;
}

namespace {

// Comparisons are combined with & and |, because a branch on each would mispredict. All is inline, so that the ends
// stay in registers.
inline bool isInside(const Zan_FloatRect& rect, const Vector2& p) {
    return (rect.left <= p.x) & (p.x <= rect.right) & (rect.top <= p.y) & (p.y <= rect.bottom);
}

// Whether the spans from low to high and between a and b have no length in common. Orders a and b by index, since a
// branch on their order would mispredict.
inline bool areApart(double low, double high, double a, double b) {
    const double ends[] = {a, b};
    const bool swapped = b < a;
    return std::max(low, ends[swapped ? 1 : 0]) >= std::min(high, ends[swapped ? 0 : 1]);
}

// If an end lies beyond the low or the high side of one axis, moves it along its segment to that side. u is the
// coordinate perpendicular to the sides, v the one along them. False when the segment runs parallel to the side.
inline bool moveToSide(double low, double high, double& u, double& v, double otherU, double otherV) {
    if (!((u < low) | (u > high))) return true;
    const double side = u < low ? low : high;
    const double delta = u - otherU;
    if (delta == 0) return false;
    v = v + (otherV - v) * (u - side) / delta;
    u = side;
    return true;
}

// Moves an end to the left or right side, then to the top or bottom.
inline bool clipEnd(const Zan_FloatRect& rect, Vector2& end, const Vector2& other) {
    return moveToSide(rect.left, rect.right, end.x, end.y, other.x, other.y) &&
           moveToSide(rect.top, rect.bottom, end.y, end.x, other.y, other.x);
}

}  // namespace

int32_t Zan_ClipLine2Rect(const Zan_FloatRect* rect, Vector2* a, Vector2* b, bool* visible) {
    const Zan_FloatRect r = *rect;
    Vector2 first = *a;
    Vector2 second = *b;
    const bool firstOutside = !isInside(r, first);
    const bool secondOutside = !isInside(r, second);
    if (!(firstOutside | secondOutside)) {
        *visible = true;
        return 0;
    }
    const bool flat = (r.left >= r.right) | (r.top >= r.bottom) | (first.x == second.x) | (first.y == second.y);
    const bool apartX = areApart(r.left, r.right, first.x, second.x);
    const bool apartY = areApart(r.top, r.bottom, first.y, second.y);
    if (flat | apartX | apartY) {
        *visible = false;
        return 0;
    }
    const bool clipped = (!firstOutside || clipEnd(r, first, second)) && (!secondOutside || clipEnd(r, second, first));
    *a = first;
    *b = second;
    *visible = clipped && (isInside(r, first) || isInside(r, second));
    return 0;
}

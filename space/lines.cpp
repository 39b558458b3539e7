// Segments: against the near plane, against a rectangle, and their distance from a point. Nothing here reports.
#include "space/near_plane.h"
#include "space/segment_distance.h"
#include "zan/space.h"

#include <algorithm>

int32_t Zan_Clip3DLine(const Zan_Vector3T<double>* a, const Zan_Vector3T<double>* b, bool* aBehind, bool* bBehind,
                       Zan_Vector3T<double>* clipPoint) {
    zan::clipAtNearPlane(*a, *b, *aBehind, *bBehind, *clipPoint);
    return 0;
}

int32_t Zan_PerpDistTo2DLine(const Zan_Vector2T<double>* p, const Zan_Vector2T<double>* a,
                             const Zan_Vector2T<double>* b, bool* withinSegment, double* distance) {
    bool within = false;
    const int32_t result = zan::perpDistTo2DLine(*p, *a, *b, within, *distance);
    if (withinSegment != nullptr) *withinSegment = within;
    return result;
}

namespace {

bool inside(const Zan_FloatRect& rect, const Zan_Vector2T<double>& p) {
    return rect.left <= p.x && p.x <= rect.right && rect.top <= p.y && p.y <= rect.bottom;
}

// Moves one coordinate of an end to a side of the rectangle and the other one along the segment. False when the segment
// runs along that side.
bool moveTo(double side, double& along, double& across, double otherAlong, double otherAcross) {
    const double delta = along - otherAlong;
    if (delta == 0) return false;
    across = across + (otherAcross - across) * (along - side) / delta;
    along = side;
    return true;
}

// Brings an end that is outside to the rectangle, first sideways, then up or down.
bool clipEnd(const Zan_FloatRect& rect, Zan_Vector2T<double>& end, const Zan_Vector2T<double>& other) {
    if (end.x < rect.left) {
        if (!moveTo(rect.left, end.x, end.y, other.x, other.y)) return false;
    } else if (end.x > rect.right) {
        if (!moveTo(rect.right, end.x, end.y, other.x, other.y)) return false;
    }
    if (end.y < rect.top) return moveTo(rect.top, end.y, end.x, other.y, other.x);
    if (end.y > rect.bottom) return moveTo(rect.bottom, end.y, end.x, other.y, other.x);
    return true;
}

}  // namespace

int32_t Zan_ClipLine2Rect(const Zan_FloatRect* rect, Zan_Vector2T<double>* a, Zan_Vector2T<double>* b, bool* visible) {
    const Zan_FloatRect r = *rect;
    Zan_Vector2T<double> first = *a;
    Zan_Vector2T<double> second = *b;
    const bool firstOut = !inside(r, first);
    const bool secondOut = !inside(r, second);
    if (!firstOut && !secondOut) {
        *visible = true;
        return 0;
    }
    const auto [minX, maxX] = std::minmax({first.x, second.x});
    const auto [minY, maxY] = std::minmax({first.y, second.y});
    if (r.left >= r.right || r.top >= r.bottom || minX >= maxX || minY >= maxY ||
        std::max(r.top, minY) >= std::min(r.bottom, maxY) || std::max(r.left, minX) >= std::min(r.right, maxX)) {
        *visible = false;
        return 0;
    }
    const bool clipped = (!firstOut || clipEnd(r, first, second)) && (!secondOut || clipEnd(r, second, first));
    *a = first;
    *b = second;
    *visible = clipped && (inside(r, first) || inside(r, second));
    return 0;
}

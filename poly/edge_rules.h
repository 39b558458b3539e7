// What makes an edge matter to a hit test, and what most edges have to do with the point: the plain forms.
#ifndef ZAN_POLY_EDGE_RULES_H
#define ZAN_POLY_EDGE_RULES_H

#include "poly/kernels/edges.h"

#include <cmath>

namespace zan {

/// Where a vertex is, seen from the point: left of it; beyond the margin on each side.
enum Place : unsigned { kLeft = 1, kFarRight = 2, kFarLeft = 4, kFarAbove = 8, kFarBelow = 16 };

template <bool kNear, class Vertex>
unsigned place(const Vertex& v, const HitTarget& target) {
    const unsigned left = v.x < target.x ? kLeft : 0U;
    if constexpr (!kNear) return left;
    const double dx = v.x - target.x, dy = v.y - target.y;
    return left | (dx > target.margin ? kFarRight : 0U) | (dx < -target.margin ? kFarLeft : 0U) |
           (dy > target.margin ? kFarAbove : 0U) | (dy < -target.margin ? kFarBelow : 0U);
}

template <bool kNear, class Vertex>
EdgeBits scanEdges(const Vertex* vertices, int32_t edges, const HitTarget& target) {
    EdgeBits bits{};
    unsigned start = place<kNear>(vertices[0], target);
    for (int32_t i = 0; i < edges; ++i) {
        const unsigned end = place<kNear>(vertices[i + 1], target);
        bits.spanning |= uint64_t{(start ^ end) & kLeft} << i;
        if constexpr (kNear) bits.near |= uint64_t{(start & end & ~unsigned{kLeft}) == 0} << i;
        start = end;
    }
    return bits;
}

/// What an edge has to do with the point: it passes above, or that takes a closer look.
enum Meeting : unsigned { kNone = 0, kAbove = 1, kClose = 2 };

/// Tells by the cross product of the edge and of the way from the point to its end, without a division or a root. That
/// is the edge's height above the point times b, and the point's distance from the edge's line times its length.
///
/// Where it exceeds `enough`, the height that a closer look would calculate is off the point's y by more than
/// (|y| + 1) * 1.8e-12, to the side of the cross product, and so it is not nearly equal to it. For its rounding errors
/// are within 2^-53 of |y| and 5 * 2^-53 of its distance from the end's y, those of the cross product within 4 * 2^-53
/// of the two products, and 2^-45 of the products is more than all that. Nor is the line within the margin. Where
/// something overflows, `enough` is infinite or NaN; 2^-1000 is for what underflows.
template <bool kNear, class Vertex>
Meeting meet(const HitTarget& target, const Vertex& start, const Vertex& end) {
    const bool startsLeft = start.x < target.x, spans = startsLeft != (end.x < target.x);
    if (!kNear && !spans) return kNone;
    const double endX = end.x, endY = end.y;
    const double a = target.x - endX, b = start.x - endX, c = start.y - endY;
    const double ac = a * c, hb = (endY - target.y) * b, cross = ac + hb;
    double enough = (std::fabs(ac) + std::fabs(hb)) * 0x1p-45 + std::fabs(b) * target.ySize + 0x1p-1000;
    if constexpr (kNear) enough += (std::fabs(b) + std::fabs(c)) * target.margin;
    if (!(std::fabs(cross) > enough)) return kClose;
    return static_cast<Meeting>(unsigned{spans} & (unsigned{cross > 0} ^ unsigned{startsLeft}));
}

}  // namespace zan

#endif  // ZAN_POLY_EDGE_RULES_H

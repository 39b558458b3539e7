// What makes an edge matter to a hit test: the plain form, which is inline for outlines of a few edges.
#ifndef ZAN_POLY_EDGE_RULES_H
#define ZAN_POLY_EDGE_RULES_H

#include "poly/kernels/edges.h"

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

}  // namespace zan

#endif  // ZAN_POLY_EDGE_RULES_H

// The edge scan in lanes, for the kernels of all instruction sets. In an unnamed namespace; see frame/lanes.h.
#ifndef ZAN_POLY_KERNELS_EDGES_LANES_H
#define ZAN_POLY_KERNELS_EDGES_LANES_H

#include "frame/lanes.h"
#include "poly/kernels/edges.h"

namespace {

// Where vertices lie relative to the point, bit i for vertex i. left, below: left of the point, below it. farX, farY:
// beyond the margin in x or y, on the side that `left` or `below` gives.
struct Outcodes {
    uint64_t left, farX, below, farY;
};

template <bool kTolerant>
Outcodes outcodes(const XY& v, const zan::HitQuery& query) {
    const uint64_t left = bitsOf(v.x < query.x);
    if constexpr (!kTolerant) return {left, 0, 0, 0};
    return {left, bitsOf(query.margin < abs(v.x - query.x)), bitsOf(v.y < query.y),
            bitsOf(query.margin < abs(v.y - query.y))};
}

// The outcodes of each vertex are found once, for the edge that starts there; those of the ends are the same shifted by
// one bit. A scan needs at least as many edges as there are lanes.
template <bool kTolerant, class T>
zan::EdgeBits scan(const void* vertices, int32_t edges, const zan::HitQuery& query) {
    const auto* first = static_cast<const T*>(vertices);
    const auto block = [first, &query](int64_t i) { return outcodes<kTolerant>(loadXY(first + 2 * i), query); };
    Outcodes starts = {0, 0, 0, 0};
    for (int32_t next = 0; next < edges; next += kLanes) {
        const int32_t i = next < edges - kLanes ? next : edges - kLanes;  // the last block overlaps the one before
        const Outcodes o = block(i);
        starts.left |= o.left << i;
        starts.farX |= o.farX << i;
        starts.below |= o.below << i;
        starts.farY |= o.farY << i;
    }
    const Outcodes last = block(edges - kLanes + 1);  // its last bit is for the last vertex
    const auto ends = [edges](uint64_t bits, uint64_t lastBits) {
        return bits >> 1 | (lastBits >> (kLanes - 1)) << (edges - 1);
    };
    const uint64_t spanning = starts.left ^ ends(starts.left, last.left);
    if constexpr (!kTolerant) return {spanning, 0};
    const uint64_t crossesY = starts.below ^ ends(starts.below, last.below);
    const uint64_t bothFarX = starts.farX & ends(starts.farX, last.farX) & ~spanning;
    const uint64_t bothFarY = starts.farY & ends(starts.farY, last.farY) & ~crossesY;
    return {spanning, ~(bothFarX | bothFarY) & ~uint64_t{0} >> (64 - edges)};
}

}  // namespace

#endif  // ZAN_POLY_KERNELS_EDGES_LANES_H

// The turn scan in lanes, for the kernels of all instruction sets. In an unnamed namespace; see frame/lanes.h.
#ifndef ZAN_POLY_KERNELS_TURNS_LANES_H
#define ZAN_POLY_KERNELS_TURNS_LANES_H

#include "frame/lanes.h"
#include "poly/kernels/turns.h"

namespace {

// Each lane does the operations of addTurn's first bound in the same order. A block with a turn within that bound is
// left to the plain kernel.
inline int64_t scan(const double* vertices, int64_t stride, int64_t turns, zan::Turns& found) {
    constexpr unsigned kAllLanes = (1U << kLanes) - 1;
    int64_t done = 0;
    unsigned left = found.left ? 1 : 0, right = found.right ? 1 : 0;
    for (; done <= turns - kLanes && !(left != 0 && right != 0); done += kLanes) {
        const double* v = vertices + done * stride;
        const XY from = loadXY(v, stride), at = loadXY(v + stride, stride), to = loadXY(v + 2 * stride, stride);
        const Lanes a = (at.x - from.x) * (to.y - at.y), b = (to.x - at.x) * (at.y - from.y), cross = a - b;
        const Lanes errorBound = (abs(a) + abs(b)) * 0x1p-46 + 0x1p-1040;
        if (bitsOf(abs(cross) > errorBound) != kAllLanes) break;
        const unsigned rightLanes = signBits(cross);
        left |= rightLanes ^ kAllLanes;
        right |= rightLanes;
    }
    found = {left != 0, right != 0};
    return done;
}

}  // namespace

#endif  // ZAN_POLY_KERNELS_TURNS_LANES_H

// The plain kernel of the convexity test, the list of its kernels, and the loop that completes a kernel's scan.
#include "poly/turn_rules.h"

#include <algorithm>

namespace {

int64_t scan(const double* vertices, int64_t stride, int64_t turns, zan::Turns& found) {
    const double* vertex = vertices + stride;
    zan::Vector2 before(vertex[0] - vertices[0], vertex[1] - vertices[1]);
    for (int64_t i = 0; i < turns && !(found.left && found.right); ++i) {
        const double* next = vertex + stride;
        const zan::Vector2 after(next[0] - vertex[0], next[1] - vertex[1]);
        zan::addTurn(before, after, found);
        before = after;
        vertex = next;
    }
    return turns;
}

}  // namespace

const zan::TurnKernel zan::kPlainTurnKernel = {"plain", scan};

const zan::TurnKernel* const zan::kTurnKernels[] = {
#if defined(ZAN_LANES_KERNELS)
    &kLanesTurnKernel,
#else
    &kPlainTurnKernel,
#endif
#if defined(ZAN_AVX2_KERNELS)
    &kAvx2TurnKernel,
#endif
    nullptr};

void zan::findTurns(const TurnKernel& kernel, const double* vertices, int64_t stride, int64_t turns, Turns& found) {
    constexpr int64_t kBlock = 4;
    for (int64_t done = 0; done < turns && !(found.left && found.right);) {
        done += kernel.scan(vertices + done * stride, stride, turns - done, found);
        const int64_t plainTurns = std::min(turns - done, kBlock);
        done += scan(vertices + done * stride, stride, plainTurns, found);
    }
}

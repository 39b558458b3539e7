// The plain form of the look at turns, the list of its forms, and the plain form's part after another's.
#include "poly/turn_rules.h"

#include <algorithm>

namespace {

int64_t scan(const double* vertices, int64_t stride, int64_t turns, zan::Turns& seen) {
    const double* at = vertices + stride;
    zan::Delta before{at[0] - vertices[0], at[1] - vertices[1]};
    for (int64_t i = 0; i < turns && !(seen.left && seen.right); ++i) {
        const double* next = at + stride;
        const zan::Delta after{next[0] - at[0], next[1] - at[1]};
        zan::look(before, after, seen);
        before = after;
        at = next;
    }
    return turns;
}

}  // namespace

const zan::TurnKernel zan::kPlainTurnKernel = {"plain", scan};

const zan::TurnKernel* const zan::kTurnKernels[] = {&kPlainTurnKernel,
#if defined(ZAN_AVX2_KERNELS)
                                                    &kAvx2TurnKernel,
#endif
                                                    nullptr};

void zan::lookAtTurns(const TurnKernel& kernel, const double* vertices, int64_t stride, int64_t turns, Turns& seen) {
    constexpr int64_t kBlock = 4;
    for (int64_t done = 0; done < turns && !(seen.left && seen.right);) {
        done += kernel.scan(vertices + done * stride, stride, turns - done, seen);
        const int64_t few = std::min(turns - done, kBlock);
        done += scan(vertices + done * stride, stride, few, seen);
    }
}

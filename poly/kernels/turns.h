// The ways in which a polygon turns, found in the forms that processors allow. Declarations only: the file of a kernel
// is compiled for one processor, and no inline function may be shared with it, since the linker keeps whichever copy it
// likes.
#ifndef ZAN_POLY_KERNELS_TURNS_H
#define ZAN_POLY_KERNELS_TURNS_H

#include <cstdint>

namespace zan {

/// What has been seen so far.
struct Turns {
    bool left, right;
};

/// Looks at turns: the first is from the first vertex of an array over the second to the third. A vertex has its x and
/// y first and the next one stride doubles behind it. Returns at how many it has looked, from the front: the plain form
/// at all; another may leave the last few, and any that are too close to a straight line for it; each may stop once it
/// has seen both ways.
using TurnScan = int64_t (*)(const double* vertices, int64_t stride, int64_t turns, Turns& seen);

struct TurnKernel {
    const char* name;
    TurnScan scan;
};

extern const TurnKernel kPlainTurnKernel;
extern const TurnKernel kAvx2TurnKernel;

/// The kernels of this build, one for each of zan::Instructions, null behind the last.
extern const TurnKernel* const kTurnKernels[];

/// Looks at all turns unless it sees both ways before, by the given kernel and by the plain form what that leaves.
void lookAtTurns(const TurnKernel& kernel, const double* vertices, int64_t stride, int64_t turns, Turns& seen);

}  // namespace zan

#endif  // ZAN_POLY_KERNELS_TURNS_H

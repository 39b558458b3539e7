// Kernels of the convexity test: they find the directions in which a polygon turns. Declarations only: a kernel's file
// is compiled for one instruction set, and the linker may keep that file's copy of a shared inline function.
#ifndef ZAN_POLY_KERNELS_TURNS_H
#define ZAN_POLY_KERNELS_TURNS_H

#include <cstdint>

namespace zan {

/// The directions of the turns found so far.
struct Turns {
    bool left, right;
};

/// Examines the turns at consecutive vertices; turn i is at vertex i + 1. Vertices are stride doubles apart and begin
/// with x and y. Returns how many turns it has examined, counted from the front: the plain kernel all of them; another
/// may leave up to three at the end and may stop before a turn that its filter cannot decide. Any kernel may stop once
/// both directions are found.
using TurnScan = int64_t (*)(const double* vertices, int64_t stride, int64_t turns, Turns& found);

struct TurnKernel {
    const char* name;
    TurnScan scan;
};

extern const TurnKernel kPlainTurnKernel;
extern const TurnKernel kLanesTurnKernel;
extern const TurnKernel kAvx2TurnKernel;

/// The kernels of this build, in the order of zan::InstructionSet, then null.
extern const TurnKernel* const kTurnKernels[];

/// Examines all turns, or stops once both directions are found: with the given kernel, and with the plain one where
/// that kernel stops early.
void findTurns(const TurnKernel& kernel, const double* vertices, int64_t stride, int64_t turns, Turns& found);

}  // namespace zan

#endif  // ZAN_POLY_KERNELS_TURNS_H

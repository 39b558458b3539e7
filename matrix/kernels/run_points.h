// Runs a loop over an array of points with the kernel of the active instruction set. Not in points.h, because kernels'
// files include that and must not include this. Inline, so that a call costs as little as possible before its first
// point.
#ifndef ZAN_MATRIX_KERNELS_RUN_POINTS_H
#define ZAN_MATRIX_KERNELS_RUN_POINTS_H

#include "frame/processor.h"
#include "matrix/kernels/points.h"

namespace zan {

#if defined(ZAN_LANES_KERNELS)
inline constexpr const PointKernel& kBaselinePointKernel = kLanesPointKernel;
#else
inline constexpr const PointKernel& kBaselinePointKernel = kPlainPointKernel;
#endif

/// AVX2 transforms blocks of four points; most of its loops would pass a shorter array on to the plain kernel.
inline constexpr int32_t kMinPointsForAvx2 = 4;

/// Runs the kernel of zan::activeInstructionSet(), or the baseline's for arrays shorter than a block of AVX2.
inline int32_t transformPoints(PointTransform transform, const void* matrix, int32_t count, void* points) {
    const PointKernel* kernel =
        count < kMinPointsForAvx2 ? &kBaselinePointKernel : kPointKernels[static_cast<int>(activeInstructionSet())];
    return (kernel->*transform)(matrix, count, points);
}

}  // namespace zan

#endif  // ZAN_MATRIX_KERNELS_RUN_POINTS_H

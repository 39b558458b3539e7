// Selects the kernel for an array of points; runs the plain loop on the points that a kernel leaves over.
#include "matrix/kernels/points.h"

#include "frame/processor.h"

namespace {

// The lanes hold a block of four points; most loops of a wider kernel would pass a shorter array on to the plain one.
constexpr int32_t kMinPointsForLanes = 4;

}  // namespace

const zan::PointKernel* const zan::kPointKernels[] = {&kPlainPointKernel,
#if defined(ZAN_AVX2_KERNELS)
                                                      &kAvx2PointKernel,
#endif
                                                      nullptr};

int32_t zan::transformPoints(PointTransform transform, const void* matrix, int32_t count, void* points) {
    const PointKernel* kernel =
        count < kMinPointsForLanes ? &kPlainPointKernel : kPointKernels[static_cast<int>(activeInstructionSet())];
    return (kernel->*transform)(matrix, count, points);
}

int32_t zan::transformRest(PointTransform transform, const void* matrix, int32_t done, int32_t count, void* rest) {
    return done + (kPlainPointKernel.*transform)(matrix, count - done, rest);
}

// The kernels for arrays of points; runs the plain loop on the points that a kernel leaves over.
#include "matrix/kernels/run_points.h"

const zan::PointKernel* const zan::kPointKernels[] = {&kBaselinePointKernel,
#if defined(ZAN_AVX2_KERNELS)
                                                      &kAvx2PointKernel,
#endif
                                                      nullptr};

int32_t zan::transformRest(PointTransform transform, const void* matrix, int32_t done, int32_t count, void* rest) {
    return done + (kPlainPointKernel.*transform)(matrix, count - done, rest);
}

// The list of the loops over arrays of points, and where one of them hands over to the plain form.
#include "matrix/kernels/points.h"

#include "frame/processor.h"
#include "zan/types.h"

namespace {

// Fewer points than that make no block of a wider loop.
constexpr int32_t kWorthwhile = 4;

constexpr size_t kPointBytes[] = {sizeof(Zan_Vector2T<double>),
                                  sizeof(Zan_Vector3T<double>),
                                  sizeof(Zan_Vector3T<double>),
                                  sizeof(Zan_Vector3T<double>),
                                  sizeof(Zan_Vector2T<double>),
                                  sizeof(Zan_Vector3T<double>),
                                  sizeof(Zan_Vector4T<double>),
                                  sizeof(Zan_Vector4T<double>),
                                  sizeof(Zan_Vector4T<double>),
                                  sizeof(Zan_Vector3T<double>),
                                  sizeof(Zan_Vector4T<double>),
                                  sizeof(Zan_Vector3T<double>),
                                  sizeof(Zan_Point),
                                  sizeof(Zan_FixedPoint),
                                  sizeof(Zan_Point)};
static_assert(sizeof kPointBytes / sizeof(size_t) == zan::kPointTransformCount);

}  // namespace

const zan::PointKernel* const zan::kPointKernels[] = {&kPlainPointKernel,
#if defined(ZAN_AVX2_KERNELS)
                                                      &kAvx2PointKernel,
#endif
                                                      nullptr};

int32_t zan::transformRest(PointTransform transform, const void* matrix, int32_t done, int32_t count, void* points) {
    char* rest = static_cast<char*>(points) + static_cast<size_t>(done) * kPointBytes[transform];
    return done + kPlainPointKernel.loops[transform](matrix, count - done, rest);
}

int32_t zan::transformPoints(PointTransform transform, const void* matrix, int32_t count, void* points) {
    const auto* kernel = count < kWorthwhile ? &kPlainPointKernel : kPointKernels[static_cast<int>(activeInstructionSet())];
    return kernel->loops[transform](matrix, count, points);
}

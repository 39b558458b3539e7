// Which form of the loops over arrays of points a machine gets. Decided at the first use: nothing runs at load.
#include "matrix/point_kernels.h"

#include "zan/types.h"

#include <atomic>

#if defined(ZAN_AVX2_KERNEL)
#include <cpuid.h>
#endif

namespace {

using zan::PointKernel;

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
                                  sizeof(Zan_FixedPoint)};
static_assert(sizeof kPointBytes / sizeof(size_t) == zan::kPointTransformCount);

// Two threads that come first at the same time choose the same.
constinit std::atomic<const PointKernel*> chosen{nullptr};

const PointKernel* choose() {
    const PointKernel* best = nullptr;
    for (const PointKernel* const* kernel = zan::kPointKernels; *kernel != nullptr; ++kernel) {
        if ((*kernel)->supported()) best = *kernel;
    }
    chosen.store(best, std::memory_order_relaxed);
    return best;
}

}  // namespace

const PointKernel* const zan::kPointKernels[] = {&kPlainPointKernel,
#if defined(ZAN_AVX2_KERNEL)
                                                 &kAvx2PointKernel,
#endif
                                                 nullptr};

#if defined(ZAN_AVX2_KERNEL)
// Asked directly, since the compiler's own look-up would have the processor examined when the library is loaded.
bool zan::avx2Supported() {
    unsigned a = 0, b = 0, c = 0, d = 0;
    constexpr unsigned kSystemSavesAndAvx = bit_OSXSAVE | bit_AVX;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & kSystemSavesAndAvx) != kSystemSavesAndAvx) return false;
    unsigned saved = 0, high = 0;
    __asm__("xgetbv" : "=a"(saved), "=d"(high) : "c"(0));
    constexpr unsigned kWideRegisters = 6;
    if ((saved & kWideRegisters) != kWideRegisters) return false;
    return __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & bit_AVX2) != 0;
}
#endif

int32_t zan::transformPoints(const PointKernel& kernel, PointTransform transform, const void* matrix, int32_t count,
                             void* points) {
    // A plain form that stopped must not see its last point again.
    int32_t done = &kernel == &kPlainPointKernel ? 0 : kernel.loops[transform](matrix, count, points);
    if (done < count) {
        char* rest = static_cast<char*>(points) + static_cast<size_t>(done) * kPointBytes[transform];
        done += kPlainPointKernel.loops[transform](matrix, count - done, rest);
    }
    return done;
}

int32_t zan::transformPoints(PointTransform transform, const void* matrix, int32_t count, void* points) {
    if (count < kWorthwhile) return kPlainPointKernel.loops[transform](matrix, count, points);
    const PointKernel* kernel = chosen.load(std::memory_order_relaxed);
    if (kernel == nullptr) kernel = choose();
    return transformPoints(*kernel, transform, matrix, count, points);
}

// The loops over arrays of points, in the forms that processors allow. Declarations only: the file of a kernel is
// compiled for one processor, and no inline function may be shared with it, since the linker keeps whichever copy it
// likes.
#ifndef ZAN_MATRIX_KERNELS_POINTS_H
#define ZAN_MATRIX_KERNELS_POINTS_H

#include <cstdint>

namespace zan {

/// What becomes of each point of an array; the number is that of its components, point_rules.h has the rules.
enum PointTransform {
    kAffine2,             // Zan_Matrix3
    kProduct3,            // Zan_Matrix3
    kQuotient3,           // Zan_Matrix3, divided by w
    kGuardedQuotient3,    // the same, up to a w near zero
    kGuardedQuotient2,    // the same for (x, y, 1)
    kAffine3,             // Zan_Matrix4
    kProduct4,            // Zan_Matrix4
    kReciprocal4,         // Zan_Matrix4, times 1 / w
    kGuardedReciprocal4,  // the same, up to a w near zero
    kGuardedReciprocal3,  // the same for (x, y, z, 1)
    kUnlessNearZero4,     // Zan_Matrix4, times 1 / w unless w is near zero
    kUnlessNearZero3,     // the same for (x, y, z, 1)
    kRoundedPoint,        // Zan_Matrix3, Zan_Point, up to a coordinate that does not fit
    kRoundedFixedPoint,   // the same for Zan_FixedPoint, the translation in whole units
    kClampedPoint,        // Zan_Matrix4, Zan_Point, as (h, v, 0): as kUnlessNearZero3, then to what fits
    kPointTransformCount
};

/// Transforms an array. Returns count, or where a guarded or rounded transform stops the index of that point: the
/// points before it are transformed, those behind it are not. A count below 1 does nothing and returns what is not less
/// than it.
using PointLoop = int32_t (*)(const void* matrix, int32_t count, void* points);

struct PointKernel {
    const char* name;
    PointLoop loops[kPointTransformCount];
};

/// Every kernel gives the bits of the plain one.
extern const PointKernel kPlainPointKernel;
extern const PointKernel kAvx2PointKernel;

/// The kernels of this build, one for each of zan::Instructions, null behind the last.
extern const PointKernel* const kPointKernels[];

/// By the kernel of zan::activeInstructionSet(), a few points by the plain form.
int32_t transformPoints(PointTransform transform, const void* matrix, int32_t count, void* points);

/// For kernels: all from the point with the index done by the plain form, which must not have seen them.
int32_t transformRest(PointTransform transform, const void* matrix, int32_t done, int32_t count, void* points);

}  // namespace zan

#endif  // ZAN_MATRIX_KERNELS_POINTS_H

// The loops over arrays of points, one kernel for each instruction set. Declarations only: a kernel's file is compiled
// for its own instruction set and must share no inline function with other files, because the linker keeps one copy of
// each such function and may keep the one that other processors cannot run.
#ifndef ZAN_MATRIX_KERNELS_POINTS_H
#define ZAN_MATRIX_KERNELS_POINTS_H

#include <cstdint>

namespace zan {

/// Transforms an array in place, from the first point to the last. Returns count, or the index of the point at which a
/// checked or rounding loop stops: earlier points are transformed, later ones unchanged. A count below 1 touches
/// nothing and is returned.
using PointLoop = int32_t (*)(const void* matrix, int32_t count, void* points);

/// The loops of one instruction set. Plane loops take a Zan_Matrix3, space loops a Zan_Matrix4; the comments name the
/// type of the points, and w is the last component of the product. XY and XYZ mark points that have no w and enter with
/// w = 1. point_rules.h defines the arithmetic.
struct PointKernel {
    const char* name;
    PointLoop planeAffine;                   // Vector2
    PointLoop planeProduct;                  // Vector3
    PointLoop planeDivide;                   // Vector3: x / w, y / w, 1
    PointLoop planeCheckedDivide;            // Vector3: as planeDivide, but stops at a w near zero
    PointLoop planeCheckedDivideXY;          // Vector2: as planeCheckedDivide
    PointLoop spaceAffine;                   // Vector3
    PointLoop spaceProduct;                  // Vector4
    PointLoop spaceDivide;                   // Vector4: x * r, y * r, z * r, 1 with r = 1 / w
    PointLoop spaceCheckedDivide;            // Vector4: as spaceDivide, but stops at a w near zero
    PointLoop spaceCheckedDivideXYZ;         // Vector3: as spaceCheckedDivide
    PointLoop spaceDivideUnlessNearZero;     // Vector4: as spaceDivide, but undivided where w is near zero
    PointLoop spaceDivideUnlessNearZeroXYZ;  // Vector3: as spaceDivideUnlessNearZero
    PointLoop planeRound16;                  // Zan_Point: affine, rounded; stops where a coordinate does not fit
    PointLoop planeRoundFixed;               // Zan_FixedPoint: as planeRound16, on raw 16.16 coordinates
    PointLoop spaceClamp16;  // Zan_Point: spaceDivideUnlessNearZeroXYZ of (h, v, 0), clamped and truncated
};

/// Selects a loop of any kernel.
using PointTransform = PointLoop PointKernel::*;

/// Every kernel gives the same bits as the plain one.
extern const PointKernel kPlainPointKernel;
extern const PointKernel kLanesPointKernel;
extern const PointKernel kAvx2PointKernel;

/// Loops of the plain kernel that another kernel has as well.
int32_t planeRound16Plain(const void* matrix, int32_t count, void* points);
int32_t planeRoundFixedPlain(const void* matrix, int32_t count, void* points);
int32_t spaceClamp16Plain(const void* matrix, int32_t count, void* points);

/// The kernels of this build, indexed by zan::InstructionSet, with a null pointer at the end.
extern const PointKernel* const kPointKernels[];

/// For kernels: completes an array of count points, of which `done` are transformed, with the plain loop, and returns
/// what the loop over the whole array returns. `rest` points to the first of the others, which are still unchanged.
int32_t transformRest(PointTransform transform, const void* matrix, int32_t done, int32_t count, void* rest);

}  // namespace zan

#endif  // ZAN_MATRIX_KERNELS_POINTS_H

// Kernels of the hit test: they find the edges of an outline that can matter, and decide most edges of small outlines.
// Declarations only: a kernel's file is compiled for one instruction set, and the linker may keep that file's copy of a
// shared inline function.
#ifndef ZAN_POLY_KERNELS_EDGES_H
#define ZAN_POLY_KERNELS_EDGES_H

#include <cstdint>

namespace zan {

/// The point of a hit test and two thresholds derived from it and from the tolerance.
struct HitQuery {
    double x, y;
    double margin;      ///< an edge farther from the point than this is not within the tolerance; 0 without tolerance
    double yTolerance;  ///< (|y| + 1) * 2^-39: if an edge's y at the point's x differs from the point's y by
                        ///< more than this, the two are not nearly equal: the point is not on the edge
};

/// Two sets of up to 64 edges, bit i for edge i.
struct EdgeBits {
    uint64_t spanning;   ///< one end has x < query.x and the other has not
    uint64_t maybeNear;  ///< conservative: clear only if both ends are beyond the margin on the same side, in x or y
};
constexpr int32_t kEdgesPerScan = 64;

/// Scans the edges, EdgeKernel::minEdges to 64, between consecutive vertices of an array of edges + 1 vertices.
using EdgeScan = EdgeBits (*)(const void* vertices, int32_t edges, const HitQuery& query);

/// The edges of a closed outline of 1 to 8 vertices, bit i for the edge from vertex i to the next one, or to the first.
struct EdgeClasses {
    uint32_t above;      ///< certain: spans the point's x, passes above the point and is not near it
    uint32_t uncertain;  ///< only the exact test decides
};
constexpr int32_t kSmallOutlineVertices = 8;
using SmallOutlineScan = EdgeClasses (*)(const void* vertices, int32_t count, const HitQuery& query);

/// Arguments for the template parameter kTolerant. Without a tolerance, maybeNear is 0 and only spanning edges can be
/// uncertain.
constexpr bool kWithoutTolerance = false;
constexpr bool kWithTolerance = true;

/// The loops are instantiated for vertices of type Zan_Vector2T<double> and Zan_Vector2T<float>.
enum HitTestVariant { kDoubles, kTolerantDoubles, kFloats, kTolerantFloats, kHitTestVariants };

struct EdgeKernel {
    const char* name;
    int32_t minEdges;  ///< the least that scans accept
    EdgeScan scans[kHitTestVariants];
    SmallOutlineScan smallOutlineScans[kHitTestVariants];
};

/// Every kernel gives the bits of the plain one.
extern const EdgeKernel kPlainEdgeKernel;
extern const EdgeKernel kLanesEdgeKernel;
extern const EdgeKernel kAvx2EdgeKernel;

/// A loop of the plain kernel that another kernel has as well. T is the type of the coordinates.
template <bool kTolerant, class T>
EdgeClasses scanSmallOutlinePlain(const void* vertices, int32_t count, const HitQuery& query);

/// The kernels of this build, in the order of zan::InstructionSet, then null.
extern const EdgeKernel* const kEdgeKernels[];

}  // namespace zan

#endif  // ZAN_POLY_KERNELS_EDGES_H

// Which edges of an outline a hit test has to look at, found in the forms that processors allow. Declarations only: the
// file of a kernel is compiled for one processor, and no inline function may be shared with it, since the linker keeps
// whichever copy it likes.
#ifndef ZAN_POLY_KERNELS_EDGES_H
#define ZAN_POLY_KERNELS_EDGES_H

#include <cstdint>

namespace zan {

/// A point, how far from it an edge can be near, and how far from y what is nearly equal to it: (|y| + 1) * 2^-39.
struct HitTarget {
    double x, y, margin, ySize;
};

/// Edges out of up to 64, one bit each.
struct EdgeBits {
    /// One end is left of the point and the other is not.
    uint64_t spanning;
    /// Not both ends are beyond the margin on the same side, in x or in y. NaN is beyond nothing.
    uint64_t near;
};
constexpr int32_t kEdgesAtOnce = 64;

/// Looks at the edges, 1 to 64, from each vertex of an array to the next.
using EdgeScan = EdgeBits (*)(const void* vertices, int32_t edges, const HitTarget& target);

/// The edges of an outline of 1 to 4 vertices, edge i from vertex i to the next one or the first.
struct FewEdges {
    uint32_t above;  // those that span the point's x and pass above it
    uint32_t close;  // those that cannot be told without a closer look
};
constexpr int32_t kFewVertices = 4;
using FewEdgesScan = FewEdges (*)(const void* vertices, int32_t count, const HitTarget& target);

/// The type of the vertices, Zan_Vector2T of double or float; and whether only spanning edges are asked for, near being
/// 0, or both. For a few edges: whether edges that are near have to be looked at, or only spanning ones.
enum EdgeQuestion { kSpanningDoubles, kNearDoubles, kSpanningFloats, kNearFloats, kEdgeQuestionCount };

struct EdgeKernel {
    const char* name;
    int32_t fewest;  // edges that it can look at
    EdgeScan scans[kEdgeQuestionCount];
    FewEdgesScan few[kEdgeQuestionCount];
};

/// Every kernel gives the bits of the plain one.
extern const EdgeKernel kPlainEdgeKernel;
extern const EdgeKernel kAvx2EdgeKernel;

/// The kernels of this build, one for each of zan::Instructions, null behind the last.
extern const EdgeKernel* const kEdgeKernels[];

}  // namespace zan

#endif  // ZAN_POLY_KERNELS_EDGES_H

// The plain kernel of the hit test, and the list of its kernels.
#include "poly/edge_rules.h"
#include "zan/types.h"

namespace {

template <bool kTolerant, class T>
zan::EdgeBits scan(const void* vertices, int32_t edges, const zan::HitQuery& query) {
    return zan::scanEdges<kTolerant>(static_cast<const Zan_Vector2T<T>*>(vertices), edges, query);
}

}  // namespace

template <bool kTolerant, class T>
zan::EdgeClasses zan::scanSmallOutlinePlain(const void* vertices, int32_t count, const HitQuery& query) {
    const auto* v = static_cast<const Zan_Vector2T<T>*>(vertices);
    EdgeClasses classes{};
    for (int32_t i = 0; i < count; ++i) {
        const unsigned edgeClass = classifyEdge<kTolerant>(query, v[i], v[i + 1 < count ? i + 1 : 0]);
        classes.above |= (edgeClass & kAbove) << i;
        classes.uncertain |= (edgeClass / kUncertain) << i;
    }
    return classes;
}

const zan::EdgeKernel zan::kPlainEdgeKernel = {
    "plain",
    1,
    {scan<kWithoutTolerance, double>, scan<kWithTolerance, double>, scan<kWithoutTolerance, float>,
     scan<kWithTolerance, float>},
    {scanSmallOutlinePlain<kWithoutTolerance, double>, scanSmallOutlinePlain<kWithTolerance, double>,
     scanSmallOutlinePlain<kWithoutTolerance, float>, scanSmallOutlinePlain<kWithTolerance, float>}};

const zan::EdgeKernel* const zan::kEdgeKernels[] = {
#if defined(ZAN_LANES_KERNELS)
    &kLanesEdgeKernel,
#else
    &kPlainEdgeKernel,
#endif
#if defined(ZAN_AVX2_KERNELS)
    &kAvx2EdgeKernel,
#endif
    nullptr};

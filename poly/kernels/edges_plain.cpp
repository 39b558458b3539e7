// The plain form of the look at edges, and the list of its forms.
#include "poly/edge_rules.h"
#include "zan/types.h"

namespace {

template <bool kNear, class T>
zan::EdgeBits scan(const void* vertices, int32_t edges, const zan::HitTarget& target) {
    return zan::scanEdges<kNear>(static_cast<const Zan_Vector2T<T>*>(vertices), edges, target);
}

template <bool kNear, class T>
zan::FewEdges few(const void* vertices, int32_t count, const zan::HitTarget& target) {
    const auto* v = static_cast<const Zan_Vector2T<T>*>(vertices);
    zan::FewEdges edges{};
    for (int32_t i = 0; i < count; ++i) {
        const unsigned meeting = zan::meet<kNear>(target, v[i], v[i + 1 < count ? i + 1 : 0]);
        edges.above |= (meeting & zan::kAbove) << i;
        edges.close |= (meeting / zan::kClose) << i;
    }
    return edges;
}

}  // namespace

const zan::EdgeKernel zan::kPlainEdgeKernel = {
    "plain",
    1,
    {scan<false, double>, scan<true, double>, scan<false, float>, scan<true, float>},
    {few<false, double>, few<true, double>, few<false, float>, few<true, float>}};

const zan::EdgeKernel* const zan::kEdgeKernels[] = {&kPlainEdgeKernel,
#if defined(ZAN_AVX2_KERNELS)
                                                    &kAvx2EdgeKernel,
#endif
                                                    nullptr};

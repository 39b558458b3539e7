// The plain form of the look at edges, and the list of its forms.
#include "poly/edge_rules.h"
#include "zan/types.h"

namespace {

template <bool kNear, class T>
zan::EdgeBits scan(const void* vertices, int32_t edges, const zan::HitTarget& target) {
    return zan::scanEdges<kNear>(static_cast<const Zan_Vector2T<T>*>(vertices), edges, target);
}

}  // namespace

const zan::EdgeKernel zan::kPlainEdgeKernel = {
    "plain", 1, {scan<false, double>, scan<true, double>, scan<false, float>, scan<true, float>}};

const zan::EdgeKernel* const zan::kEdgeKernels[] = {&kPlainEdgeKernel,
#if defined(ZAN_AVX2_KERNELS)
                                                    &kAvx2EdgeKernel,
#endif
                                                    nullptr};

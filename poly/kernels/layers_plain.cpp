// The plain kernel of layers in space, and the list of their kernels.
#include "matrix/kernels/run_points.h"
#include "matrix/point_rules.h"
#include "poly/kernels/layers.h"
#include "poly/outline.h"
#include "space/near_plane.h"

#include <bit>

namespace {

using zan::Vector3;

// One point through Zan_Transform3DFloatPoints. Inlined, so that the result stays in registers: copied through memory,
// it would be loaded in other pieces than it was stored in.
[[gnu::always_inline]] inline Vector3 transformed(const Zan_Matrix4& m, const Vector3& p) {
    return zan::dropLast(zan::dividedUnlessNearZero(zan::product(m, zan::Vector4(p))));
}
void transformFour(const Zan_Matrix4& m, Vector3* points) {
    zan::kBaselinePointKernel.spaceDivideUnlessNearZeroXYZ(&m, 4, points);
}

bool toEye(const void* layerToEye, void* corners) {
    const auto& m = *static_cast<const Zan_Matrix4*>(layerToEye);
    if (zan::degenerate(m)) return false;
    transformFour(m, static_cast<Vector3*>(corners));
    return true;
}

bool toScreen(const void* eyeToScreen, void* cornerArray, void* clipPointArray, bool* cornerBehind) {
    const auto& m = *static_cast<const Zan_Matrix4*>(eyeToScreen);
    if (zan::degenerate(m)) return false;
    auto* corners = static_cast<Vector3*>(cornerArray);
    auto* clipPoints = static_cast<Vector3*>(clipPointArray);
    unsigned behind = 0;  // bit i for corner i
    for (int32_t i = 0; i < 4; ++i) {
        cornerBehind[i] = corners[i].z < Zan_kNearPlaneZ;
        behind |= unsigned{cornerBehind[i]} << i;
    }
    // If a z is NaN, comparisons do not show which corners are behind: clipAtNearPlane decides for each edge.
    const double depths = corners[0].z + corners[1].z + corners[2].z + corners[3].z;
    if (!std::isnan(depths)) {
        // Only edges that cross the plane are clipped. Their number is nearly always 0 or 2, so that the loop is
        // predicted; a branch for each edge would not be.
        const Vector3 uncrossed = transformed(m, {0, 0, 0});
        for (int32_t i = 0; i < 4; ++i) clipPoints[i] = uncrossed;
        for (unsigned crossed = (behind ^ (behind >> 1 | behind << 3)) & 0xF; crossed != 0; crossed &= crossed - 1) {
            const int32_t i = std::countr_zero(crossed), isBehind = static_cast<int32_t>(behind >> i & 1);
            const int32_t front = (i + isBehind) % 4, back = (i + 1 - isBehind) % 4;
            clipPoints[i] = transformed(m, zan::nearPlanePoint(corners[front], corners[back]));
        }
    } else {
        for (int32_t i = 0; i < 4; ++i) {
            const int32_t j = zan::nextCorner(i);
            zan::clipAtNearPlane(corners[i], corners[j], cornerBehind[i], cornerBehind[j], clipPoints[i]);
        }
        transformFour(m, clipPoints);
    }
    transformFour(m, corners);
    return true;
}

}  // namespace

const zan::LayerKernel zan::kPlainLayerKernel = {"plain", toEye, toScreen};

const zan::LayerKernel* const zan::kLayerKernels[] = {&kPlainLayerKernel,
#if defined(ZAN_AVX2_KERNELS)
                                                      &kAvx2LayerKernel,
#endif
                                                      nullptr};

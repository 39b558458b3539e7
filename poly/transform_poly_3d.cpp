// The outline of a layer in space: carried to the eye, clipped at the near plane, carried to the screen. Only the
// points of the outline are allocated.
#include "matrix/kernels/run_points.h"
#include "matrix/point_rules.h"
#include "poly/outline.h"
#include "poly/tracked_allocator.h"
#include "space/near_plane.h"

#include <bit>

namespace {

// One point through Zan_Transform3DFloatPoints. Inlined, so that the result stays in registers: copied through memory,
// it would be loaded in other pieces than it was stored in.
[[gnu::always_inline]] inline zan::Vector3 transformed(const Zan_Matrix4& m, const zan::Vector3& p) {
    return zan::dropLast(zan::dividedUnlessNearZero(zan::product(m, zan::Vector4(p))));
}

// Each of the four edges adds at most its start and its clip point.
constexpr size_t kMaxOutlinePoints = 8;

}  // namespace

Zan_TransformPoly3D::Zan_TransformPoly3D() : cornerBehind{}, polyPointsInit(false) {}
Zan_TransformPoly3D::Zan_TransformPoly3D(const Zan_TransformPoly3D& other) = default;
Zan_TransformPoly3D& Zan_TransformPoly3D::operator=(const Zan_TransformPoly3D& other) = default;
Zan_TransformPoly3D::~Zan_TransformPoly3D() = default;

void Zan_TransformPoly3D::SetLayerPoint(int32_t i, const zan::Vector2& p) {
    corners[zan::checkedCorner(i)] = {p.x, p.y, 0.0};
}

void Zan_TransformPoly3D::TransformPointsToEye(const Zan_Matrix4& layerToEye) {
    if (zan::degenerate(layerToEye)) {
        std::fill_n(cornerBehind, 4, false);
        return;
    }
    zan::transformPoints(&zan::PointKernel::spaceDivideUnlessNearZeroXYZ, &layerToEye, 4, corners);
}

void Zan_TransformPoly3D::ClipEdgeToScreen(int32_t i) {
    const int32_t j = zan::nextCorner(i);
    zan::clipAtNearPlane(corners[i], corners[j], cornerBehind[i], cornerBehind[j], edgeClipPoints[i]);
}

void Zan_TransformPoly3D::TransformPointsToScreen(const Zan_Matrix4& eyeToScreen) {
    if (zan::degenerate(eyeToScreen)) {
        std::fill_n(cornerBehind, 4, false);
        return;
    }
    unsigned behind = 0;  // bit i for corner i
    for (int32_t i = 0; i < 4; ++i) {
        cornerBehind[i] = corners[i].z < Zan_kNearPlaneZ;
        behind |= unsigned{cornerBehind[i]} << i;
    }
    // NaN for a corner with NaN, which is neither in front nor behind.
    const double depths = corners[0].z + corners[1].z + corners[2].z + corners[3].z;
    if (!std::isnan(depths)) {
        // What ClipEdgeToScreen does for each edge, but only edges that cross the plane are clipped. Their number is
        // nearly always 0 or 2, so that the loop is predicted; a branch for each edge would not be.
        const zan::Vector3 uncrossed = transformed(eyeToScreen, {0, 0, 0});
        for (zan::Vector3& point : edgeClipPoints) {
            point.x = uncrossed.x;
            point.y = uncrossed.y;
            point.z = uncrossed.z;
        }
        for (unsigned crossed = (behind ^ (behind >> 1 | behind << 3)) & 0xF; crossed != 0; crossed &= crossed - 1) {
            const int32_t i = std::countr_zero(crossed), isBehind = static_cast<int32_t>(behind >> i & 1);
            const int32_t front = (i + isBehind) % 4, back = (i + 1 - isBehind) % 4;
            edgeClipPoints[i] = transformed(eyeToScreen, zan::nearPlanePoint(corners[front], corners[back]));
        }
    } else {
        for (int32_t i = 0; i < 4; ++i) ClipEdgeToScreen(i);
        zan::transformPoints(&zan::PointKernel::spaceDivideUnlessNearZeroXYZ, &eyeToScreen, 4, edgeClipPoints);
    }
    zan::transformPoints(&zan::PointKernel::spaceDivideUnlessNearZeroXYZ, &eyeToScreen, 4, corners);
    InvalidatePolyPoints();
}

void Zan_TransformPoly3D::InvalidatePolyPoints() {
    polyPoints.clear();
    polyPointsInit = false;
}

bool Zan_TransformPoly3D::PolyPointsInit() { return polyPointsInit; }

void Zan_TransformPoly3D::InitPolyPoints() const {
    if (polyPointsInit) return;
    polyPoints.reserve(kMaxOutlinePoints);
    if (cornerBehind[0] | cornerBehind[1] | cornerBehind[2] | cornerBehind[3]) {
        // Each corner in front, and after it the clip point of its edge if that crosses the near plane. All are written
        // and counted by a sum, because branches would be mispredicted.
        polyPoints.resize(kMaxOutlinePoints);
        zan::Vector2* next = polyPoints.data();
        for (int32_t i = 0; i < 4; ++i) {
            const bool behind = cornerBehind[i];
            *next = zan::dropLast(corners[i]);
            next += behind ? 0 : 1;
            *next = zan::dropLast(edgeClipPoints[i]);
            next += behind != cornerBehind[zan::nextCorner(i)] ? 1 : 0;
        }
        polyPoints.resize(static_cast<size_t>(next - polyPoints.data()));
    } else {
        for (const zan::Vector3& corner : corners) polyPoints.emplace_back(corner.x, corner.y);
    }
    polyPointsInit = true;
}

bool Zan_TransformPoly3D::IsVisible() const {
    return !(cornerBehind[0] & cornerBehind[1] & cornerBehind[2] & cornerBehind[3]);
}
int32_t Zan_TransformPoly3D::NumPolyPoints() const { return static_cast<int32_t>(polyPoints.size()); }
const zan::Vector2* Zan_TransformPoly3D::GetPolyPoints() const { return polyPoints.data(); }
void Zan_TransformPoly3D::GetPolyPoint(int32_t i, zan::Vector2* out) const {
    assert(0 <= i && i < NumPolyPoints());
    *out = polyPoints[static_cast<size_t>(i)];
}

bool Zan_TransformPoly3D::GetPoint(int32_t i, zan::Vector2* out) const {
    if (cornerBehind[zan::checkedCorner(i)]) return false;
    *out = zan::dropLast(corners[i]);
    return true;
}

bool Zan_TransformPoly3D::GetEdge(int32_t i, zan::Edge* out) const {
    const int32_t j = zan::nextCorner(i);
    if (cornerBehind[i] && cornerBehind[j]) return false;
    const zan::Vector2 clip = zan::dropLast(edgeClipPoints[i]);
    *out = {cornerBehind[i] ? clip : zan::dropLast(corners[i]), cornerBehind[j] ? clip : zan::dropLast(corners[j])};
    return true;
}

bool Zan_TransformPoly3D::IsPointInside(const zan::Vector2* p, double tolerance) const {
    return IsVisible() && !polyPoints.empty() && zan::isPointInside(*p, polyPoints.data(), NumPolyPoints(), tolerance);
}

double Zan_TransformPoly3D::GetMinimumEdgeDistance(const zan::Vector2* p) const {
    return zan::minimumEdgeDistance(*this, *p);
}

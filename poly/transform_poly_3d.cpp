// The outline of a layer in space: carried to the eye, clipped at the near plane, carried to the screen. Only the
// points of the outline are allocated.
#include "matrix/kernels/points.h"
#include "poly/outline.h"
#include "poly/tracked_allocator.h"
#include "space/near_plane.h"

namespace {

// Each of the four edges adds at most two points.
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
    for (int32_t i = 0; i < 4; ++i) ClipEdgeToScreen(i);
    zan::transformPoints(&zan::PointKernel::spaceDivideUnlessNearZeroXYZ, &eyeToScreen, 4, corners);
    zan::transformPoints(&zan::PointKernel::spaceDivideUnlessNearZeroXYZ, &eyeToScreen, 4, edgeClipPoints);
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
    for (int32_t i = 0; i < 4; ++i) {
        zan::Edge edge;
        if (!GetEdge(i, &edge)) continue;
        polyPoints.emplace_back(edge.first.x, edge.first.y);
        // If the next corner is behind, the next edge does not start where this one ends: add the clip point.
        if (cornerBehind[zan::nextCorner(i)]) polyPoints.emplace_back(edge.second.x, edge.second.y);
    }
    polyPointsInit = true;
}

bool Zan_TransformPoly3D::IsVisible() const {
    return std::any_of(cornerBehind, cornerBehind + 4, [](bool behind) { return !behind; });
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

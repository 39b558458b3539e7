// The outline of a layer in space: carried to the eye, clipped at the near plane, carried to the screen. Only the
// points of the outline are allocated.
#include "frame/processor.h"
#include "poly/kernels/layers.h"
#include "poly/outline.h"
#include "poly/tracked_allocator.h"
#include "space/near_plane.h"

namespace {

const zan::LayerKernel& kernel() { return *zan::kLayerKernels[static_cast<int>(zan::activeInstructionSet())]; }

// Each of the four edges adds at most its start and its clip point.
constexpr size_t kMaxOutlinePoints = 8;

// Writes for each edge its start, if that is in front, then its clip point, if the edge crosses the near plane. Returns
// the number of points.
size_t outlineOf(const zan::Vector3* corners, const zan::Vector3* clipPoints, const bool* behind,
                 zan::Vector2* points) {
    // Each is written, and the next one overwrites it unless it counts: branches would be mispredicted.
    zan::Vector2* next = points;
    for (int32_t i = 0; i < 4; ++i) {
        *next = zan::dropLast(corners[i]);
        next += behind[i] ? 0 : 1;
        *next = zan::dropLast(clipPoints[i]);
        next += behind[i] != behind[zan::nextCorner(i)] ? 1 : 0;
    }
    return static_cast<size_t>(next - points);
}

}  // namespace

Zan_TransformPoly3D::Zan_TransformPoly3D() : cornerBehind{}, polyPointsInit(false) {}
Zan_TransformPoly3D::Zan_TransformPoly3D(const Zan_TransformPoly3D& other) = default;
Zan_TransformPoly3D& Zan_TransformPoly3D::operator=(const Zan_TransformPoly3D& other) = default;
Zan_TransformPoly3D::~Zan_TransformPoly3D() = default;

// Inline in the header; the library defines it as well, for callers that do not inline it.
[[gnu::used]] constexpr auto kSetLayerPoint3D = &Zan_TransformPoly3D::SetLayerPoint;

void Zan_TransformPoly3D::TransformPointsToEye(const Zan_Matrix4& layerToEye) {
    if (!kernel().toEye(&layerToEye, corners)) std::fill_n(cornerBehind, 4, false);
}

void Zan_TransformPoly3D::ClipEdgeToScreen(int32_t i) {
    const int32_t j = zan::nextCorner(i);
    zan::clipAtNearPlane(corners[i], corners[j], cornerBehind[i], cornerBehind[j], edgeClipPoints[i]);
}

void Zan_TransformPoly3D::TransformPointsToScreen(const Zan_Matrix4& eyeToScreen) {
    if (kernel().toScreen(&eyeToScreen, corners, edgeClipPoints, cornerBehind)) {
        InvalidatePolyPoints();
    } else {
        std::fill_n(cornerBehind, 4, false);
    }
}

void Zan_TransformPoly3D::InvalidatePolyPoints() {
    polyPoints.clear();
    polyPointsInit = false;
}

bool Zan_TransformPoly3D::PolyPointsInit() { return polyPointsInit; }

void Zan_TransformPoly3D::InitPolyPoints() const {
    if (polyPointsInit) return;
    polyPoints.reserve(kMaxOutlinePoints);
    if (!(cornerBehind[0] | cornerBehind[1] | cornerBehind[2] | cornerBehind[3])) {
        polyPoints.resize(4);
        for (size_t i = 0; i < 4; ++i) polyPoints[i] = zan::dropLast(corners[i]);
    } else {
        polyPoints.resize(kMaxOutlinePoints);
        polyPoints.resize(outlineOf(corners, edgeClipPoints, cornerBehind, polyPoints.data()));
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

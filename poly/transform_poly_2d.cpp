// The outline of a layer in the plane. Nothing here allocates.
#include "poly/outline.h"

Zan_TransformPoly2D::Zan_TransformPoly2D() : visible(true) {}
Zan_TransformPoly2D::Zan_TransformPoly2D(const Zan_TransformPoly2D& other) = default;
Zan_TransformPoly2D& Zan_TransformPoly2D::operator=(const Zan_TransformPoly2D& other) = default;
Zan_TransformPoly2D::~Zan_TransformPoly2D() = default;

// Inline in the header; the library defines it as well, for callers that do not inline it.
[[gnu::used]] constexpr auto kSetLayerPoint2D = &Zan_TransformPoly2D::SetLayerPoint;

void Zan_TransformPoly2D::TransformPoints(const Zan_Matrix3& m) {
    visible = !zan::degenerate(m);
    if (!visible) return;
    for (zan::Vector2& corner : corners) corner = zan::affine(m, corner);
}

bool Zan_TransformPoly2D::IsVisible() const { return visible; }
void Zan_TransformPoly2D::InitPolyPoints() const {}
int32_t Zan_TransformPoly2D::NumPolyPoints() const { return 4; }
const zan::Vector2* Zan_TransformPoly2D::GetPolyPoints() const { return corners; }
void Zan_TransformPoly2D::GetPolyPoint(int32_t i, zan::Vector2* out) const { *out = corners[zan::checkedCorner(i)]; }

bool Zan_TransformPoly2D::GetPoint(int32_t i, zan::Vector2* out) const {
    *out = corners[zan::checkedCorner(i)];
    return true;
}

bool Zan_TransformPoly2D::GetEdge(int32_t i, zan::Edge* out) const {
    *out = {corners[i], corners[zan::nextCorner(i)]};
    return true;
}

bool Zan_TransformPoly2D::IsPointInside(const zan::Vector2* p, double tolerance) const {
    return visible && zan::isPointInside(*p, corners, 4, tolerance);
}

double Zan_TransformPoly2D::GetMinimumEdgeDistance(const zan::Vector2* p) const {
    return zan::minimumEdgeDistance(*this, *p);
}

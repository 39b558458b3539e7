// Points through a projective matrix and back to w = 1: with a test for w near zero, which reports and throws, or, in
// the Fast members, without any.
#include "frame/report.h"
#include "matrix/point_rules.h"

using zan::Site;
using zan::Vector2;
using zan::Vector3;
using zan::Vector4;

namespace {

// The site is where the host is told of a w near zero.
void requireDivisible(double w, Site site) {
    if (!zan::nearZero(w)) return;
    zan::reportText(site, zan::Message::HomogeneousWZero);
    zan::throwIfFailed(Zan_Err_HomogeneousWZero);
}

double lastOf(const Vector3& p) { return p.z; }
double lastOf(const Vector4& p) { return p.w; }

// The rule of the guarded members, for points with as many components as the matrix has rows.
template <class Matrix>
auto guarded(const Matrix& m, Site site) {
    return [m, site](const auto& p) {
        const auto q = zan::product(m, p);
        requireDivisible(lastOf(q), site);
        return zan::divided(q);
    };
}
template <class Matrix>
auto unguarded(const Matrix& m) {
    return [m](const auto& p) { return zan::divided(zan::product(m, p)); };
}
// The same rule for points without a last component, which go through with 1 in its place.
template <class Wide, class Rule>
auto extended(Rule rule) {
    return [rule](const auto& p) { return zan::dropLast(rule(Wide(p))); };
}

}  // namespace

void Zan_Matrix3::TransformPointAndDivide(Vector3* point) const {
    zan::forEach(1, point, guarded(*this, Site::DividePoint3));
}
void Zan_Matrix3::TransformPointAndDivide(Vector2* point) const { TransformPointsAndDivide(1, point); }
void Zan_Matrix3::TransformPointsAndDivide(int32_t count, Vector3* points) const {
    zan::forEach(count, points, guarded(*this, Site::DividePoints3));
}
void Zan_Matrix3::TransformPointsAndDivide(int32_t count, Vector2* points) const {
    zan::forEach(count, points, extended<Vector3>(guarded(*this, Site::DividePoint3)));
}
void Zan_Matrix3::TransformPointAndDivideFast(Vector3* point) const { TransformPointsAndDivideFast(1, point); }
void Zan_Matrix3::TransformPointsAndDivideFast(int32_t count, Vector3* points) const {
    zan::forEach(count, points, unguarded(*this));
}

void Zan_Matrix4::TransformPointAndDivide(Vector4* point) const {
    zan::forEach(1, point, guarded(*this, Site::DividePoint4));
}
void Zan_Matrix4::TransformPointAndDivide(Vector3* point) const { TransformPointsAndDivide(1, point); }
void Zan_Matrix4::TransformPointsAndDivide(int32_t count, Vector4* points) const {
    zan::forEach(count, points, guarded(*this, Site::DividePoints4));
}
void Zan_Matrix4::TransformPointsAndDivide(int32_t count, Vector3* points) const {
    zan::forEach(count, points, extended<Vector4>(guarded(*this, Site::DividePoint4)));
}
void Zan_Matrix4::TransformPointAndDivideFast(Vector4* point) const { TransformPointsAndDivideFast(1, point); }
void Zan_Matrix4::TransformPointsAndDivideFast(int32_t count, Vector4* points) const {
    zan::forEach(count, points, unguarded(*this));
}

// Points through a projective matrix and back to w = 1: with a test for w near zero, which reports and throws, or, in
// the Fast members, without any.
#include "frame/report.h"
#include "matrix/kernels/points.h"
#include "matrix/point_rules.h"

using zan::Site;
using zan::Vector2;
using zan::Vector3;
using zan::Vector4;

namespace {

// The site is where the host is told of a w near zero, which stopped the transform.
void transformGuarded(zan::PointTransform transform, Site site, const void* matrix, int32_t count, void* points) {
    if (zan::transformPoints(transform, matrix, count, points) >= count) return;
    zan::reportText(site, zan::Message::HomogeneousWZero);
    zan::throwIfFailed(Zan_Err_HomogeneousWZero);
}

}  // namespace

void Zan_Matrix3::TransformPointAndDivide(Vector3* point) const {
    transformGuarded(zan::kGuardedQuotient3, Site::DividePoint3, this, 1, point);
}
void Zan_Matrix3::TransformPointAndDivide(Vector2* point) const { TransformPointsAndDivide(1, point); }
void Zan_Matrix3::TransformPointsAndDivide(int32_t count, Vector3* points) const {
    transformGuarded(zan::kGuardedQuotient3, Site::DividePoints3, this, count, points);
}
void Zan_Matrix3::TransformPointsAndDivide(int32_t count, Vector2* points) const {
    transformGuarded(zan::kGuardedQuotient2, Site::DividePoint3, this, count, points);
}
void Zan_Matrix3::TransformPointAndDivideFast(Vector3* point) const { TransformPointsAndDivideFast(1, point); }
void Zan_Matrix3::TransformPointsAndDivideFast(int32_t count, Vector3* points) const {
    zan::transformPoints(zan::kQuotient3, this, count, points);
}

void Zan_Matrix4::TransformPointAndDivide(Vector4* point) const {
    transformGuarded(zan::kGuardedReciprocal4, Site::DividePoint4, this, 1, point);
}
void Zan_Matrix4::TransformPointAndDivide(Vector3* point) const { TransformPointsAndDivide(1, point); }
void Zan_Matrix4::TransformPointsAndDivide(int32_t count, Vector4* points) const {
    transformGuarded(zan::kGuardedReciprocal4, Site::DividePoints4, this, count, points);
}
void Zan_Matrix4::TransformPointsAndDivide(int32_t count, Vector3* points) const {
    transformGuarded(zan::kGuardedReciprocal3, Site::DividePoint4, this, count, points);
}
void Zan_Matrix4::TransformPointAndDivideFast(Vector4* point) const { TransformPointsAndDivideFast(1, point); }
void Zan_Matrix4::TransformPointsAndDivideFast(int32_t count, Vector4* points) const {
    zan::transformPoints(zan::kReciprocal4, this, count, points);
}

// Transforms points by a projective matrix and divides them by w. A w near zero is reported and thrown; the Fast
// members do not test w.
#include "frame/report.h"
#include "matrix/kernels/run_points.h"
#include "matrix/point_rules.h"

using zan::PointKernel;
using zan::Site;
using zan::Vector2;
using zan::Vector3;
using zan::Vector4;

namespace {

void transformChecked(zan::PointTransform transform, Site site, const void* matrix, int32_t count, void* points) {
    const int32_t done = zan::transformPoints(transform, matrix, count, points);
    if (done >= count) return;
    zan::reportText(site, zan::Message::HomogeneousWZero);
    throw static_cast<long>(Zan_Err_HomogeneousWZero);
}

}  // namespace

void Zan_Matrix3::TransformPointAndDivide(Vector3* point) const {
    transformChecked(&PointKernel::planeCheckedDivide, Site::DividePoint3, this, 1, point);
}
void Zan_Matrix3::TransformPointAndDivide(Vector2* point) const { TransformPointsAndDivide(1, point); }
void Zan_Matrix3::TransformPointsAndDivide(int32_t count, Vector3* points) const {
    transformChecked(&PointKernel::planeCheckedDivide, Site::DividePoints3, this, count, points);
}
void Zan_Matrix3::TransformPointsAndDivide(int32_t count, Vector2* points) const {
    transformChecked(&PointKernel::planeCheckedDivideXY, Site::DividePoint3, this, count, points);
}
void Zan_Matrix3::TransformPointAndDivideFast(Vector3* point) const { TransformPointsAndDivideFast(1, point); }
void Zan_Matrix3::TransformPointsAndDivideFast(int32_t count, Vector3* points) const {
    zan::transformPoints(&PointKernel::planeDivide, this, count, points);
}

void Zan_Matrix4::TransformPointAndDivide(Vector4* point) const {
    transformChecked(&PointKernel::spaceCheckedDivide, Site::DividePoint4, this, 1, point);
}
void Zan_Matrix4::TransformPointAndDivide(Vector3* point) const { TransformPointsAndDivide(1, point); }
void Zan_Matrix4::TransformPointsAndDivide(int32_t count, Vector4* points) const {
    transformChecked(&PointKernel::spaceCheckedDivide, Site::DividePoints4, this, count, points);
}
void Zan_Matrix4::TransformPointsAndDivide(int32_t count, Vector3* points) const {
    transformChecked(&PointKernel::spaceCheckedDivideXYZ, Site::DividePoint4, this, count, points);
}
void Zan_Matrix4::TransformPointAndDivideFast(Vector4* point) const { TransformPointsAndDivideFast(1, point); }
void Zan_Matrix4::TransformPointsAndDivideFast(int32_t count, Vector4* points) const {
    zan::transformPoints(&PointKernel::spaceDivide, this, count, points);
}

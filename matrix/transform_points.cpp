// Transforms points and vectors in double precision: without a division by w, or with one that leaves out the points
// whose w is near zero. Nothing here reports.
#include "matrix/kernels/run_points.h"
#include "matrix/point_rules.h"

using zan::PointKernel;
using zan::Vector2;
using zan::Vector3;
using zan::Vector4;

int32_t Zan_TransformFloatPoints(const Zan_Matrix3* m, int32_t count, Vector2* points) {
    zan::transformPoints(&PointKernel::planeAffine, m, count, points);
    return 0;
}
int32_t Zan_TransformVector3(const Zan_Matrix3* m, int32_t count, Vector3* vectors) {
    zan::transformPoints(&PointKernel::planeProduct, m, count, vectors);
    return 0;
}
int32_t Zan_TransformVector4(const Zan_Matrix4* m, int32_t count, Vector4* vectors) {
    zan::transformPoints(&PointKernel::spaceDivideUnlessNearZero, m, count, vectors);
    return 0;
}
int32_t Zan_TransformVector4NoDivide(const Zan_Matrix4* m, int32_t count, Vector4* vectors) {
    zan::transformPoints(&PointKernel::spaceProduct, m, count, vectors);
    return 0;
}
int32_t Zan_Transform3DFloatPoints(const Zan_Matrix4* m, int32_t count, Vector3* points) {
    zan::transformPoints(&PointKernel::spaceDivideUnlessNearZeroXYZ, m, count, points);
    return 0;
}

void Zan_Matrix3::TransformPoint(Vector2* point) const { *point = zan::affine(*this, *point); }
void Zan_Matrix3::TransformPoint(Vector3* point) const { *point = zan::product(*this, *point); }
void Zan_Matrix3::TransformPoints(int32_t count, Vector2* points) const {
    Zan_TransformFloatPoints(this, count, points);
}
void Zan_Matrix3::TransformPoints(int32_t count, Vector3* points) const { Zan_TransformVector3(this, count, points); }

void Zan_Matrix4::TransformPoint(Vector4* point) const { *point = zan::product(*this, *point); }
void Zan_Matrix4::TransformPoint(Vector3* point) const { *point = zan::dropLast(zan::product(*this, Vector4(*point))); }
void Zan_Matrix4::TransformPoints(int32_t count, Vector4* points) const {
    Zan_TransformVector4NoDivide(this, count, points);
}
void Zan_Matrix4::TransformPoints(int32_t count, Vector3* points) const {
    zan::transformPoints(&PointKernel::spaceAffine, this, count, points);
}

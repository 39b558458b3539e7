// Points and vectors in double precision through a matrix, without a division or where w allows one. Nothing here
// reports.
#include "frame/report.h"
#include "matrix/point_rules.h"

using zan::Vector2;
using zan::Vector3;
using zan::Vector4;

int32_t Zan_TransformFloatPoints(const Zan_Matrix3* m, int32_t count, Vector2* points) {
    zan::forEach(count, points, [m = *m](const Vector2& p) { return zan::affine(m, p); });
    return 0;
}
int32_t Zan_TransformVector3(const Zan_Matrix3* m, int32_t count, Vector3* vectors) {
    zan::forEach(count, vectors, [m = *m](const Vector3& p) { return zan::product(m, p); });
    return 0;
}
int32_t Zan_TransformVector4(const Zan_Matrix4* m, int32_t count, Vector4* vectors) {
    zan::forEach(count, vectors, [m = *m](const Vector4& p) { return zan::dividedUnlessNearZero(zan::product(m, p)); });
    return 0;
}
int32_t Zan_TransformVector4NoDivide(const Zan_Matrix4* m, int32_t count, Vector4* vectors) {
    zan::forEach(count, vectors, [m = *m](const Vector4& p) { return zan::product(m, p); });
    return 0;
}
int32_t Zan_Transform3DFloatPoints(const Zan_Matrix4* m, int32_t count, Vector3* points) {
    zan::forEach(count, points, [m = *m](const Vector3& p) {
        return zan::dropLast(zan::dividedUnlessNearZero(zan::product(m, Vector4(p))));
    });
    return 0;
}

void Zan_Matrix3::TransformPoint(Vector2* point) const { *point = zan::affine(*this, *point); }
void Zan_Matrix3::TransformPoint(Vector3* point) const { *point = zan::product(*this, *point); }
void Zan_Matrix3::TransformPoints(int32_t count, Vector2* points) const {
    zan::throwIfFailed(Zan_TransformFloatPoints(this, count, points));
}
void Zan_Matrix3::TransformPoints(int32_t count, Vector3* points) const {
    zan::throwIfFailed(Zan_TransformVector3(this, count, points));
}

void Zan_Matrix4::TransformPoint(Vector4* point) const { *point = zan::product(*this, *point); }
void Zan_Matrix4::TransformPoint(Vector3* point) const { *point = zan::dropLast(zan::product(*this, Vector4(*point))); }
void Zan_Matrix4::TransformPoints(int32_t count, Vector4* points) const {
    zan::throwIfFailed(Zan_TransformVector4NoDivide(this, count, points));
}
void Zan_Matrix4::TransformPoints(int32_t count, Vector3* points) const {
    zan::forEach(count, points, [m = *this](const Vector3& p) { return zan::affine(m, p); });
}

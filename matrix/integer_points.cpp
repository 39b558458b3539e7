// 16-bit and 16.16 points through a matrix: the affine rule in double precision, rounded, with a test for what does not
// fit; and 16-bit points as points of space, clamped.
#include "frame/report.h"
#include "matrix/kernels/points.h"
#include "zan/matrix.h"

int32_t Zan_TransformPoints(const Zan_Matrix3* m, int32_t count, Zan_Point* points) {
    if (zan::transformPoints(zan::kRoundedPoint, m, count, points) >= count) return 0;
    return zan::report(zan::Site::TransformPoints, Zan_Err_Overflow, zan::Message::InPointTransformation);
}

int32_t Zan_TransformFixPoints(const Zan_Matrix3* m, int32_t count, Zan_FixedPoint* points) {
    if (zan::transformPoints(zan::kRoundedFixedPoint, m, count, points) >= count) return 0;
    return zan::report(zan::Site::TransformFixPoints, Zan_Err_Overflow, zan::Message::InFixedPointTransformation);
}

int32_t Zan_3DTransform2DPoints(const Zan_Matrix4* m, int32_t count, Zan_Point* points) {
    zan::transformPoints(zan::kClampedPoint, m, count, points);
    return 0;
}

void Zan_Matrix3::TransformPoints(int32_t count, Zan_Point* points) const {
    zan::throwIfFailed(Zan_TransformPoints(this, count, points));
}
void Zan_Matrix3::TransformPoints(int32_t count, Zan_FixedPoint* points) const {
    zan::throwIfFailed(Zan_TransformFixPoints(this, count, points));
}

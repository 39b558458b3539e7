// Transforms 16-bit and 16.16 points in double precision: by an affine matrix, rounded, an overflow reported; and
// 16-bit points by a matrix of space, clamped.
#include "frame/report.h"
#include "matrix/kernels/run_points.h"
#include "zan/matrix.h"

using zan::PointKernel;

int32_t Zan_TransformPoints(const Zan_Matrix3* m, int32_t count, Zan_Point* points) {
    const int32_t done = zan::transformPoints(&PointKernel::planeRound16, m, count, points);
    if (done >= count) return 0;
    return zan::report(zan::Site::TransformPoints, Zan_Err_Overflow, zan::Message::InPointTransformation);
}

int32_t Zan_TransformFixPoints(const Zan_Matrix3* m, int32_t count, Zan_FixedPoint* points) {
    const int32_t done = zan::transformPoints(&PointKernel::planeRoundFixed, m, count, points);
    if (done >= count) return 0;
    return zan::report(zan::Site::TransformFixPoints, Zan_Err_Overflow, zan::Message::InFixedPointTransformation);
}

int32_t Zan_3DTransform2DPoints(const Zan_Matrix4* m, int32_t count, Zan_Point* points) {
    zan::transformPoints(&PointKernel::spaceClamp16, m, count, points);
    return 0;
}

void Zan_Matrix3::TransformPoints(int32_t count, Zan_Point* points) const {
    zan::throwIfFailed(Zan_TransformPoints(this, count, points));
}
void Zan_Matrix3::TransformPoints(int32_t count, Zan_FixedPoint* points) const {
    zan::throwIfFailed(Zan_TransformFixPoints(this, count, points));
}

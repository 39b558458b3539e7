// 16-bit and 16.16 points through a matrix: the affine rule in double precision, rounded, with a test for what does not
// fit; and 16-bit points as points of space, clamped.
#include "frame/report.h"
#include "matrix/kernels/points.h"
#include "matrix/point_rules.h"

#include <cmath>

namespace {

int16_t clampedAndTruncated(double x) {
    if (x <= -32767.0) return -32767;
    if (x >= 32766.0) return 32766;
    return std::isnan(x) ? int16_t{0} : static_cast<int16_t>(x);
}

}  // namespace

int32_t Zan_TransformPoints(const Zan_Matrix3* m, int32_t count, Zan_Point* points) {
    if (zan::transformPoints(zan::kRoundedPoint, m, count, points) >= count) return 0;
    return zan::report(zan::Site::TransformPoints, Zan_Err_Overflow, zan::Message::InPointTransformation);
}

int32_t Zan_TransformFixPoints(const Zan_Matrix3* m, int32_t count, Zan_FixedPoint* points) {
    Zan_Matrix3 raw = *m;
    raw.m20 = m->m20 * 65536.0;
    raw.m21 = m->m21 * 65536.0;
    if (zan::transformPoints(zan::kRoundedFixedPoint, &raw, count, points) >= count) return 0;
    return zan::report(zan::Site::TransformFixPoints, Zan_Err_Overflow, zan::Message::InFixedPointTransformation);
}

int32_t Zan_3DTransform2DPoints(const Zan_Matrix4* m, int32_t count, Zan_Point* points) {
    for (int32_t i = 0; i < count; ++i) {
        zan::Vector3 p(points[i].h, points[i].v, 0.0);
        const int32_t code = Zan_Transform3DFloatPoints(m, 1, &p);
        if (code != 0) return code;
        points[i].h = clampedAndTruncated(p.x);
        points[i].v = clampedAndTruncated(p.y);
    }
    return 0;
}

void Zan_Matrix3::TransformPoints(int32_t count, Zan_Point* points) const {
    zan::throwIfFailed(Zan_TransformPoints(this, count, points));
}
void Zan_Matrix3::TransformPoints(int32_t count, Zan_FixedPoint* points) const {
    zan::throwIfFailed(Zan_TransformFixPoints(this, count, points));
}

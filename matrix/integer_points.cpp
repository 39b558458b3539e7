// 16-bit and 16.16 points through a matrix: the affine rule in double precision, rounded, with a test for what does not
// fit; and 16-bit points as points of space, clamped.
#include "frame/report.h"
#include "matrix/point_rules.h"
#include "scalar/rounding.h"

#include <cmath>
#include <limits>

namespace {

// A point's h is stored before its v is tested, so that a failing v leaves the new h behind.
template <class Point, class Coordinate>
int32_t transformRounded(const Zan_Matrix3& m, int32_t count, Point* points, Coordinate Point::*h, Coordinate Point::*v,
                         zan::Site site, zan::Message context) {
    constexpr double low = std::numeric_limits<Coordinate>::min();
    constexpr double high = std::numeric_limits<Coordinate>::max();
    for (int32_t i = 0; i < count; ++i) {
        const zan::Vector2 p = zan::affine(m, {double(points[i].*h), double(points[i].*v)});
        if (p.x >= high || p.x <= low) return zan::report(site, Zan_Err_Overflow, context);
        points[i].*h = static_cast<Coordinate>(zan::roundDouble<int32_t>(p.x));
        if (p.y >= high || p.y <= low) return zan::report(site, Zan_Err_Overflow, context);
        points[i].*v = static_cast<Coordinate>(zan::roundDouble<int32_t>(p.y));
    }
    return 0;
}

int16_t clampedAndTruncated(double x) {
    if (x <= -32767.0) return -32767;
    if (x >= 32766.0) return 32766;
    return std::isnan(x) ? int16_t{0} : static_cast<int16_t>(x);
}

}  // namespace

int32_t Zan_TransformPoints(const Zan_Matrix3* m, int32_t count, Zan_Point* points) {
    return transformRounded(*m, count, points, &Zan_Point::h, &Zan_Point::v, zan::Site::TransformPoints,
                            zan::Message::InPointTransformation);
}

int32_t Zan_TransformFixPoints(const Zan_Matrix3* m, int32_t count, Zan_FixedPoint* points) {
    Zan_Matrix3 raw = *m;
    raw.m20 = m->m20 * 65536.0;
    raw.m21 = m->m21 * 65536.0;
    return transformRounded(raw, count, points, &Zan_FixedPoint::h, &Zan_FixedPoint::v, zan::Site::TransformFixPoints,
                            zan::Message::InFixedPointTransformation);
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

// Bounding boxes of transformed rectangles: the smallest and the largest coordinates of the four transformed corners.
// The projective column of the matrix is ignored.
#include "frame/report.h"
#include "matrix/point_rules.h"
#include "scalar/rounding.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <type_traits>

namespace {

using zan::Vector2;

// In the order documented at Zan_TransformRect.
template <class T, class Point, class Rect>
void putCorners(const Rect& r, Point* corners) {
    const T left = r.left, top = r.top, right = r.right, bottom = r.bottom;
    corners[0] = {left, top};
    corners[1] = {right, top};
    corners[2] = {right, bottom};
    corners[3] = {left, bottom};
}

// The smallest and the largest of four values. Of equal ones (zeros of either sign) the first counts; one NaN makes
// both results NaN.
template <class T>
struct Extent {
    T low, high;

    Extent(T a, T b, T c, T d) : low(a), high(a) {
        for (const T x : {b, c, d}) {
            low = x < low ? x : low;
            high = x > high ? x : high;
        }
        if constexpr (std::is_floating_point_v<T>) {
            if (std::isunordered(a, b) || std::isunordered(c, d)) low = high = a + b + c + d;
        }
    }
};

template <class Box, class Point, class T>
inline Box boxAround(const Point (&corners)[4], T Point::*h, T Point::*v) {
    const Extent<T> x(corners[0].*h, corners[1].*h, corners[2].*h, corners[3].*h);
    const Extent<T> y(corners[0].*v, corners[1].*v, corners[2].*v, corners[3].*v);
    return {x.low, y.low, x.high, y.high};
}

// In double precision. Stores the transformed corners unless `corners` is null.
template <class Rect>
inline Zan_FloatRect transformedBox(const Zan_Matrix3& m, const Rect& rect, Vector2* corners) {
    Vector2 own[4];
    putCorners<double>(rect, own);
    for (Vector2& corner : own) corner = zan::affine(m, corner);
    if (corners != nullptr) std::copy_n(own, 4, corners);
    return boxAround<Zan_FloatRect>(own, &Vector2::x, &Vector2::y);
}

void storeTurned(const Zan_Matrix3& m, unsigned char* turned) {
    if (turned == nullptr) return;
    int32_t kind = 0;
    Zan_GetMatrixType(&m, &kind);
    *turned = kind == Zan_MatrixType_Affine || kind == Zan_MatrixType_Perspective;
}

int16_t clampedAndRounded(double x) {
    x = -32767.0 > x ? -32767.0 : x;
    x = 32766.0 < x ? 32766.0 : x;
    return static_cast<int16_t>(zan::roundDouble<int32_t>(x));
}

constexpr double kMinInt32 = -2147483648.0;
constexpr double kMaxInt32 = 2147483647.0;

// A bound rounded down or up to a 32-bit integer. NaN gives the least or the greatest one: the first comparison, which
// is false for it, selects that.
int32_t floored(double bound) {
    const double least = bound > kMinInt32 ? bound : kMinInt32;
    const double x = least < kMaxInt32 ? least : kMaxInt32;
    const auto whole = static_cast<int32_t>(x);
    return whole - (whole > x ? 1 : 0);
}
int32_t ceiled(double bound) {
    const double most = bound < kMaxInt32 ? bound : kMaxInt32;
    const double x = most > kMinInt32 ? most : kMinInt32;
    const auto whole = static_cast<int32_t>(x);
    return whole + (whole < x ? 1 : 0);
}

}  // namespace

int32_t Zan_TransformRect(const Zan_Matrix3* m, Zan_Rect* rect, Vector2* corners, unsigned char* turned) {
    const Zan_FloatRect box = transformedBox(*m, *rect, corners);
    rect->left = clampedAndRounded(box.left);
    rect->top = clampedAndRounded(box.top);
    rect->right = clampedAndRounded(box.right);
    rect->bottom = clampedAndRounded(box.bottom);
    storeTurned(*m, turned);
    return 0;
}

int32_t Zan_TransformFloatRect(const Zan_Matrix3* m, Zan_FloatRect* rect, Vector2* corners, unsigned char* turned) {
    *rect = transformedBox(*m, *rect, corners);
    storeTurned(*m, turned);
    return 0;
}

int32_t Zan_TransformFixRect(const Zan_Matrix3* m, Zan_FixedRect* rect, Zan_FixedPoint* corners,
                             unsigned char* turned) {
    Zan_FixedPoint own[4];
    putCorners<Zan_Fixed>(*rect, own);
    const int32_t code = Zan_TransformFixPoints(m, 4, own);
    if (corners != nullptr) std::copy_n(own, 4, corners);
    if (code != 0) return code;
    *rect = boxAround<Zan_FixedRect>(own, &Zan_FixedPoint::h, &Zan_FixedPoint::v);
    storeTurned(*m, turned);
    return 0;
}

Zan_LRect Zan_TransformBounds(const Zan_Matrix3& m, const Zan_LRect& rect) {
    if (rect.right <= rect.left || rect.bottom <= rect.top) return {0, 0, 0, 0};
    const Zan_FloatRect box = transformedBox(m, rect, nullptr);
    return {floored(box.left), floored(box.top), ceiled(box.right), ceiled(box.bottom)};
}

void Zan_Matrix3::TransformRect(Zan_Rect* rect, Vector2* corners, unsigned char* turned) const {
    Zan_TransformRect(this, rect, corners, turned);
}
void Zan_Matrix3::TransformRect(Zan_FixedRect* rect, Zan_FixedPoint* corners, unsigned char* turned) const {
    zan::throwIfFailed(Zan_TransformFixRect(this, rect, corners, turned));
}

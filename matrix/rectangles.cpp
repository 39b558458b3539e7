// The upright box around a rectangle that goes through a matrix: its four corners, affine, then their smallest and
// largest coordinates. A projective matrix is applied as if it were affine.
#include "frame/report.h"
#include "matrix/point_rules.h"
#include "scalar/rounding.h"

#include <cmath>
#include <cstdint>

namespace {

using zan::Vector2;

// The first of equals; a NaN wins over every number, wherever it stands.
template <class T>
T smaller(T a, T b) {
    return b < a || std::isnan(b) ? b : a;
}
template <class T>
T larger(T a, T b) {
    return b > a || std::isnan(b) ? b : a;
}

// In the order that the caller's array has them.
template <class T, class Point, class Rect>
void putCorners(const Rect& r, Point* corners) {
    const T left = r.left, top = r.top, right = r.right, bottom = r.bottom;
    corners[0] = {left, top};
    corners[1] = {right, top};
    corners[2] = {right, bottom};
    corners[3] = {left, bottom};
}

template <class Box, class Point, class T>
Box boxAround(const Point* corners, T Point::*h, T Point::*v) {
    Box box = {corners[0].*h, corners[0].*v, corners[0].*h, corners[0].*v};
    for (int i = 1; i < 4; ++i) {
        box.left = smaller(box.left, corners[i].*h);
        box.top = smaller(box.top, corners[i].*v);
        box.right = larger(box.right, corners[i].*h);
        box.bottom = larger(box.bottom, corners[i].*v);
    }
    return box;
}

// The box of a rectangle with integer or double coordinates, in double precision.
template <class Rect>
Zan_FloatRect transformedBox(const Zan_Matrix3& m, const Rect& rect, Vector2* corners) {
    Vector2 own[4];
    if (corners == nullptr) corners = own;
    putCorners<double>(rect, corners);
    for (int i = 0; i < 4; ++i) corners[i] = zan::affine(m, corners[i]);
    return boxAround<Zan_FloatRect>(corners, &Vector2::x, &Vector2::y);
}

int32_t tellTurned(const Zan_Matrix3& m, unsigned char* turned) {
    if (turned == nullptr) return 0;
    int32_t kind = 0;
    const int32_t code = Zan_GetMatrixType(&m, &kind);
    *turned = kind == Zan_MatrixType_Affine || kind == Zan_MatrixType_Perspective;
    return code;
}

int16_t clampedAndRounded(double x) {
    if (x <= -32767.0) return -32767;
    if (x >= 32766.0) return 32766;
    return static_cast<int16_t>(zan::roundDouble<int32_t>(x));
}

// A bound as a 32-bit integer, the given one for NaN.
int32_t whole(double bound, int32_t forNaN) {
    if (std::isnan(bound)) return forNaN;
    if (bound < -2147483648.0) return INT32_MIN;
    return bound > 2147483647.0 ? INT32_MAX : static_cast<int32_t>(bound);
}

}  // namespace

int32_t Zan_TransformRect(const Zan_Matrix3* m, Zan_Rect* rect, Vector2* corners, unsigned char* turned) {
    const Zan_FloatRect box = transformedBox(*m, *rect, corners);
    rect->left = clampedAndRounded(box.left);
    rect->top = clampedAndRounded(box.top);
    rect->right = clampedAndRounded(box.right);
    rect->bottom = clampedAndRounded(box.bottom);
    return tellTurned(*m, turned);
}

int32_t Zan_TransformFloatRect(const Zan_Matrix3* m, Zan_FloatRect* rect, Vector2* corners, unsigned char* turned) {
    *rect = transformedBox(*m, *rect, corners);
    return tellTurned(*m, turned);
}

int32_t Zan_TransformFixRect(const Zan_Matrix3* m, Zan_FixedRect* rect, Zan_FixedPoint* corners,
                             unsigned char* turned) {
    Zan_FixedPoint own[4];
    if (corners == nullptr) corners = own;
    putCorners<Zan_Fixed>(*rect, corners);
    const int32_t code = Zan_TransformFixPoints(m, 4, corners);
    if (code != 0) return code;
    *rect = boxAround<Zan_FixedRect>(corners, &Zan_FixedPoint::h, &Zan_FixedPoint::v);
    return tellTurned(*m, turned);
}

Zan_LRect Zan_TransformBounds(const Zan_Matrix3& m, const Zan_LRect& rect) {
    if (rect.right <= rect.left || rect.bottom <= rect.top) return {0, 0, 0, 0};
    const Zan_FloatRect box = transformedBox(m, rect, nullptr);
    return {whole(std::floor(box.left), INT32_MIN), whole(std::floor(box.top), INT32_MIN),
            whole(std::ceil(box.right), INT32_MAX), whole(std::ceil(box.bottom), INT32_MAX)};
}

void Zan_Matrix3::TransformRect(Zan_Rect* rect, Vector2* corners, unsigned char* turned) const {
    zan::throwIfFailed(Zan_TransformRect(this, rect, corners, turned));
}
void Zan_Matrix3::TransformRect(Zan_FixedRect* rect, Zan_FixedPoint* corners, unsigned char* turned) const {
    zan::throwIfFailed(Zan_TransformFixRect(this, rect, corners, turned));
}

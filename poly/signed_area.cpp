// The signed area of a polygon: a fan of quadrilaterals from the first vertex, each half the cross product of its
// diagonals.
#include "matrix/vectors.h"
#include "zan/poly.h"

#include <cstring>

using zan::Vector2;

namespace {

// x and y side by side: GCC vectorizes the scalar form over several quadrilaterals, with more moves than arithmetic.
using Lanes = double __attribute__((vector_size(16)));

Lanes difference(const Vector2& a, const Vector2& b) {
    Lanes first, second;
    std::memcpy(&first, &a, sizeof first);
    std::memcpy(&second, &b, sizeof second);
    return first - second;
}

// Twice the signed area of the quadrilateral o, a, b, c; of the triangle o, a, c when a and b are the same.
double twiceArea(const Vector2& o, const Vector2& a, const Vector2& b, const Vector2& c) {
    const Lanes ac = difference(c, a), ob = difference(b, o);
    const Lanes products = Lanes{ac[1], ac[0]} * ob;
    return products[0] - products[1];
}

}  // namespace

double Zan_SignedPolygonArea2D(const Vector2* vertices, int32_t count) {
    if (count < 3) return 0.0;
    const Vector2* v = vertices;
    if (count == 3) return twiceArea(v[0], v[1], v[1], v[2]) * 0.5;
    double sum = twiceArea(v[0], v[1], v[2], v[3]);
    int32_t last = 3;  // the last vertex that a quadrilateral has used
    for (; last + 2 < count; last += 2) sum += twiceArea(v[0], v[last], v[last + 1], v[last + 2]);
    if (last + 1 < count) sum += twiceArea(v[0], v[last], v[last], v[last + 1]);
    return sum * 0.5;
}

// The signed area of a polygon: a fan of quadrilaterals from the first vertex, each half the cross product of its
// diagonals.
#include "zan/poly.h"

namespace {

// Twice the area of the quadrilateral from o by a and b to c; of a triangle when a and b are the same.
double twiceArea(const Zan_Vector2T<double>& o, const Zan_Vector2T<double>& a, const Zan_Vector2T<double>& b,
                 const Zan_Vector2T<double>& c) {
    return (c.y - a.y) * (b.x - o.x) - (b.y - o.y) * (c.x - a.x);
}

}  // namespace

double Zan_SignedPolygonArea2D(const Zan_Vector2T<double>* vertices, int32_t count) {
    if (count < 3) return 0.0;
    const Zan_Vector2T<double>* v = vertices;
    if (count == 3) return twiceArea(v[0], v[1], v[1], v[2]) * 0.5;
    double sum = twiceArea(v[0], v[1], v[2], v[3]);
    int32_t last = 3;
    for (; last + 2 < count; last += 2) sum += twiceArea(v[0], v[last], v[last + 1], v[last + 2]);
    if (last + 1 < count) sum += twiceArea(v[0], v[last], v[last], v[last + 1]);
    return sum * 0.5;
}

// Outlines that the polygon benchmarks share, and the hit test that a host would write by hand.
#ifndef ZAN_BENCH_POLY_OUTLINES_H
#define ZAN_BENCH_POLY_OUTLINES_H

#include "entries.h"
#include "tests/support/vectors.h"
#include "zan/poly.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zan_bench {

using Outline = std::vector<Vector2>;

inline constexpr double kPi = 3.141592653589793;
/// The point of a circle about the origin.
inline Vector2 pointOnCircle(double angle, double radius) {
    return {radius * std::cos(angle), radius * std::sin(angle)};
}

/// A star-shaped outline about the origin: concave, without self-intersections.
inline Outline star(Random& random, int vertices) {
    Outline outline;
    for (int k = 0; k < vertices; ++k) {
        outline.push_back(pointOnCircle(2 * kPi * (k + random.real(0, 0.9)) / vertices, random.real(20, 100)));
    }
    return outline;
}
/// A convex outline: points of an ellipse.
inline Outline ellipse(Random& random, int vertices) {
    const double a = random.real(30, 100), b = random.real(30, 100), first = random.real(0, 1);
    const double x = random.real(-30, 30), y = random.real(-30, 30);
    Outline outline;
    for (int k = 0; k < vertices; ++k) {
        const double angle = 2 * kPi * (k + first) / vertices;
        outline.emplace_back(x + a * std::cos(angle), y + b * std::sin(angle));
    }
    return outline;
}

/// The crossing test known as PNPOLY (Franklin, 1970).
inline bool pnpoly(const Vector2* v, size_t count, double x, double y) {
    bool inside = false;
    for (size_t i = 0, j = count - 1; i < count; j = i++) {
        if ((v[i].y > y) != (v[j].y > y) && x < (v[j].x - v[i].x) * (y - v[i].y) / (v[j].y - v[i].y) + v[i].x) {
            inside = !inside;
        }
    }
    return inside;
}

/// The squared distance from p to the segment from a to b.
inline double squaredDistance(const Vector2& p, const Vector2& a, const Vector2& b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
    const double x = p.x - a.x - t * dx, y = p.y - a.y - t * dy;
    return x * x + y * y;
}
/// Whether p is inside the outline, or within the tolerance of its boundary.
inline bool hitByHand(const Vector2* v, size_t count, const Vector2& p, double tolerance) {
    if (count == 0) return false;
    for (size_t i = 0, j = count - 1; tolerance > 0 && i < count; j = i++) {
        if (squaredDistance(p, v[j], v[i]) <= tolerance * tolerance) return true;
    }
    return pnpoly(v, count, p.x, p.y);
}

/// Cross product of a - o and b - o; positive for a left turn where y points up.
inline double cross(const Vector2& o, const Vector2& a, const Vector2& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

}  // namespace zan_bench

#endif  // ZAN_BENCH_POLY_OUTLINES_H

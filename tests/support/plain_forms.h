// Plain forms of operations for which zan has faster algorithms: the steps of the operation's definition, one after the
// other, in short code. They give zan's answers to the last bit.
#ifndef ZAN_TESTS_SUPPORT_PLAIN_FORMS_H
#define ZAN_TESTS_SUPPORT_PLAIN_FORMS_H

#include "tests/support/vectors.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace plain_forms {

// Ratios, for operands whose results fit without cancelling common factors.

inline uint32_t magnitude(int32_t x) { return x < 0 ? 0U - static_cast<uint32_t>(x) : static_cast<uint32_t>(x); }
inline bool mayOverflow(int32_t a, int32_t b) {
    return std::countl_zero(magnitude(a)) + std::countl_zero(magnitude(b)) <= 32;
}
inline bool mayOverflow(uint32_t a, uint32_t b) { return std::countl_zero(a) + std::countl_zero(b) <= 31; }

inline Zan_Ratio sum(const Zan_Ratio& a, const Zan_Ratio& b) {
    int32_t total = 0;
    if (a.num == 0) return b;
    if (b.num == 0) return a;
    if (a.den == b.den && !__builtin_add_overflow(a.num, b.num, &total)) return {total, a.den};
    uint32_t divisor = a.den, rest = b.den;
    while (rest != 0) {
        const uint32_t next = divisor % rest;
        divisor = rest;
        rest = next;
    }
    const uint32_t factorA = b.den / divisor, factorB = a.den / divisor;
    if (mayOverflow(factorA, a.den)) return {0, 0};
    const auto signedA = static_cast<int32_t>(factorA), signedB = static_cast<int32_t>(factorB);
    if (mayOverflow(signedA, a.num) || mayOverflow(signedB, b.num)) return {0, 0};
    if (__builtin_add_overflow(signedA * a.num, signedB * b.num, &total)) return {0, 0};
    return {total, factorA * a.den};
}
inline Zan_Ratio product(const Zan_Ratio& a, const Zan_Ratio& b) {
    if (mayOverflow(a.den, b.den) || mayOverflow(a.num, b.num)) return {0, 0};
    return {a.num * b.num, a.den * b.den};
}
inline int32_t order(const Zan_Ratio& a, const Zan_Ratio& b) { return sum(a, {-b.num, b.den}).num; }

// Hit tests.

inline bool nearlyEqual(double a, double b) {
    double low = a < b ? a : b, high = a < b ? b : a;
    if (high < 0) {
        std::swap(low, high);
        low = -low;
        high = -high;
    }
    return high - low < std::max(high * 1e-12, 563 * 0x1p-49);
}
inline double squaredDistance(const Vector2& a, const Vector2& b) {
    const double x = a.x - b.x, y = a.y - b.y;
    return x * x + y * y;
}
inline bool nearEdge(const Vector2& p, const Vector2& a, const Vector2& b, double squaredTolerance) {
    const Vector2 d(b.x - a.x, b.y - a.y), v(p.x - a.x, p.y - a.y);
    const double length = std::sqrt(d.x * d.x + d.y * d.y), fromA = std::sqrt(v.x * v.x + v.y * v.y);
    const double r = 1 / length;
    if (length > 1e-12 && !(r > -1e-12 && r < 1e-12)) {
        const Vector2 u(d.x * r, d.y * r);
        const double t = u.x * v.x + u.y * v.y;
        const double x = v.x - t * u.x, y = v.y - t * u.y;
        const double distance = std::sqrt(x * x + y * y);
        if (!(t < 0) && !(fromA > length) && squaredTolerance >= distance * distance) return true;
    }
    return squaredTolerance >= squaredDistance(p, a) || squaredTolerance >= squaredDistance(p, b);
}
/// True if the point is in the polygon or within the tolerance of it. Coordinates are doubles or floats.
template <class T>
bool hit(const Zan_Vector2T<T>& point, const Zan_Vector2T<T>* vertices, size_t count, double tolerance) {
    struct Edge {
        Vector2 a, b;
    };
    const double squaredTolerance = tolerance * tolerance;
    std::vector<Zan_Vector2T<T>> list(1, vertices[0]);  // without consecutive duplicates
    for (size_t i = 1; i < count; ++i) {
        if (std::memcmp(&vertices[i], &list.back(), sizeof *vertices) != 0) list.push_back(vertices[i]);
    }
    if (list.size() == 1) {
        const T dx = point.x - list[0].x, dy = point.y - list[0].y;
        return squaredTolerance > 0 ? squaredTolerance >= dx * dx + dy * dy
                                    : point.x == list[0].x && point.y == list[0].y;
    }
    const Vector2 p(point.x, point.y);
    std::vector<Edge> edges;
    for (size_t i = 0; i < list.size(); ++i) {
        const Zan_Vector2T<T>&from = list[i], &to = list[(i + 1) % list.size()];
        edges.push_back({{from.x, from.y}, {to.x, to.y}});
    }
    unsigned crossings = 0;
    for (const auto& [a, b] : edges) {
        if (squaredTolerance > 0 && nearEdge(p, a, b, squaredTolerance)) return true;
        if (!((a.x < p.x && p.x <= b.x) || (b.x < p.x && p.x <= a.x))) continue;
        const double y = (p.x - b.x) / (a.x - b.x) * (a.y - b.y) + b.y;
        if (nearlyEqual(y, p.y)) return true;
        if (y > p.y) ++crossings;
    }
    return crossings % 2 != 0;
}

// Convexity and hulls.

inline bool convex(const std::vector<Vector2>& v) {
    const size_t n = v.size();
    int orientation = 0;
    for (size_t i = 0; i < n; ++i) {
        const Vector2 &a = v[(i + n - 2) % n], &b = v[(i + n - 1) % n], &c = v[i];
        const double e = 0x1p-52, dx1 = b.x - a.x, dy1 = b.y - a.y, dx2 = c.x - b.x, dy2 = c.y - b.y;
        const double x1 = std::abs(dx1), y1 = std::abs(dy1), x2 = std::abs(dx2), y2 = std::abs(dy2);
        const double cross = dx1 * dy2 - dx2 * dy1;
        const double error = (y1 * (x2 * e) + x2 * (y1 * e) + (x2 * e) * (y1 * e)) +
                             (y2 * (x1 * e) + x1 * (y2 * e) + (y2 * e) * (x1 * e));
        if (!(std::abs(cross) > error)) continue;
        const int sign = cross > 0 ? 1 : -1;
        if (orientation != 0 && sign != orientation) return false;
        orientation = sign;
    }
    return true;
}

/// A Graham scan around the lowest point, on a grid of 2^29 steps. For more than three points that do not all have the
/// same x or the same y.
inline void hull(const std::vector<Vector2>& points, std::vector<Vector2>& result) {
    struct GridPoint {
        int32_t x, y;
    };
    Vector2 low = points[0], high = low;
    for (const Vector2& p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    const double sx = (high.x - low.x) * 0x1p-29, sy = (high.y - low.y) * 0x1p-29;
    std::vector<GridPoint> grid;
    for (const Vector2& p : points) {
        grid.push_back(
            {static_cast<int32_t>((p.x - low.x) / sx + 0.5), static_cast<int32_t>((p.y - low.y) / sy + 0.5)});
    }
    std::iter_swap(grid.begin(), std::min_element(grid.begin(), grid.end(), [](const GridPoint& a, const GridPoint& b) {
                       return a.y < b.y || (a.y == b.y && a.x < b.x);
                   }));
    const GridPoint pivot = grid[0];
    const auto cross = [](const GridPoint& o, const GridPoint& a, const GridPoint& b) {
        return int64_t{a.x - o.x} * (b.y - o.y) - int64_t{a.y - o.y} * (b.x - o.x);
    };
    const auto squaredToPivot = [&](const GridPoint& p) {
        const int64_t x = p.x - pivot.x, y = p.y - pivot.y;
        return x * x + y * y;
    };
    std::sort(grid.begin() + 1, grid.end(), [&](const GridPoint& a, const GridPoint& b) {
        const int64_t turn = cross(pivot, a, b);
        return turn > 0 || (turn == 0 && squaredToPivot(a) > squaredToPivot(b));
    });
    const auto sameDirection = [&](const GridPoint& kept, const GridPoint& p) { return cross(pivot, kept, p) == 0; };
    grid.erase(std::unique(grid.begin() + 1, grid.end(), sameDirection), grid.end());
    size_t size = std::min<size_t>(grid.size(), 3);
    std::vector<GridPoint> stack(grid.begin(), grid.begin() + static_cast<std::ptrdiff_t>(size));
    for (size_t i = 3; i < grid.size(); ++i) {
        while (cross(stack[stack.size() - 2], stack.back(), grid[i]) <= 0) stack.pop_back();
        stack.push_back(grid[i]);
    }
    result.clear();
    for (const GridPoint& p : stack) result.emplace_back(p.x * sx + low.x, p.y * sy + low.y);
}

// Clipping of a polygon by a convex one (Sutherland and Hodgman, 1974).

inline void clip(const std::vector<Vector4>& clipPolygon, const std::vector<Vector4>& subject,
                 std::vector<Vector4>& result) {
    std::vector<Vector4> clipper = clipPolygon, kept = subject, next;
    double cx = 0, cy = 0;
    for (const Vector4& v : clipper) {
        cx += v.x;
        cy += v.y;
    }
    cx /= static_cast<double>(clipper.size());
    cy /= static_cast<double>(clipper.size());
    if (!((clipper[1].x - clipper[0].x) * (cy - clipper[0].y) - (clipper[1].y - clipper[0].y) * (cx - clipper[0].x) <
          -1e-6)) {
        std::reverse(clipper.begin(), clipper.end());
    }
    for (size_t i = 0; i < clipper.size(); ++i) {
        const Vector4 &from = clipper[(i + clipper.size() - 1) % clipper.size()], &to = clipper[i];
        const double a = -(to.y - from.y), b = to.x - from.x;
        const double c = from.x * (to.y - from.y) - from.y * (to.x - from.x);
        next.clear();
        for (size_t j = 0; kept.size() > 2 && j < kept.size(); ++j) {
            const Vector4 &s = kept[(j + kept.size() - 1) % kept.size()], &p = kept[j];
            const double atP = a * p.x + b * p.y + c, atS = a * s.x + b * s.y + c;
            if ((atP < -1e-6) != (atS < -1e-6)) {
                const double dx = p.x - s.x, dy = p.y - s.y, lineC = dy * s.x - dx * s.y, t = atS / (atS - atP);
                const double x = lineC * b - dx * c, y = lineC * a - -dy * c, d = -dy * b - dx * a;
                const double z = s.z + t * (p.z - s.z), u = s.w + t * (p.w - s.w);
                const bool parallel = d > -1e-12 && d < 1e-12;
                const double r = parallel ? 1 : 1 / d;
                next.emplace_back(parallel ? x : -(x * r), y * r, z, u);
            }
            if (atP < -1e-6) next.push_back(p);
        }
        kept = next;
    }
    result = kept;
}

}  // namespace plain_forms

#endif  // ZAN_TESTS_SUPPORT_PLAIN_FORMS_H

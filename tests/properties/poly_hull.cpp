// Convex hulls, for which the library rounds points to a grid, agree with a gift-wrapping walk (Jarvis, 1973) around
// the points of that grid.

#include "property.h"
#include "tests/support/vectors.h"
#include "zan/platform/kelvora_point.h"
#include "zan/poly.h"

namespace {

// Ordered by y, then by x.
struct GridPoint {
    int64_t y, x;
    auto operator<=>(const GridPoint&) const = default;
};

// From the lowest point on: no point is to the right of the line from a vertex to the next one. Of several such points
// the next vertex is the farthest.
template <class P>
std::vector<P> giftWrappedHull(const std::vector<P>& points) {
    double low[2] = {points[0].x, points[0].y};
    double high[2] = {low[0], low[1]};
    for (const P& p : points) {  // fmin and fmax ignore NaN
        low[0] = std::fmin(low[0], p.x);
        low[1] = std::fmin(low[1], p.y);
        high[0] = std::fmax(high[0], p.x);
        high[1] = std::fmax(high[1], p.y);
    }
    const double step[2] = {(high[0] - low[0]) * 0x1p-29, (high[1] - low[1]) * 0x1p-29};
    const auto snap = [&](double value, int axis) {
        const double position = (value - low[axis]) / step[axis] + 0.5;
        return position >= 0 && position < 0x1p30 ? static_cast<int64_t>(position) : 0;
    };
    std::vector<GridPoint> grid;
    for (const P& p : points) grid.push_back({snap(p.y, 1), snap(p.x, 0)});
    const GridPoint start = *std::min_element(grid.begin(), grid.end());
    std::vector<P> hull;
    GridPoint vertex = start;
    do {
        hull.emplace_back();
        hull.back().x = static_cast<decltype(P::x)>(static_cast<double>(vertex.x) * step[0] + low[0]);
        hull.back().y = static_cast<decltype(P::y)>(static_cast<double>(vertex.y) * step[1] + low[1]);
        GridPoint next = vertex;
        for (const GridPoint& candidate : grid) {
            const int64_t nx = next.x - vertex.x, ny = next.y - vertex.y;
            const int64_t cx = candidate.x - vertex.x, cy = candidate.y - vertex.y;
            const int64_t cross = nx * cy - ny * cx;
            if (cross < 0 || (cross == 0 && cx * cx + cy * cy > nx * nx + ny * ny)) next = candidate;
        }
        vertex = next;
    } while (vertex != start);
    return hull;
}

enum Kind { kNasty, kAllNaN, kRandom, kLattice, kBelowHalves, kNearlyOnALine, kKinds };

template <class P>
bool hull(Choices& c) {
    const int32_t kind = c.below(kKinds);
    const int32_t count = 4 + c.below(c.below(50) == 0 ? 3000 : 12);
    const int32_t extent = 1 + c.below(c.below(2) == 0 ? 4 : 1000);
    const auto draw = [&]() -> double {
        if (kind == kNasty) return c.nasty();
        if (kind == kAllNaN) return NAN;
        if (kind == kRandom) return c.plain(0, 1);
        if (kind == kBelowHalves) return std::nextafter(c.below(extent) + 0.5, 0.0);
        return c.below(extent);
    };
    std::vector<P> points(static_cast<size_t>(count));
    for (P& p : points) {
        p.x = static_cast<decltype(P::x)>(draw());
        p.y = static_cast<decltype(P::y)>(kind == kNearlyOnALine ? p.x * 3 + 0.1 : draw());
    }
    if (kind == kBelowHalves) {  // where a step of the grid is 1
        points[0].x = points[0].y = 0;
        points[1].x = points[1].y = 0x1p29;
    }
    std::vector<P> hull = points;  // old contents are replaced
    Zan_ComputeConvexHull(points.cbegin(), points.cend(), hull);
    std::vector<P> byPointers;
    Zan_ComputeConvexHull(std::as_const(points).data(), std::as_const(points).data() + count, byPointers);
    const std::vector<P> expected = giftWrappedHull(points);
    const auto same = [](const P& a, const P& b) { return sameBits(a.x, b.x) && sameBits(a.y, b.y); };
    must(std::equal(hull.begin(), hull.end(), expected.begin(), expected.end(), same));
    must(std::equal(byPointers.begin(), byPointers.end(), expected.begin(), expected.end(), same));
    if constexpr (std::is_same_v<P, Vector2>) {
        // Mapping back from the grid can bend a hull whose points are nasty or nearly on a line.
        if (kind != kNasty && kind != kAllNaN && kind != kNearlyOnALine)
            must(Zan_IsConvex(expected.cbegin(), expected.cend()));
    }
    return expected.size() > 3;
}

const Property kProperty("poly_hull", 12000, [](Choices& c) {
    bool (*const types[])(Choices&) = {hull<Vector2>, hull<Vector3>, hull<Vector4>, hull<kelvora::geom::PointT<float>>};
    return c.among(types)(c);
});

}  // namespace

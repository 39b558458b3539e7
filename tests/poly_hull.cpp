// Hulls against a plain walk around the same grid; convexity.
#include <algorithm>
#include <vector>

#include "platform/kelvora_point.h"
#include "values.h"
#include "zan/poly.h"

namespace {

using Point = Zan_Vector2T<double>;
struct Grid {
    int64_t y, x;
    auto operator<=>(const Grid&) const = default;
};

// From the lowest point on, always to the one that has all others to the left, the farthest of several.
template <class P>
std::vector<P> plainHull(const std::vector<P>& points) {
    double low[2] = {points[0].x, points[0].y}, high[2] = {low[0], low[1]};
    for (const P& p : points) {  // fmin and fmax take no NaN
        low[0] = std::fmin(low[0], p.x), high[0] = std::fmax(high[0], p.x);
        low[1] = std::fmin(low[1], p.y), high[1] = std::fmax(high[1], p.y);
    }
    const double step[2] = {(high[0] - low[0]) * 0x1p-29, (high[1] - low[1]) * 0x1p-29};
    const auto snap = [&](double value, int i) {
        const double place = (value - low[i]) / step[i] + 0.5;
        return place >= 0 && place < 0x1p30 ? static_cast<int64_t>(place) : 0;
    };
    std::vector<Grid> grid;
    for (const P& p : points) grid.push_back({snap(p.y, 1), snap(p.x, 0)});
    const Grid start = *std::min_element(grid.begin(), grid.end());
    std::vector<P> hull;
    Grid at = start;
    do {
        hull.emplace_back();
        hull.back().x = static_cast<decltype(P::x)>(static_cast<double>(at.x) * step[0] + low[0]);
        hull.back().y = static_cast<decltype(P::y)>(static_cast<double>(at.y) * step[1] + low[1]);
        Grid next = at;
        for (const Grid& c : grid) {
            const int64_t nx = next.x - at.x, ny = next.y - at.y, cx = c.x - at.x, cy = c.y - at.y;
            const int64_t turn = nx * cy - ny * cx;
            if (turn < 0 || (turn == 0 && cx * cx + cy * cy > nx * nx + ny * ny)) next = c;
        }
        at = next;
    } while (at != start);
    return hull;
}

template <class P>
void compareWithPlain(uint32_t seed) {
    Random random(seed);
    for (int round = 0; round < 3000; ++round) {
        const int32_t kind = random.below(4), count = 4 + random.below(round % 50 == 0 ? 3000 : 12);
        const int32_t extent = 1 + random.below(random.below(2) == 0 ? 4 : 1000);
        const auto draw = [&] {
            return kind == 0 ? random.nasty() : kind == 1 ? random.plain(0, 1) : random.below(extent);
        };
        std::vector<P> points(static_cast<size_t>(count)), hull, again;
        for (P& p : points) {
            p.x = static_cast<decltype(P::x)>(draw());
            p.y = static_cast<decltype(P::y)>(kind == 3 ? p.x * 3 + 0.1 : draw());  // 3: nearly on a line
        }
        hull = points;
        Zan_ComputeConvexHull(points.cbegin(), points.cend(), hull);
        Zan_ComputeConvexHull(std::as_const(points).data(), std::as_const(points).data() + count, again);
        const std::vector<P> plain = plainHull(points);
        const auto same = [](const P& a, const P& b) { return sameBits(a.x, b.x) && sameBits(a.y, b.y); };
        CAPTURE(round);
        CHECK(std::equal(hull.begin(), hull.end(), plain.begin(), plain.end(), same));
        CHECK(std::equal(again.begin(), again.end(), plain.begin(), plain.end(), same));
        if constexpr (std::is_same_v<P, Point>) CHECK((kind % 3 == 0 || Zan_IsConvex(plain.cbegin(), plain.cend())));
    }
}

}  // namespace

TEST_CASE("hulls") {
    compareWithPlain<Point>(66);
    compareWithPlain<Zan_Vector3T<double>>(67);
    compareWithPlain<Zan_Vector4T<double>>(68);
    compareWithPlain<kelvora::geom::PointT<float>>(69);
    const auto check = [](const std::vector<Point>& points, const std::vector<Point>& expected) {
        std::vector<Point> hull(9);
        Zan_ComputeConvexHull(points.cbegin(), points.cend(), hull);
        CHECK(hull == expected);
    };
    check({}, {}), check({{3, 3}, {3, 3}, {0, 0}}, {{3, 3}, {3, 3}, {0, 0}});
    check({{0, 0}, {1.0 / 3, -1}, {1, 0}, {1, 1}, {0, 1}}, {{0.33333333395421505, -1}, {1, 0}, {1, 1}, {0, 1}, {0, 0}});
}

TEST_CASE("convexity") {
    const auto check = [](std::vector<Point> points, bool convex) {
        for (size_t i = 0; i < std::max<size_t>(points.size(), 1); ++i) {  // wherever it starts
            CAPTURE(points.size(), convex, i);
            CHECK(Zan_IsConvex(points.cbegin(), points.cend()) == convex);
            if (!points.empty()) std::rotate(points.begin(), points.begin() + 1, points.end());
        }
    };
    constexpr double e = 0x1p-52, kNaN = std::numeric_limits<double>::quiet_NaN();
    check({}, true);
    check({{0, 0}, {1, 0}, {1, 1}, {0, 1}}, true), check({{0, 1}, {1, 1}, {1, 0}, {0, 0}}, true);
    check({{0, 0}, {10, 0}, {5, 2}, {10, 10}, {0, 10}}, false);
    check({{0, 0}, {1, 1}, {3, 3}, {2, 2}}, true), check({{0, 0}, {1, 0}, {1, 0}, {1, 1}, {0, 1}}, true);
    check({{0, 0}, {10, 0}, {kNaN, 2}, {10, 10}, {0, 10}}, true);
    check({{0, 3}, {2, -3}, {-3, 1}, {3, 1}, {-2, -3}}, true);  // a star in one stroke
    check({{0, 0}, {1, 1}, {2, 2 - 3 * e}, {0, 3}}, true);      // a notch less than its rounding error
    check({{0, 0}, {1, 1}, {2, 2 - 4 * e}, {0, 3}}, false);
}

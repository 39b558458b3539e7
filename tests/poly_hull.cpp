// Hulls against the plain scan around the lowest point, on the same grid; convexity by rows.
#include <algorithm>
#include <vector>

#include "platform/kelvora_point.h"
#include "values.h"
#include "zan/poly.h"

namespace {

using Point = Zan_Vector2T<double>;
using Grid = std::pair<int32_t, int32_t>;

int64_t cross(const Grid& s, const Grid& t, const Grid& c) {
    return int64_t{t.first - s.first} * (c.second - t.second) - int64_t{c.first - t.first} * (t.second - s.second);
}
int64_t squared(const Grid& a, const Grid& b) {
    return int64_t{a.first - b.first} * (a.first - b.first) + int64_t{a.second - b.second} * (a.second - b.second);
}

template <class P>
std::vector<P> plainHull(const std::vector<P>& points) {
    double low[2] = {INFINITY, INFINITY}, high[2] = {-INFINITY, -INFINITY}, step[2];
    for (const P& p : points) {
        for (const int i : {0, 1}) {
            low[i] = std::fmin(low[i], i ? p.y : p.x);  // which take no NaN
            high[i] = std::fmax(high[i], i ? p.y : p.x);
            step[i] = (high[i] - low[i]) * 0x1p-29;
        }
    }
    const auto snap = [&](double value, int i) {
        const double place = (value - low[i]) / step[i] + 0.5;
        return place >= 0 && place < 0x1p30 ? static_cast<int32_t>(place) : 0;
    };
    std::vector<Grid> grid;
    for (const P& p : points) grid.emplace_back(snap(p.x, 0), snap(p.y, 1));
    std::iter_swap(grid.begin(), std::min_element(grid.begin(), grid.end(), [](const Grid& a, const Grid& b) {
                       return std::pair(a.second, a.first) < std::pair(b.second, b.first);
                   }));
    const Grid p = grid[0];
    std::sort(grid.begin() + 1, grid.end(), [&](const Grid& c, const Grid& d) {
        const int64_t turn = cross(p, c, d);
        return turn > 0 || (turn == 0 && squared(c, p) > squared(d, p));
    });
    std::vector<Grid> stack{p};
    for (size_t i = 1; i < grid.size(); ++i) {
        if (grid[i] == p || (i > 1 && cross(p, grid[i - 1], grid[i]) == 0)) continue;
        while (stack.size() > 2 && cross(stack[stack.size() - 2], stack.back(), grid[i]) <= 0) stack.pop_back();
        stack.push_back(grid[i]);
    }
    std::vector<P> hull(stack.size());
    for (size_t i = 0; i < hull.size(); ++i) {
        hull[i].x = static_cast<decltype(P::x)>(stack[i].first * step[0] + low[0]);
        hull[i].y = static_cast<decltype(P::y)>(stack[i].second * step[1] + low[1]);
    }
    return hull;
}

template <class P>
bool same(const P& a, const P& b) {
    bool rest = true;
    if constexpr (requires { a.z; }) rest = a.z == b.z;
    if constexpr (requires { a.w; }) rest = rest && a.w == b.w;
    return rest && sameBits(a.x, b.x) && sameBits(a.y, b.y);
}

template <class P>
void compareWithPlain(uint32_t seed) {
    Random random(seed);
    for (int round = 0; round < 3000; ++round) {
        const int32_t kind = random.below(6), count = 4 + random.below(round % 50 == 0 ? 3000 : 12);
        const auto coordinate = [&](double other) {
            const double values[] = {random.nasty(),  1.0 * random.below(4), 1.0 * random.below(1000), 7,
                                     other * 3 + 0.1, random.plain(0, 1)};
            return values[kind];
        };
        std::vector<P> points(static_cast<size_t>(count)), hull(2), again;
        for (P& p : points) {
            p.x = static_cast<decltype(P::x)>(kind == 4 ? random.below(9) : coordinate(0));
            p.y = static_cast<decltype(P::y)>(coordinate(p.x));
            if constexpr (requires { p.z; }) p.z = 7;
        }
        Zan_ComputeConvexHull(points.cbegin(), points.cend(), hull);
        const std::vector<P> plain = plainHull(points);
        CAPTURE(round, kind, count);
        CHECK(std::equal(hull.begin(), hull.end(), plain.begin(), plain.end(), same<P>));
        const P* first = points.data();
        Zan_ComputeConvexHull(first, first + count, again);
        CHECK(std::equal(hull.begin(), hull.end(), again.begin(), again.end(), same<P>));
        if (kind == 0 || kind == 4) continue;
        Zan_ComputeConvexHull(hull.cbegin(), hull.cend(), again);  // the hull of a hull is the hull, nearly
        CHECK(std::equal(hull.begin(), hull.end(), again.begin(), again.end(),
                         [](const P& a, const P& b) { return std::abs(a.x - b.x) + std::abs(a.y - b.y) < 1e-4; }));
        std::vector<Point> flat;
        for (const P& p : hull) flat.emplace_back(p.x, p.y);
        CHECK((kind > 3 || Zan_IsConvex(flat.cbegin(), flat.cend())));
    }
}

}  // namespace

TEST_CASE("hulls by rows") {
    const struct {
        std::vector<Point> points, hull;
    } rows[] = {
        {{}, {}},
        {{{3, 3}, {3, 3}, {0, 0}}, {{3, 3}, {3, 3}, {0, 0}}},
        {{{0, 0}, {10, 0}, {5, 5}, {10, 10}, {0, 10}}, {{0, 0}, {10, 0}, {10, 10}, {0, 10}}},
        {{{10, 10}, {5, 0}, {0, 10}, {10, 0}, {0, 0}, {5, 0}}, {{0, 0}, {10, 0}, {10, 10}, {0, 10}}},
        {{{0, 0}, {1.0 / 3, -1}, {1, 0}, {1, 1}, {0, 1}}, {{0.33333333395421505, -1}, {1, 0}, {1, 1}, {0, 1}, {0, 0}}},
        {{{1, 1}, {3, 3}, {2, 2}, {0, 0}}, {{0, 0}, {3, 3}}},
        {{{5, 6}, {5, 6}, {5, 6}, {5, 6}}, {{5, 6}}},
    };
    for (const auto& r : rows) {
        std::vector<Point> hull(9);
        Zan_ComputeConvexHull(r.points.cbegin(), r.points.cend(), hull);
        CHECK(hull == r.hull);
    }
}

TEST_CASE("hulls, as the plain scan finds them") {
    compareWithPlain<Point>(66);
    compareWithPlain<Zan_Vector3T<double>>(67);
    compareWithPlain<Zan_Vector4T<double>>(68);
    compareWithPlain<kelvora::geom::PointT<float>>(69);
}

TEST_CASE("convexity") {
    constexpr double e = 0x1p-52, kNaN = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* what;
        std::vector<Point> points;
        bool convex;
    } rows[] = {
        {"nothing", {}, true},
        {"square", {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, true},
        {"the other way round", {{0, 1}, {1, 1}, {1, 0}, {0, 0}}, true},
        {"notched", {{0, 0}, {10, 0}, {5, 2}, {10, 10}, {0, 10}}, false},
        {"notched at the end", {{5, 2}, {10, 10}, {0, 10}, {0, 0}, {10, 0}}, false},
        {"on a line", {{0, 0}, {1, 1}, {3, 3}, {2, 2}}, true},
        {"a repeated corner", {{0, 0}, {1, 0}, {1, 0}, {1, 1}, {0, 1}}, true},
        {"a corner that is not known", {{0, 0}, {10, 0}, {kNaN, 2}, {10, 10}, {0, 10}}, true},
        {"star in one stroke", {{0, 3}, {2, -3}, {-3, 1}, {3, 1}, {-2, -3}}, true},
        {"a notch less than its rounding error", {{0, 0}, {1, 1}, {2, 2 - 3 * e}, {0, 3}}, true},
        {"a notch more than that", {{0, 0}, {1, 1}, {2, 2 - 4 * e}, {0, 3}}, false},
    };
    for (const auto& r : rows) {
        CAPTURE(r.what);
        std::vector<Zan_Vector4T<double>> four;
        for (const Point& p : r.points) four.emplace_back(p.x, p.y, 3, 1);
        CHECK((Zan_IsConvex(r.points.cbegin(), r.points.cend()) == r.convex));
        CHECK((Zan_IsConvex(four.cbegin(), four.cend()) == r.convex));
    }
}

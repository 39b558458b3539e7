// Hulls and convexity, answers worked by hand.
#include <algorithm>
#include <vector>

#include "values.h"
#include "zan/poly.h"

using Point = Zan_Vector2T<double>;

TEST_CASE("hulls") {
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
    constexpr double e = 0x1p-52;
    check({}, true);
    check({{0, 0}, {1, 0}, {1, 1}, {0, 1}}, true), check({{0, 1}, {1, 1}, {1, 0}, {0, 0}}, true);
    check({{0, 0}, {10, 0}, {5, 2}, {10, 10}, {0, 10}}, false);
    check({{0, 0}, {1, 1}, {3, 3}, {2, 2}}, true), check({{0, 0}, {1, 0}, {1, 0}, {1, 1}, {0, 1}}, true);
    check({{0, 0}, {10, 0}, {NAN, 2}, {10, 10}, {0, 10}}, true);
    check({{0, 3}, {2, -3}, {-3, 1}, {3, 1}, {-2, -3}}, true);  // a star in one stroke
    check({{0, 0}, {1, 1}, {2, 2 - 3 * e}, {0, 3}}, true);      // a notch less than its rounding error
    check({{0, 0}, {1, 1}, {2, 2 - 4 * e}, {0, 3}}, false);
}

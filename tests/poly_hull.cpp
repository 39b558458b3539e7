// Convex hulls of few points, and convexity near its limits.
#include "tests/support/vectors.h"
#include "zan/poly.h"

#include <catch2/catch.hpp>

#include <algorithm>
#include <list>

namespace {

using Points = std::vector<Vector2>;

}  // namespace

TEST_CASE("a hull of three points or fewer is a copy") {
    for (const Points& points : {Points{}, Points{{3, 3}, {3, 3}, {0, 0}}}) {
        Points hull(9);
        Zan_ComputeConvexHull(points.cbegin(), points.cend(), hull);
        CHECK(hull == points);
    }
}

TEST_CASE("a hull and convexity of points in any range") {
    Points points = {{0, 0}, {4, 0}, {2, 1}, {4, 4}, {0, 4}};
    const Points expected = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
    const auto check = [&expected](auto first, auto last) {
        Points hull;
        Zan_ComputeConvexHull(first, last, hull);
        CHECK(hull == expected);
        CHECK_FALSE(Zan_IsConvex(first, last));
    };
    const std::list<Vector2> list(points.begin(), points.end());
    check(points.begin(), points.end());
    check(points.data(), points.data() + points.size());
    check(points.crbegin(), points.crend());
    check(list.begin(), list.end());
}

TEST_CASE("convexity, from whichever vertex the polygon starts") {
    struct Row {
        const char* what;
        Points points;
        bool convex;
    };
    const Row rows[] = {
        {"no points", {}, true},
        {"a clockwise square", {{0, 1}, {1, 1}, {1, 0}, {0, 0}}, true},
        {"a square with a notch", {{0, 0}, {10, 0}, {5, 2}, {10, 10}, {0, 10}}, false},
        {"points on a line, back and forth", {{0, 0}, {1, 1}, {3, 3}, {2, 2}}, true},
        {"a five-pointed star in one stroke", {{0, 3}, {2, -3}, {-3, 1}, {3, 1}, {-2, -3}}, true},
        {"a notch within the error bound", {{0, 0}, {1, 1}, {2, 2 - 0x3p-52}, {0, 3}}, true},
        {"a notch beyond the error bound", {{0, 0}, {1, 1}, {2, 2 - 0x4p-52}, {0, 3}}, false},
    };
    for (const Row& row : rows) {
        Points points = row.points;
        for (size_t start = 0; start < std::max<size_t>(points.size(), 1); ++start) {
            CAPTURE(row.what, start);
            CHECK(Zan_IsConvex(points.cbegin(), points.cend()) == row.convex);
            if (!points.empty()) std::rotate(points.begin(), points.begin() + 1, points.end());
        }
    }
}

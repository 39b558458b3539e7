// Convex hulls of few points, and hulls and convexity of points given by any iterator.
#include "tests/support/vectors.h"
#include "zan/poly.h"

#include <catch2/catch.hpp>

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

TEST_CASE("hull and convexity of points given by any iterator") {
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

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

TEMPLATE_TEST_CASE("convexity below, at and above the number of vertices from which kernels run", "", Vector2, Vector3,
                   Vector4) {
    for (int32_t count : {3, 11, 12, 13, 64}) {
        CAPTURE(count);
        std::vector<TestType> points(static_cast<size_t>(count));
        for (int32_t i = 0; i < count; ++i) {
            const double x = i;
            points[static_cast<size_t>(i)] = {};
            points[static_cast<size_t>(i)].x = x;
            points[static_cast<size_t>(i)].y = x * x;
        }
        CHECK(Zan_IsConvex(points.cbegin(), points.cend()));
        points[1].y += count > 3 ? 6 : 0;
        CHECK(Zan_IsConvex(points.cbegin(), points.cend()) == (count == 3));
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

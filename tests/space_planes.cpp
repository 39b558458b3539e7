// Planes from points and normals, and where rays meet them.
#include <vector>

#include "host_reports.h"
#include "values.h"
#include "zan/space.h"

using Point = Zan_Vector3T<double>;

TEST_CASE("plane equations") {
    constexpr double kThird = 1.0 / 3;
    const struct {
        std::vector<Point> points;
        Zan_PlaneEq plane;
        Point centroid;
    } rows[] = {
        {{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {0, 0, 1, -0.0}, {0.5, 0.5, 0}},
        {{{0, 1, 0}, {1, 1, 0}, {1, 0, 0}, {0, 0, 0}}, {0, 0, -1, -0.0}, {0.5, 0.5, 0}},
        {{{3, 0, 0}, {3, 5, 0}, {3, 0, 5}}, {1, 0, 0, -3}, {3, 5 * kThird, 5 * kThird}},
        {{{1, 2, 3}, {3, 4, 5}}, {0, 0, 0, -0.0}, {2, 3, 4}},
        // Twice the area: 2^-40 is too little to normalise, 2^-39 is not.
        {{{0, 0, 8}, {0x1p-20, 0, 8}, {0, 0x1p-20, 8}, {0, 0, 8}}, {0, 0, 0x1p-40, -0x1p-37}, {0x1p-22, 0x1p-22, 8}},
        {{{0, 0, 8}, {0x1p-20, 0, 8}, {0, 0x1p-19, 8}, {0, 0, 8}}, {0, 0, 1, -8}, {0x1p-22, 0x1p-21, 8}},
        {{}, {0, 0, 0, 0}, {0, 0, 0}},
    };
    for (const auto& r : rows) {
        CAPTURE(&r - rows);
        Zan_PlaneEq plane{9, 9, 9, 9};
        Point centroid(9, 9, 9);
        const auto count = static_cast<int32_t>(r.points.size());
        CHECK(Zan_GetPlaneEquation(r.points.data(), count, &plane, nullptr) == 0);
        CHECK(Zan_GetPlaneEquation(r.points.data(), count, &plane, &centroid) == 0);
        CHECK((sameDoubles(plane, r.plane) && sameDoubles(centroid, r.centroid)));
    }
    const Point point(0, 0, 5), normal(0, 0, 2);
    Zan_PlaneEq plane;
    CHECK(Zan_GetPlaneEquation2(&point, &normal, &plane) == 0);
    CHECK(sameDoubles(plane, Zan_PlaneEq{0, 0, 2, -10}));
}

TEST_CASE("a ray and a plane") {
    HostReports host;
    constexpr double kUnread = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* what;
        Zan_PlaneEq plane;
        Zan_Ray ray;
        Point hit;
        bool behind, found, foundForward;
    } rows[] = {
        {"ahead", {0, 0, 1, -5}, {{0, 0, 0, kUnread}, {0, 0, 2}}, {0, 0, 5}, false, true, true},
        {"behind the origin", {0, 0, 1, -5}, {{0, 0, 0, kUnread}, {0, 0, -2}}, {0, 0, 5}, true, true, false},
        {"the origin itself", {0, 0, 1, -5}, {{1, 2, 5, 0}, {1, 1, 1}}, {1, 2, 5}, false, true, false},
        {"parallel", {0, 0, 1, -5}, {{1, 2, 3, 1}, {1, 0, 0}}, {1, 2, 3}, false, false, false},
        {"1e-12 is not", {0, 0, -1, 1e-12}, {{0, 0, 0, 1}, {1, 0, 1e-12}}, {1, 0, 1e-12}, false, true, true},
        {"less is", {0, 0, 1, -1e-12}, {{0, 0, 0, 1}, {1, 0, 0x1.19799812dea10p-40}}, {0, 0, 0}, false, false, false},
        // 1e16 swallows a 1 that is added to it: t is 1 in the stated order, 2 or 0 in others.
        {"d is added second", {1e16, -1e16, 1, 1}, {{1, 1, 1, 1}, {0, 0, -1}}, {1, 1, 0}, false, true, true},
        {"z is added last", {1e16, -1e16, -1, -1}, {{1, 1, -1, 1}, {1, 1, 1}}, {2, 2, 0}, false, true, true},
    };
    for (const auto& r : rows) {
        // Whoever does not ask whether it hits takes a miss for an error.
        for (const auto& [forward, ask] : {std::pair(false, false), {false, true}, {true, false}, {true, true}}) {
            CAPTURE(r.what, forward, ask);
            const bool found = forward ? r.foundForward : r.found, error = !found && !ask;
            Point hit(9, 9, 9);
            bool behind = !r.behind, hitFound = !found;
            CHECK(Zan_RayIntersectPlane(&r.plane, forward, &r.ray, &hit, &behind, ask ? &hitFound : nullptr) ==
                  (error ? 0x110A : 0));
            CHECK((behind == r.behind && hitFound == (found == ask)));
            CHECK((hit.x == r.hit.x && hit.y == r.hit.y && hit.z == r.hit.z));
            CHECK(host.takeAll() == (error ? "0x11002F sev 8: unable to intersect plane." : ""));
            CHECK(Zan_RayIntersectPlane(&r.plane, forward, &r.ray, &hit, nullptr, &hitFound) == 0);
        }
    }
}

TEST_CASE("a quadrilateral seen edge-on") {
    Zan_Matrix4 same(true), turned(true), halved(true), point(true);
    turned.m11 = turned.m22 = std::cos(1.0), turned.m12 = std::sin(1.0), turned.m21 = -std::sin(1.0);
    halved.m33 = 2;
    point.m00 = 0;
    const Point side[] = {{0, 0, 5}, {0, 1, 5}, {0, 1, 6}, {0, 0, 6}},
                far[] = {{3, 0, 5}, {3, 1, 5}, {3, 1, 6}, {3, 0, 6}};
    const Point face[] = {{-1, -1, 5}, {1, -1, 5}, {1, 1, 5}, {-1, 1, 5}},
                eye[] = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
    const double seen = 3 / std::sqrt(9 + 0.25 + 5.5 * 5.5);  // from the origin to the middle of `far`
    const struct {
        const Zan_Matrix4& m;
        const Point* quad;
        bool orthographic;
        double cosine;  // 9 where it is never edge-on
    } rows[] = {
        {same, side, true, 0},
        {same, side, false, 0},
        {same, far, true, 0},
        {same, far, false, seen},
        {same, face, true, 1},
        {same, face, false, 1},
        {turned, face, true, std::cos(1.0)},
        {turned, face, false, 1},
        {halved, far, false, seen},
        {point, face, true, 9},
        {same, eye, false, 9},
    };
    for (const auto& r : rows) {
        CAPTURE(&r - rows);
        for (const double tolerance : {r.cosine - 1e-9, r.cosine + 1e-9}) {
            bool edgeOn = tolerance < r.cosine;
            CHECK(Zan_IsQuadEdgeOn(&r.m, r.quad, tolerance, r.orthographic, &edgeOn) == 0);
            CHECK(edgeOn == (tolerance > r.cosine && r.cosine < 9));
        }
    }
}

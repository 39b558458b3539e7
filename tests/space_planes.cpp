// Planes from points and normals, where rays meet them, and what is seen edge-on.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"
#include "zan/space.h"

TEST_CASE("plane equations") {
    const auto check = [](const std::vector<V3>& points, const Zan_PlaneEq& expected, const V3& middle) {
        CAPTURE(middle.x, middle.y, middle.z);
        Zan_PlaneEq plane{9, 9, 9, 9};
        V3 centroid(9, 9, 9);
        CHECK(Zan_GetPlaneEquation(points.data(), int32_t(points.size()), &plane, &centroid) == 0);
        CHECK(Zan_GetPlaneEquation(points.data(), int32_t(points.size()), &plane, nullptr) == 0);
        CHECK((sameDoubles(plane, expected) && sameDoubles(centroid, middle)));
    };
    check({{3, 0, 0}, {3, 6, 0}, {3, 0, 6}}, {1, 0, 0, -3}, {3, 2, 2});
    check({{0, 3, 0}, {0, 3, 2}, {2, 3, 2}, {2, 3, 0}}, {0, 1, 0, -3}, {1, 3, 1});
    check({{1, 2, 3}, {3, 4, 5}}, {0, 0, 0, -0.0}, {2, 3, 4});
    // Twice the area: 2^-40 is too little to normalise, 2^-39 is not.
    check({{0x1p-20, 0, 8}, {0, 0x1p-20, 8}, {0, 0, 8}, {0, 0, 8}}, {0, 0, 0x1p-40, -0x1p-37}, {0x1p-22, 0x1p-22, 8});
    check({{0x1p-20, 0, 8}, {0, 0x1p-19, 8}, {0, 0, 8}, {0, 0, 8}}, {0, 0, 1, -8}, {0x1p-22, 0x1p-21, 8});
    constexpr double kAfter = 0x1.19799812dea12p-40;  // 1e-12 is too little, too; the double after it is not
    check({{0, 0, 0}, {1e-12, 0, 0}, {0, 1, 0}}, {0, 0, 1e-12, -0.0}, {1e-12 * (1.0 / 3), 1.0 / 3, 0});
    check({{0, 0, 0}, {kAfter, 0, 0}, {0, 1, 0}}, {0, 0, kAfter * (1 / kAfter), -0.0},
          {kAfter * (1.0 / 3), 1.0 / 3, 0});
    check({}, {0, 0, 0, 0}, {0, 0, 0});
    const V3 point(1, 3, 5), normal(2, 4, 6);
    Zan_PlaneEq plane;
    CHECK((Zan_GetPlaneEquation2(&point, &normal, &plane) == 0 && sameDoubles(plane, Zan_PlaneEq{2, 4, 6, -44})));
}

TEST_CASE("a ray and a plane") {
    HostReports host;
    // Whoever does not ask whether it hits takes a miss for an error.
    const auto check = [&](const Zan_PlaneEq& plane, const Zan_Ray& ray, const V3& at, bool isBehind, bool always,
                           bool ahead) {
        for (const bool forward : {false, true}) {
            CAPTURE(at.x, at.y, at.z, forward);
            const bool found = forward ? ahead : always;
            V3 hit(9, 9, 9), again = hit;
            bool behind = !isBehind, hitFound = !found;
            CHECK((Zan_RayIntersectPlane(&plane, forward, &ray, &hit, nullptr, &hitFound) == 0 && hitFound == found));
            CHECK((host.takeAll().empty() && sameDoubles(hit, at)));
            CHECK(Zan_RayIntersectPlane(&plane, forward, &ray, &again, &behind, nullptr) == (found ? 0 : 0x110A));
            CHECK(host.takeAll() == (found ? "" : "0x11002F sev 8: unable to intersect plane."));
            CHECK((behind == isBehind && sameDoubles(again, at)));
        }
    };
    check({0, 0, 1, -5}, {{0, 0, 0, kNaN}, {0, 0, -2}}, {0, 0, 5}, true, true, false);
    check({0, 0, 1, -5}, {{1, 2, 5, 0}, {1, 1, 1}}, {1, 2, 5}, false, true, false);  // the origin itself
    check({0, 0, -1, 1e-12}, {{0, 0, 0, 1}, {1, 0, 1e-12}}, {1, 0, 1e-12}, false, true, true);
    check({0, 0, 1, -1e-12}, {{0, 0, 0, 1}, {1, 0, 0x1.19799812dea10p-40}}, {0, 0, 0}, false, false, false);
    // 1e16 swallows a 1 that is added to it: t is 1 in the stated order, 2 or 0 in others.
    check({1e16, -1e16, 1, 1}, {{1, 1, 1, 1}, {0, 0, -1}}, {1, 1, 0}, false, true, true);
    check({1e16, -1e16, -1, -1}, {{1, 1, -1, 1}, {1, 1, 1}}, {2, 2, 0}, false, true, true);
}

TEST_CASE("a quadrilateral seen edge-on") {
    // Edge-on from the cosine on, or never for a cosine of 9.
    const auto check = [](const Zan_Matrix4& m, const V3& middle, bool orthographic, double cosine) {
        V3 quad[] = {{-3, -1, 0}, {2, -2, 0}, {4, 1, 0}, {-3, 2, 0}};
        for (V3& p : quad) p = {p.x + middle.x, p.y + middle.y, middle.z};
        for (const double tolerance : {cosine == 1 ? 1 : cosine - 1e-9, cosine + 1e-9}) {
            CAPTURE(m.m00, m.m11, m.m33, middle.x, orthographic, tolerance);
            bool edgeOn = tolerance <= cosine;
            CHECK(Zan_IsQuadEdgeOn(&m, quad, tolerance, orthographic, &edgeOn) == 0);
            CHECK(edgeOn == (tolerance > cosine && cosine < 9));
        }
    };
    const Zan_Matrix4 same(true), turned = turnBy(1, 0, 0, true), steep = turnBy(kPi / 2, 0, 0, true);
    const Zan_Matrix4 mirror = with(same, 0, 0, -1), point = with(same, 0, 0, 0);
    const Zan_Matrix4 halved = with(with(same, 3, 3, 2), 3, 1, 7);
    check(steep, {3, 6, 0}, true, 0), check(steep, {2, 6, 3}, false, 3 / 7.0);
    check(turned, {0, 0, 5}, true, std::cos(1.0)), check(turned, {0, 0, 5}, false, 1), check(same, {0, 0, 5}, true, 1);
    check(mirror, {0, 0, 5}, true, 1), check(halved, {3, 2, 6}, false, 6 / std::sqrt(9 + 9 * 9 + 36.0));
    check(point, {0, 0, 5}, true, 9), check(same, {0, 0, 0}, false, 9);
}

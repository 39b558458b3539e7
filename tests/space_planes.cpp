// Plane equations, intersections of rays with planes, and quadrilaterals seen edge-on.
#include "tests/support/doubles.h"
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"
#include "tests/support/vectors.h"
#include "zan/space.h"

TEST_CASE("the plane of an outline") {
    struct Row {
        const char* what;
        std::vector<Vector3> points;
        Zan_PlaneEq plane;
        Vector3 centroid;
    };
    constexpr double kAfter = 0x1.19799812dea12p-40;  // the double after 1e-12
    const Row rows[] = {
        {"two points have no normal", {{1, 2, 3}, {3, 4, 5}}, {0, 0, 0, -0.0}, {2, 3, 4}},
        {"twice the area is 2^-40, less than 1e-12: not scaled",
         {{0x1p-20, 0, 8}, {0, 0x1p-20, 8}, {0, 0, 8}, {0, 0, 8}},
         {0, 0, 0x1p-40, -0x1p-37},
         {0x1p-22, 0x1p-22, 8}},
        {"twice the area is 2^-39, more than 1e-12",
         {{0x1p-20, 0, 8}, {0, 0x1p-19, 8}, {0, 0, 8}, {0, 0, 8}},
         {0, 0, 1, -8},
         {0x1p-22, 0x1p-21, 8}},
        {"a normal of length 1e-12 is not scaled",
         {{0, 0, 0}, {1e-12, 0, 0}, {0, 1, 0}},
         {0, 0, 1e-12, -0.0},
         {1e-12 * (1.0 / 3), 1.0 / 3, 0}},
        {"a normal one step longer than 1e-12 is scaled",
         {{0, 0, 0}, {kAfter, 0, 0}, {0, 1, 0}},
         {0, 0, kAfter * (1 / kAfter), -0.0},
         {kAfter * (1.0 / 3), 1.0 / 3, 0}},
        {"no points", {}, {0, 0, 0, 0}, {0, 0, 0}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        const auto count = static_cast<int32_t>(row.points.size());
        Zan_PlaneEq plane = {9, 9, 9, 9};
        Vector3 centroid(9, 9, 9);
        CHECK(Zan_GetPlaneEquation(row.points.data(), count, &plane, &centroid) == 0);
        CHECK(doubles(plane) == doubles(row.plane));
        CHECK(doubles(centroid) == doubles(row.centroid));
        plane = {9, 9, 9, 9};
        CHECK(Zan_GetPlaneEquation(row.points.data(), count, &plane, nullptr) == 0);
        CHECK(doubles(plane) == doubles(row.plane));
    }
}

TEST_CASE("a ray and a plane") {
    struct Row {
        const char* what;
        Zan_PlaneEq plane;
        Zan_Ray ray;
        Vector3 hit;
        bool behind, found, foundForward;
    };
    const Row rows[] = {
        {"behind the origin; w is ignored", {0, 0, 1, -5}, {{0, 0, 0, NAN}, {0, 0, -2}}, {0, 0, 5}, true, true, false},
        {"at the origin", {0, 0, 1, -5}, {{1, 2, 5, 0}, {1, 1, 1}}, {1, 2, 5}, false, true, false},
        {"not quite parallel: 1e-12",
         {0, 0, -1, 1e-12},
         {{0, 0, 0, 1}, {1, 0, 1e-12}},
         {1, 0, 1e-12},
         false,
         true,
         true},
        {"parallel: one step below 1e-12",
         {0, 0, 1, -1e-12},
         {{0, 0, 0, 1}, {1, 0, 0x1.19799812dea10p-40}},
         {0, 0, 0},
         false,
         false,
         false},
    };
    HostReports host;
    for (const Row& row : rows) {
        for (const bool forwardOnly : {false, true}) {
            CAPTURE(row.what, forwardOnly);
            const bool found = forwardOnly ? row.foundForward : row.found;

            Vector3 hit(9, 9, 9);
            bool hitFound = !found;
            CHECK(Zan_RayIntersectPlane(&row.plane, forwardOnly, &row.ray, &hit, nullptr, &hitFound) == 0);
            CHECK(hitFound == found);
            CHECK(doubles(hit) == doubles(row.hit));
            CHECK(host.takeAll() == "");

            // Without hitFound, a miss is an error.
            hit = {9, 9, 9};
            bool behind = !row.behind;
            const int32_t result = Zan_RayIntersectPlane(&row.plane, forwardOnly, &row.ray, &hit, &behind, nullptr);
            CHECK(result == (found ? 0 : Zan_Err_NoPlaneIntersection));
            CHECK(behind == row.behind);
            CHECK(doubles(hit) == doubles(row.hit));
            CHECK(host.takeAll() == (found ? "" : "0x11002F sev 8: unable to intersect plane."));
        }
    }
}

TEST_CASE("a quadrilateral seen edge-on") {
    const Zan_Matrix4 identity(true);
    Zan_Matrix4 oneRadian(true);
    oneRadian.RotateAxis(1, 0, 0, 1);
    Zan_Matrix4 quarterTurn(true);
    quarterTurn.RotateAxis(1, 0, 0, kPi / 2);
    const Zan_Matrix4 wIsTwo = with(with(identity, 3, 3, 2), 3, 1, 7);
    const Zan_Matrix4 flattened = with(identity, 0, 0, 0);
    const Zan_Matrix4 mirrored = with(identity, 0, 0, -1);
    struct Row {
        const char* what;
        Zan_Matrix4 m;
        Vector3 offset;
        bool orthographic;
        double cosine;
    };
    constexpr double kNever = 9;
    const Row rows[] = {
        {"turned edge-on in an orthographic view", quarterTurn, {3, 6, 0}, true, 0},
        {"the same seen from the origin, off its plane", quarterTurn, {2, 6, 3}, false, 3 / 7.0},
        {"turned by one radian in an orthographic view", oneRadian, {0, 0, 5}, true, std::cos(1.0)},
        {"the same seen from the origin, along its normal", oneRadian, {0, 0, 5}, false, 1},
        {"facing the eye", identity, {0, 0, 5}, true, 1},
        {"facing away: the sign of the cosine does not count", mirrored, {0, 0, 5}, true, 1},
        {"w is 2: the centre is divided by it", wIsTwo, {3, 2, 6}, false, 6 / std::sqrt(9 + 9 * 9 + 36.0)},
        {"flattened to a line: no normal", flattened, {0, 0, 5}, true, kNever},
        {"its centre is the origin: no line of sight", identity, {0, 0, 0}, false, kNever},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        Vector3 quad[] = {{-3, -1, 0}, {2, -2, 0}, {4, 1, 0}, {-3, 2, 0}};
        for (Vector3& p : quad) p = {p.x + row.offset.x, p.y + row.offset.y, row.offset.z};
        // The tolerance is exclusive: with cosine 1, tolerance 1 is not enough.
        const double notEnough = row.cosine == 1 ? 1 : row.cosine - 1e-9;
        bool edgeOn = true;
        CHECK(Zan_IsQuadEdgeOn(&row.m, quad, notEnough, row.orthographic, &edgeOn) == 0);
        CHECK(edgeOn == false);
        edgeOn = row.cosine == kNever;
        CHECK(Zan_IsQuadEdgeOn(&row.m, quad, row.cosine + 1e-9, row.orthographic, &edgeOn) == 0);
        CHECK(edgeOn == (row.cosine != kNever));
    }
}

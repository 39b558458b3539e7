// Planes from points and normals, and where rays meet them.
#include <vector>

#include "host_reports.h"
#include "values.h"
#include "zan/space.h"

namespace {

using Point = Zan_Vector3T<double>;

struct PlaneRow {
    const char* what;
    std::vector<Point> points;
    Zan_PlaneEq plane;
    Point centroid;
};
constexpr double kThird = 1.0 / 3;
const PlaneRow kPlanes[] = {
    {"unit square", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {0, 0, 1, -0.0}, {0.5, 0.5, 0}},
    {"the other way round", {{0, 1, 0}, {1, 1, 0}, {1, 0, 0}, {0, 0, 0}}, {0, 0, -1, -0.0}, {0.5, 0.5, 0}},
    {"triangle away from the origin", {{3, 0, 0}, {3, 6, 0}, {3, 0, 6}}, {1, 0, 0, -3}, {3, 2, 2}},
    {"the mean is a product", {{5, 0, 0}, {0, 5, 0}, {0, 0, 0}}, {0, 0, 1, -0.0}, {5 * kThird, 5 * kThird, 0}},
    {"two points have no normal", {{1, 2, 3}, {3, 4, 5}}, {0, 0, 0, -0.0}, {2, 3, 4}},
    {"one point", {{1, 2, 3}}, {0, 0, 0, -0.0}, {1, 2, 3}},
    {"points on a line", {{1, 1, 1}, {2, 2, 2}, {4, 4, 4}, {1, 1, 1}}, {0, 0, 0, -0.0}, {2, 2, 2}},
    // Twice the area, 2^-40, is below the limit: the normal stays as it is. 2^-39 is above it.
    {"too small to normalise",
     {{0, 0, 8}, {0x1p-20, 0, 8}, {0, 0x1p-20, 8}},
     {0, 0, 0x1p-40, -0x1p-37},
     {0x1p-20 * kThird, 0x1p-20 * kThird, 8}},
    {"just large enough",
     {{0, 0, 8}, {0x1p-20, 0, 8}, {0, 0x1p-19, 8}},
     {0, 0, 1, -8},
     {0x1p-20 * kThird, 0x1p-19 * kThird, 8}},
    {"no point at all", {}, {0, 0, 0, 0}, {0, 0, 0}},
};

struct RayRow {
    const char* what;
    Zan_PlaneEq plane;
    Zan_Ray ray;
    Point hit;
    bool behind, found, foundForward;
};
constexpr double kUnread = std::numeric_limits<double>::quiet_NaN();
const RayRow kRays[] = {
    {"ahead", {0, 0, 1, -5}, {{0, 0, 0, kUnread}, {0, 0, 2}}, {0, 0, 5}, false, true, true},
    {"behind the origin", {0, 0, 1, -5}, {{0, 0, 0, kUnread}, {0, 0, -2}}, {0, 0, 5}, true, true, false},
    {"the origin itself", {0, 0, 1, -5}, {{1, 2, 5, 0}, {1, 1, 1}}, {1, 2, 5}, false, true, false},
    {"parallel", {0, 0, 1, -5}, {{1, 2, 3, 1}, {1, 0, 0}}, {1, 2, 3}, false, false, false},
    {"1e-12 is not parallel", {0, 0, 1, -1e-12}, {{0, 0, 0, 1}, {1, 0, 1e-12}}, {1, 0, 1e-12}, false, true, true},
    {"less is", {0, 0, 1, -1e-12}, {{0, 0, 0, 1}, {1, 0, 0x1.19799812dea10p-40}}, {0, 0, 0}, false, false, false},
    {"nor is -1e-12", {0, 0, -1, 1e-12}, {{0, 0, 0, 1}, {1, 0, 1e-12}}, {1, 0, 1e-12}, false, true, true},
    // 1e16 swallows a 1 that is added to it: t is 1 in the stated order, 2 or 0 in others.
    {"d is added second", {1e16, -1e16, 1, 1}, {{1, 1, 1, 1}, {0, 0, -1}}, {1, 1, 0}, false, true, true},
    {"z is added last", {1e16, -1e16, -1, -1}, {{1, 1, -1, 1}, {1, 1, 1}}, {2, 2, 0}, false, true, true},
};

}  // namespace

TEST_CASE("plane equations") {
    for (const PlaneRow& r : kPlanes) {
        CAPTURE(r.what);
        const auto count = static_cast<int32_t>(r.points.size());
        Zan_PlaneEq plane{9, 9, 9, 9};
        Point centroid(9, 9, 9);
        CHECK(Zan_GetPlaneEquation(r.points.data(), count, &plane, &centroid) == 0);
        CHECK(sameDoubles(plane, r.plane));
        CHECK(sameDoubles(centroid, r.centroid));
        CHECK(Zan_GetPlaneEquation(r.points.data(), count, &plane, nullptr) == 0);
    }
    const Point point(0, 0, 5), normal(0, 0, 2);
    Zan_PlaneEq plane;
    CHECK(Zan_GetPlaneEquation2(&point, &normal, &plane) == 0);
    CHECK(sameDoubles(plane, Zan_PlaneEq{0, 0, 2, -10}));
}

TEST_CASE("a ray and a plane") {
    HostReports host;
    for (const RayRow& r : kRays) {
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

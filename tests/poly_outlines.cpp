// Layer outlines against corners and cuts worked by hand, and what they do with memory.
#include <memory>
#include <vector>

#include "platform/bel.h"
#include "values.h"
#include "zan/poly.h"

namespace {

using Point = Zan_Vector2T<double>;
using Edge = std::pair<Point, Point>;

static_assert(std::has_virtual_destructor_v<Zan_TransformPoly2D> && sizeof(Zan_TransformPoly2D) == 80);
static_assert(std::has_virtual_destructor_v<Zan_TransformPoly3D> && sizeof(Zan_TransformPoly3D) == 240);

constexpr Point kSquare[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
constexpr Point kBowTie[] = {{0, 0}, {10, 10}, {10, 0}, {0, 10}};

// z becomes z0 + zx x + zy y.
Zan_Matrix4 tilted(double z0, double zx, double zy) {
    Zan_Matrix4 m(true);
    m.m32 = z0, m.m02 = zx, m.m12 = zy;
    return m;
}
template <class Poly>
Poly withCorners(const Point* corners) {
    Poly poly;
    for (int32_t i = 0; i < 4; ++i) poly.SetLayerPoint(i, corners[i]);
    return poly;
}
template <class Poly>
std::vector<Point> outlineOf(const Poly& poly) {
    return {poly.GetPolyPoints(), poly.GetPolyPoints() + poly.NumPolyPoints()};
}
Bel_MemoryCounts memory() {
    Bel_MemoryCounts counts;
    Bel_GetMemoryCounts(&counts);
    return counts;
}

}  // namespace

TEST_CASE("a layer in the plane") {
    const struct {
        double row0[3], row1[3];  // row 2 moves by (20, 30)
        bool visible;
        Point first, third;
    } rows[] = {
        {{1, 0, 0}, {0, 1, 0}, true, {20, 30}, {30, 40}},
        {{0, 0, 1}, {0, 1, 0}, true, {20, 30}, {20, 40}},  // the projective column counts
        {{1, 0, 0}, {0, 0, 0}, false, {0, 0}, {10, 10}},
        {{0, 9e-7, 0}, {0, 1, 0}, false, {0, 0}, {10, 10}},
        {{0, 1e-6, 0x1p-40}, {0, 1, 0}, true, {20, 30}, {20, 40 + 1e-5}},
    };
    for (const auto& r : rows) {
        CAPTURE(&r - rows);
        Zan_Matrix3 m(true);
        std::memcpy(&m.m00, r.row0, sizeof r.row0), std::memcpy(&m.m10, r.row1, sizeof r.row1);
        m.m20 = 20, m.m21 = 30;
        auto poly = withCorners<Zan_TransformPoly2D>(kSquare);
        poly.TransformPoints(m);
        const Zan_TransformPoly2D copy(poly);
        Point third, alsoThird;
        copy.GetPolyPoint(2, &alsoThird);
        CHECK((copy.IsVisible() == r.visible && copy.NumPolyPoints() == 4 && copy.GetPoint(2, &third)));
        CHECK((*copy.GetPolyPoints() == r.first && third == alsoThird && third.x == r.third.x));
        CHECK(third.y == Approx(r.third.y));
        Edge edge;
        CHECK((copy.GetEdge(3, &edge) && edge.first == copy.GetPolyPoints()[3] && edge.second == r.first));
        CHECK(copy.IsPointInside(&third, 1) == r.visible);
    }
    const auto poly = withCorners<Zan_TransformPoly2D>(kSquare);
    const Point centre(5, 5), aside(13, 14), beside(9, -5);
    CHECK((poly.IsPointInside(&centre, 0) && !poly.IsPointInside(&aside, 4.9) && poly.IsPointInside(&aside, 5)));
    CHECK((poly.GetMinimumEdgeDistance(&centre) == 5 && poly.GetMinimumEdgeDistance(&aside) == 5));
    // Farther from the start of its edge than that is long: the nearer end counts.
    CHECK(poly.GetMinimumEdgeDistance(&beside) == std::sqrt(26.0));
}

TEST_CASE("a layer in space") {
    Zan_Matrix4 flat(true), perspective(true), line(true);
    perspective.m23 = 1, perspective.m33 = 0;
    line.m11 = 1e-7;
    const double cut = 10 * (0.9 / 2);  // along an edge from z = 1 to z = -1
    const struct {
        const char* what;
        const Point* corners;
        Zan_Matrix4 toEye, toScreen;
        unsigned behind;  // bit i for corner i
        std::vector<Point> outline;
        double fromOrigin;
    } rows[] = {
        {"in front", kSquare, tilted(2, 0, 0), perspective, 0, {{0, 0}, {5, 0}, {5, 5}, {0, 5}}, 0},
        {"just in front", kSquare, tilted(0.1, 0, 0), flat, 0, {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, 0},
        {"just behind", kSquare, tilted(0x1.9999999999999p-4, 0, 0), flat, 15, {}, -1},
        {"half", kSquare, tilted(1, 0, -0.2), perspective, 12, {{0, 0}, {10, 0}, {100, 45}, {0, 45}}, 0},
        {"one in front", kSquare, tilted(1, -0.2, -0.2), flat, 14, {{0, 0}, {cut, 0}, {0, cut}}, 0},
        {"one behind", kSquare, tilted(-1, 0.2, 0.2), flat, 1, {{5.5, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 5.5}}, 5.5},
        {"two cuts",
         kBowTie,
         tilted(1, 0, -0.2),
         flat,
         10,
         {{0, 0}, {cut, cut}, {10, cut}, {10, 0}, {5.5, cut}, {0, cut}},
         0},
    };
    for (const auto& r : rows) {
        CAPTURE(r.what);
        auto poly = withCorners<Zan_TransformPoly3D>(r.corners);
        CHECK((poly.IsVisible() && !poly.PolyPointsInit()));
        poly.TransformPointsToEye(r.toEye);
        poly.TransformPointsToScreen(r.toScreen);
        const Point origin(0, 0), inner(0.5, 1);
        CHECK((poly.NumPolyPoints() == 0 && !poly.IsPointInside(&inner, 100)));
        CHECK(poly.GetMinimumEdgeDistance(&origin) == Approx(r.fromOrigin));
        poly.InitPolyPoints();
        const std::vector<Point> outline = outlineOf(poly);
        REQUIRE(outline.size() == r.outline.size());
        for (size_t i = 0; i < outline.size(); ++i) {
            CHECK((outline[i].x == Approx(r.outline[i].x) && outline[i].y == Approx(r.outline[i].y)));
        }
        CHECK((poly.IsVisible() == (r.behind != 15) && poly.IsPointInside(&inner, 0) == (r.behind % 2 == 0)));
        for (int32_t i = 0; i < 4; ++i) {
            Point corner(-9, -9);
            Edge edge(corner, corner);
            const bool behind = (r.behind >> i & 1) != 0, none = behind && (r.behind >> (i + 1) % 4 & 1) != 0;
            CHECK((poly.GetPoint(i, &corner) == !behind && (corner.x == -9) == behind));
            CHECK((poly.GetEdge(i, &edge) == !none && (edge.first.x == -9) == none));
            CHECK((behind || edge.first == corner));
        }
        // A layer that would be seen as a line has no corner behind, and keeps everything else.
        poly.TransformPointsToScreen(line);
        CHECK((poly.IsVisible() && poly.PolyPointsInit() && outlineOf(poly) == outline));
    }
}

TEST_CASE("an outline's memory is the host's") {
    const Bel_MemoryCounts start = memory();
    {
        auto poly = std::make_unique<Zan_TransformPoly3D>(withCorners<Zan_TransformPoly3D>(kSquare));
        const Zan_TransformPoly3D none(*poly);
        CHECK(memory().trackedNews == start.trackedNews);
        poly->TransformPointsToEye(tilted(1, -0.2, -0.2));
        poly->TransformPointsToScreen(Zan_Matrix4(true));
        Bel_SetAllocationFailure(kBel_TrackedAllocations, 1, false);
        CHECK_THROWS_AS(poly->InitPolyPoints(), std::bad_alloc);
        for (int round = 0; round < 3; ++round) {
            if (round == 1) poly->InvalidatePolyPoints();
            if (round == 2) poly->TransformPointsToScreen(Zan_Matrix4(true));
            CHECK((poly->NumPolyPoints() == 0 && !poly->PolyPointsInit()));
            poly->InitPolyPoints();
            poly->InitPolyPoints();
            CHECK((poly->PolyPointsInit() && poly->NumPolyPoints() > 2));
            CHECK(memory().trackedNews == start.trackedNews + 1);
            CHECK(memory().trackedBytes == start.trackedBytes + 8 * sizeof(Point));
        }
        Zan_TransformPoly3D copy(*poly);
        CHECK(memory().trackedBytes == start.trackedBytes + (8 + outlineOf(copy).size()) * sizeof(Point));
        copy = *&copy;
        CHECK((copy.PolyPointsInit() && outlineOf(copy) == outlineOf(*poly)));
        CHECK(copy.GetPolyPoints() != poly->GetPolyPoints());
        copy = none;
        CHECK((copy.NumPolyPoints() == 0 && !copy.PolyPointsInit() && copy.IsVisible()));
        poly.reset();
        CHECK(memory().trackedBlocks == start.trackedBlocks + 1);
    }
    CHECK((memory().trackedBlocks == start.trackedBlocks && memory().trackedBytes == start.trackedBytes));
}

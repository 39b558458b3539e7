// Layer outlines against corners and cuts worked by hand, and what they do with memory.
#include "platform/bel.h"
#include "tests/support/matrices.h"
#include "zan/poly.h"

namespace {

using Edge = std::pair<V2, V2>;
using Points = std::vector<V2>;

static_assert(std::has_virtual_destructor_v<Zan_TransformPoly2D> && sizeof(Zan_TransformPoly2D) == 80);
static_assert(std::has_virtual_destructor_v<Zan_TransformPoly3D> && sizeof(Zan_TransformPoly3D) == 240);

const Points kSquare = {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, kBowTie = {{0, 0}, {10, 10}, {10, 0}, {0, 10}};

// z becomes z0 + zx x + zy y.
Zan_Matrix4 tilted(double z0, double zx, double zy) {
    return matrix({1, 0, zx, 0, 0, 1, zy, 0, 0, 0, 1, 0, 0, 0, z0, 1});
}
template <class Poly>
Poly withCorners(const Points& corners) {
    Poly poly;
    for (int32_t i = 0; i < 4; ++i) poly.SetLayerPoint(i, corners[static_cast<size_t>(i)]);
    return poly;
}
template <class Poly>
Points outlineOf(const Poly& poly) {
    return {poly.GetPolyPoints(), poly.GetPolyPoints() + poly.NumPolyPoints()};
}

}  // namespace

TEST_CASE("a layer in the plane") {
    // Where a matrix with these rows, that moves by (20, 30), sends the third corner, (10, 10).
    const auto check = [](double m00, double m01, double m02, double m11, bool visible, const V2& third) {
        CAPTURE(m00, m01, m02, m11);
        const Zan_Matrix3 m = matrix({m00, m01, m02, 0, m11, 0, 20, 30, 1});
        auto poly = withCorners<Zan_TransformPoly2D>(kSquare);
        poly.TransformPoints(m);
        V2 corner, point;
        Edge edge;
        poly.GetPolyPoint(2, &point);
        CHECK((poly.IsVisible() == visible && poly.GetPoint(2, &corner) && corner == third && point == third));
        CHECK((poly.IsPointInside(&third, 1) == visible && poly.GetEdge(3, &edge) && outlineOf(poly).size() == 4));
        CHECK(edge == Edge(outlineOf(poly)[3], outlineOf(poly)[0]));
        poly.TransformPoints(Zan_Matrix3(true));
        CHECK(poly.IsVisible());
    };
    check(0, 0, 1, 1, true, {20, 40});  // the projective column counts
    check(0, 0x1p-20, 0, 1, false, {10, 10}), check(1, 0, 0, 0, false, {10, 10});
    check(0, 0x1p-19, 0, 1, true, {20, 40 + 0x1.4p-16});
    const auto poly = withCorners<Zan_TransformPoly2D>(kSquare);
    // The last is farther from the start of its edge than that is long: the nearer end counts.
    const V2 inner(5, 0.5), aside(13, 14), beside(9, -5);
    CHECK((poly.IsPointInside(&inner, 0) && !poly.IsPointInside(&aside, 4.9) && poly.IsPointInside(&aside, 5)));
    CHECK((poly.GetMinimumEdgeDistance(&inner) == 0.5 && poly.GetMinimumEdgeDistance(&aside) == 5));
    CHECK(poly.GetMinimumEdgeDistance(&beside) == std::sqrt(26.0));
}

TEST_CASE("a layer in space") {
    const Zan_Matrix4 flat(true), perspective = with(with(flat, 2, 3, 1), 3, 3, 0), line = with(flat, 1, 1, 1e-7);
    // Bit i of `behind` is for corner i.
    const auto check = [&](const Points& corners, const Zan_Matrix4& toEye, const Zan_Matrix4& toScreen,
                           unsigned behind, const Points& expected, double fromOrigin) {
        CAPTURE(toEye.m32, behind, expected.size());
        auto poly = withCorners<Zan_TransformPoly3D>(corners);
        CHECK((poly.IsVisible() && !poly.PolyPointsInit()));
        poly.TransformPointsToEye(toEye);
        poly.TransformPointsToScreen(toScreen);
        const V2 origin(0, 0), inner(0.5, 1);
        CHECK((!poly.IsPointInside(&inner, 100) && poly.GetMinimumEdgeDistance(&origin) == Approx(fromOrigin)));
        poly.InitPolyPoints();
        const Points outline = outlineOf(poly);
        CHECK(std::equal(outline.begin(), outline.end(), expected.begin(), expected.end(),
                         [](auto& a, auto& b) { return a.DistanceSquared(b) < 1e-18; }));
        CHECK((poly.IsVisible() == (behind != 15) && poly.IsPointInside(&inner, 0) == (behind % 2 == 0)));
        for (int32_t i = 0; i < 4; ++i) {
            V2 corner(-9, -9);
            Edge edge(corner, corner);
            const bool gone = (behind >> i & 1) != 0, none = gone && (behind >> (i + 1) % 4 & 1) != 0;
            CHECK((poly.GetPoint(i, &corner) == !gone && (corner.x == -9) == gone && poly.GetEdge(i, &edge) == !none));
            CHECK(((edge.first.x == -9) == none && (gone || edge.first == corner)));
        }
        // A layer that would be seen as a line has no corner behind, and keeps everything else.
        auto same = poly;
        poly.TransformPointsToScreen(line), same.TransformPointsToEye(line);
        for (auto* p : {&poly, &same}) CHECK((p->IsVisible() && p->PolyPointsInit() && outlineOf(*p) == outline));
    };
    const double cut = 4.5;  // from 10 times the way from z = 1 to z = -1
    check(kSquare, tilted(0.1, 0, 0), flat, 0, kSquare, 0);
    check(kSquare, tilted(0x1.9999999999999p-4, 0, 0), flat, 15, {}, -1);
    check(kSquare, tilted(1, 0, -0.2), perspective, 12, {{0, 0}, {10, 0}, {100, 45}, {0, 45}}, 0);
    check(kSquare, tilted(1, -0.2, -0.2), flat, 14, {{0, 0}, {cut, 0}, {0, cut}}, 0);
    check(kSquare, tilted(-1, 0.2, 0.2), flat, 1, {{5.5, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 5.5}}, 5.5);
    check(kBowTie, tilted(1, 0, -0.2), flat, 10, {{0, 0}, {cut, cut}, {10, cut}, {10, 0}, {5.5, cut}, {0, cut}}, 0);
}

TEST_CASE("an outline is made once, in memory of the host") {
    Bel_MemoryCounts start, now;
    Bel_GetMemoryCounts(&start);
    auto poly = withCorners<Zan_TransformPoly3D>(kSquare);
    poly.TransformPointsToEye(tilted(1, -0.2, -0.2));
    poly.TransformPointsToScreen(Zan_Matrix4(true));
    for (int round = 0; round < 3; ++round) {
        if (round == 1) poly.InvalidatePolyPoints();
        if (round == 2) poly.TransformPointsToScreen(Zan_Matrix4(true));
        CHECK((poly.NumPolyPoints() == 0 && !poly.PolyPointsInit()));
        for (int again = 0; again < 2; ++again) poly.InitPolyPoints();
        CHECK((poly.NumPolyPoints() == 3 && poly.PolyPointsInit()));
    }
    const Zan_TransformPoly3D copy(poly);
    Bel_GetMemoryCounts(&now);
    CHECK((now.trackedNews == start.trackedNews + 2 && now.trackedBytes == start.trackedBytes + 11 * sizeof(V2)));
}

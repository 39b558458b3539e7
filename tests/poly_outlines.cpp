// Layer outlines: corners and clip points worked out by hand, and the memory that an outline takes.
#include "tests/support/doubles.h"
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"
#include "tests/support/vectors.h"
#include "zan/poly.h"

namespace {

using Points = std::vector<Vector2>;

static_assert(std::has_virtual_destructor_v<Zan_TransformPoly2D>);
static_assert(sizeof(Zan_TransformPoly2D) == 80);
static_assert(std::has_virtual_destructor_v<Zan_TransformPoly3D>);
static_assert(sizeof(Zan_TransformPoly3D) == 240);

const Points kSquare = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
const Points kBowTie = {{0, 0}, {10, 10}, {10, 0}, {0, 10}};

// z becomes z0 + zx * x + zy * y.
Zan_Matrix4 tilted(double z0, double zx, double zy) {
    return matrix({1, 0, zx, 0, 0, 1, zy, 0, 0, 0, 1, 0, 0, 0, z0, 1});
}
template <class Poly>
Poly withCorners(const Points& corners) {
    Poly poly;
    for (int32_t i = 0; i < 4; ++i) poly.SetLayerPoint(i, corners[static_cast<size_t>(i)]);
    return poly;
}
Points outlineOf(const Zan_TransformPoly3D& poly) {
    return {poly.GetPolyPoints(), poly.GetPolyPoints() + poly.NumPolyPoints()};
}

}  // namespace

TEST_CASE("a layer in the plane is invisible after a degenerate matrix") {
    struct Row {
        const char* what;
        double m00, m01, m02, m11;  // of a matrix that translates by (20, 30)
        bool visible;
        Vector2 third;  // the image of (10, 10)
    };
    const Row rows[] = {
        {"the projective column counts for a row's length", 0, 0, 1, 1, true, {20, 40}},
        {"row 0 has a length of 2^-20: squared, below 1e-12", 0, 0x1p-20, 0, 1, false, {10, 10}},
        {"row 0 has a length of 2^-19: squared, above 1e-12", 0, 0x1p-19, 0, 1, true, {20, 40 + 0x1.4p-16}},
        {"row 1 is zero", 1, 0, 0, 0, false, {10, 10}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        auto poly = withCorners<Zan_TransformPoly2D>(kSquare);
        poly.TransformPoints(matrix({row.m00, row.m01, row.m02, 0, row.m11, 0, 20, 30, 1}));
        CHECK(poly.IsVisible() == row.visible);
        Vector2 corner;
        REQUIRE(poly.GetPoint(2, &corner));
        CHECK(doubles(corner) == doubles(row.third));
        CHECK(poly.IsPointInside(&row.third, 1) == row.visible);
        poly.TransformPoints(Zan_Matrix3(true));
        CHECK(poly.IsVisible());
    }
}

TEST_CASE("a layer in space is clipped at the near plane") {
    const Zan_Matrix4 identity(true);
    const Zan_Matrix4 perspective = with(with(identity, 2, 3, 1), 3, 3, 0);
    const Zan_Matrix4 degenerate = with(identity, 1, 1, 0x1p-20);
    constexpr double kCut = 4.5;  // z falls from 1 to -1 over a length of 10: the clip point is at 4.5
    struct Row {
        const char* what;
        Points corners;
        Zan_Matrix4 toEye, toScreen;
        bool hit;  // at (0.5, 1)
        Points outline;
        double distance;  // from the origin to the nearest edge
    };
    const Row rows[] = {
        {"on the near plane", kSquare, tilted(0.1, 0, 0), identity, true, kSquare, 0},
        {"one step behind it", kSquare, tilted(0x1.9999999999999p-4, 0, 0), identity, false, {}, -1},
        {"the bottom side behind, with perspective",
         kSquare,
         tilted(1, 0, -0.2),
         perspective,
         true,
         {{0, 0}, {10, 0}, {100, 45}, {0, 45}},
         0},
        {"row 1 has a length of 2^-19, all of it in the projective column",
         kSquare,
         tilted(1, 0, 0),
         with(with(identity, 1, 1, 0), 1, 3, 0x1p-19),
         false,
         {{0, 0}, {10, 0}, {10 * (1 / (1 + 10 * 0x1p-19)), 0}, {0, 0}},
         0},
        {"only corner 0 in front", kSquare, tilted(1, -0.2, -0.2), identity, true, {{0, 0}, {kCut, 0}, {0, kCut}}, 0},
        {"only corner 0 behind",
         kSquare,
         tilted(-1, 0.2, 0.2),
         identity,
         false,
         {{5.5, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 5.5}},
         5.5},
        {"a bow tie crosses the plane four times",
         kBowTie,
         tilted(1, 0, -0.2),
         identity,
         true,
         {{0, 0}, {kCut, kCut}, {10, kCut}, {10, 0}, {5.5, kCut}, {0, kCut}},
         0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        auto poly = withCorners<Zan_TransformPoly3D>(row.corners);
        CHECK(poly.IsVisible());
        CHECK_FALSE(poly.PolyPointsInit());
        poly.TransformPointsToEye(row.toEye);
        poly.TransformPointsToScreen(row.toScreen);

        // Distances need no outline, hits do.
        const Vector2 origin(0, 0);
        const Vector2 inner(0.5, 1);
        CHECK(poly.GetMinimumEdgeDistance(&origin) == Approx(row.distance));
        CHECK_FALSE(poly.IsPointInside(&inner, 100));
        poly.InitPolyPoints();
        const Points outline = outlineOf(poly);
        REQUIRE(outline.size() == row.outline.size());
        for (size_t i = 0; i < outline.size(); ++i) {
            CAPTURE(i);
            CHECK(greatestDifference(outline[i], row.outline[i]) < 1e-9);
        }
        CHECK(poly.IsVisible() == !row.outline.empty());
        CHECK(poly.IsPointInside(&inner, 0) == row.hit);

        // A degenerate matrix marks every corner as in front, and keeps everything else.
        auto toScreenAgain = poly;
        toScreenAgain.TransformPointsToScreen(degenerate);
        auto toEyeAgain = poly;
        toEyeAgain.TransformPointsToEye(degenerate);
        for (auto* again : {&toScreenAgain, &toEyeAgain}) {
            CHECK(again->IsVisible());
            CHECK(again->PolyPointsInit());
            CHECK(outlineOf(*again) == outline);
        }
    }
}

TEST_CASE("an outline is built once, in the host's tracked memory, which the next one reuses") {
    const Bel_MemoryCounts start = memoryCounts();
    auto poly = withCorners<Zan_TransformPoly3D>(kSquare);
    const auto checkBuiltOnce = [&poly] {
        CHECK(poly.NumPolyPoints() == 0);
        CHECK_FALSE(poly.PolyPointsInit());
        poly.InitPolyPoints();
        poly.InitPolyPoints();
        CHECK(poly.NumPolyPoints() == 3);
        CHECK(poly.PolyPointsInit());
    };
    poly.TransformPointsToEye(tilted(1, -0.2, -0.2));
    poly.TransformPointsToScreen(Zan_Matrix4(true));
    checkBuiltOnce();
    poly.InvalidatePolyPoints();
    checkBuiltOnce();
    poly.TransformPointsToScreen(Zan_Matrix4(true));
    checkBuiltOnce();

    const Zan_TransformPoly3D copy(poly);
    const Bel_MemoryCounts now = memoryCounts();
    CHECK(now.trackedNews == start.trackedNews + 2);
    // 8 points for the original, 3 for the copy.
    CHECK(now.trackedBytes == start.trackedBytes + 11 * sizeof(Vector2));
}

// Outlines and hit tests by plain functions, as examples/c_host has them, against Zan_TransformPoly3D.
#include "layer.h"
#include "tests/support/matrices.h"
#include "zan/zan.h"

#include <set>

TEST_CASE("plain functions give the outline and the hits of the class") {
    Random random(0xC);
    std::set<int32_t> counts;
    int hits = 0;
    constexpr int kLayers = 500;
    constexpr int kPointsPerLayer = 20;
    for (int layer = 0; layer < kLayers; ++layer) {
        CAPTURE(layer);
        const double width = random.plain(1, 500);
        const double height = random.plain(1, 500);
        const Zan_Vector2d corners[4] = {{-width, -height}, {width, -height}, {width, height}, {-width, height}};
        Zan_Matrix4 toEye(true);
        toEye.RotateXYZ(random.plain(-3, 3), random.plain(-3, 3), random.plain(-3, 3));
        toEye.Translate(random.plain(-200, 200), random.plain(-200, 200), random.plain(-200, 600));
        Zan_Matrix4 toScreen(true);
        toScreen.Project(1000);
        toScreen.Translate(640, 400, 0);

        Zan_TransformPoly3D poly;
        for (int32_t i = 0; i < 4; ++i) poly.SetLayerPoint(i, corners[i]);
        poly.TransformPointsToEye(toEye);
        poly.TransformPointsToScreen(toScreen);
        poly.InitPolyPoints();
        LayerOutline outline;
        layerOutline(corners, &toEye, &toScreen, &outline);
        REQUIRE(outline.count == poly.NumPolyPoints());
        for (int32_t i = 0; i < outline.count; ++i) {
            CAPTURE(i);
            CHECK(doubles(outline.points[i]) == doubles(poly.GetPolyPoints()[i]));
        }
        counts.insert(outline.count);

        for (int i = 0; i < kPointsPerLayer; ++i) {
            // A point near the line through two random vertices: often inside, and often near an edge.
            Zan_Vector2d point(640, 400);
            if (outline.count > 0) {
                const Zan_Vector2d a = outline.points[random.below(outline.count)];
                const Zan_Vector2d b = outline.points[random.below(outline.count)];
                const double share = random.plain(-0.1, 1.1);
                point = {a.x + share * (b.x - a.x) + random.plain(-5, 5),
                         a.y + share * (b.y - a.y) + random.plain(-5, 5)};
            }
            for (const double tolerance : {0.0, 2.0}) {
                CAPTURE(point.x, point.y, tolerance);
                CHECK(layerIsHit(&outline, point, tolerance) == poly.IsPointInside(&point, tolerance));
            }
            hits += poly.IsPointInside(&point, 0) ? 1 : 0;
        }
    }
    CHECK(counts == std::set<int32_t>{0, 3, 4, 5});
    CHECK(hits > kLayers * kPointsPerLayer / 4);
    CHECK(hits < kLayers * kPointsPerLayer * 3 / 4);
}

// Polygons clipped, points in them, areas, hulls and convexity, answers worked by hand.
#include "tests/support/random.h"
#include "zan/poly.h"

using Points = std::vector<Zan_Vector2T<double>>;

TEST_CASE("polygons clipped by a square") {
    using Polygon = std::vector<Zan_Vector4T<double>>;
    const auto at = [](double x, double y) { return Zan_Vector4T<double>(x, y, 2 * x + 3 * y + 1, 5 - x); };
    const Polygon unit = {at(0, 0), at(1, 0), at(1, 1), at(0, 1)};
    const auto size = [&](Polygon polygon) {
        Zan_PolyPolyClip2D(&unit, &polygon, &polygon);
        return polygon.size();
    };
    // On an edge, or nearly, is outside: a vertex is inside by more than 1e-6 times the edge's length.
    for (const double y : {1e-6, 0x1.0c6f7a0b5ed8ep-20}) {
        Polygon polygon = {at(0.9, 0.9), at(0.1, 0.9), at(0.5, y)};
        CHECK(size(polygon) == (y > 1e-6 ? 3 : 4));
        Zan_PolyPolyClip2D(&unit, &polygon, &polygon);
        for (const auto& v : polygon) CHECK((y > 1e-6 || v.y == 0 || v.y == 0.9));
    }
    // So is the middle of the clip polygon, which tells its orientation by its first edge.
    const Polygon trapezoid = {at(0, 0), at(0x1p-20, 0), at(10, -1e-6 * 0x1p21), at(-10, -1e-6 * 0x1p21)};
    Polygon inner = {at(0, -1.5), at(0.1, -1.6), at(-0.1, -1.6)};
    Zan_PolyPolyClip2D(&trapezoid, &inner, &inner);
    CHECK(inner.empty());
    Polygon teeth;
    for (int i = 0; i < 400; ++i) teeth.push_back(at(0.5 + i % 2, 0.1 + i / 1000.0));
    CHECK(size(teeth) == 600);
    CHECK((size({at(1, 0.2), at(1.5, 0.5), at(1, 0.8)}) == 0 && size({at(0.1, 0.1), at(0.2, 0.2)}) == 0));
    // Two vertices on either side of where the inside begins, 1e-13 apart: the cut is left undivided.
    Polygon cut = {{0.25, 1e-6, 0, 1}, {0.75, 1e-6 + 1e-13, 2, 3}, {0.5, 0.5, 0, 1}};
    Zan_PolyPolyClip2D(&unit, &cut, &cut);
    CHECK((cut.size() == 4 && cut[1].x == Approx(5e-7) && cut[1].y == 0));
    for (Polygon clip : {Polygon{at(-7e9, 3), at(9e9, -2)}, {}}) {
        Zan_PolyPolyClip2D(&clip, &unit, &clip);
        CHECK(clip.empty());
    }
}

TEST_CASE("points in polygons, and areas") {
    const auto isInside = [](const Zan_Vector2T<double>& p, const Points& vertices) {
        unsigned char inside = 9;
        CHECK(Zan_IsFloatPointInConcavePoly(&p, vertices.data(), int32_t(vertices.size()), 0, &inside) == 0);
        return inside == 1;
    };
    // What lies on the right and on the level edges is inside, on the left ones outside.
    const Points square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}},
                 notched = {{0, 0}, {3, 0}, {3, 8}, {7, 8}, {7, 0}, {10, 0}, {10, 10}, {0, 10}};
    for (const auto& p : Points{{10, 0}, {10, 10}, {5, 5}, {10, 5}, {5, 0}}) CHECK(isInside(p, square));
    for (const auto& p : Points{{0, 0}, {0, 10}, {15, 5}, {0, 5}}) CHECK(!isInside(p, square));
    CHECK((isInside({8, 4}, notched) && isInside({5, 8}, notched) && !isInside({5, 4}, notched)));
    CHECK(!isInside({0, 0}, {}));
    const double areas[] = {0, 0, 0, 12, -4, -32, -32, 18, 68};
    for (int32_t n = 0; n < 9; ++n) CHECK(Zan_SignedPolygonArea2D(notched.data(), n) == areas[n]);
}

TEST_CASE("hulls and convexity") {
    for (const Points& few : {Points{}, {{3, 3}, {3, 3}, {0, 0}}}) {
        Points hull(9);
        Zan_ComputeConvexHull(few.cbegin(), few.cend(), hull);
        CHECK(hull == few);
    }
    const auto check = [](Points points, bool convex) {
        for (size_t i = 0; i < std::max<size_t>(points.size(), 1); ++i) {  // wherever it starts
            CAPTURE(points.size(), convex, i);
            CHECK(Zan_IsConvex(points.cbegin(), points.cend()) == convex);
            if (!points.empty()) std::rotate(points.begin(), points.begin() + 1, points.end());
        }
    };
    check({}, true), check({{0, 1}, {1, 1}, {1, 0}, {0, 0}}, true);
    check({{0, 0}, {10, 0}, {5, 2}, {10, 10}, {0, 10}}, false), check({{0, 0}, {1, 1}, {3, 3}, {2, 2}}, true);
    check({{0, 3}, {2, -3}, {-3, 1}, {3, 1}, {-2, -3}}, true);  // a star in one stroke
    check({{0, 0}, {1, 1}, {2, 2 - 0x3p-52}, {0, 3}}, true);    // a notch less than its rounding error
    check({{0, 0}, {1, 1}, {2, 2 - 0x4p-52}, {0, 3}}, false);
}

// Points in polygons, answers worked by hand.
#include "values.h"
#include "zan/poly.h"

TEST_CASE("points in polygons") {
    using Point = Zan_Vector2T<double>;
    const auto isInside = [](const Point& p, const std::vector<Point>& vertices) {
        unsigned char inside = 9;
        CHECK(Zan_IsFloatPointInConcavePoly(&p, vertices.data(), int32_t(vertices.size()), 0, &inside) == 0);
        return inside == 1;
    };
    // What lies on the right and on the level edges is inside, on the left ones outside.
    const std::vector<Point> square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const std::vector<Point> notched = {{0, 0}, {3, 0}, {3, 8}, {7, 8}, {7, 0}, {10, 0}, {10, 10}, {0, 10}};
    for (const Point& p : {square[1], square[2], {5, 5}, {10, 5}, {5, 0}}) CHECK(isInside(p, square));
    for (const Point& p : {square[0], square[3], {15, 5}, {0, 5}}) CHECK(!isInside(p, square));
    CHECK((isInside({8, 4}, notched) && isInside({5, 8}, notched) && !isInside({5, 4}, notched)));
    CHECK((!isInside({0, 0}, {}) && Zan_SignedPolygonArea2D(square.data(), 2) == 0));
    CHECK((Zan_SignedPolygonArea2D(square.data(), 4) == 100 && Zan_SignedPolygonArea2D(square.data() + 1, 3) == 50));
}

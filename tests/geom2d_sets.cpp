// Rectangles of NaNs and of great widths; angles of points and directions.
#include "tests/support/random.h"
#include "zan/geom2d.h"

TEST_CASE("a NaN loses to the value that is tested against it, a width wraps in 32 bits") {
    const Zan_FloatRect a = {NAN, 0, 10, NAN}, b = {5, 5, 15, 15};
    Zan_FloatRect first = a, second = b;
    CHECK((Zan_SectFloatRect(&first, &b, &first) && sameDoubles(first, {5, 5, 10, 15})));
    CHECK((Zan_SectFloatRect(&a, &second, &second) && std::isnan(second.left) && std::isnan(second.bottom)));
    CHECK(!Zan_SectFloatRect(&b, &a, nullptr));
    const Zan_LRect wide = {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, unit = {0, 0, 1, 1};
    const Zan_Rect wide16 = {-32768, -32768, 32767, 32767}, unit16 = {0, 0, 1, 1};
    CHECK((Zan_LRectCompare(4, &wide, &unit) && !Zan_LRectCompare(2, &wide, &unit)));
    CHECK(Zan_RectCompare(2, &wide16, &unit16));
    // An inverted one touches by its left and top alone.
    const Zan_LRect pairs[][2] = {{{0, 5, 9, 3}, {0, 5, 9, 8}}, {{5, 0, 3, 9}, {5, 0, 8, 9}}};
    for (const auto& [p, q] : pairs) CHECK((Zan_LRectCompare(8, &p, &q) && Zan_LRectCompare(8, &q, &p)));
}

TEST_CASE("angles are clockwise from straight up") {
    // clang-format off
    const Zan_Rect rect = {0, 0, 10, 10}, thin = {0, 0, 0, 1};
    const struct { Zan_Rect r; Zan_Point p; int angle; } points[] = {
        {rect, {0, 10}, 45}, {rect, {10, 0}, 224}, {rect, {5, 0}, 269}, {rect, {0, 5}, 360}, {rect, {5, 10}, 90},
        {rect, {10, 5}, 180}, {rect, {5, 5}, 90}, {thin, {-32768, 1}, 0}, {thin, {-32768, 0}, 359},
        {{20, 10, 40, 30}, {20, 30}, 45}};
    const struct { double x, y, angle; } vectors[] = {
        {0, -1, 360}, {1, 0, 90}, {0, 1, 180}, {-1, 0, 270}, {1, 1, 135}, {-1, 1, 225}, {-1, -1, 315}, {1, -1, 45},
        {0, 0, 90}, {-0.0, -5e-324, 360}, {-1, -0.0, 270}, {1, -0.0, 90}, {NAN, 0, NAN}};
    // clang-format on
    for (const auto& [r, p, expected] : points) {
        int16_t angle = -1;
        CAPTURE(p.h, p.v);
        CHECK((Zan_PtToAngle(&r, p, &angle) == 0 && angle == expected));
    }
    const Zan_FloatRect frame = {-3, 2, 5, 8};
    for (const auto& [x, y, expected] : vectors) {
        double angle = -1;
        Zan_Vector2T<double> point(x + 1, y + 5);
        CAPTURE(x, y);
        CHECK(sameBits(Zan_VecToAngle({x, y}), expected));
        CHECK((Zan_Pt2Angle(&frame, &point, &angle) == 0 && sameBits(angle, y == -5e-324 ? 90.0 : expected)));
    }
}

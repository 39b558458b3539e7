// Compass angles of points around a rectangle's centre, and of directions.
#include "tests/support/doubles.h"
#include "tests/support/vectors.h"
#include "zan/geom2d.h"

TEST_CASE("whole degrees from the centre of a rectangle") {
    struct Row {
        const char* what;
        Zan_Rect rect;
        Zan_Point point;  // v, h
        int angle;
    };
    const Zan_Rect square = {0, 0, 10, 10};
    const Zan_Rect oneWide = {0, 0, 0, 1};
    const Row rows[] = {
        {"above", square, {0, 5}, 360},
        {"above and to the right", square, {0, 10}, 45},
        {"to the right", square, {5, 10}, 90},
        {"below", square, {10, 5}, 180},
        {"below and to the left: just under 225, since 3.1416 stands for pi, and truncated to 224",
         square,
         {10, 0},
         224},
        {"to the left: just under 270, and truncated to 269", square, {5, 0}, 269},
        {"the centre itself", square, {5, 5}, 90},
        {"just clockwise of above", oneWide, {-32768, 1}, 0},
        {"just counterclockwise of above", oneWide, {-32768, 0}, 359},
        {"a rectangle away from the origin", {20, 10, 40, 30}, {20, 30}, 45},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        int16_t angle = -1;
        CHECK(Zan_PtToAngle(&row.rect, row.point, &angle) == 0);
        CHECK(angle == row.angle);
    }
}

TEST_CASE("exact degrees of directions, and of points from the centre of a rectangle") {
    struct Row {
        const char* what;
        double x, y, angle;
    };
    const Row rows[] = {
        {"up", 0, -1, 360},
        {"up and right", 1, -1, 45},
        {"right", 1, 0, 90},
        {"down", 0, 1, 180},
        {"down and left", -1, 1, 225},
        {"left", -1, 0, 270},
        {"left, y is -0", -1, -0.0, 270},
        {"right, y is -0", 1, -0.0, 90},
        {"the zero vector", 0, 0, 90},
        {"NaN", NAN, 0, NAN},
    };
    const Zan_FloatRect frame = {-3, 2, 5, 8};  // its centre is (1, 5)
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK(doubles(Zan_VecToAngle({row.x, row.y})) == doubles(row.angle));
        Vector2 point(row.x + 1, row.y + 5);
        double angle = -1;
        CHECK(Zan_Pt2Angle(&frame, &point, &angle) == 0);
        CHECK(doubles(angle) == doubles(row.angle));
    }
    CHECK(Zan_VecToAngle({-0.0, -5e-324}) == 360);  // up, by the smallest y
    CHECK(Zan_VecToAngle({1e-15, -1}) == 0x1p-44);  // just clockwise of up: the double after 360, less 360
}

// Building transforms of the plane: what each step does after the transform so far.
#include "tests/support/matrices.h"

TEST_CASE("a step in the plane acts after the transform so far") {
    struct Row {
        const char* what;
        Vector2 point, image;  // the image: the point translated by (5, 0), then transformed by the step
        void (*step)(Zan_Matrix3&);
    };
    const Row rows[] = {
        {"rotation by -450 degrees, a quarter after one whole turn", {1, 2}, {2, -6}, [](auto& m) { m.Rotate(-450); }},
        {"rotation about a point", {6, 13}, {8, 12}, [](Zan_Matrix3& m) { m.Rotate(90, 10, 11); }},
        {"half a turn about a point", {0, 3}, {-3, 1}, [](Zan_Matrix3& m) { m.Rotate(180, 1, 2); }},
        {"skew along x", {-5, 1}, {-1, 1}, [](Zan_Matrix3& m) { m.Skew(45, 0); }},
        {"skew along y", {-4, 1}, {1, 2}, [](Zan_Matrix3& m) { m.Skew(45, -90); }},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        Zan_Matrix3 m = matrix({1, 0, 0, 0, 1, 0, 5, 0, 1});
        row.step(m);
        Vector2 p = row.point;
        m.TransformPoint(&p);
        CHECK(greatestDifference(p, row.image) < 1e-14);
        CHECK(m.m02 == 0);
        CHECK(m.m12 == 0);
        CHECK(m.m22 == 1);
    }
}

TEST_CASE("steps that do nothing leave every bit alone, where a product with the identity would not") {
    const Zan_Matrix3 odd = matrix({-0.0, kNaN, -0.0, 1e308, 5, -0.0, 3, -0.0, 1e308});
    Zan_Matrix3 m = odd;
    for (const double degrees : {0.0, -0.0, 360.0, -720.0, 360e10}) m.Rotate(degrees, 7, 8);
    CHECK(m == odd);
    m.Scale(1, 1, 7, 8);
    CHECK(m == odd);
    m.Skew(-0.0, 30);
    CHECK(m == odd);
}

TEST_CASE("whole turns are taken off before the angle becomes radians") {
    Zan_Matrix3 many(true);
    many.Rotate(360e6 + 1);
    Zan_Matrix3 one(true);
    one.Rotate(1);
    CHECK(doubles(many) == doubles(one));
}

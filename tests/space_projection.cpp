// Single points transformed to the screen, decompositions of flat layers, rotation about a centre.
#include "tests/support/doubles.h"
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"
#include "tests/support/vectors.h"
#include "zan/space.h"

TEST_CASE("a point of space to the screen") {
    const Zan_Matrix4 identity(true);
    const Zan_Matrix4 byZ = with(with(identity, 2, 3, 1), 3, 3, 0);
    const Zan_Matrix4 wNearZero = with(with(identity, 3, 3, 9e-13), 3, 2, 1);
    const Zan_Matrix4 onNearPlane = with(identity, 3, 2, 0.1);
    const Zan_Matrix4 behind = with(identity, 3, 2, 0x1.9999999999999p-4);  // the double before 0.1
    const Zan_Matrix3 screen = matrix({10, 1, 0, 0, 1, 3, 5, 7, 9});
    enum Outcome { kThrows = -1, kBehind, kInFront };
    struct Row {
        const char* what;
        Zan_Matrix4 toEye, projection;
        Outcome outcome;
        Vector3 image;
    };
    const Row rows[] = {
        {"on the near plane", onNearPlane, identity, kInFront, {6, 7.3, 0.1}},
        {"the projection divides by z", onNearPlane, byZ, kInFront, {15, 10, 1}},
        {"one step behind the near plane", behind, identity, kBehind, {0.1, 0.2, 0}},
        {"w is near zero in eye space", wNearZero, identity, kThrows, {0.1, 0.2, 0}},
        {"w is near zero after the projection", onNearPlane, wNearZero, kThrows, {0.1, 0.2, 0}},
    };
    HostReports host;
    for (const Row& row : rows) {
        CAPTURE(row.what);
        const auto check = [&](auto point, const auto& image) {
            int outcome = kThrows;
            const long thrown =
                thrownBy([&] { outcome = Zan_TransformPoint3DtoScreen(row.toEye, row.projection, screen, &point); });
            CHECK(outcome == row.outcome);
            CHECK(thrown == (row.outcome == kThrows ? Zan_Err_HomogeneousWZero : 0));
            CHECK(host.takeAll() == (row.outcome == kThrows ? "0x11003B sev 8: homogeneous point has W=0" : ""));
            CHECK(doubles(point) == doubles(image));
        };
        check(Vector3(0.1, 0.2, 0), row.image);
        check(Vector2(0.1, 0.2), Vector2(row.image.x, row.image.y));
    }
}

TEST_CASE("a half turn of a layer without depth becomes a mirrored scale") {
    struct Row {
        const char* what;
        double rx, ry;
        Vector2 scale;
        Vector3 angles;
    };
    constexpr double kOneMilliradianLess = kPi - 0.001;
    constexpr double kSixPicodegreesMore = kPi + 1e-13;
    const Row rows[] = {
        {"about x", kPi, 0.3, {2, -3}, {0, -0.3, -0.2}},
        {"about y, clockwise", 0.3, -kPi, {-2, 3}, {-0.3, 0, -0.2}},
        {"about both", -kPi, kPi, {-2, -3}, {-0.0, 0, 0.2}},
        {"neither is within 1e-12 degrees of a half turn",
         kOneMilliradianLess,
         kSixPicodegreesMore,
         {2, 3},
         {kOneMilliradianLess, kSixPicodegreesMore, 0.2}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        Zan_Matrix4Decomp d = {1, 2, 3, 2, 3, 5, 6, 7, 8, row.rx, row.ry, 0.2};
        const Zan_Matrix4Decomp expected = {1, 2, 3, row.scale.x,  row.scale.y,  1,
                                            6, 7, 8, row.angles.x, row.angles.y, row.angles.z};
        CHECK(Zan_Correct3DDecompFor2D(&d) == 0);
        CHECK(doubles(d) == doubles(expected));
    }
}

TEST_CASE("a point rotated about a centre") {
    using Vector2f = Zan_Vector2T<float>;
    struct Row {
        const char* what;
        Vector2f centre;
        double degrees;
        Vector2f point, image;
    };
    const Row rows[] = {
        {"a quarter turn about the origin is exact", {0, 0}, 90, {1, 0}, {0, 1}},
        {"a quarter turn about another centre", {10, 20}, 90, {13, 24}, {6, 23}},
        {"the difference is rounded to single precision", {0.2F, 0}, 120, {5, 1}, {-0x1.887386p+1F, 0x1.d41606p+1F}},
        {"the image is rounded before the centre is added", {9, 0}, 30, {3, 1.3F}, {0x1.93b148p+1F, -0x1.dfc968p+0F}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        Vector2f centre = row.centre;
        Vector2f point = row.point;
        CHECK(Zan_TransformPtF(&centre, row.degrees, &point) == 0);
        CHECK(point.x == row.image.x);
        CHECK(point.y == row.image.y);
    }
}

// Single points to the screen, directions, rotation about a centre.
#include "host_reports.h"
#include "values.h"
#include "zan/space.h"

using Point2 = Zan_Vector2T<double>;
using Point3 = Zan_Vector3T<double>;

TEST_CASE("a point of the plane to the screen") {
    Zan_Matrix3 moved(true), scaled(true);
    moved.m20 = 10, moved.m12 = 0.5;
    scaled.m00 = scaled.m11 = 2, scaled.m20 = 1;
    Point2 first(1, 1), second(1, 1);
    CHECK(
        (Zan_TransformPoint2DtoScreen(moved, scaled, &first) && Zan_TransformPoint2DtoScreen(scaled, moved, &second)));
    CHECK((first == Point2(23.5, 2) && second == Point2(13, 2)));
}

TEST_CASE("a point of space to the screen") {
    HostReports host;
    Zan_Matrix4 same(true), byZ(true), flat(true), near(true), behind(true);
    byZ.m23 = 1, byZ.m33 = 0;
    flat.m33 = 9e-13, flat.m32 = 1;
    near.m32 = 0.1, behind.m32 = 0x1.9999999999999p-4;
    Zan_Matrix3 toScreen(true);
    toScreen.m00 = 10, toScreen.m01 = 1, toScreen.m20 = 5, toScreen.m21 = 7, toScreen.m12 = 3, toScreen.m22 = 9;
    const struct {
        const char* what;
        const Zan_Matrix4 &toEye, &projection;
        Point3 point, image;
        bool inFront, divided;
    } rows[] = {
        {"divided by z", same, byZ, {2, 4, 2}, {15, 10, 1}, true, true},
        {"on the near plane", near, same, {1, 2, 0}, {15, 10, 0.1}, true, true},
        {"behind it", behind, same, {1, 2, 0}, {1, 2, 0}, false, true},
        {"w near zero on the way to the eye", flat, same, {1, 2, 3}, {1, 2, 3}, false, false},
        {"w near zero on the way to the screen", near, flat, {1, 2, 3}, {1, 2, 3}, false, false},
    };
    for (const auto& r : rows) {
        CAPTURE(r.what);
        Point3 p = r.point;
        Point2 q(r.point.x, r.point.y);
        bool inFront = false;
        long thrown = 0;
        try {
            inFront = Zan_TransformPoint3DtoScreen(r.toEye, r.projection, toScreen, &p);
        } catch (long code) {
            thrown = code;
        }
        CHECK((inFront == r.inFront && thrown == (r.divided ? 0 : 0x110C)));
        CHECK(host.takeAll() == (r.divided ? "" : "0x11003B sev 8: homogeneous point has W=0"));
        CHECK(sameDoubles(p, r.image));
        if (r.point.z != 0) continue;
        CHECK(Zan_TransformPoint3DtoScreen(r.toEye, r.projection, toScreen, &q) == r.inFront);
        CHECK(q == Point2(r.image.x, r.image.y));
    }
}

TEST_CASE("directions of a matrix") {
    Zan_Matrix3 m(true);
    m.m00 = 0, m.m01 = 1, m.m10 = -1, m.m11 = 0, m.m20 = 100, m.m21 = 50;
    const auto [x, y] = Zan_ComputeDirectionalComponents(m);
    CHECK((x == Point2(0, 1) && y == Point2(-1, 0)));
    m.m00 = 0x1p-60;  // lost beside the translation
    CHECK(Zan_ComputeDirectionalComponents(m).first == Point2(0, 1));
}

TEST_CASE("a point turned about a centre, rounded where it is stated") {
    Zan_Vector2T<float> origin(0, 0), unit(1, 0);
    CHECK(Zan_TransformPtF(&origin, 90, &unit) == 0);
    CHECK((unit.x == 0 && unit.y == 1));
    Random random(53);
    for (int round = 0; round < 20000; ++round) {
        const auto coordinate = [&] { return static_cast<float>(random.nasty()); };
        Zan_Vector2T<float> centre(coordinate(), coordinate()), point(coordinate(), coordinate());
        const double degrees = random.plain(-720, 720), a = (degrees - 90) * 0.017453292519943295;
        volatile float dx = point.x - centre.x, dy = point.y - centre.y;  // volatile: every rounding takes place
        volatile float x = static_cast<float>(-static_cast<double>(dy) * std::cos(a) - dx * std::sin(a));
        volatile float y = static_cast<float>(-static_cast<double>(dy) * std::sin(a) + dx * std::cos(a));
        const float endX = x + centre.x, endY = y + centre.y;
        CHECK(Zan_TransformPtF(&centre, degrees, &point) == 0);
        CHECK((sameBits(point.x, endX) && sameBits(point.y, endY)));
    }
}

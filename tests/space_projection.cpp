// Single points to the screen, directions, rotation about a centre.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"
#include "zan/space.h"

TEST_CASE("a point of the plane to the screen, and directions") {
    const Zan_Matrix3 moved = matrix({1, 0, 0, 0, 1, 0.5, 10, 0, 1}), scaled = matrix({2, 0, 0, 0, 2, 0, 1, 0, 1});
    V2 p(1, 1), q(1, 1);
    CHECK((Zan_TransformPoint2DtoScreen(moved, scaled, &p) && p == V2(23.5, 2)));
    CHECK((Zan_TransformPoint2DtoScreen(scaled, moved, &q) && q == V2(13, 2)));
    const Zan_Matrix3 m = matrix({0x1p-60, 1, 0, -1, 0, 0, 100, 50, 1});
    const auto [x, y] = Zan_ComputeDirectionalComponents(m);
    CHECK((x == V2(0, 1) && y == V2(-1, 0)));  // 2^-60 is lost beside the translation
}

TEST_CASE("a point of space to the screen") {
    HostReports host;
    const Zan_Matrix4 same(true), byZ = with(with(same, 2, 3, 1), 3, 3, 0),
                                  flat = with(with(same, 3, 3, 9e-13), 3, 2, 1);
    const Zan_Matrix4 near = with(same, 3, 2, 0.1), behind = with(same, 3, 2, 0x1.9999999999999p-4);
    const Zan_Matrix3 toScreen = matrix({10, 1, 0, 0, 1, 3, 5, 7, 9});
    // A point of the layer, whose depth is 0, to the eye and to the screen; -1 where the division fails.
    const auto check = [&](const Zan_Matrix4& toEye, const Zan_Matrix4& projection, const V3& image, int inFront) {
        CAPTURE(toEye.m32, projection.m23, inFront);
        V3 p(0.1, 0.2, 0);
        V2 q(0.1, 0.2);
        const auto gives = [&](auto* point) {
            int result = -1;
            thrownBy([&] { result = Zan_TransformPoint3DtoScreen(toEye, projection, toScreen, point); });
            CHECK(host.takeAll() == (inFront < 0 ? "0x11003B sev 8: homogeneous point has W=0" : ""));
            return result;
        };
        CHECK((gives(&p) == inFront && gives(&q) == inFront));
        CHECK((sameDoubles(p, image) && q == V2(image.x, image.y)));
    };
    check(near, same, {6, 7.3, 0.1}, 1), check(near, byZ, {15, 10, 1}, 1);
    check(behind, same, {0.1, 0.2, 0}, 0);
    check(flat, same, {0.1, 0.2, 0}, -1), check(near, flat, {0.1, 0.2, 0}, -1);
}

TEST_CASE("a half turn of a layer without depth is a mirrored scale") {
    const auto check = [](double rx, double ry, const V2& scale, const V3& turn) {
        CAPTURE(rx, ry);
        Zan_Matrix4Decomp d{1, 2, 3, 2, 3, 5, 6, 7, 8, rx, ry, 0.2};
        CHECK(Zan_Correct3DDecompFor2D(&d) == 0);
        CHECK(sameDoubles(d, Zan_Matrix4Decomp{1, 2, 3, scale.x, scale.y, 1, 6, 7, 8, turn.x, turn.y, turn.z}));
    };
    constexpr double kNear = kPi - 0.001, kNearer = kPi + 1e-13;
    check(kPi, 0.3, {2, -3}, {0, -0.3, -0.2}), check(0.3, -kPi, {-2, 3}, {-0.3, 0, -0.2});
    check(-kPi, kPi, {-2, -3}, {-0.0, 0, 0.2}), check(kNear, kNearer, {2, 3}, {kNear, kNearer, 0.2});
}

TEST_CASE("a point turned about a centre, rounded where it is stated") {
    Random random(53);
    for (int round = 0; round < 20000; ++round) {
        const auto draw = [&] { return static_cast<float>(random.nasty()); };
        Zan_Vector2T<float> centre(draw(), draw()), point(draw(), draw());
        const double degrees = random.plain(-720, 720), a = (degrees - 90) * 0.017453292519943295;
        const float dx = point.x - centre.x, dy = point.y - centre.y;
        const auto x = static_cast<float>(-double(dy) * std::cos(a) - dx * std::sin(a));
        const auto y = static_cast<float>(-double(dy) * std::sin(a) + dx * std::cos(a));
        CHECK(Zan_TransformPtF(&centre, degrees, &point) == 0);
        CHECK((sameBits(point.x, x + centre.x) && sameBits(point.y, y + centre.y)));
    }
}

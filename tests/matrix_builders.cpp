// Building transforms: what each step does after what the matrix did before, and the scale factors read back.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"

namespace {

constexpr double kBelow12 = 0x1.19799812dea1p-40;  // the last below 1e-12

bool close(const Zan_Matrix4& a, const Zan_Matrix4& b) {
    return a.IsFinite() && Zan_EqualMatrixWithinEpsilon(a, b, 4e-15);
}

}  // namespace

TEST_CASE("steps in the plane") {
    // Where a point goes that is translated by (5, 0), then by the step.
    const auto check = [](const V2& from, const V2& to, void (*step)(Zan_Matrix3&)) {
        Zan_Matrix3 m = matrix({1, 0, 0, 0, 1, 0, 5, 0, 1});
        step(m);
        V2 p = from;
        m.TransformPoint(&p);
        CAPTURE(from.x, from.y, p.x, p.y, to.x, to.y);
        CHECK((p.DistanceSquared(to) < 1e-28 && m.m02 == 0 && m.m12 == 0 && m.m22 == 1));
    };
    check({1, 2}, {5, 5}, [](auto& m) { m.Translate(-1, 3); });
    check({1, 2}, {2, -6}, [](auto& m) { m.Rotate(-450); });
    check({6, 13}, {8, 12}, [](auto& m) { m.Rotate(90, 10, 11); });
    check({0, 3}, {-3, 1}, [](auto& m) { m.Rotate(180, 1, 2); });
    check({6, 2}, {12, 4}, [](auto& m) { m.Scale(2, 3, 10, 1); });
    check({6, 2}, {22, 2}, [](auto& m) { m.Scale(2, 1); });
    check({-5, 1}, {-1, 1}, [](auto& m) { m.Skew(45, 0); });
    check({-4, 1}, {1, 2}, [](auto& m) { m.Skew(45, -90); });
    // These leave every bit alone, even where a product with the identity would not.
    const Zan_Matrix3 odd = matrix({-0.0, kNaN, -0.0, 1e308, 5, -0.0, 3, -0.0, 1e308});
    Zan_Matrix3 m = odd, a(true), b(true);
    for (const double degrees : {0.0, -0.0, 360.0, -720.0, 360e10}) m.Rotate(degrees, 7, 8);
    m.Scale(1, 1, 7, 8);
    m.Skew(-0.0, 30);
    // Whole turns are taken off before the angle becomes radians.
    a.Rotate(360e6 + 1);
    b.Rotate(1);
    CHECK((m == odd && a == b));
}

TEST_CASE("turns about an axis that is too short") {
    HostReports host;
    const Zan_Matrix4 before = matrix({2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 5, 6, 7, 1});
    Zan_Matrix4 m = before;
    double rx = 9, ry = 9, rz = 9;
    CHECK((thrownBy([&] { m.RotateAxis(0, -kBelow12, 0, kPi / 2); }) == 3 && m == before));
    CHECK(host.takeAll() == "0x11002E sev 8: unable to build rotation matrix.");
    CHECK(Zan_ConvertAxisAngleToOrderedXYZRotation(-kBelow12, 0, 0, 0.5, &rx, &ry, &rz) == 3);
    CHECK((rx == 0 && ry == 0 && rz == 0 && host.takeAll() == "0x11002E sev 8: unable to build rotation matrix."));
    m.RotateAxis(0, 1e-12, 0, kPi / 2);
    CHECK((close(m, Zan_Matrix4(before) *= turning({0, 0, -1, 0, 1, 0, 1, 0, 0})) && host.takeAll().empty()));
}

TEST_CASE("turns by three angles") {
    Random random(43);
    for (int round = 0; round < 100; ++round) {
        const double rx = random.plain(-4, 4), ry = random.plain(-4, 4), rz = random.plain(-4, 4);
        const Zan_Matrix4 turn = turnBy(rx, ry, rz, false);
        Zan_Matrix4 own = turnBy(ry, rz, rx, true), moved = own;
        moved.Translate(3, 2, 1);
        Zan_Matrix4 member = moved;
        member.RotateXYZ(rx, ry, rz);
        CHECK(close(member, product(moved, turn)));
        CHECK((Zan_RotateMatrix4XYZPlus(rx, ry, rz, 2, &moved) == 0 && moved == member));
        // About its own axes a rotation is turned as if the turns had come first.
        const Zan_Matrix4 due = product(turn, own);
        CHECK((Zan_RotateMatrix4XYZPlus(rx, ry, rz, 0, &own) == 0 && close(own, due)));
        Zan_Matrix4 shifted(true);  // its axes are directions
        shifted.Translate(3, 2, 1);
        const Zan_Matrix4 about = product(shifted, turn);
        CHECK((Zan_RotateMatrix4XYZPlus(rx, ry, rz, 0, &shifted) == 0 && close(shifted, about)));
    }
    // An axis that the matrix takes to nothing is passed over; one that it merely shortens is not.
    for (int axis = 0; axis < 3; ++axis) {
        for (const double thickness : {kBelow12, 1e-12}) {
            Zan_Matrix4 m = with(Zan_Matrix4(true), axis, axis, thickness);
            const auto angle = [&](int of) { return of == axis ? kPi / 2 : 0.0; };
            CHECK(Zan_RotateMatrix4XYZPlus(angle(0), angle(1), angle(2), 0, &m) == 0);
            CHECK(std::fabs(at(m, (axis + 1) % 3, (axis + 2) % 3) - (thickness < 1e-12 ? 0 : 1)) < 1e-15);
        }
    }
}

TEST_CASE("the other steps in space, and scale factors") {
    const Zan_Matrix4 before = matrix({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    Zan_Matrix4 m = before;
    m.Translate(1, 2, 3);
    CHECK(m == matrix({5, 10, 15, 4, 13, 22, 31, 8, 21, 34, 47, 12, 29, 46, 63, 16}));
    (m = before).Scale(2, 1, -1);
    CHECK(m == matrix({2, 2, -3, 4, 10, 6, -7, 8, 18, 10, -11, 12, 26, 14, -15, 16}));
    (m = before).Project(4);  // (x, y, z, w) becomes (x, y, z - w, z / 4)
    CHECK(m == matrix({1, 2, -1, 0.75, 5, 6, -1, 1.75, 9, 10, -1, 2.75, 13, 14, -1, 3.75}));
    (m = with(before, 0, 0, kNaN)).Scale(1, 1, 1);
    CHECK(std::isnan(m.m03));  // no short cut past the product
    m.SetCOB({1, 2, 3, kNaN}, {4, 5, 6, kNaN}, {7, 8, 9, kNaN});
    CHECK(m == turning({1, 4, 7, 2, 5, 8, 3, 6, 9}));
    CHECK(matrix({1, 2, -2, 0, 3, 4, 9, 9, 9}).GetScale() == V2(3, 5));
    CHECK(sameDoubles(matrix({1, 1, -1, 1, 2, 4, 5, 6, 0, 0, 0, -7, 9, 9, 9, 9}).GetScale(), V3(2, 9, 7)));
}

TEST_CASE("looking at a point") {
    const auto check = [](const V3& eye, const V3& target, const V3& up, const double(&rows)[9]) {
        CAPTURE(target.x, target.y, target.z, up.x, up.y, up.z);
        CHECK(close(Zan_LookAtMatrix(eye, target, up), turning(rows)));
    };
    const double r = std::sqrt(0.5);
    check({1, 2, 8}, {1, 2, 3}, {0, 9, 0}, {-1, 0, 0, 0, 1, 0, 0, 0, -1});  // the eye gives the direction only
    check({0, 0, 0}, {7, 0, 0}, {2, 0, 3}, {0, 1, 0, 0, 0, 1, 1, 0, 0});    // a slanting up is set upright
    check({0, 0, 0}, {0, 2, 2}, {0, 1, 0}, {1, 0, 0, 0, r, -r, 0, r, r});
    // Too short to be brought to unit length.
    check({0, 0, 0}, {0, 0, 1e-170}, {0, 1e160, 0}, {1, 0, 0, 0, 1e-180, 0, 0, 0, 1e-170});
    // Where up is the view or nothing, back about x; without a view, nothing.
    check({0, 0, 0}, {0, 5, 0}, {0, 1, 0}, {1, 0, 0, 0, 0, -1, 0, 1, 0});
    check({0, 0, 0}, {0, -5, 0}, {0, 1, 0}, {1, 0, 0, 0, 0, 1, 0, -1, 0});
    check({0, 0, 0}, {3, 0, 0}, {0, 0, 0}, {1, 0, 0, 0, 0, -1, 0, 1, 0});
    check({1, 2, 3}, {1, 2, 3}, {0, 1, 0}, {1, 0, 0, 0, 1, 0, 0, 0, 1});
}

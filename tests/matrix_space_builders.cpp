// Building transforms of space: what each step does after the transform so far.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"

namespace {

constexpr double kBelow12 = 0x1.19799812dea1p-40;  // the largest double below 1e-12
const char* const kCannotBuildRotation = "0x11002E sev 8: unable to build rotation matrix.";

}  // namespace

TEST_CASE("an axis shorter than 1e-12 is reported") {
    HostReports host;
    const Zan_Matrix4 before = matrix({2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 5, 6, 7, 1});
    Zan_Matrix4 m = before;
    CHECK(thrownBy([&] { m.RotateAxis(0, -kBelow12, 0, kPi / 2); }) == Zan_Result_BadAxis);
    CHECK(doubles(m) == doubles(before));
    CHECK(host.takeAll() == kCannotBuildRotation);

    double rx = 9, ry = 9, rz = 9;
    CHECK(Zan_ConvertAxisAngleToOrderedXYZRotation(-kBelow12, 0, 0, 0.5, &rx, &ry, &rz) == Zan_Result_BadAxis);
    CHECK(doubles(Vector3(rx, ry, rz)) == doubles(Vector3(0, 0, 0)));
    CHECK(host.takeAll() == kCannotBuildRotation);

    m.RotateAxis(0, 1e-12, 0, kPi / 2);
    CHECK(greatestDifference(m, product(before, linear({0, 0, -1, 0, 1, 0, 1, 0, 0}))) < 4e-15);
    CHECK(host.takeAll().empty());
}

TEST_CASE("rotations by three angles, about fixed axes or about the matrix's own") {
    Random random(43);
    for (int round = 0; round < 100; ++round) {
        const double rx = random.plain(-4, 4);
        const double ry = random.plain(-4, 4);
        const double rz = random.plain(-4, 4);
        const Zan_Matrix4 step = rotation(rx, ry, rz, RotationOrder::kXYZ);
        const Zan_Matrix4 turned = rotation(ry, rz, rx, RotationOrder::kZYX);
        Zan_Matrix4 moved = turned;
        moved.Translate(3, 2, 1);

        Zan_Matrix4 member = moved;
        member.RotateXYZ(rx, ry, rz);
        CHECK(greatestDifference(member, product(moved, step)) < 4e-15);
        Zan_Matrix4 function = moved;
        CHECK(Zan_RotateMatrix4XYZPlus(rx, ry, rz, 2, &function) == 0);
        CHECK(doubles(function) == doubles(member));

        // A step about the matrix's own axes gives the same as the step followed by the matrix.
        Zan_Matrix4 aboutOwn = turned;
        CHECK(Zan_RotateMatrix4XYZPlus(rx, ry, rz, 0, &aboutOwn) == 0);
        CHECK(greatestDifference(aboutOwn, product(step, turned)) < 4e-15);
        // The axes are directions: a translation does not move them.
        Zan_Matrix4 shifted(true);
        shifted.Translate(3, 2, 1);
        const Zan_Matrix4 expected = product(shifted, step);
        CHECK(Zan_RotateMatrix4XYZPlus(rx, ry, rz, 0, &shifted) == 0);
        CHECK(greatestDifference(shifted, expected) < 4e-15);
    }
}

TEST_CASE("an axis that the matrix shrinks below 1e-12 is skipped, one that it shrinks to 1e-12 is not") {
    for (int axis = 0; axis < 3; ++axis) {
        const auto quarterAbout = [&](int other) { return other == axis ? kPi / 2 : 0.0; };
        const auto rotated = [&](double scale) {  // the element that a quarter turn about the axis makes 1
            Zan_Matrix4 m = with(Zan_Matrix4(true), axis, axis, scale);
            CHECK(Zan_RotateMatrix4XYZPlus(quarterAbout(0), quarterAbout(1), quarterAbout(2), 0, &m) == 0);
            return at(m, (axis + 1) % 3, (axis + 2) % 3);
        };
        CAPTURE(axis);
        CHECK(rotated(kBelow12) == 0);
        CHECK(std::fabs(rotated(1e-12) - 1) < 1e-15);
    }
}

TEST_CASE("a scale by 1 is a product like any other: a NaN spreads over its row") {
    Zan_Matrix4 m = with(Zan_Matrix4(true), 0, 0, kNaN);
    m.Scale(1, 1, 1);
    CHECK(std::isnan(m.m03));
}

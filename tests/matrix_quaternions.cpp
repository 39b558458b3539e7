// Quaternions: conversion to and from matrices, axis and angle to three angles, spherical interpolation.
#include "tests/support/matrices.h"

namespace {

Zan_Quat aboutAxis(double x, double y, double z, double angle) {
    const double s = std::sin(angle / 2) / std::sqrt(x * x + y * y + z * z);
    return {x * s, y * s, z * s, std::cos(angle / 2)};
}
Zan_Quat negated(const Zan_Quat& q) { return {-q.x, -q.y, -q.z, -q.w}; }

// Components of magnitude up to 1 are nearly equal when they differ by less than this.
constexpr double kLeastTolerance = 563 * 0x1p-49;

}  // namespace

TEST_CASE("a quaternion, its matrix and its three angles are the same rotation") {
    Random random(453);
    for (int round = 0; round < 300; ++round) {
        // Small angles for the branch of the trace, half turns about any axis for the other three.
        const double angle = round % 3 == 0 ? random.plain(-2, 2) : kPi + random.plain(-0.1, 0.1) * (round % 3 - 1);
        const double x = random.plain(-1, 1);
        const double y = random.plain(-1, 1);
        const double z = random.plain(-1, 1);
        CAPTURE(x, y, z, angle);
        const Zan_Quat q = aboutAxis(x, y, z, angle);
        Zan_Matrix4 expected(true);
        expected.RotateAxis(x, y, z, angle);

        Zan_Matrix4 m;
        CHECK(Zan_QuatToMatrix4(&q, &m) == 0);
        CHECK(greatestDifference(m, expected) < 1e-14);
        Zan_Quat back;
        CHECK(Zan_Matrix4ToQuat(&expected, &back) == 0);
        CHECK(std::fmin(greatestDifference(back, q), greatestDifference(back, negated(q))) < 1e-14);
        double rx = 9, ry = 9, rz = 9;
        CHECK(Zan_ConvertAxisAngleToOrderedXYZRotation(x, y, z, angle, &rx, &ry, &rz) == 0);
        CHECK(greatestDifference(rotation(rx, ry, rz, RotationOrder::kXYZ), expected) < 1e-9);
    }
}

namespace {

// Interpolates into either argument.
void checkSlerp(const Zan_Quat& q0, const Zan_Quat& q1, double t, const Zan_Quat& expected, double tolerance) {
    CAPTURE(t);
    Zan_Quat first = q0;
    CHECK(Zan_Slerp(&first, &q1, t, &first) == 0);
    CHECK(greatestDifference(first, expected) <= tolerance);
    Zan_Quat second = q1;
    CHECK(Zan_Slerp(&q0, &second, t, &second) == 0);
    CHECK(doubles(second) == doubles(first));
}

}  // namespace

TEST_CASE("spherical interpolation has constant speed along the shorter arc, and beyond its ends") {
    Random random(454);
    for (int round = 0; round < 300; ++round) {
        const double x = random.plain(-1, 1);
        const double y = random.plain(-1, 1);
        const double begin = random.plain(-3, 3);
        const double angle = (0.01 + random.plain(0, 3)) * (round % 2 == 0 ? 1 : -1);
        const double t = random.plain(-1, 2);
        const Zan_Quat q0 = aboutAxis(x, y, 1, begin);
        const Zan_Quat q1 = aboutAxis(x, y, 1, begin + angle);
        checkSlerp(q0, round % 3 == 0 ? negated(q1) : q1, t, aboutAxis(x, y, 1, begin + t * angle), 1e-11);
    }
}

TEST_CASE("interpolation: special cases") {
    const Zan_Quat one = {0, 0, 0, 1};
    const Zan_Quat any = aboutAxis(1, 2, 3, 1);
    const Zan_Quat mixed = {0.25, -0.25, 0.5, -0.5};
    struct Row {
        const char* what;
        Zan_Quat q0, q1;
        double t;
        Zan_Quat expected;
        double tolerance;
    };
    const Row rows[] = {
        {"equal", any, any, 0.3, any, 0},
        {"opposite, the same rotation", any, negated(any), 0.5, any, 1e-16},
        {"both arcs have the same length: the one to q1 is taken, not the one to -q1",
         one,
         {1, 0, 0, 0},
         0.5,
         {std::sqrt(0.5), 0, 0, std::sqrt(0.5)},
         1e-15},
        {"so near that it is linear", one, {0, 0.004, 0, 1}, 0.25, {0, 0.001, 0, 1}, 1e-18},
        {"not of unit length: linear", {0, 0, 0, 2}, {0, 2, 0, 2}, 0.25, {0, 0.5, 0, 2}, 0},
        {"nearly equal: q0", mixed, {mixed.x, mixed.y, mixed.z, mixed.w - 0.99 * kLeastTolerance}, 1, mixed, 0},
        {"nearly equal relative to a component above 1: q0",
         {0, 0, -3e3, 4},
         {0, 0, -3e3 - 2e-9, 4},
         1,
         {0, 0, -3e3, 4},
         0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        checkSlerp(row.q0, row.q1, row.t, row.expected, row.tolerance);
    }
    for (double Zan_Quat::*component : {&Zan_Quat::x, &Zan_Quat::y, &Zan_Quat::z, &Zan_Quat::w}) {
        Zan_Quat different = mixed;  // not nearly equal in this component
        different.*component -= 1.5 * kLeastTolerance;
        checkSlerp(mixed, different, 1, different, 1e-15);
    }
}

TEST_CASE("interpolation is linear, hence shorter than 1, up to 1 - |dot| = 1e-5") {
    const auto lengthInside = [](double angle) {
        const Zan_Quat q0 = {0, 0, 0, 1};
        const Zan_Quat q1 = aboutAxis(2, 1, 0, angle);
        Zan_Quat q;
        CHECK(Zan_Slerp(&q0, &q1, 0.4, &q) == 0);
        return std::hypot(q.x, q.y, q.w);
    };
    CHECK(lengthInside(8.9e-3) < 1 - 5e-7);
    CHECK(lengthInside(9.0e-3) >= 1 - 5e-7);
}

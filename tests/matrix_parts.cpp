// Transforms taken apart and put together again, angles read back, quaternions and the way between them.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"

namespace {

int32_t takeApart(bool zyx, const Zan_Matrix4& m, Zan_Matrix4Decomp* parts, unsigned char* failed) {
    return zyx ? Zan_DecomposeMatrix4ZYX(&m, parts, failed) : Zan_DecomposeMatrix4(&m, parts, failed);
}

// Scale and shear, then rotation, then translation. The axes of a mirror are negated, its shears are not.
Zan_Matrix4 rebuild(const Zan_Matrix4Decomp& d, bool zyx) {
    const double sign = d.sx < 0 ? -1 : 1;
    Zan_Matrix4 m = turning({d.sx, 0, 0, sign * d.shearXY, d.sy, 0, sign * d.shearXZ, sign * d.shearYZ, d.sz});
    m *= turnBy(d.rx, d.ry, d.rz, zyx);
    m.Translate(d.tx, d.ty, d.tz);
    return m;
}

Zan_Quat turnAbout(double x, double y, double z, double angle) {
    const double s = std::sin(angle / 2) / std::sqrt(x * x + y * y + z * z);
    return {x * s, y * s, z * s, std::cos(angle / 2)};
}
Zan_Quat negated(const Zan_Quat& q) { return {-q.x, -q.y, -q.z, -q.w}; }
bool close(const Zan_Quat& a, const Zan_Quat& b, double margin) {
    return std::fmax(std::hypot(a.x - b.x, a.y - b.y), std::hypot(a.z - b.z, a.w - b.w)) <= margin;
}

}  // namespace

TEST_CASE("taken apart and put together") {
    Random random(451);
    for (int round = 0; round < 2000; ++round) {
        const bool zyx = round % 2 != 0, turned = random.below(2) == 0;
        // At the poles, beside them on both sides of the threshold, and anywhere.
        const double beside[] = {0, 1e-7, 9.9e-6, 1.01e-5, 1e-4, 1e-2, random.plain(0, 1)};
        const double away = beside[random.below(7)], ry = (random.below(2) == 0 ? 1 : -1) * (kPi / 2 - away);
        const auto any = [&](int i, int j) { return j < 3 ? random.plain(-2, 2) : i == 3 ? 1.0 : 0.0; };
        Zan_Matrix4 m = turned ? Zan_Matrix4(true) : fill<Zan_Matrix4>(any);  // as often as not a mirror
        m *= turnBy(random.plain(-kPi, kPi), ry, random.plain(-kPi, kPi), zyx);
        const Zan_Matrix4 byW = fill<Zan_Matrix4>([&](int i, int j) { return at(m, i, j) * -4.0; });
        Zan_Matrix4Decomp parts;
        unsigned char failed = 7;
        CHECK((takeApart(zyx, byW, &parts, &failed) == 0 && failed == 7));
        CAPTURE(round, parts.rx, parts.ry, parts.rz);
        const double worst = std::fabs(std::cos(parts.ry)) < 1e-5 ? 8e-5 : 1e-9;
        CHECK(Zan_EqualMatrixWithinEpsilon(rebuild(parts, zyx), m, worst));
        // One of the signs and one of the turns that give the same matrix.
        const bool mirror = m.Determinant() < 0, pole = turned && away < 1e-5;
        CHECK(((parts.sx < 0) == mirror && (parts.sy < 0) == mirror && (parts.sz < 0) == mirror));
        CHECK((std::fabs(parts.ry) <= kPi / 2 && ((zyx ? parts.rz : parts.rx) == 0) == pole));
    }
    const auto nothing = fill<Zan_Matrix4>([](int i, int) { return i == 3 ? 1.0 : 0.0; });
    Zan_Matrix4Decomp parts;
    nothing.Decompose(&parts);
    CHECK((parts.rx == 0 && parts.ry == 0 && parts.rz == 0));
}

TEST_CASE("what cannot be taken apart") {
    HostReports host;
    const auto check = [&](const Zan_Matrix4& m, bool fails) {
        const int32_t code = fails ? 0x1108 : 0;
        const std::string report = fails ? "0x11002D sev 8: unable to decompose matrix." : "";
        for (const bool zyx : {false, true}) {
            CAPTURE(m.m03, m.m13, m.m23, m.m33, zyx);
            Zan_Matrix4Decomp parts, member;
            unsigned char failed = 0;
            CHECK((takeApart(zyx, m, &parts, &failed) == code && failed == (fails ? 1 : 0) && host.takeAll().empty()));
            CHECK(thrownBy([&] { zyx ? m.DecomposeZYX(&member) : m.Decompose(&member); }) == code);
            const bool empty = sameDoubles(parts, Zan_Matrix4Decomp{});
            CHECK((host.takeAll() == report && sameDoubles(parts, member) && empty == fails));
        }
    };
    const Zan_Matrix4 one(true);
    check(with(one, 3, 3, -0.0), true), check(with(one, 3, 3, kNaN), true);
    check(with(one, 0, 3, 0.001), true), check(with(one, 1, 3, 5e-324), true), check(with(one, 2, 3, kNaN), true);
    check(with(one, 2, 3, -0.0), false), check(with(with(one, 0, 3, 5e-324), 3, 3, 4.0), false);
    const Zan_Matrix4 small = with(one, 3, 3, 1e-300);
    check(with(small, 1, 3, 1e-300), true), check(with(small, 2, 3, 1e-300), true);
    const Zan_Matrix4 none = with(one, 3, 3, 0);
    double rx = 9, ry = 9, rz = 9;
    CHECK((Zan_GetOrderedXYZRotationFromMatrix(&none, &rx, &ry, &rz) == 0x1108 && rx == 0 && ry == 0 && rz == 0));
    CHECK(host.takeAll() == "0x11002D sev 8: unable to decompose matrix.");
}

TEST_CASE("the angles at a pole, turns about z last") {
    // Of a rotation whose element (1, 1) is b and whose (2, 1) is a.
    const auto check = [](double a, double b, double rx, double rz) {
        CAPTURE(a, b);
        Zan_Matrix4Decomp parts;
        turning({0, 0, -1, a, b, 0, b, -a, 0}).DecomposeZYX(&parts);
        CHECK(std::fabs(parts.rx - rx) + std::fabs(parts.ry - kPi / 2) + std::fabs(parts.rz - rz) < 1e-9);
    };
    check(0, 1, 0, 0), check(0, -1, 0, kPi), check(9e-6, -1 + 4.05e-11, 0, 0);
    check(1.1e-5, -1 + 6.05e-11, kPi - 1.1e-5, 0);
    for (const double sign : {1.0, -1.0}) {  // an axis so short that its unit is one bit longer than 1
        Zan_Matrix4Decomp parts;
        turning({0, sign, 0, 0, 0, 1, sign * 6.212744e-155, 0, 0}).Decompose(&parts);
        CHECK(std::fabs(parts.ry - sign * kPi / 2) < 1e-9);
    }
}

TEST_CASE("quaternions and matrices") {
    Random random(453);
    for (int round = 0; round < 300; ++round) {
        // Small turns for the branch of the trace, half turns about every axis for the other three.
        const double angle = round % 3 == 0 ? random.plain(-2, 2) : kPi + random.plain(-0.1, 0.1) * (round % 3 - 1);
        const double x = random.plain(-1, 1), y = random.plain(-1, 1), z = random.plain(-1, 1);
        const Zan_Quat q = turnAbout(x, y, z, angle);
        Zan_Matrix4 m, turn(true);
        turn.RotateAxis(x, y, z, angle);
        CHECK((Zan_QuatToMatrix4(&q, &m) == 0 && Zan_EqualMatrixWithinEpsilon(m, turn, 1e-14)));
        Zan_Quat back;
        CHECK((Zan_Matrix4ToQuat(&turn, &back) == 0 && (close(back, q, 1e-14) || close(back, negated(q), 1e-14))));
        double rx = 9, ry = 9, rz = 9;
        CHECK(Zan_ConvertAxisAngleToOrderedXYZRotation(x, y, z, angle, &rx, &ry, &rz) == 0);
        CHECK(Zan_EqualMatrixWithinEpsilon(turnBy(rx, ry, rz, false), turn, 1e-9));
    }
    // Not of unit length.
    const Zan_Quat twice = {0, 0, 0, 2};
    Zan_Matrix4 four;
    Zan_Quat back;
    CHECK((Zan_QuatToMatrix4(&twice, &four) == 0 && four == turning({4, 0, 0, 0, 4, 0, 0, 0, 4})));
    CHECK((Zan_Matrix4ToQuat(&four, &back) == 0 && close(back, {0, 0, 0, std::sqrt(13.0) / 2}, 1e-15)));
}

TEST_CASE("between two quaternions") {
    const auto check = [](const Zan_Quat& q0, const Zan_Quat& q1, double t, const Zan_Quat& due, double margin) {
        CAPTURE(q0.w, q1.x, q1.w, t);
        Zan_Quat first = q0, second = q1;
        CHECK((Zan_Slerp(&first, &q1, t, &first) == 0 && close(first, due, margin)));
        CHECK((Zan_Slerp(&q0, &second, t, &second) == 0 && sameDoubles(first, second)));
    };
    Random random(454);
    for (int round = 0; round < 300; ++round) {  // at even speed, also beyond the ends
        const double x = random.plain(-1, 1), y = random.plain(-1, 1), begin = random.plain(-3, 3);
        const double angle = (0.01 + random.plain(0, 3)) * (round % 2 == 0 ? 1 : -1), t = random.plain(-1, 2);
        const Zan_Quat q0 = turnAbout(x, y, 1, begin), q1 = turnAbout(x, y, 1, begin + angle);
        check(q0, round % 3 == 0 ? negated(q1) : q1, t, turnAbout(x, y, 1, begin + t * angle), 1e-11);
    }
    for (const double angle : {8.9e-3, 9.0e-3}) {  // the line, which is a little shorter, and the arc
        const Zan_Quat a = {0, 0, 0, 1}, b = turnAbout(2, 1, 0, angle);
        Zan_Quat out;
        CHECK(Zan_Slerp(&a, &b, 0.4, &out) == 0);
        CHECK((std::hypot(out.x, out.y, out.w) < 1 - 5e-7) == (angle < 8.95e-3));
    }
    const double floor = 563 * 0x1p-49;  // what separates nearly equal components below 1
    const Zan_Quat q = turnAbout(1, 2, 3, 1), at = {0.25, -0.25, 0.5, -0.5};
    check(q, q, 0.3, q, 0), check(q, negated(q), 0.5, q, 1e-16);
    check({0, 0, 0, 1}, {1, 0, 0, 0}, 0.5, {std::sqrt(0.5), 0, 0, std::sqrt(0.5)}, 1e-15);  // either arc is as short
    check({0, 0, 0, 1}, {0, 0.004, 0, 1}, 0.25, {0, 0.001, 0, 1}, 1e-18);  // so near that the line does
    check({0, 0, 0, 2}, {0, 2, 0, 2}, 0.25, {0, 0.5, 0, 2}, 0);            // not unit: the line
    check(at, {at.x, at.y, at.z, at.w - floor * 0.99}, 1, at, 0);
    check({0, 0, -3e3, 4}, {0, 0, -3e3 - 2e-9, 4}, 1, {0, 0, -3e3, 4}, 0);  // relative above 1
    for (double Zan_Quat::*component : {&Zan_Quat::x, &Zan_Quat::y, &Zan_Quat::z, &Zan_Quat::w}) {
        Zan_Quat other = at;  // not nearly equal in one component
        other.*component -= 1.5 * floor;
        check(at, other, 1, other, 1e-15);
    }
}

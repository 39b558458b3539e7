// Transforms taken apart and put together again, angles read back, quaternions and the way between them.
#include <string>

#include "host_reports.h"
#include "matrices.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
using Decompose = int32_t (*)(const Zan_Matrix4*, Zan_Matrix4Decomp*, unsigned char*);

// Rz * Ry * Rx, or the other way round.
Zan_Matrix4 turnBy(double rx, double ry, double rz, bool zyx) {
    Zan_Matrix4 x(true), y(true), z(true);
    x.RotateAxis(1, 0, 0, rx);
    y.RotateAxis(0, 1, 0, ry);
    z.RotateAxis(0, 0, 1, rz);
    return zyx ? (x *= y) *= z : (z *= y) *= x;
}

// Scale and shear, then rotation, then translation. The axes of a mirror are negated, its shears are not.
Zan_Matrix4 rebuild(const Zan_Matrix4Decomp& d, bool zyx) {
    const double sign = d.sx < 0 ? -1 : 1;
    Zan_Matrix4 m = matrix4({d.sx, 0, 0, 0, sign * d.shearXY, d.sy, 0, 0,  //
                             sign * d.shearXZ, sign * d.shearYZ, d.sz, 0, 0, 0, 0, 1});
    m *= turnBy(d.rx, d.ry, d.rz, zyx);
    m.Translate(d.tx, d.ty, d.tz);
    return m;
}

}  // namespace

TEST_CASE("taken apart and put together") {
    Random random(451);
    for (int round = 0; round < 2000; ++round) {
        const bool zyx = round % 2 != 0;
        // At the poles, beside them on both sides of the threshold, and anywhere.
        const double beside[] = {0, 1e-7, 8e-6, 1.2e-5, 1e-4, 1e-2, random.plain(0, 1)};
        const double away = beside[random.below(7)];
        const double ry = (random.below(2) == 0 ? 1 : -1) * (kPi / 2 - away);
        Zan_Matrix4 m(true);
        if (random.below(2) == 0) {
            m = fill<Zan_Matrix4>([&](int, int j) { return j == 3 ? 0.0 : random.plain(-2, 2); });
            m.m33 = 1.0;
            if (random.below(3) == 0) m.Scale(-1, 1, 1);
        }
        m *= turnBy(random.plain(-kPi, kPi), ry, random.plain(-kPi, kPi), zyx);
        m = fill<Zan_Matrix4>([&](int i, int j) { return at(m, i, j) * -4.0; });  // taken out with m33
        Zan_Matrix4Decomp parts;
        unsigned char failed = 7;
        CHECK((zyx ? Zan_DecomposeMatrix4ZYX : Zan_DecomposeMatrix4)(&m, &parts, &failed) == 0);
        CHECK(failed == 7);
        CHECK((parts.sx < 0) == (m.Determinant() < 0));
        CAPTURE(round, away, parts.rx, parts.ry, parts.rz);
        m = fill<Zan_Matrix4>([&](int i, int j) { return at(m, i, j) / -4.0; });
        const double worst = std::fabs(std::cos(parts.ry)) < 1e-5 ? 8e-5 : 1e-9;
        CHECK(Zan_EqualMatrixWithinEpsilon(rebuild(parts, zyx), m, worst));
        Zan_Matrix4Decomp member;
        zyx ? m.DecomposeZYX(&member) : m.Decompose(&member);
        CHECK(sameDoubles(member, parts));
    }
}

TEST_CASE("what cannot be taken apart") {
    HostReports host;
    const Zan_Matrix4 one(true);
    struct {
        const char* what;
        Zan_Matrix4 m;
        bool fails;
    } const rows[] = {
        {"m33 is 0", with(one, 3, 3, -0.0), true},
        {"nearly affine", with(one, 0, 3, 0.001), true},
        {"m13", with(one, 1, 3, 5e-324), true},
        {"m23 NaN", with(one, 2, 3, kNaN), true},
        {"m33 NaN", with(one, 3, 3, kNaN), true},
        {"negative zero", with(one, 2, 3, -0.0), false},
        {"gone after the division", with(with(one, 0, 3, 5e-324), 3, 3, 4.0), false},
    };
    for (const auto& r : rows) {
        for (const bool zyx : {false, true}) {
            CAPTURE(r.what, zyx);
            const Decompose decompose = zyx ? Zan_DecomposeMatrix4ZYX : Zan_DecomposeMatrix4;
            const Zan_Matrix4Decomp zeros = {};
            Zan_Matrix4Decomp parts, noisy, thrownParts;
            unsigned char failed = 0;
            CHECK(decompose(&r.m, &parts, &failed) == (r.fails ? 0x1108 : 0));
            CHECK((failed == (r.fails ? 1 : 0) && host.takeAll().empty()));
            CHECK(decompose(&r.m, &noisy, nullptr) == (r.fails ? 0x1108 : 0));
            const std::string report = r.fails ? "0x11002D sev 8: unable to decompose matrix." : "";
            CHECK((host.takeAll() == report && sameDoubles(parts, noisy) && sameDoubles(parts, zeros) == r.fails));
            long thrown = 0;
            try {
                zyx ? r.m.DecomposeZYX(&thrownParts) : r.m.Decompose(&thrownParts);
            } catch (long code) {
                thrown = code;
            }
            CHECK((thrown == (r.fails ? 0x1108 : 0) && host.takeAll() == report && sameDoubles(parts, thrownParts)));
            double rx = 9, ry = 9, rz = 9;
            CHECK(Zan_GetOrderedXYZRotationFromMatrix(&r.m, &rx, &ry, &rz) == (r.fails ? 0x1108 : 0));
            CHECK((rx == 0 && ry == 0 && rz == 0 && host.takeAll() == report));
        }
    }
}

TEST_CASE("parts of known transforms") {
    // Of a rotation whose element (1, 1) is b and whose (2, 1) is a, at the pole.
    const auto pole = [](double a, double b) { return matrix4({0, 0, -1, 0, a, b, 0, 0, b, -a, 0, 0, 0, 0, 0, 1}); };
    struct {
        const char* what;
        Zan_Matrix4 m;
        bool zyx;
        Zan_Matrix4Decomp parts;
    } const rows[] = {
        {"scale, then translation",
         matrix4({2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 1, 2, 3, 1}),
         false,
         {1, 2, 3, 2, 3, 4, 0, 0, 0, 0, 0, 0}},
        {"all by m33",
         matrix4({4, 0, 0, 0, 0, 6, 0, 0, 0, 0, 8, 0, 2, 4, 6, 2}),
         true,
         {1, 2, 3, 2, 3, 4, 0, 0, 0, 0, 0, 0}},
        {"shears",
         matrix4({1, 0, 0, 0, 5, 2, 0, 0, 6, 7, 3, 0, 0, 0, 0, 1}),
         false,
         {0, 0, 0, 1, 2, 3, 5, 6, 7, 0, 0, 0}},
        {"sheared mirror",
         matrix4({1, 0, 0, 0, 5, -2, 0, 0, 6, 7, 3, 0, 0, 0, 0, 1}),
         false,
         {0, 0, 0, -1, -2, -3, 5, 6, -7, kPi, 0, kPi}},
        {"mirror",
         matrix4({-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}),
         false,
         {0, 0, 0, -1, -1, -1, 0, 0, 0, kPi, 0, 0}},
        {"mirror",
         matrix4({-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}),
         true,
         {0, 0, 0, -1, -1, -1, 0, 0, 0, kPi, 0, 0}},
        {"nothing left of it", matrix4({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}), false, {}},
        // clang-format off
        {"pole: all in rz", turnBy(0.25, kPi / 2, 0.5, false), false, {0, 0, 0, 1, 1, 1, 0, 0, 0, 0, kPi / 2, 0.75}},
        {"near the pole", turnBy(0.25, kPi / 2 - 9e-6, 0.5, false), false, {0, 0, 0, 1, 1, 1, 0, 0, 0, 0, kPi / 2, 0.75}},
        {"beside it", turnBy(0.25, kPi / 2 - 1.1e-5, 0.5, false), false, {0, 0, 0, 1, 1, 1, 0, 0, 0, 0.25, kPi / 2, 0.5}},
        {"pole: all in rx", turnBy(0.25, kPi / 2, 0.5, true), true, {0, 0, 0, 1, 1, 1, 0, 0, 0, -0.25, kPi / 2, 0}},
        {"near the pole", turnBy(0.25, kPi / 2 - 9e-6, 0.5, true), true, {0, 0, 0, 1, 1, 1, 0, 0, 0, -0.25, kPi / 2, 0}},
        {"beside it", turnBy(0.25, kPi / 2 - 1.1e-5, 0.5, true), true, {0, 0, 0, 1, 1, 1, 0, 0, 0, 0.25, kPi / 2, 0.5}},
        {"pole: no turn", pole(0, 1), true, {0, 0, 0, 1, 1, 1, 0, 0, 0, 0, kPi / 2, 0}},
        {"pole: half a turn", pole(0, -1), true, {0, 0, 0, 1, 1, 1, 0, 0, 0, 0, kPi / 2, kPi}},
        {"pole: hardly less", pole(9e-6, -1 + 4.05e-11), true, {0, 0, 0, 1, 1, 1, 0, 0, 0, 0, kPi / 2, 0}},
        {"pole: a little less", pole(1.1e-5, -1 + 6.05e-11), true, {0, 0, 0, 1, 1, 1, 0, 0, 0, kPi - 1.1e-5, kPi / 2, 0}},
        // clang-format on
    };
    for (const auto& r : rows) {
        CAPTURE(r.what, r.zyx);
        Zan_Matrix4Decomp parts;
        CHECK((r.zyx ? Zan_DecomposeMatrix4ZYX : Zan_DecomposeMatrix4)(&r.m, &parts, nullptr) == 0);
        double is[12], due[12];
        std::memcpy(is, &parts, sizeof is);
        std::memcpy(due, &r.parts, sizeof due);
        for (int i = 0; i < 12; ++i) {
            CAPTURE(i);
            // Half a turn may come with either sign.
            const bool halfTurn = i >= 9 && std::fabs(due[i]) == kPi;
            CHECK((halfTurn ? std::fabs(is[i]) : is[i]) == Approx(due[i]).margin(1e-9));
        }
    }
}

TEST_CASE("ordered angles of an axis and a turn") {
    HostReports host;
    double rx = 9, ry = 9, rz = 9;
    CHECK(Zan_ConvertAxisAngleToOrderedXYZRotation(0, 0, 1, 0.5, &rx, &ry, &rz) == 0);
    CHECK((rx == 0 && ry == 0 && rz == Approx(0.5)));
    CHECK(Zan_ConvertAxisAngleToOrderedXYZRotation(0, 0, 1e-13, 0.5, &rx, &ry, &rz) == 3);
    CHECK((rx == 0 && ry == 0 && rz == 0));
    CHECK(host.takeAll() == "0x11002E sev 8: unable to build rotation matrix.");
    Random random(452);
    for (int round = 0; round < 100; ++round) {
        const double ax = random.plain(-1, 1), ay = random.plain(-1, 1), angle = random.plain(-3, 3);
        Zan_Matrix4 direct(true), ordered(true);
        direct.RotateAxis(ax, ay, 0.5, angle);
        CHECK(Zan_ConvertAxisAngleToOrderedXYZRotation(ax, ay, 0.5, angle, &rx, &ry, &rz) == 0);
        ordered.RotateXYZ(rx, ry, rz);
        CHECK(Zan_EqualMatrixWithinEpsilon(direct, ordered, 1e-9));
    }
}

namespace {

double dot(const Zan_Quat& a, const Zan_Quat& b) { return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w; }
Zan_Quat turnAbout(double x, double y, double z, double angle) {
    const double s = std::sin(angle / 2) / std::sqrt(x * x + y * y + z * z);
    return {x * s, y * s, z * s, std::cos(angle / 2)};
}
bool close(const Zan_Quat& a, const Zan_Quat& b, double margin = 1e-14) {
    return std::fabs(a.x - b.x) <= margin && std::fabs(a.y - b.y) <= margin && std::fabs(a.z - b.z) <= margin &&
           std::fabs(a.w - b.w) <= margin;
}

}  // namespace

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
        CHECK(Zan_Matrix4ToQuat(&turn, &back) == 0);
        CHECK(std::fabs(dot(q, back)) == Approx(1).epsilon(1e-14));
        CHECK(dot(back, back) == Approx(1).epsilon(1e-14));
    }
    struct {
        Zan_Quat q;
        double rows[9];
        Zan_Quat back;
    } const rows[] = {
        {{0, 0, 0, 2}, {4, 0, 0, 0, 4, 0, 0, 0, 4}, {0, 0, 0, std::sqrt(13.0) / 2}},
        {{1, 0, 0, 0}, {1, 0, 0, 0, -1, 0, 0, 0, -1}, {1, 0, 0, 0}},
        {{0, -1, 0, 0}, {-1, 0, 0, 0, 1, 0, 0, 0, -1}, {0, 1, 0, 0}},
        {{0, 0, 1, 0}, {-1, 0, 0, 0, -1, 0, 0, 0, 1}, {0, 0, 1, 0}},
        {{0.5, 0.5, 0.5, 0.5}, {0, 1, 0, 0, 0, 1, 1, 0, 0}, {0.5, 0.5, 0.5, 0.5}},
        {{1, 2, 3, 4}, {4, 28, -10, -20, 10, 20, 22, 4, 20}, {-16 / std::sqrt(140.0), 0, 0, 0}},
    };
    for (const auto& r : rows) {
        const auto& e = r.rows;
        const Zan_Matrix4 due = matrix4({e[0], e[1], e[2], 0, e[3], e[4], e[5], 0, e[6], e[7], e[8], 0, 0, 0, 0, 1});
        Zan_Matrix4 m;
        CHECK((Zan_QuatToMatrix4(&r.q, &m) == 0 && Zan_EqualMatrixWithinEpsilon(m, due, 0.0)));
        Zan_Quat back;
        CHECK(Zan_Matrix4ToQuat(&due, &back) == 0);
        if (r.q.w != 4) CHECK(close(back, r.back, 1e-15));
    }
}

TEST_CASE("between two quaternions") {
    const Zan_Quat q = turnAbout(1, 2, 3, 1), minus = {-q.x, -q.y, -q.z, -q.w};
    const double floor = 563 * 0x1p-49;  // what separates nearly equal components below 1
    const Zan_Quat at = {0.25, -0.25, 0.5, -0.5};
    struct {
        const char* what;
        Zan_Quat q0, q1;
        double t;
        Zan_Quat out;
        double margin;
    } const rows[] = {
        {"the same", q, q, 0.3, q, 0},
        {"opposite: the same turn", q, minus, 0.5, q, 1e-16},
        {"begin", q, turnAbout(3, 1, 1, 2), 0, q, 1e-15},
        {"end", q, turnAbout(3, 1, 1, 2), 1, turnAbout(3, 1, 1, 2), 1e-15},
        {"a third of the way", turnAbout(0, 0, 1, 0.3), turnAbout(0, 0, 1, 1.2), 1 / 3.0, turnAbout(0, 0, 1, 0.6),
         1e-15},
        {"beyond the end", turnAbout(0, 1, 0, 0), turnAbout(0, 1, 0, 1), 2, turnAbout(0, 1, 0, 2), 1e-15},
        {"before the beginning", turnAbout(0, 1, 0, 0), turnAbout(0, 1, 0, 1), -1, turnAbout(0, 1, 0, -1), 1e-15},
        {"the shorter arc", turnAbout(1, 0, 0, 0), turnAbout(1, 0, 0, 2 * kPi - 1), 0.5, turnAbout(1, 0, 0, -0.5),
         1e-15},
        {"so near that the line does", {0, 0, 0, 1}, {0, 0.004, 0, 1}, 0.25, {0, 0.001, 0, 1}, 1e-18},
        {"not unit: the line", {0, 0, 0, 2}, {0, 2, 0, 2}, 0.25, {0, 0.5, 0, 2}, 0},
        {"nearly equal", at, {at.x, at.y, at.z, at.w - floor * 0.99}, 1, at, 0},
        {"not any more", at, {at.x, at.y, at.z, at.w - 1.5 * floor}, 1, {at.x, at.y, at.z, at.w - 1.5 * floor}, 1e-15},
        {"nor in x", at, {at.x + 1.5 * floor, at.y, at.z, at.w}, 1, {at.x + 1.5 * floor, at.y, at.z, at.w}, 1e-15},
        {"relative above 1", {0, 0, -3e3, 4}, {0, 0, -3e3 - 2e-9, 4}, 1, {0, 0, -3e3, 4}, 0},
    };
    for (const auto& r : rows) {
        CAPTURE(r.what);
        Zan_Quat out, first = r.q0, second = r.q1;
        CHECK(Zan_Slerp(&r.q0, &r.q1, r.t, &out) == 0);
        CHECK(close(out, r.out, r.margin));
        CHECK((Zan_Slerp(&first, &r.q1, r.t, &first) == 0 && sameDoubles(first, out)));
        CHECK((Zan_Slerp(&r.q0, &second, r.t, &second) == 0 && sameDoubles(second, out)));
    }
    // Even speed, on either side of where the arc gives way to the line, which is a little shorter.
    for (const double angle : {2e-3, 8.9e-3, 9.0e-3, 0.1, 1.0, 3.0}) {
        CAPTURE(angle);
        const Zan_Quat a = turnAbout(2, 1, 0, 0.4), b = turnAbout(2, 1, 0, 0.4 + angle);
        Zan_Quat out;
        CHECK(Zan_Slerp(&a, &b, 0.4, &out) == 0);
        CHECK(close(out, turnAbout(2, 1, 0, 0.4 + 0.4 * angle), angle < 8.95e-3 ? 3e-6 : 1e-12));
        CHECK((1 - dot(out, out) > 1e-6) == (angle == 8.9e-3));
    }
}

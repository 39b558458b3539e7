// Building transforms: what each step does to points, that it comes after what the matrix did before, and the scale
// factors read back.
#include "host_reports.h"
#include "matrices.h"

namespace {

using V2 = Zan_Vector2T<double>;
using V3 = Zan_Vector3T<double>;
using V4 = Zan_Vector4T<double>;

constexpr double kPi = 3.141592653589793;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool close(double a, double b) { return std::fabs(a - b) <= 4e-15 * (1 + std::fabs(b)); }
bool close(const Zan_Matrix4& a, const Zan_Matrix4& b) {
    return a.IsFinite() && Zan_EqualMatrixWithinEpsilon(a, b, 4e-15);
}

}  // namespace

TEST_CASE("steps in the plane") {
    // Where a point goes that is translated by (5, 0), then by the step.
    const auto check = [](const char* what, const V2& from, const V2& to, int32_t (*step)(Zan_Matrix3*)) {
        CAPTURE(what);
        Zan_Matrix3 m = matrix({1, 0, 0, 0, 1, 0, 5, 0, 1});
        CHECK(step(&m) == 0);
        V2 p = from;
        m.TransformPoint(&p);
        CHECK((close(p.x, to.x) && close(p.y, to.y) && m.m02 == 0 && m.m12 == 0 && m.m22 == 1));
    };
    check("translate", {1, 2}, {5, 5}, [](auto* m) { return m->Translate(-1, 3), 0; });
    check("turn", {1, 2}, {2, -6}, [](auto* m) { return m->Rotate(-450), 0; });
    check("turn about a centre", {6, 13}, {8, 12}, [](auto* m) { return Zan_RotateMatrix(m, 90, 10, 11); });
    check("half a turn", {0, 3}, {-3, 1}, [](auto* m) { return m->Rotate(180, 1, 2), 0; });
    check("scale", {6, 2}, {12, 4}, [](auto* m) { return Zan_ScaleMatrix(m, 2, 3, 10, 1); });
    check("scale along x", {6, 2}, {12, 2}, [](auto* m) { return m->Scale(2, 1, 10, 1), 0; });
    check("skew", {-5, 1}, {-1, 1}, [](auto* m) { return m->Skew(45, 0), 0; });
    check("skew along y", {-4, 1}, {1, 2}, [](auto* m) { return m->Skew(45, -90), 0; });
    // These leave every bit alone, even where a product with the identity would not.
    const Zan_Matrix3 odd = matrix({-0.0, kNaN, -0.0, 1e308, 5, -0.0, 3, -0.0, 1e308});
    Zan_Matrix3 m = odd, a(true), b(true);
    for (const double degrees : {0.0, -0.0, 360.0, -720.0, 360e10}) CHECK(Zan_RotateMatrix(&m, degrees, 7, 8) == 0);
    CHECK(Zan_ScaleMatrix(&m, 1, 1, 7, 8) == 0);
    m.Skew(-0.0, 30);
    // Whole turns are taken off before the angle becomes radians.
    a.Rotate(360e6 + 30);
    b.Rotate(30);
    CHECK((m == odd && a == b));
}

TEST_CASE("turns about an axis in space") {
    HostReports host;
    const Zan_Matrix4 before = matrix({2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 5, 6, 7, 1});
    for (const double length : {2.0, 1e-12, -0x1.19799812dea1p-40}) {  // the last is the last below 1e-12
        CAPTURE(length);
        const int32_t code = length < 0 ? 3 : 0;
        const char* report = code == 0 ? "" : "0x11002E sev 8: unable to build rotation matrix.";
        const Zan_Matrix4 due = Zan_Matrix4(before) *= turning({0, 0, -1, 0, 1, 0, 1, 0, 0});
        Zan_Matrix4 m = before, n = before;
        CHECK((Zan_RotateMatrix4(0, length, 0, kPi / 2, &m) == code && host.takeAll() == report));
        CHECK((code == 0 ? close(m, due) : m == before));
        CHECK((thrownBy([&] { n.RotateAxis(0, length, 0, kPi / 2); }) == code && host.takeAll() == report && n == m));
        double rx = 9, ry = 9, rz = 9;
        CHECK(Zan_ConvertAxisAngleToOrderedXYZRotation(length, 0, 0, 0.5, &rx, &ry, &rz) == code);
        CHECK((close(rx, code == 0 ? 0.5 : 0) && ry == 0 && rz == 0 && host.takeAll() == report));
    }
}

TEST_CASE("turns by three angles") {
    Random random(43);
    for (int round = 0; round < 100; ++round) {
        const double rx = random.plain(-4, 4), ry = random.plain(-4, 4), rz = random.plain(-4, 4);
        Zan_Matrix4 fixed(true), before(true);
        fixed.RotateAxis(0, 0, 1, rz);
        fixed.RotateAxis(0, 1, 0, ry);
        fixed.RotateAxis(1, 0, 0, rx);
        before.RotateAxis(random.plain(-1, 1), random.plain(-1, 1), 1.5, random.plain(-4, 4));
        Zan_Matrix4 own = before;
        before.Translate(3, 2, 1);
        const Zan_Matrix4 expected = Zan_Matrix4(before) *= fixed;
        Zan_Matrix4 a = before, b = before, c = before;
        CHECK((Zan_RotateMatrix4XYZ(rx, ry, rz, &a) == 0 && Zan_RotateMatrix4XYZPlus(rx, ry, rz, 2, &b) == 0));
        c.RotateXYZ(rx, ry, rz);
        CHECK((close(a, expected) && a == b && a == c));
        // About its own axes a rotation is turned as if the turns had come first.
        Zan_Matrix4 first = fixed;
        first *= own;
        CHECK((Zan_RotateMatrix4XYZPlus(rx, ry, rz, 0, &own) == 0 && close(own, first)));
    }
    // An axis that the matrix takes to nothing is passed over; one that it merely shortens is not.
    for (const double thickness : {9e-13, 1e-12}) {
        Zan_Matrix4 m = with(Zan_Matrix4(true), 2, 2, thickness);
        CHECK((Zan_RotateMatrix4XYZPlus(0, 0, kPi / 2, 0, &m) == 0 && close(m.m01, thickness < 1e-12 ? 0 : 1)));
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
    (m = Zan_Matrix4(true)).Project(0.0);
    CHECK(m.m23 == std::numeric_limits<double>::infinity());
    (m = with(before, 0, 0, kNaN)).Scale(1, 1, 1);
    CHECK(std::isnan(m.m03));  // no short cut past the product
    m.SetCOB({1, 2, 3, kNaN}, {4, 5, 6, kNaN}, {7, 8, 9, kNaN});
    CHECK(m == turning({1, 4, 7, 2, 5, 8, 3, 6, 9}));
    CHECK(matrix({1, 2, -2, 0, 3, 4, 9, 9, 9}).GetScale() == V2(3, 5));
    CHECK(sameDoubles(matrix({1, 1, -1, 1, 2, 4, 5, 6, 0, 0, 0, -7, 9, 9, 9, 9}).GetScale(), V3(2, 9, 7)));
}

TEST_CASE("looking at a point") {
    const auto check = [](const char* what, const V3& eye, const V3& target, const V3& up, const double(&rows)[9]) {
        CAPTURE(what);
        CHECK(close(Zan_LookAtMatrix(eye, target, up), turning(rows)));
    };
    const double r = std::sqrt(0.5);
    check("the eye gives the direction only", {1, 2, 8}, {1, 2, 3}, {0, 9, 0}, {-1, 0, 0, 0, 1, 0, 0, 0, -1});
    check("a slanting up is set upright", {0, 0, 0}, {7, 0, 0}, {2, 0, 3}, {0, 1, 0, 0, 0, 1, 1, 0, 0});
    check("slanting view", {0, 0, 0}, {0, 2, 2}, {0, 1, 0}, {1, 0, 0, 0, r, -r, 0, r, r});
    check("up is the view: back about x", {0, 0, 0}, {0, 5, 0}, {0, 1, 0}, {1, 0, 0, 0, 0, -1, 0, 1, 0});
    check("the same downwards", {0, 0, 0}, {0, -5, 0}, {0, 1, 0}, {1, 0, 0, 0, 0, 1, 0, -1, 0});
    check("no up", {0, 0, 0}, {3, 0, 0}, {0, 0, 0}, {1, 0, 0, 0, 0, -1, 0, 1, 0});
    check("no view", {1, 2, 3}, {1, 2, 3}, {0, 1, 0}, {1, 0, 0, 0, 1, 0, 0, 0, 1});
}

// Building transforms: what each step does to points, that it comes after what the matrix did before, and the scale
// factors read back.
#include <string>

#include "host_reports.h"
#include "matrices.h"

namespace {

using V2 = Zan_Vector2T<double>;
using V3 = Zan_Vector3T<double>;
using V4 = Zan_Vector4T<double>;

constexpr double kPi = 3.141592653589793;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Translate(5, 0), then the step: where a point goes. Exact unless the step takes a sine.
struct PlaneRow {
    const char* what;
    int32_t (*step)(Zan_Matrix3* m);
    V2 from, to;
};
const PlaneRow kPlane[] = {
    {"nothing", [](Zan_Matrix3*) { return 0; }, {1, 2}, {6, 2}},
    {"translate", [](Zan_Matrix3* m) { return Zan_TranslateMatrix(m, -1, 3); }, {1, 2}, {5, 5}},
    {"member translate", [](Zan_Matrix3* m) { return m->Translate(-1, 3), 0; }, {1, 2}, {5, 5}},
    {"turn", [](Zan_Matrix3* m) { return Zan_RotateMatrix(m, 90, 0, 0); }, {1, 2}, {-2, 6}},
    {"turn back", [](Zan_Matrix3* m) { return m->Rotate(-450), 0; }, {1, 2}, {2, -6}},
    {"the centre stays", [](Zan_Matrix3* m) { return Zan_RotateMatrix(m, 90, 10, 11); }, {5, 11}, {10, 11}},
    {"about the centre", [](Zan_Matrix3* m) { return m->Rotate(90, 10, 11), 0; }, {6, 13}, {8, 12}},
    {"half a turn", [](Zan_Matrix3* m) { return m->Rotate(180, 1, 2), 0; }, {0, 3}, {-3, 1}},
    {"scale", [](Zan_Matrix3* m) { return Zan_ScaleMatrix(m, 2, 3, 0, 0); }, {1, 2}, {12, 6}},
    {"member scale", [](Zan_Matrix3* m) { return m->Scale(1, 3), 0; }, {1, 2}, {6, 6}},
    {"scale about a centre", [](Zan_Matrix3* m) { return Zan_ScaleMatrix(m, 2, 3, 10, 1); }, {6, 2}, {12, 4}},
    {"member scale about a centre", [](Zan_Matrix3* m) { return m->Scale(2, 1, 10, 1), 0; }, {6, 2}, {12, 2}},
    {"skew", [](Zan_Matrix3* m) { return m->Skew(45, 0), 0; }, {-5, 1}, {-1, 1}},
    {"skew along y", [](Zan_Matrix3* m) { return m->Skew(45, -90), 0; }, {-4, 1}, {1, 2}},
};

bool close(double a, double b) { return std::fabs(a - b) <= 4e-15 * (1 + std::fabs(b)); }
template <class Matrix>
bool close(const Matrix& a, const Matrix& b) {
    return Zan_EqualMatrixWithinEpsilon(a, b, 4e-15) && a.Determinant() == a.Determinant();
}

}  // namespace

TEST_CASE("steps in the plane") {
    for (const PlaneRow& r : kPlane) {
        CAPTURE(r.what);
        Zan_Matrix3 m = matrix3({1, 0, 0, 0, 1, 0, 5, 0, 1});
        CHECK(r.step(&m) == 0);
        V2 p = r.from;
        m.TransformPoint(&p);
        CHECK(close(p.x, r.to.x));
        CHECK(close(p.y, r.to.y));
        CHECK((m.m02 == 0 && m.m12 == 0 && m.m22 == 1));
    }
    // These leave every bit alone, even where a product with the identity would not.
    const Zan_Matrix3 odd = matrix3({-0.0, kNaN, -0.0, 1e308, 5, -0.0, 3, -0.0, 1e308});
    Zan_Matrix3 m = odd;
    for (const double degrees : {0.0, -0.0, 360.0, -720.0, 360e10}) CHECK(Zan_RotateMatrix(&m, degrees, 7, 8) == 0);
    CHECK(Zan_ScaleMatrix(&m, 1, 1, 7, 8) == 0);
    m.Skew(-0.0, 30);
    CHECK(m == odd);
    // Whole turns are taken off before the angle becomes radians.
    Zan_Matrix3 a(true), b(true);
    a.Rotate(360e6 + 30);
    b.Rotate(30);
    CHECK(a == b);
}

TEST_CASE("turns about an axis in space") {
    HostReports host;
    constexpr double kHair = 0x1.19799812dea1p-40;  // the last number below 1e-12
    struct {
        double axis[3], radians;
        double rows[9];  // empty after a failure
        bool fails;
    } const rows[] = {
        {{0, 0, 2}, kPi / 2, {0, 1, 0, -1, 0, 0, 0, 0, 1}, false},
        {{3, 0, 0}, kPi / 2, {1, 0, 0, 0, 0, 1, 0, -1, 0}, false},
        {{0, -1, 0}, -kPi / 2, {0, 0, -1, 0, 1, 0, 1, 0, 0}, false},
        {{1, 1, 1}, 2 * kPi / 3, {0, 1, 0, 0, 0, 1, 1, 0, 0}, false},
        {{1, 0, 1}, kPi, {0, 0, 1, 0, -1, 0, 1, 0, 0}, false},
        {{0, 1e-12, 0}, kPi, {-1, 0, 0, 0, 1, 0, 0, 0, -1}, false},
        {{0, 0, 0}, 1, {}, true},
        {{-kHair, 0, 0}, 1, {}, true},
    };
    const Zan_Matrix4 before = matrix4({2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 5, 6, 7, 1});
    for (const auto& r : rows) {
        CAPTURE(r.axis[0], r.axis[1], r.axis[2]);
        const auto& e = r.rows;
        Zan_Matrix4 turn = matrix4({e[0], e[1], e[2], 0, e[3], e[4], e[5], 0, e[6], e[7], e[8], 0, 0, 0, 0, 1});
        Zan_Matrix4 m = before;
        CHECK(Zan_RotateMatrix4(r.axis[0], r.axis[1], r.axis[2], r.radians, &m) == (r.fails ? 3 : 0));
        CHECK((r.fails ? m == before : close(m, Zan_Matrix4(before) *= turn)));
        CHECK(host.takeAll() == (r.fails ? "0x11002E sev 8: unable to build rotation matrix." : ""));
        Zan_Matrix4 n = before;
        long thrown = 0;
        try {
            n.RotateAxis(r.axis[0], r.axis[1], r.axis[2], r.radians);
        } catch (long code) {
            thrown = code;
        }
        CHECK((thrown == (r.fails ? 3 : 0) && n == m && host.takeAll().empty() != r.fails));
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
        CHECK(Zan_RotateMatrix4XYZ(rx, ry, rz, &a) == 0);
        CHECK(Zan_RotateMatrix4XYZPlus(rx, ry, rz, 2, &b) == 0);
        c.RotateXYZ(rx, ry, rz);
        CHECK((close(a, expected) && a == b && a == c));
        // About its own axes a rotation is turned as if the turns had come first.
        Zan_Matrix4 first = fixed;
        first *= own;
        CHECK((Zan_RotateMatrix4XYZPlus(rx, ry, rz, 0, &own) == 0 && close(own, first)));
    }
    // (0, 1, 0) about y, which changes nothing, then about x.
    Zan_Matrix4 m(true);
    m.RotateXYZ(kPi / 2, kPi / 2, 0);
    V3 p(0, 1, 0);
    m.TransformPoint(&p);
    CHECK((close(p.x, 0) && close(p.y, 0) && close(p.z, 1)));
    // An axis that the matrix takes to nothing is passed over; one that it merely shortens is not.
    for (const double thickness : {0.0, 9e-13, 1e-12}) {
        const Zan_Matrix4 flat = matrix4({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, thickness, 0, 0, 0, 0, 1});
        m = flat;
        CHECK(Zan_RotateMatrix4XYZPlus(0, 0, kPi / 2, 0, &m) == 0);
        CHECK(close(m.m01, thickness < 1e-12 ? 0 : 1));
    }
}

TEST_CASE("the other steps in space") {
    const Zan_Matrix4 before = matrix4({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    Zan_Matrix4 m = before;
    CHECK(Zan_TranslateMatrix4(1, 2, 3, &m) == 0);
    CHECK(m == matrix4({5, 10, 15, 4, 13, 22, 31, 8, 21, 34, 47, 12, 29, 46, 63, 16}));
    Zan_Matrix4 n = before;
    n.Translate(1, 2, 3);
    CHECK(n == m);
    CHECK(Zan_ScaleMatrix4(2, 1, -1, &(m = before)) == 0);
    CHECK(m == matrix4({2, 2, -3, 4, 10, 6, -7, 8, 18, 10, -11, 12, 26, 14, -15, 16}));
    n = before;
    n.Scale(2, 1, -1);
    CHECK(n == m);
    n = before;
    n.Project(4);  // (x, y, z, w) becomes (x, y, z - w, z / 4)
    CHECK(n == matrix4({1, 2, -1, 0.75, 5, 6, -1, 1.75, 9, 10, -1, 2.75, 13, 14, -1, 3.75}));
    n = matrix4({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    n.Project(0.0);
    CHECK(n.m23 == std::numeric_limits<double>::infinity());
    CHECK(Zan_ScaleMatrix4(1, 1, 1, &(m = with(before, 0, 0, kNaN))) == 0);
    CHECK(std::isnan(m.m03));  // no short cut past the product

    const V4 a(1, 2, 3, kNaN), b(4, 5, 6, kNaN), c(7, 8, 9, kNaN);
    CHECK(Zan_SetMatrix4CoB(&a, &b, &c, &m) == 0);
    CHECK(m == matrix4({1, 4, 7, 0, 2, 5, 8, 0, 3, 6, 9, 0, 0, 0, 0, 1}));
    n.SetCOB(a, b, c);
    CHECK(n == m);
}

TEST_CASE("scale factors") {
    const Zan_Matrix3 m = matrix3({1, 2, -2, 0, 3, 4, 9, 9, 9});
    CHECK((m.GetScaleSquared() == V2(9, 25) && m.GetScale() == V2(3, 5)));
    const Zan_Matrix4 n = matrix4({1, 1, -1, 1, 2, 4, 5, 6, 0, 0, 0, -7, 9, 9, 9, 9});
    CHECK(sameDoubles(n.GetScaleSquared(), V3(4, 81, 49)));
    CHECK(sameDoubles(n.GetScale(), V3(2, 9, 7)));
}

TEST_CASE("looking at a point") {
    const double r = std::sqrt(0.5);
    struct {
        const char* what;
        V3 eye, target, up;
        double rows[9];
    } const rows[] = {
        {"along z", {0, 0, 0}, {0, 0, 5}, {0, 1, 0}, {1, 0, 0, 0, 1, 0, 0, 0, 1}},
        {"the eye gives the direction only", {1, 2, 8}, {1, 2, 3}, {0, 9, 0}, {-1, 0, 0, 0, 1, 0, 0, 0, -1}},
        {"a slanting up is set upright", {0, 0, 0}, {7, 0, 0}, {2, 0, 3}, {0, 1, 0, 0, 0, 1, 1, 0, 0}},
        {"slanting view", {0, 0, 0}, {0, 2, 2}, {0, 1, 0}, {1, 0, 0, 0, r, -r, 0, r, r}},
        {"up is the view: back about x", {0, 0, 0}, {0, 5, 0}, {0, 1, 0}, {1, 0, 0, 0, 0, -1, 0, 1, 0}},
        {"the same downwards", {0, 0, 0}, {0, -5, 0}, {0, 1, 0}, {1, 0, 0, 0, 0, 1, 0, -1, 0}},
        {"no up", {0, 0, 0}, {3, 0, 0}, {0, 0, 0}, {1, 0, 0, 0, 0, -1, 0, 1, 0}},
        {"no view", {1, 2, 3}, {1, 2, 3}, {0, 1, 0}, {1, 0, 0, 0, 1, 0, 0, 0, 1}},
    };
    for (const auto& row : rows) {
        CAPTURE(row.what);
        const auto& e = row.rows;
        CHECK(close(Zan_LookAtMatrix(row.eye, row.target, row.up),
                    matrix4({e[0], e[1], e[2], 0, e[3], e[4], e[5], 0, e[6], e[7], e[8], 0, 0, 0, 0, 1})));
    }
}

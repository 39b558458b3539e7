// Inverses, adjugates and normal matrices.
#include <algorithm>

#include "host_reports.h"
#include "matrices.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// The elimination as one does it on paper: rows stay where they are and the pivots are remembered.
bool onPaper(const Zan_Matrix3& m, Zan_Matrix3& inverse) {
    double a[3][3], r[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    std::memcpy(a, &m, sizeof a);
    const auto size = [&](int row, int column) { return std::fabs(a[row][column]); };
    const auto tiny = [](double p) { return -1e-20 < p && p < 1e-20; };
    int k = 2;
    if (size(0, 0) > size(1, 0) && size(0, 0) > size(2, 0))
        k = 0;
    else if (size(1, 0) > size(2, 0))
        k = 1;
    if (tiny(a[k][0])) return false;
    double p = 1 / a[k][0];
    a[k][1] *= p, a[k][2] *= p, r[k][k] = p;
    for (int row : {0, 1, 2}) {
        if (row == k) continue;
        const double f = -a[row][0];
        a[row][1] += f * a[k][1], a[row][2] += f * a[k][2], r[row][k] = f * r[k][k];
    }
    const int low = k == 0 ? 1 : 0, high = k == 2 ? 1 : 2;
    const int j = size(low, 1) > size(high, 1) ? low : high, l = low + high - j;
    if (tiny(a[j][1])) return false;
    p = 1 / a[j][1];
    a[j][2] *= p, r[j][j] = p, r[j][k] *= p;
    for (int row : {k, l}) {
        const double f = -a[row][1];
        a[row][2] += f * a[j][2], r[row][j] = f * r[j][j], r[row][k] += f * r[j][k];
    }
    if (tiny(a[l][2])) return false;
    p = 1 / a[l][2];
    r[l][l] = p, r[l][k] *= p, r[l][j] *= p;
    for (int row : {k, j}) {
        const double f = -a[row][2];
        r[row][l] = f * r[l][l], r[row][k] += f * r[l][k], r[row][j] += f * r[l][j];
    }
    const int order[] = {k, j, l};
    inverse = fill<Zan_Matrix3>([&](int i, int column) { return r[order[i]][column]; });
    return true;
}

// One name for the two sizes.
int32_t quiet(const Zan_Matrix3* m, Zan_Matrix3* out, unsigned char* f) { return Zan_InverseMatrixQuiet(m, out, f); }
int32_t quiet(const Zan_Matrix4* m, Zan_Matrix4* out, unsigned char* f) { return Zan_InverseMatrix4Quiet(m, out, f); }
int32_t loud(const Zan_Matrix3* m, Zan_Matrix3* out) { return Zan_InverseMatrix(m, out); }
int32_t loud(const Zan_Matrix4* m, Zan_Matrix4* out) { return Zan_InverseMatrix4(m, out); }

// Every way to ask for the inverse: all agree, each tells of a failure in its own way. Gives the quiet output.
template <class Matrix>
Matrix checkInverse(const Matrix& m, bool singular) {
    HostReports host;
    const int32_t code = singular ? 0x1107 : 0;
    const char* report = !singular             ? ""
                         : sizeOf<Matrix> == 3 ? "0x110023 sev 8: unable to invert matrix."
                                               : "0x11002D sev 8: unable to invert matrix.";
    unsigned char flag = 9;
    Matrix out = m, same = m, member = m;
    CHECK(quiet(&same, &same, &flag) == code);
    CHECK((flag == (singular ? 1 : 0) && quiet(&m, &out, nullptr) == code && sameDoubles(out, same)));
    CHECK((member.InvertQuiet() == singular && sameDoubles(member, singular ? m : out) && host.takeAll().empty()));
    CHECK((loud(&m, &same) == code && sameDoubles(same, out)));
    CHECK(host.takeAll() == report);
    member = m;
    long thrown = 0;
    try {
        member.Invert();
    } catch (long c) {
        thrown = c;
    }
    CHECK((thrown == code && sameDoubles(member, singular ? m : out) && host.takeAll() == report));
    return out;
}

template <class Matrix>
Matrix diagonal(double last, double others = 1.0) {
    return fill<Matrix>([&](int i, int j) { return i != j ? 0.0 : i == sizeOf<Matrix> - 1 ? last : others; });
}

}  // namespace

TEMPLATE_TEST_CASE("a matrix times its inverse", "", Zan_Matrix3, Zan_Matrix4) {
    Random random(421);
    for (int round = 0; round < 300; ++round) {
        const auto m = fill<TestType>([&](int, int) { return random.plain(-1, 1); });
        if (std::fabs(m.Determinant()) < 1e-3) continue;
        TestType product = m;
        product *= checkInverse(m, false);
        CHECK(product.IsIdentityWithinEpsilon(1e-11));
    }
    CHECK(checkInverse(TestType(true), false).IsIdentity());
    checkInverse(fill<TestType>([](int i, int j) { return i == 1 || j == 1 ? 0.0 : i + 2.0 * j * j; }), true);
}

TEST_CASE("the elimination, bit for bit") {
    Random random(422);
    int inverted = 0;
    for (int round = 0; round < 3000; ++round) {
        // Nasty ones, and small whole numbers, whose pivots tie.
        const auto m = fill<Zan_Matrix3>(
            [&](int, int) { return round % 3 == 0 ? random.nasty() : random.below(5) - 2 + 0.5 * (round % 3 - 1); });
        Zan_Matrix3 expected, out;
        const bool good = onPaper(m, expected);
        CHECK((Zan_InverseMatrixQuiet(&m, &out, nullptr) == 0) == good);
        CHECK((good ? sameDoubles(out, expected) : out == Zan_Matrix3(true)));
        inverted += good;
    }
    CHECK((inverted > 2000 && inverted < 2990));
}

TEST_CASE("singular and nearly so") {
    constexpr double kBelow20 = 0x1.79ca10c924222p-67, kBelow16 = 0x1.cd2b297d889bbp-54;  // the last below 1e-20, 1e-16
    CHECK(checkInverse(diagonal<Zan_Matrix3>(1e-20), false).m22 == 1e20);
    CHECK(checkInverse(diagonal<Zan_Matrix3>(-kBelow20), true).IsIdentity());
    CHECK(checkInverse(diagonal<Zan_Matrix3>(-1e-20, 1e-20), false).m00 == 1e20);
    checkInverse(diagonal<Zan_Matrix3>(1, kBelow20), true);
    checkInverse(matrix3({1e30, 1, 2, 0, 0, 3, 0, 0, 4}), true);       // the second pivot
    checkInverse(matrix3({900, 1, 2, 1, 800, 3, 901, 801, 5}), true);  // the third
    const Zan_Matrix3 swap = matrix3({0, 1, 0, 1, 0, 0, 0, 0, 1});
    CHECK(Zan_EqualMatrixWithinEpsilon(checkInverse(swap, false), swap, 0.0));

    CHECK(checkInverse(diagonal<Zan_Matrix4>(1e-16), false).m33 == 1e16);
    CHECK(checkInverse(diagonal<Zan_Matrix4>(-kBelow16), true).m00 == -kBelow16);
    CHECK(checkInverse(diagonal<Zan_Matrix4>(1e-5, 1e-5), true).m11 == Approx(1e-15));
    CHECK(checkInverse(diagonal<Zan_Matrix4>(1e-3, 1e-3), false).m11 == Approx(1e3));
    // Divided by the determinant; 49 times its reciprocal is not 1.
    CHECK(checkInverse(diagonal<Zan_Matrix4>(49), false).m00 == 1.0);
    // A NaN determinant is not small.
    CHECK(std::isnan(checkInverse(diagonal<Zan_Matrix4>(kNaN), false).m00));
    CHECK(std::isnan(checkInverse(diagonal<Zan_Matrix4>(0.0, kInf), false).m33));
}

TEST_CASE("adjugates") {
    Random random(423);
    for (int round = 0; round < 200; ++round) {  // whole numbers: exact
        const auto whole = [&](int, int) { return random.below(41) - 20; };
        const auto m = fill<Zan_Matrix3>(whole);
        Zan_Matrix3 adjugate = m, product = m;
        adjugate.Adjoint();
        product *= adjugate;
        const double determinant = m.Determinant();
        CHECK(Zan_EqualMatrixWithinEpsilon(product, diagonal<Zan_Matrix3>(determinant, determinant), 0.0));
        // A singular 4x4 matrix leaves its adjugate behind: with a row that is the sum of two others M * adj(M) = 0.
        auto n = fill<Zan_Matrix4>(whole);
        const int sum = random.below(4);
        for (int j = 0; j < 4; ++j) n = with(n, sum, j, at(n, (sum + 1) % 4, j) + at(n, (sum + 2) % 4, j));
        Zan_Matrix4 left;
        CHECK(Zan_InverseMatrix4Quiet(&n, &left, nullptr) == 0x1107);
        CHECK((Zan_Matrix4(n) *= left).IsZero());
        // and its element (r, c) is the signed minor without row c and column r.
        const int row = random.below(4), column = random.below(4);
        Zan_Matrix3 rest;
        rest.AssignFromByDroppingIndices(n, column, row);
        CHECK(at(left, row, column) == ((row + column) % 2 == 0 ? 1 : -1) * rest.Determinant());
    }
    Zan_Matrix3 m = matrix3({2, 0, 0, 0, 3, 0, 0, 0, 4});
    m.Adjoint();
    CHECK(Zan_EqualMatrixWithinEpsilon(m, matrix3({12, 0, 0, 0, 8, 0, 0, 0, 6}), 0.0));
}

TEST_CASE("normal matrices") {
    HostReports host;
    const Zan_Matrix4 translation = matrix4({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1});
    const Zan_Matrix4 expected = matrix4({1, 0, 0, -5, 0, 1, 0, -6, 0, 0, 1, -7, 0, 0, 0, 1});
    const Zan_Matrix4 flat = matrix4({1, 2, 3, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1});
    Zan_Matrix4 adjugate;
    CHECK(Zan_InverseMatrix4Quiet(&flat, &adjugate, nullptr) == 0x1107);
    Zan_Matrix4 turned = adjugate;
    turned.Transpose();
    Zan_Matrix4 m = translation;
    unsigned char singular = 9;
    CHECK((Zan_CalcNormalMatrix4(&m, &m) == 0 && Zan_EqualMatrixWithinEpsilon(m, expected, 0.0)));
    CHECK((Zan_CalcNormalMatrix4Quiet(&translation, &m, &singular) == 0 && singular == 0));
    CHECK(Zan_EqualMatrixWithinEpsilon(m, expected, 0.0));
    CHECK((Zan_CalcNormalMatrix4Quiet(&flat, &m, &singular) == 0x1107 && singular == 1 && m == turned));
    CHECK((Zan_CalcNormalMatrix4Quiet(&flat, &m, nullptr) == 0x1107 && host.takeAll().empty()));
    CHECK((Zan_CalcNormalMatrix4(&flat, &m) == 0x1107 && m == adjugate && m != turned));
    CHECK(host.takeAll() == "0x11002D sev 8: unable to invert matrix.");
}

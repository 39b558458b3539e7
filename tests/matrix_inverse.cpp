// Inverses, adjugates and normal matrices.
#include "host_reports.h"
#include "matrices.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

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
    const std::string site = sizeOf<Matrix> == 3 ? "0x110023" : "0x11002D";
    const std::string report = singular ? site + " sev 8: unable to invert matrix." : "";
    unsigned char flag = 9;
    Matrix out = m, same = m, quietly = m, member = m;
    CHECK((quiet(&same, &same, &flag) == code && flag == (singular ? 1 : 0)));
    CHECK((quiet(&m, &out, nullptr) == code && sameDoubles(out, same)));
    CHECK((quietly.InvertQuiet() == singular && sameDoubles(quietly, singular ? m : out) && host.takeAll().empty()));
    CHECK((loud(&m, &same) == code && sameDoubles(same, out) && host.takeAll() == report));
    CHECK((thrownBy([&] { member.Invert(); }) == code && sameDoubles(member, quietly) && host.takeAll() == report));
    return out;
}

template <class Matrix>
Matrix diagonal(double last, double others = 1.0) {
    return fill<Matrix>([&](int i, int j) { return i != j ? 0.0 : i == sizeOf<Matrix> - 1 ? last : others; });
}

}  // namespace

TEST_CASE("a transform of the plane times its inverse") {
    Random random(421);
    for (int round = 0; round < 1000; ++round) {  // small whole numbers, whose pivots tie, every other time
        const bool whole = round % 2 == 0;
        auto m = fill<Zan_Matrix3>([&](int, int) { return whole ? random.below(5) - 2 : random.plain(-1, 1); });
        if (std::fabs(m.Determinant()) > 1e-3) CHECK((m *= checkInverse(m, false)).IsIdentityWithinEpsilon(1e-11));
    }
}

TEST_CASE("singular and nearly so") {
    constexpr double kBelow20 = 0x1.79ca10c924222p-67, kBelow16 = 0x1.cd2b297d889bbp-54;  // the last below 1e-20, 1e-16
    CHECK(checkInverse(diagonal<Zan_Matrix3>(1e-20), false).m22 == 1e20);
    CHECK(checkInverse(diagonal<Zan_Matrix3>(-kBelow20), true).IsIdentity());
    CHECK(checkInverse(diagonal<Zan_Matrix3>(-1e-20, 1e-20), false).m00 == 1e20);
    checkInverse(diagonal<Zan_Matrix3>(1, kBelow20), true);
    checkInverse(matrix({1e30, 1, 2, 0, 0, 3, 0, 0, 4}), true);       // the second pivot
    checkInverse(matrix({900, 1, 2, 1, 800, 3, 901, 801, 5}), true);  // the third

    CHECK(checkInverse(diagonal<Zan_Matrix4>(1e-16), false).m33 == 1e16);
    CHECK(checkInverse(diagonal<Zan_Matrix4>(-kBelow16), true).m00 == -kBelow16);
    CHECK(checkInverse(diagonal<Zan_Matrix4>(1e-5, 1e-5), true).m11 == Approx(1e-15));
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
        CHECK(Zan_EqualMatrixWithinEpsilon(product, diagonal<Zan_Matrix3>(m.Determinant(), m.Determinant()), 0.0));
        // Element (r, c) is the signed minor without row c and column r, which a singular 4x4 matrix leaves behind.
        auto n = fill<Zan_Matrix4>(whole);
        const bool singular = round % 2 == 0;
        if (singular) n = fill<Zan_Matrix4>([&](int i, int j) { return at(n, i == 2 ? 1 : i, j); });
        const double divisor = singular ? 1.0 : n.Determinant();
        const Zan_Matrix4 left = checkInverse(n, singular);
        CHECK(left == fill<Zan_Matrix4>([&](int i, int j) {
                  Zan_Matrix3 rest;
                  rest.AssignFromByDroppingIndices(n, j, i);
                  return ((i + j) % 2 == 0 ? rest.Determinant() : -rest.Determinant()) / divisor;
              }));
    }
}

TEST_CASE("normal matrices") {
    HostReports host;
    const Zan_Matrix4 slanted = matrix({1, 2, 3, 0, 0, 1, 0, 0, 0, 0, 1, 4, 5, 6, 7, 1});
    for (const Zan_Matrix4& m : {slanted, with(slanted, 2, 2, -32.0)}) {  // the second is singular
        unsigned char singular = 9;
        Zan_Matrix4 inverse, turned, normal, quietly, loud = m;
        const int32_t code = Zan_InverseMatrix4Quiet(&m, &inverse, nullptr);
        Zan_TransposeMatrix4(&inverse, &turned);
        CHECK((Zan_CalcNormalMatrix4Quiet(&m, &quietly, &singular) == code && singular == (code == 0 ? 0 : 1)));
        CHECK((Zan_CalcNormalMatrix4Quiet(&m, &normal, nullptr) == code && normal == turned && quietly == turned));
        CHECK((host.takeAll().empty() && Zan_CalcNormalMatrix4(&loud, &loud) == code));
        CHECK(loud == (code == 0 ? turned : inverse));
        CHECK(host.takeAll() == (code == 0 ? "" : "0x11002D sev 8: unable to invert matrix."));
    }
}

// Inverses, adjugates and normal matrices.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"

namespace {

// One name for the two sizes.
int32_t quiet(const Zan_Matrix3* m, Zan_Matrix3* out, unsigned char* f) { return Zan_InverseMatrixQuiet(m, out, f); }
int32_t quiet(const Zan_Matrix4* m, Zan_Matrix4* out, unsigned char* f) { return Zan_InverseMatrix4Quiet(m, out, f); }

// Every way to ask for the inverse, or for its transpose: all agree, each tells of a failure in its own way. Gives the
// quiet output.
template <class Matrix>
Matrix checkInverse(const Matrix& m, bool singular) {
    HostReports host;
    const int32_t code = singular ? 0x1107 : 0;
    const std::string site = sizeOf<Matrix> == 3 ? "0x110023" : "0x11002D";
    const std::string report = singular ? site + " sev 8: unable to invert matrix." : "";
    unsigned char flag = 9;
    Matrix out = m, same = m, kept = m;
    CHECK((quiet(&m, &out, nullptr) == code && quiet(&same, &same, &flag) == code && sameDoubles(out, same)));
    CHECK((kept.InvertQuiet() == singular && flag == (singular ? 1 : 0) && host.takeAll().empty()));
    CHECK((thrownBy([&] { (same = m).Invert(); }) == code && sameDoubles(same, kept) && host.takeAll() == report));
    CHECK(sameDoubles(kept, singular ? m : out));
    if constexpr (sizeOf<Matrix> == 4) {
        CHECK((Zan_CalcNormalMatrix4Quiet(&m, &same, &flag) == code && flag == (singular ? 1 : 0)));
        CHECK((sameDoubles(same, transposed(out)) && host.takeAll().empty()));
        CHECK((Zan_CalcNormalMatrix4(&m, &same) == code && host.takeAll() == report));
        CHECK(sameDoubles(same, singular ? out : transposed(out)));
    }
    return out;
}

template <class Matrix>
Matrix diagonal(double last, double others = 1.0) {
    return fill<Matrix>([&](int i, int j) { return i != j ? 0.0 : i == sizeOf<Matrix> - 1 ? last : others; });
}

}  // namespace

TEST_CASE("inverses and adjugates of whole numbers") {
    Random random(423);
    for (int round = 0; round < 1000; ++round) {  // small ones, whose pivots tie, every other time
        const int32_t most = round % 2 == 0 ? 2 : 20;
        const auto whole = [&](int, int) { return random.below(2 * most + 1) - most; };
        const auto m = fill<Zan_Matrix3>(whole);
        Zan_Matrix3 adjugate = m;
        adjugate.Adjoint();
        const double d = m.Determinant();
        CHECK(Zan_EqualMatrixWithinEpsilon(product(m, adjugate), diagonal<Zan_Matrix3>(d, d), 0.0));
        if (d != 0) CHECK(product(m, checkInverse(m, false)).IsIdentityWithinEpsilon(1e-11));
        // Element (r, c) is the signed minor without row c and column r, which a singular 4x4 matrix leaves behind.
        const auto n = fill<Zan_Matrix4>(whole);
        const bool singular = n.Determinant() == 0;
        const Zan_Matrix4 inverse = checkInverse(n, singular);
        CHECK(inverse == fill<Zan_Matrix4>([&](int i, int j) {
                  Zan_Matrix3 rest;
                  rest.AssignFromByDroppingIndices(n, j, i);
                  return ((i + j) % 2 == 0 ? 1 : -1) * rest.Determinant() / (singular ? 1.0 : n.Determinant());
              }));
        if (!singular) CHECK(product(n, inverse).IsIdentityWithinEpsilon(1e-11));
    }
}

TEST_CASE("singular and nearly so") {
    constexpr double kBelow20 = 0x1.79ca10c924222p-67, kBelow16 = 0x1.cd2b297d889bbp-54;  // the last below 1e-20, 1e-16
    CHECK(checkInverse(diagonal<Zan_Matrix3>(-1e-20, 1e-20), false).m00 == 1e20);
    CHECK(checkInverse(diagonal<Zan_Matrix3>(-kBelow20), true).IsIdentity());
    checkInverse(diagonal<Zan_Matrix3>(1, kBelow20), true);
    checkInverse(matrix({1e30, 1, 2, 0, 0, 3, 0, 0, 4}), true);       // the second pivot
    checkInverse(matrix({900, 1, 2, 1, 800, 3, 901, 801, 5}), true);  // the third

    CHECK(checkInverse(diagonal<Zan_Matrix4>(1e-16), false).m33 == 1e16);
    CHECK(checkInverse(diagonal<Zan_Matrix4>(-kBelow16), true).m00 == -kBelow16);
    CHECK(checkInverse(diagonal<Zan_Matrix4>(49), false).m00 == 1.0);  // 49 times its reciprocal is not
    CHECK(std::isnan(checkInverse(diagonal<Zan_Matrix4>(kNaN), false).m00));
}

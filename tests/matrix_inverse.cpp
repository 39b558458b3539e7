// Inverses, adjugates and normal matrices.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"

namespace {

// One name for both sizes.
int32_t inverseQuiet(const Zan_Matrix3* m, Zan_Matrix3* out, unsigned char* singular) {
    return Zan_InverseMatrixQuiet(m, out, singular);
}
int32_t inverseQuiet(const Zan_Matrix4* m, Zan_Matrix4* out, unsigned char* singular) {
    return Zan_InverseMatrix4Quiet(m, out, singular);
}

enum class Expect { kInverse, kSingular };

// Every operation that inverts m or forms its normal matrix: they agree with each other and with the expectation.
// Returns the output of the quiet inverse.
template <class Matrix>
Matrix checkInverse(const Matrix& m, Expect expect) {
    HostReports host;
    const bool singular = expect == Expect::kSingular;
    const int32_t code = singular ? Zan_Err_CannotInvert : 0;
    const std::string site = sizeOf<Matrix> == 3 ? "0x110023" : "0x11002D";
    const std::string report = singular ? site + " sev 8: unable to invert matrix." : "";

    Matrix out;
    CHECK(inverseQuiet(&m, &out, nullptr) == code);
    Matrix inPlace = m;
    unsigned char flag = 9;
    CHECK(inverseQuiet(&inPlace, &inPlace, &flag) == code);
    CHECK(doubles(inPlace) == doubles(out));
    CHECK(flag == (singular ? 1 : 0));
    Matrix member = m;
    CHECK(member.InvertQuiet() == singular);
    CHECK(doubles(member) == doubles(singular ? m : out));
    CHECK(host.takeAll().empty());
    Matrix loud = m;
    CHECK(thrownBy([&] { loud.Invert(); }) == code);
    CHECK(doubles(loud) == doubles(member));
    CHECK(host.takeAll() == report);

    if constexpr (sizeOf<Matrix> == 4) {
        Matrix normal;
        flag = 9;
        CHECK(Zan_CalcNormalMatrix4Quiet(&m, &normal, &flag) == code);
        CHECK(flag == (singular ? 1 : 0));
        CHECK(doubles(normal) == doubles(transposed(out)));
        CHECK(host.takeAll().empty());
        CHECK(Zan_CalcNormalMatrix4(&m, &normal) == code);
        CHECK(doubles(normal) == doubles(singular ? out : transposed(out)));
        CHECK(host.takeAll() == report);
    }
    return out;
}

// Equal elements on the diagonal, but for the last.
template <class Matrix>
Matrix diagonal(double others, double last) {
    return fill<Matrix>([&](int i, int j) { return i != j ? 0.0 : i == sizeOf<Matrix> - 1 ? last : others; });
}

constexpr int kRounds = 1000;

// Matrices of whole numbers: small ones in every other round, so that pivots are often equal and some determinants 0.
template <class Matrix>
Matrix wholeNumbers(Random& random, int round) {
    const int32_t greatest = round % 2 == 0 ? 2 : 20;
    return fill<Matrix>([&](int, int) { return random.below(2 * greatest + 1) - greatest; });
}

}  // namespace

TEST_CASE("a 3x3 matrix times its adjugate is the identity times the determinant, and times its inverse the identity") {
    Random random(423);
    for (int round = 0; round < kRounds; ++round) {
        const auto m = wholeNumbers<Zan_Matrix3>(random, round);
        Zan_Matrix3 adjugate = m;
        adjugate.Adjoint();
        const double d = m.Determinant();
        CHECK(greatestDifference(product(m, adjugate), diagonal<Zan_Matrix3>(d, d)) == 0);
        if (d == 0) continue;
        const Zan_Matrix3 inverse = checkInverse(m, Expect::kInverse);
        CHECK(greatestDifference(product(m, inverse), identity<Zan_Matrix3>()) < 1e-11);
    }
}

TEST_CASE("a 4x4 inverse is the adjugate divided by the determinant, undivided when that is 0") {
    Random random(424);
    for (int round = 0; round < kRounds; ++round) {
        const auto m = wholeNumbers<Zan_Matrix4>(random, round);
        const double d = m.Determinant();
        const auto expected = fill<Zan_Matrix4>([&](int i, int j) {
            Zan_Matrix3 rest;
            rest.AssignFromByDroppingIndices(m, j, i);
            const double cofactor = ((i + j) % 2 == 0 ? 1 : -1) * rest.Determinant();
            return d == 0 ? cofactor : cofactor / d;
        });
        const Zan_Matrix4 inverse = checkInverse(m, d == 0 ? Expect::kSingular : Expect::kInverse);
        CHECK(doubles(inverse) == doubles(expected));
    }
}

TEST_CASE("a 3x3 matrix is singular when a pivot is below 1e-20") {
    constexpr double kBelow20 = 0x1.79ca10c924222p-67;  // the largest double below 1e-20
    CHECK(checkInverse(diagonal<Zan_Matrix3>(1e-20, -1e-20), Expect::kInverse).m00 == 1e20);
    struct Row {
        const char* what;
        Zan_Matrix3 m;
    };
    const Row rows[] = {
        {"first pivot just below", diagonal<Zan_Matrix3>(kBelow20, 1)},
        {"last pivot just below, negative", diagonal<Zan_Matrix3>(1, -kBelow20)},
        {"second pivot 0", matrix({1e30, 1, 2, 0, 0, 3, 0, 0, 4})},
        {"third pivot 0", matrix({900, 1, 2, 1, 800, 3, 901, 801, 5})},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK(doubles(checkInverse(row.m, Expect::kSingular)) == doubles(identity<Zan_Matrix3>()));
    }
}

TEST_CASE("a 4x4 matrix is singular when its determinant is below 1e-16") {
    constexpr double kBelow16 = 0x1.cd2b297d889bbp-54;  // the largest double below 1e-16
    CHECK(checkInverse(diagonal<Zan_Matrix4>(1, 1e-16), Expect::kInverse).m33 == 1e16);
    CHECK(checkInverse(diagonal<Zan_Matrix4>(1, -kBelow16), Expect::kSingular).m00 == -kBelow16);
    CHECK(std::isnan(checkInverse(diagonal<Zan_Matrix4>(1, kNaN), Expect::kInverse).m00));
}

// Matrices as values: kinds, comparison, products and sums, determinants, conversion between the sizes.
#include <algorithm>

#include "matrices.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// One name for the two sizes.
int32_t equalMatrix(const Zan_Matrix3& a, const Zan_Matrix3& b, unsigned char* e) { return Zan_EqualMatrix(&a, &b, e); }
int32_t equalMatrix(const Zan_Matrix4& a, const Zan_Matrix4& b, unsigned char* e) {
    return Zan_EqualMatrix4(&a, &b, e);
}
int32_t setIdentity(Zan_Matrix3* m) { return Zan_SetIdentityMatrix(m); }
int32_t setIdentity(Zan_Matrix4* m) { return Zan_IdentityMatrix4(m); }

// The sum over all permutations.
template <class Matrix>
double leibniz(const Matrix& m) {
    int p[] = {0, 1, 2, 3};
    double sum = 0;
    do {
        double product = 1;
        for (int i = 0; i < sizeOf<Matrix>; ++i) {
            for (int j = 0; j < i; ++j) product = p[j] > p[i] ? -product : product;
            product *= at(m, i, p[i]);
        }
        sum += product;
    } while (std::next_permutation(p, p + sizeOf<Matrix>));
    return sum;
}

struct KindRow {
    const char* what;
    double m[9];
    int32_t kind;
};
constexpr KindRow kKinds[] = {
    {"identity", {1, 0, 0, 0, 1, 0, 0, 0, 1}, 0},
    {"negative zeros are zeros", {1, -0.0, -0.0, -0.0, 1, -0.0, -0.0, -0.0, 1}, 0},
    {"translation along x", {1, 0, 0, 0, 1, 0, 5e-324, 0, 1}, 1},
    {"translation along y", {1, 0, 0, 0, 1, 0, 0, 3, 1}, 1},
    {"mirror", {-1, 0, 0, 0, 1, 0, 0, 0, 1}, 2},
    {"scale along y by hardly more than 1", {1, 0, 0, 0, 0x1.0000000000001p0, 0, 0, 0, 1}, 2},
    {"scale and translation", {2, 0, 0, 0, 1, 0, kNaN, 0, 1}, 3},
    {"NaN scale", {kNaN, 0, 0, 0, 1, 0, 0, 1, 1}, 3},
    {"m10", {1, 0, 0, 1e-300, 1, 0, 0, 0, 1}, 4},
    {"m01, scaled and translated", {2, 1, 0, 0, 2, 0, 1, 1, 1}, 4},
    {"m22", {1, 0, 0, 0, 1, 0, 0, 0, 2}, 5},
    {"m02, before m01", {1, 1, 1e-9, 0, 1, 0, 0, 0, 1}, 5},
    {"m12 NaN", {1, 0, 0, 0, 1, kNaN, 0, 0, 1}, 5},
};

}  // namespace

TEST_CASE("matrix kinds") {
    for (const KindRow& r : kKinds) {
        CAPTURE(r.what);
        const Zan_Matrix3 m = matrix3(r.m);
        int32_t kind = -1;
        CHECK(Zan_GetMatrixType(&m, &kind) == 0);
        CHECK(kind == r.kind);
        CHECK(m.GetType() == r.kind);
    }
}

TEMPLATE_TEST_CASE("identity, zero, and the four ways to compare", "", Zan_Matrix3, Zan_Matrix4) {
    const auto identity = fill<TestType>([](int i, int j) { return i == j ? 1.0 : 0.0; });
    const auto zero = fill<TestType>([](int, int) { return 0.0; });
    TestType m = zero, n = identity;
    CHECK(setIdentity(&m) == 0);
    CHECK((m == identity && TestType(true) == identity && m.IsIdentity() && !m.IsZero()));
    n.SetZero();
    CHECK((n == zero && n.IsZero() && !n.IsIdentity() && fill<TestType>([](int, int) { return -0.0; }).IsZero()));
    n.SetIdentity();
    CHECK(n == identity);

    // A change of one element of the identity, at every place: equal by value, by bytes, within 0, within 0.25.
    struct {
        double change;
        bool value, bytes, exact, loose;
    } const rows[] = {{0.0, true, true, true, true},      {0.25, false, false, false, true},
                      {-0.25, false, false, false, true}, {0x1.00000000001p-2, false, false, false, false},
                      {kInf, false, false, false, false}, {-kInf, false, false, false, false},
                      {kNaN, false, false, true, true}};
    for (const auto& r : rows) {
        for (int at = 0; at < sizeOf<TestType> * sizeOf<TestType>; ++at) {
            const int i = at / sizeOf<TestType>, j = at % sizeOf<TestType>;
            CAPTURE(r.change, i, j);
            const TestType a = with(identity, i, j, ::at(identity, i, j) + r.change);
            const TestType b = with(zero, i, j, r.change);
            unsigned char equal = 9;
            CHECK(equalMatrix(a, identity, &equal) == 0);
            CHECK(equal == (r.value ? 1 : 0));
            CHECK((a == identity) == r.bytes);
            CHECK((a != identity) == !r.bytes);
            CHECK(Zan_EqualMatrixWithinEpsilon(a, identity, 0.0) == r.exact);
            CHECK(Zan_EqualMatrixWithinEpsilon(identity, a, 0.25) == r.loose);
            CHECK(a.IsIdentity() == r.exact);
            CHECK(a.IsIdentityWithinEpsilon(0.25) == r.loose);
            CHECK(b.IsZero() == r.exact);
            CHECK(b.IsZeroWithinEpsilon(0.25) == r.loose);
            if constexpr (sizeOf<TestType> == 4) CHECK(a.IsFinite() == std::isfinite(r.change));
        }
    }
    unsigned char equal = 9;
    const TestType negative = with(zero, 1, 0, -0.0), nan = with(zero, 0, 1, kNaN);
    equalMatrix(zero, negative, &equal);
    CHECK((equal == 1 && zero != negative && negative == negative && Zan_EqualMatrixWithinEpsilon(zero, negative, 0)));
    equalMatrix(nan, nan, &equal);
    CHECK((equal == 0 && nan == nan));
}

TEST_CASE("the two concatenations order their factors differently") {
    const Zan_Matrix3 translate = matrix3({1, 0, 0, 0, 1, 0, 5, 0, 1});
    const Zan_Matrix3 scale = matrix3({2, 0, 0, 0, 2, 0, 0, 0, 1});
    const Zan_Matrix3 scaleFirst = matrix3({2, 0, 0, 0, 2, 0, 5, 0, 1});       // (1, 0) goes to (7, 0)
    const Zan_Matrix3 translateFirst = matrix3({2, 0, 0, 0, 2, 0, 10, 0, 1});  // (1, 0) goes to (12, 0)
    Zan_Matrix3 b = scale;
    CHECK(Zan_ConcatMatrix(&translate, &b) == 0);
    CHECK(b == scaleFirst);
    b = scale;
    CHECK((b *= translate) == scaleFirst);
    Zan_Matrix4 a4, b4, out;
    CHECK((Zan_Matrix3ToMatrix4(&translate, &a4) == 0 && (b4 = scale).m11 == 2));
    b4.m22 = 2;
    CHECK(Zan_ConcatMatrix4(&a4, &b4, &out) == 0);
    CHECK(out == matrix4({2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 10, 0, 0, 1}));
    CHECK((a4 *= scale) == (b4 = translateFirst));
}

TEMPLATE_TEST_CASE("products and sums", "", Zan_Matrix3, Zan_Matrix4) {
    Random random(41);
    constexpr int n = sizeOf<TestType>;
    for (int round = 0; round < 200; ++round) {
        const auto any = [&](int, int) { return random.nasty(); };
        const auto a = fill<TestType>(any), b = fill<TestType>(any);
        const auto product = [&](const TestType& x, const TestType& y) {
            return fill<TestType>([&](int i, int j) {
                double sum = at(x, i, 0) * at(y, 0, j) + at(x, i, 1) * at(y, 1, j) + at(x, i, 2) * at(y, 2, j);
                if constexpr (n == 4) sum += at(x, i, 3) * at(y, 3, j);
                return sum;
            });
        };
        TestType m = a;
        CHECK(sameDoubles(m *= b, product(a, b)));
        m = a;
        CHECK(sameDoubles(m *= m, product(a, a)));
        m = a;
        CHECK(sameDoubles(m += b, fill<TestType>([&](int i, int j) { return at(a, i, j) + at(b, i, j); })));
        m = a;
        CHECK(sameDoubles(m -= b, fill<TestType>([&](int i, int j) { return at(a, i, j) - at(b, i, j); })));
        m = a;
        m.Transpose();
        CHECK(sameDoubles(m, fill<TestType>([&](int i, int j) { return at(a, j, i); })));
        if constexpr (n == 4) {
            TestType out = b;
            CHECK((Zan_ConcatMatrix4(&a, &out, &out) == 0 && sameDoubles(out, product(a, b))));
            CHECK((Zan_TransposeMatrix4(&a, &out) == 0 && sameDoubles(out, m)));
        } else {
            TestType out = b;
            CHECK((Zan_ConcatMatrix(&a, &out) == 0 && sameDoubles(out, product(b, a))));
        }
    }
    // From left to right: 1e16 swallows the 1 that comes before -1e16, and -0.0 is not added to a 0.0.
    auto a = fill<TestType>([](int, int j) { return j == 0 ? 1e16 : j == 2 ? -1e16 : 1.0; });
    CHECK(at(a *= fill<TestType>([](int k, int) { return k < 3 ? 1.0 : 0.0; }), 1, 1) == 0.0);
    a = fill<TestType>([](int, int) { return -0.0; });
    CHECK(std::signbit(at(a *= fill<TestType>([](int, int) { return 1.0; }), 0, 2)));
}

TEMPLATE_TEST_CASE("determinants", "", Zan_Matrix3, Zan_Matrix4) {
    Random random(42);
    for (int round = 0; round < 200; ++round) {  // small whole numbers: every order of sums gives the same
        const auto m = fill<TestType>([&](int, int) { return random.below(199) - 99; });
        CHECK(m.Determinant() == leibniz(m));
    }
    if constexpr (sizeOf<TestType> == 3) {
        // Along row 0 the sum is (1e16 - 1e16) + 1.
        CHECK(matrix3({1e16, 1e16, 1, 1, 1, 0, -1, 0, 1}).Determinant() == 1.0);
    } else {
        for (int round = 0; round < 100; ++round) {
            const auto m = fill<TestType>([&](int, int) { return random.nasty(); });
            Zan_Matrix3 minors[4];
            for (int j = 0; j < 4; ++j) minors[j].AssignFromByDroppingIndices(m, 0, j);
            double determinant = 0;
            CHECK(Zan_GetMatrix4Determinant(&m, &determinant) == 0);
            CHECK(sameBits(determinant, m.m00 * minors[0].Determinant() - m.m01 * minors[1].Determinant() +
                                            m.m02 * minors[2].Determinant() - m.m03 * minors[3].Determinant()));
        }
    }
}

TEST_CASE("widening keeps the plane and drops the projective column") {
    const Zan_Matrix3 m = matrix3({2, 3, 0.5, 5, 7, kNaN, 11, 13, 17});
    Zan_Matrix4 wide;
    CHECK(Zan_Matrix3ToMatrix4(&m, &wide) == 0);
    CHECK(wide == matrix4({2, 3, 0, 0, 5, 7, 0, 0, 0, 0, 1, 0, 11, 13, 0, 1}));
    // Columns of the same length carry it into z. The floor of the comparison is 1.00008890058e-12, not 1e-12.
    struct {
        double m00, m01, m10, m11, z;
    } const rows[] = {{2, 0, 0, 3, 1},
                      {0, 2, -2, 0, 2},
                      {3, 4, 4, -3, 5},
                      {0, 0, 0, 0, 0},
                      {1.000005e-6, 0, 0, 1e-20, 1.000005e-6},
                      {1.00001e-6, 0, 0, 1e-20, 1.00001e-6},
                      {1.00005e-6, 0, 0, 1e-20, 1},
                      {1000, 0, 0, 1000 * (1 + 4.9e-13), 1000},
                      {1000, 0, 0, 1000 * (1 + 5.1e-13), 1},
                      {1e200, 0, 0, 1e200, 1},
                      {kNaN, 0, 0, kNaN, 1}};
    for (const auto& r : rows) {
        CAPTURE(r.m00, r.m11);
        const Zan_Matrix3 plane = matrix3({r.m00, r.m01, 9, r.m10, r.m11, 9, 11, 13, 9});
        CHECK(Zan_Matrix3ToMatrix4Uniform(&plane, &wide) == 0);
        CHECK(sameDoubles(wide, matrix4({r.m00, r.m01, 0, 0, r.m10, r.m11, 0, 0, 0, 0, r.z, 0, 11, 13, 0, 1})));
    }
}

TEST_CASE("dropping a row and a column") {
    const auto m = fill<Zan_Matrix4>([](int i, int j) { return i * 10.0 + j; });
    Zan_Matrix3 kept;
    for (int32_t row = -1; row <= 4; ++row) {
        for (int32_t column = -1; column <= 4; ++column) {
            CAPTURE(row, column);
            kept.AssignFromByDroppingIndices(m, row, column);
            CHECK(kept == fill<Zan_Matrix3>(
                              [&](int i, int j) { return (i < row ? i : i + 1) * 10.0 + (j < column ? j : j + 1); }));
        }
    }
    kept.AssignFromByDroppingZ(m);
    CHECK(kept == matrix3({0, 1, 3, 10, 11, 13, 30, 31, 33}));
}

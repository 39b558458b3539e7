// Matrices as values: kinds, comparison, products and sums, determinants, conversion between the sizes.
#include "tests/support/matrices.h"

namespace {

template <class Matrix>
bool equalByValue(const Matrix& a, const Matrix& b) {
    unsigned char equal = 9;
    if constexpr (sizeOf<Matrix> == 3) CHECK(Zan_EqualMatrix(&a, &b, &equal) == 0);
    if constexpr (sizeOf<Matrix> == 4) CHECK(Zan_EqualMatrix4(&a, &b, &equal) == 0);
    return equal == 1;
}

}  // namespace

TEST_CASE("matrix kinds") {
    // Of the identity with that element changed. Of two kinds the larger is the matrix's, but for a scale that moves.
    constexpr int32_t kKinds[] = {2, 4, 5, 4, 2, 5, 1, 1, 5};
    for (const double value : {5e-324, 0x1.0000000000001p0, -1.0, kNaN, -0.0}) {
        for (int place = 0; place < 81; ++place) {
            const int p = place / 9, q = place % 9;
            CAPTURE(value, p, q);
            const auto kind = [&](int k) { return k % 4 != 0 && value == 0 ? 0 : kKinds[k]; };
            const Zan_Matrix3 m = with(with(Zan_Matrix3(true), p / 3, p % 3, value), q / 3, q % 3, value);
            CHECK(m.GetType() == (kind(p) + kind(q) == 3 ? 3 : std::max(kind(p), kind(q))));
        }
    }
}

TEMPLATE_TEST_CASE("identity, zero, and the four ways to compare", "", Zan_Matrix3, Zan_Matrix4) {
    constexpr int n = sizeOf<TestType>;
    const auto identity = fill<TestType>([](int i, int j) { return i == j ? 1.0 : 0.0; });
    const auto zero = fill<TestType>([](int, int) { return 0.0; });
    TestType m(true);
    CHECK((m == identity && !m.IsZero()));
    m.SetZero();
    new (&m) TestType(false);  // sets nothing
    CHECK((m == zero && !m.IsIdentity() && fill<TestType>([](int, int) { return -0.0; }).IsZero()));

    // A change of one element, at every place: equal by value, by bytes, within 0, within 0.25.
    const auto check = [&](double change, bool value, bool bytes, bool exact, bool loose) {
        for (int place = 0; place < n * n; ++place) {
            const int i = place / n, j = place % n;
            CAPTURE(change, i, j);
            const TestType a = with(identity, i, j, i == j ? 1 + change : change), b = with(zero, i, j, change);
            CHECK((equalByValue(a, identity) == value && equalByValue(zero, b) == value));
            CHECK((equalByValue(b, b) == !std::isnan(change) && b == b));
            CHECK(((b == zero) == bytes && (b != zero) == !bytes && a.IsIdentity() == exact && b.IsZero() == exact));
            CHECK((a.IsIdentityWithinEpsilon(0.25) == loose && b.IsZeroWithinEpsilon(0.25) == loose));
            CHECK(Zan_EqualMatrixWithinEpsilon(identity, a, 0.25) == loose);
            if constexpr (sizeOf<TestType> == 4) CHECK(a.IsFinite() == std::isfinite(change));
        }
    };
    check(-0.0, true, false, true, true), check(0.25, false, false, false, true);
    check(-0.25, false, false, false, true), check(0x1.00000000001p-2, false, false, false, false);
    check(kInf, false, false, false, false), check(-kInf, false, false, false, false);
    check(kNaN, false, false, true, true);
}

TEMPLATE_TEST_CASE("products and sums", "", Zan_Matrix3, Zan_Matrix4) {
    Random random(41);
    for (int round = 0; round < 400; ++round) {
        // Every other one full of zeros of either sign.
        const auto any = [&](int, int) { return round % 2 == 0 ? random.nasty() : random.below(3) - 1; };
        const auto a = fill<TestType>(any), b = fill<TestType>(any);
        const auto sum = fill<TestType>([&](int i, int j) { return at(a, i, j) + at(b, i, j); });
        const auto difference = fill<TestType>([&](int i, int j) { return at(a, i, j) - at(b, i, j); });
        TestType square = a, turned = a;
        CHECK((sameDoubles(TestType(a) += b, sum) && sameDoubles(TestType(a) -= b, difference)));
        CHECK((sameDoubles(TestType(a) *= b, product(a, b)) && sameDoubles(square *= square, product(a, a))));
        turned.Transpose();
        CHECK(sameDoubles(turned, transposed(a)));
    }
}

TEST_CASE("from the plane to space and back") {
    const Zan_Matrix3 plane = matrix({2, 3, 0.5, 5, 7, kNaN, 11, 13, 17});
    const Zan_Matrix4 space = matrix({2, 3, 0, 0, 5, 7, 0, 0, 0, 0, 1, 0, 11, 13, 0, 1});
    const auto m = fill<Zan_Matrix4>([](int i, int j) { return i * 10.0 + j; });
    Zan_Matrix4 wide;
    CHECK(((wide = plane) == space && (Zan_Matrix4(m) *= plane) == product(m, space)));
    // Columns of the same length carry it into z. The floor of the comparison is 1.00008890058e-12, not 1e-12.
    const auto check = [&](double m00, double m01, double m10, double m11, double z) {
        CAPTURE(m00, m11);
        const Zan_Matrix3 scale = matrix({m00, m01, 9, m10, m11, 9, 11, 13, 9});
        CHECK(Zan_Matrix3ToMatrix4Uniform(&scale, &wide) == 0);
        CHECK(sameDoubles(wide, matrix({m00, m01, 0, 0, m10, m11, 0, 0, 0, 0, z, 0, 11, 13, 0, 1})));
    };
    check(2, 0, 0, 3, 1), check(3, -4, 4, 3, 5), check(0, 0, 0, 0, 0);
    check(1.00001e-6, 0, 0, 1e-20, 1.00001e-6), check(1.00005e-6, 0, 0, 1e-20, 1);
    check(1000, 0, 0, 1000 * (1 + 4.9e-13), 1000), check(1000, 0, 0, 1000 * (1 + 5.1e-13), 1);
    check(1e200, 0, 0, 1e200, 1), check(kNaN, 0, 0, kNaN, 1);

    Zan_Matrix3 kept;
    kept.AssignFromByDroppingZ(m);
    CHECK(kept == matrix({0, 1, 3, 10, 11, 13, 30, 31, 33}));
    kept.AssignFromByDroppingIndices(m, -1, 4);
    CHECK(kept == matrix({10, 11, 12, 20, 21, 22, 30, 31, 32}));
}

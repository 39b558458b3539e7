// Comparisons of matrices: by value, by bytes, within a tolerance; the identity and the zero matrix.
#include "tests/support/matrices.h"

#include <new>

namespace {

unsigned char equalByValue(const Zan_Matrix3& a, const Zan_Matrix3& b) {
    unsigned char equal = 9;
    CHECK(Zan_EqualMatrix(&a, &b, &equal) == 0);
    return equal;
}
unsigned char equalByValue(const Zan_Matrix4& a, const Zan_Matrix4& b) {
    unsigned char equal = 9;
    CHECK(Zan_EqualMatrix4(&a, &b, &equal) == 0);
    return equal;
}

}  // namespace

TEMPLATE_TEST_CASE("the identity, the zero matrix, and a constructor that sets nothing", "", Zan_Matrix3, Zan_Matrix4) {
    TestType m(true);
    CHECK(doubles(m) == doubles(identity<TestType>()));
    CHECK(!m.IsZero());
    m.SetZero();
    new (&m) TestType(false);
    CHECK(doubles(m) == doubles(TestType(fill<TestType>([](int, int) { return 0.0; }))));
    CHECK(!m.IsIdentity());
    m.SetIdentity();
    CHECK(doubles(m) == doubles(identity<TestType>()));
    CHECK(fill<TestType>([](int, int) { return -0.0; }).IsZero());
}

TEMPLATE_TEST_CASE("comparisons after a change of one element", "", Zan_Matrix3, Zan_Matrix4) {
    struct Row {
        const char* what;
        double change;
        bool byValue, byBytes, withinZero, withinQuarter;
    };
    const Row rows[] = {
        {"-0: only its bytes differ", -0.0, true, false, true, true},
        {"as much as the tolerance", 0.25, false, false, false, true},
        {"as much as the tolerance, negative", -0.25, false, false, false, true},
        {"more than the tolerance", 0x1.00000000001p-2, false, false, false, false},
        {"infinity", kInf, false, false, false, false},
        {"-infinity", -kInf, false, false, false, false},
        {"NaN: within every tolerance", kNaN, false, false, true, true},
    };
    constexpr int n = sizeOf<TestType>;
    const auto one = identity<TestType>();
    const auto zero = fill<TestType>([](int, int) { return 0.0; });
    for (const Row& row : rows) {
        for (int place = 0; place < n * n; ++place) {
            const int i = place / n, j = place % n;
            CAPTURE(row.what, i, j);
            const TestType nearOne = with(one, i, j, i == j ? 1 + row.change : row.change);
            const TestType nearZero = with(zero, i, j, row.change);
            CHECK(equalByValue(nearOne, one) == row.byValue);
            CHECK(equalByValue(zero, nearZero) == row.byValue);
            CHECK(equalByValue(nearZero, nearZero) == !std::isnan(row.change));
            CHECK((nearZero == zero) == row.byBytes);
            CHECK((nearZero != zero) == !row.byBytes);
            CHECK(nearZero == nearZero);
            CHECK(nearOne.IsIdentity() == row.withinZero);
            CHECK(nearZero.IsZero() == row.withinZero);
            CHECK(nearOne.IsIdentityWithinEpsilon(0.25) == row.withinQuarter);
            CHECK(nearZero.IsZeroWithinEpsilon(0.25) == row.withinQuarter);
            CHECK(Zan_EqualMatrixWithinEpsilon(one, nearOne, 0.25) == row.withinQuarter);
            if constexpr (n == 4) CHECK(nearOne.IsFinite() == std::isfinite(row.change));
        }
    }
}

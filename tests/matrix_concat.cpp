// Products of matrices.
#include "tests/support/matrices.h"

TEMPLATE_TEST_CASE("products by their definition, into another matrix and in place", "", Zan_Matrix3, Zan_Matrix4) {
    Random random(41);
    for (int round = 0; round < 400; ++round) {
        // Every other round mostly zeros of either sign.
        const auto any = [&](int, int) { return round % 2 == 0 ? random.nasty() : random.below(3) - 1; };
        const auto a = fill<TestType>(any);
        const auto b = fill<TestType>(any);
        CHECK(doubles(TestType(a) *= b) == doubles(product(a, b)));
        TestType square = a;
        square *= square;
        CHECK(doubles(square) == doubles(product(a, a)));
    }
}

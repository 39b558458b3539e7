// Kinds of matrices.
#include "tests/support/matrices.h"

#include <algorithm>

TEST_CASE("the kind of the identity with one or two elements changed") {
    // The kind after a change of each element. After two changes the kind is the greater of the two, except that a
    // scale and a translation together have a kind of their own.
    constexpr int32_t kKinds[3][3] = {
        {Zan_MatrixType_Scale, Zan_MatrixType_Affine, Zan_MatrixType_Perspective},
        {Zan_MatrixType_Affine, Zan_MatrixType_Scale, Zan_MatrixType_Perspective},
        {Zan_MatrixType_Translate, Zan_MatrixType_Translate, Zan_MatrixType_Perspective},
    };
    for (const double value : {5e-324, 0x1.0000000000001p0, -1.0, kNaN, -0.0}) {
        // -0 changes only the elements that are 1.
        const auto kind = [&](int i, int j) { return i != j && value == 0 ? Zan_MatrixType_Identity : kKinds[i][j]; };
        for (int first = 0; first < 9; ++first) {
            for (int second = 0; second < 9; ++second) {
                const int i = first / 3, j = first % 3, k = second / 3, l = second % 3;
                CAPTURE(value, i, j, k, l);
                const auto [low, high] = std::minmax({kind(i, j), kind(k, l)});
                const bool scaleAndTranslation = low == Zan_MatrixType_Translate && high == Zan_MatrixType_Scale;
                const Zan_Matrix3 m = with(with(Zan_Matrix3(true), i, j, value), k, l, value);
                CHECK(m.GetType() == (scaleAndTranslation ? Zan_MatrixType_ScaleTranslate : high));
            }
        }
    }
}

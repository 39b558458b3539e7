// The scale factors of matrices.
#include "tests/support/matrices.h"

TEST_CASE("scale factors are the lengths of the rows, projective column included, translation excluded") {
    CHECK(doubles(matrix({1, 2, -2, 0, 3, 4, 9, 9, 9}).GetScale()) == doubles(Vector2(3, 5)));
    const Zan_Matrix4 m = matrix({1, 1, -1, 1, 2, 4, 5, 6, 0, 0, 0, -7, 9, 9, 9, 9});
    CHECK(doubles(m.GetScale()) == doubles(Vector3(2, 9, 7)));
}

// The scale of z when a transform of the plane becomes one of space.
#include "tests/support/matrices.h"

TEST_CASE("where both columns have nearly the same length, z is scaled by it too") {
    struct Row {
        const char* what;
        double m00, m01, m10, m11, scaleZ;
    };
    const Row rows[] = {
        {"different lengths", 2, 0, 0, 3, 1},
        {"a rotation with a scale", 3, -4, 4, 3, 5},
        {"both 0", 0, 0, 0, 0, 0},
        {"squares that differ by less than 563 * 2^-49", 1.00001e-6, 0, 0, 1e-20, 1.00001e-6},
        {"squares that differ by more", 1.00005e-6, 0, 0, 1e-20, 1},
        {"squares that differ by less than 1e-12 of the larger", 1000, 0, 0, 1000 * (1 + 4.9e-13), 1000},
        {"squares that differ by more than 1e-12 of the larger", 1000, 0, 0, 1000 * (1 + 5.1e-13), 1},
        {"squares that are infinite", 1e200, 0, 0, 1e200, 1},
        {"NaN", kNaN, 0, 0, kNaN, 1},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        const Zan_Matrix3 m = matrix({row.m00, row.m01, 9, row.m10, row.m11, 9, 11, 13, 9});
        Zan_Matrix4 space;
        CHECK(Zan_Matrix3ToMatrix4Uniform(&m, &space) == 0);
        const Zan_Matrix4 expected =
            matrix({row.m00, row.m01, 0, 0, row.m10, row.m11, 0, 0, 0, 0, row.scaleZ, 0, 11, 13, 0, 1});
        CHECK(doubles(space) == doubles(expected));
    }
}

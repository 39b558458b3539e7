// The rotation that looks at a point.
#include "tests/support/matrices.h"

TEST_CASE("looking at a point") {
    const double r = std::sqrt(0.5);
    struct Row {
        const char* what;
        Vector3 eye, target, up;
        double rows[9];
    };
    const Row rows[] = {
        {"the eye counts only for the direction", {1, 2, 8}, {1, 2, 3}, {0, 9, 0}, {-1, 0, 0, 0, 1, 0, 0, 0, -1}},
        {"an up that is not orthogonal", {0, 0, 0}, {7, 0, 0}, {2, 0, 3}, {0, 1, 0, 0, 0, 1, 1, 0, 0}},
        {"a slanting view", {0, 0, 0}, {0, 2, 2}, {0, 1, 0}, {1, 0, 0, 0, r, -r, 0, r, r}},
        {"vectors whose squared lengths underflow stay as they are",
         {0, 0, 0},
         {0, 0, 1e-170},
         {0, 1e160, 0},
         {1, 0, 0, 0, 1e-180, 0, 0, 0, 1e-170}},
        {"up along a view toward +y", {0, 0, 0}, {0, 5, 0}, {0, 1, 0}, {1, 0, 0, 0, 0, -1, 0, 1, 0}},
        {"up against a view toward -y", {0, 0, 0}, {0, -5, 0}, {0, 1, 0}, {1, 0, 0, 0, 0, 1, 0, -1, 0}},
        {"no up", {0, 0, 0}, {3, 0, 0}, {0, 0, 0}, {1, 0, 0, 0, 0, -1, 0, 1, 0}},
        {"no view", {1, 2, 3}, {1, 2, 3}, {0, 1, 0}, {1, 0, 0, 0, 1, 0, 0, 0, 1}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK(greatestDifference(Zan_LookAtMatrix(row.eye, row.target, row.up), linear(row.rows)) < 4e-15);
    }
}

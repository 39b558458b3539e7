// Bounding boxes of transformed rectangles, and the flag for a matrix that turns.
#include "tests/support/matrices.h"

#include <array>

namespace {

const Zan_Matrix3 kQuarterTurn = matrix({0, 1, 0, -1, 0, 0, 0, 0, 1});  // (x, y) goes to (-y, x)
const Zan_Matrix3 kNaNs = matrix({kNaN, 0, 0, 0, 1, 0, 0, 0, 1});       // every x becomes NaN
const Zan_Matrix3 kInfinite = matrix({kInf, 0, 0, 0, 1, 0, 0, 0, 1});   // x = 0 becomes NaN, other x infinite

using Edges = std::array<int32_t, 4>;  // left, top, right, bottom
template <class Rect>
Edges edges(const Rect& r) {
    return {r.left, r.top, r.right, r.bottom};
}

}  // namespace

TEST_CASE("boxes of 16-bit and double rectangles") {
    struct Row {
        const char* what;
        Zan_Matrix3 m;
        Zan_FloatRect rect, box;
        Edges rounded;
        int turned;
    };
    const Row rows[] = {
        {"the projective column counts for the flag alone",
         matrix({2, 0, 7, 0, 3, 7, 0, 0, 7}),
         {0, 0, 20, 10},
         {0, 0, 40, 30},
         {0, 0, 40, 30},
         1},
        {"a rotation puts a corner on every edge",
         matrix({1, 1, 0, -1, 1, 0, 0, 0, 1}),
         {0, 0, 20, 10},
         {-10, 0, 20, 30},
         {-10, 0, 20, 30},
         1},
        {"a reflection; halves are rounded up",
         matrix({-1, 0, 0, 0, 1, 0, 0.25, 0.5, 1}),
         {1, 2, 4, 6},
         {-3.75, 2.5, -0.75, 6.5},
         {-4, 3, -1, 7},
         0},
        {"clamped to -32767 and 32766",
         matrix({1, 0, 0, 0, 1, 0, 32760, -32760, 1}),
         {5, -9, 7, 0},
         {32765, -32769, 32767, -32760},
         {32765, -32767, 32766, -32760},
         0},
        {"every x is NaN", kNaNs, {1, 2, 3, 4}, {kNaN, 2, kNaN, 4}, {0, 2, 0, 4}, 0},
        {"the left corners are NaN", kInfinite, {0, 2, 3, 4}, {kNaN, 2, kNaN, 4}, {0, 2, 0, 4}, 0},
        {"the right corners are NaN", kInfinite, {-3, 2, 0, 4}, {kNaN, 2, kNaN, 4}, {0, 2, 0, 4}, 0},
        {"infinite to both sides", kInfinite, {-3, 2, 3, 4}, {-kInf, 2, kInf, 4}, {-32767, 2, 32766, 4}, 0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        const auto& [left, top, right, bottom] = row.rect;
        Zan_Rect box16 = {int16_t(top), int16_t(left), int16_t(bottom), int16_t(right)};
        CHECK(Zan_TransformRect(&row.m, &box16, nullptr, nullptr) == 0);
        CHECK(edges(box16) == row.rounded);
        Zan_FloatRect box = row.rect;
        unsigned char turned = 9;
        CHECK(Zan_TransformFloatRect(&row.m, &box, nullptr, &turned) == 0);
        CHECK(doubles(box) == doubles(row.box));
        CHECK(turned == row.turned);
    }
}

TEST_CASE("the box of a 16.16 rectangle, with null for the corners and the flag") {
    Zan_FixedRect box = {0, 0, 2, 1};
    CHECK(Zan_TransformFixRect(&kQuarterTurn, &box, nullptr, nullptr) == 0);
    CHECK(edges(box) == Edges{-1, 0, 0, 2});
}

TEST_CASE("integer bounds contain the transformed rectangle") {
    constexpr int32_t kMin = INT32_MIN;
    constexpr int32_t kMax = INT32_MAX;
    const Zan_Matrix3 quarter = matrix({0.25, 0, 0, 0, 0.25, 0, 0, 0, 1});
    const Zan_Matrix3 half = matrix({1, 0, 0, 0, 1, 0, 0.5, -0.5, 1});
    const Zan_Matrix3 far = matrix({1, 0, 0, 0, 1, 0, 4e9, -4e9, 1});
    struct Row {
        const char* what;
        Zan_Matrix3 m;
        Zan_LRect rect;
        Edges bounds;
    };
    const Row rows[] = {
        {"no width", quarter, {0, 0, 0, 10}, {0, 0, 0, 0}},
        {"inverted horizontally", kNaNs, {9, 0, 8, 10}, {0, 0, 0, 0}},
        {"no height", kNaNs, {0, 10, 10, 10}, {0, 0, 0, 0}},
        {"inverted vertically", kNaNs, {0, 10, 10, 9}, {0, 0, 0, 0}},
        {"a quarter turn", kQuarterTurn, {0, 0, 20, 10}, {-10, 0, 0, 20}},
        {"fractions go outward", quarter, {-10, -9, -1, 9}, {-3, -3, 0, 3}},
        {"half a unit outside of 32 bits", half, {kMin, kMin, kMax, kMax}, {kMin, kMin, kMax, kMax}},
        {"far outside of 32 bits", far, {-5, -5, 5, 5}, {kMax, kMin, kMax, kMin}},
        {"every x is NaN", kNaNs, {1, 2, 3, 4}, {kMin, 2, kMax, 4}},
        {"the left corners are NaN", kInfinite, {0, 2, 3, 4}, {kMin, 2, kMax, 4}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK(edges(Zan_TransformBounds(row.m, row.rect)) == row.bounds);
    }
}

// Bounding boxes of transformed rectangles, with their corners and the flag for a matrix that turns.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"

#include <array>

namespace {

const Zan_Matrix3 kScale = matrix({2, 0, 0, 0, 3, 0, 0, 0, 1});
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
        Vector2 expected[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
        row.m.TransformPoints(4, expected);

        const Zan_Rect rect16 = {int16_t(top), int16_t(left), int16_t(bottom), int16_t(right)};
        Zan_Rect box16 = rect16;
        Vector2 corners[4];
        unsigned char turned = 9;
        row.m.TransformRect(&box16, corners, &turned);
        CHECK(edges(box16) == row.rounded);
        CHECK(turned == row.turned);
        for (int i = 0; i < 4; ++i) CHECK(doubles(corners[i]) == doubles(expected[i]));
        box16 = rect16;
        CHECK(Zan_TransformRect(&row.m, &box16, nullptr, nullptr) == 0);
        CHECK(edges(box16) == row.rounded);

        Zan_FloatRect box = row.rect;
        Vector2 exactCorners[4];
        turned = 9;
        CHECK(Zan_TransformFloatRect(&row.m, &box, exactCorners, &turned) == 0);
        CHECK(doubles(box) == doubles(row.box));
        CHECK(turned == row.turned);
        for (int i = 0; i < 4; ++i) CHECK(doubles(exactCorners[i]) == doubles(expected[i]));
        box = row.rect;
        CHECK(Zan_TransformFloatRect(&row.m, &box, nullptr, nullptr) == 0);
        CHECK(doubles(box) == doubles(row.box));
    }
}

TEST_CASE("boxes of 16.16 rectangles, where an overflow leaves the rectangle and the flag unchanged") {
    constexpr int32_t kMax = INT32_MAX;
    struct Row {
        const char* what;
        Zan_Matrix3 m;
        Edges rect, box;
        std::array<int32_t, 8> corners;  // h and v of each
        int32_t code;
        int turned;
    };
    const Row rows[] = {
        {"a quarter turn", kQuarterTurn, {0, 0, 2, 1}, {-1, 0, 0, 2}, {0, 0, 0, 2, -1, 2, -1, 0}, 0, 1},
        {"v of the third corner overflows",
         kScale,
         {1, 2, 3, kMax},
         {1, 2, 3, kMax},
         {2, 6, 6, 6, 6, kMax, 1, kMax},
         Zan_Err_Overflow,
         9},
    };
    HostReports host;
    for (const Row& row : rows) {
        CAPTURE(row.what);
        const char* report = row.code != 0 ? "0x110027 sev 8: overflow in fixed point transformation." : "";
        const Zan_FixedRect rect = {row.rect[0], row.rect[1], row.rect[2], row.rect[3]};
        Zan_FixedRect box = rect;
        Zan_FixedPoint corners[4] = {};
        unsigned char turned = 9;
        CHECK(thrownBy([&] { row.m.TransformRect(&box, corners, &turned); }) == row.code);
        CHECK(host.takeAll() == report);
        CHECK(edges(box) == row.box);
        CHECK(std::bit_cast<std::array<int32_t, 8>>(corners) == row.corners);
        CHECK(turned == row.turned);

        box = rect;
        CHECK(Zan_TransformFixRect(&row.m, &box, nullptr, nullptr) == row.code);
        CHECK(host.takeAll() == report);
        CHECK(edges(box) == row.box);
    }
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

// Relations of rectangles at the limits of their coordinates and when inverted. The property geom2d_rectangles covers
// the rest.
#include "zan/geom2d.h"

#include <catch2/catch.hpp>

TEST_CASE("widths and heights wrap in 32 bits") {
    const Zan_LRect unit = {0, 0, 1, 1};
    const Zan_LRect whole = {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};  // its width wraps to -1
    CHECK(Zan_LRectCompare(Zan_RectRelation_AtMostAsLarge, &whole, &unit));
    CHECK(!Zan_LRectCompare(Zan_RectRelation_AtLeastAsLarge, &whole, &unit));

    const Zan_Rect unit16 = {0, 0, 1, 1};
    const Zan_Rect whole16 = {-32768, -32768, 32767, 32767};
    CHECK(Zan_RectCompare(Zan_RectRelation_AtLeastAsLarge, &whole16, &unit16));
}

TEST_CASE(
    "an inverted rectangle touches another that has the same left and top, "
    "although its right or bottom lies on the wrong side") {
    struct Row {
        const char* what;
        Zan_LRect inverted, other;
    };
    const Row rows[] = {
        {"inverted vertically", {0, 5, 9, 3}, {0, 5, 9, 8}},
        {"inverted horizontally", {5, 0, 3, 9}, {5, 0, 8, 9}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK(Zan_LRectCompare(Zan_RectRelation_OverlapsOrTouches, &row.inverted, &row.other));
        CHECK(Zan_LRectCompare(Zan_RectRelation_OverlapsOrTouches, &row.other, &row.inverted));
    }
}

// Rectangles that are centred or empty, and points that alias a rectangle's corners. The golden sums cover the other
// operations on points and rectangles.
#include "zan/geom2d.h"

#include <catch2/catch.hpp>

#include <array>
#include <limits>

namespace {

using Edges = std::array<int64_t, 4>;  // left, top, right, bottom

int32_t center(const Zan_Rect* frame, Zan_Rect* rect) { return Zan_CenterRect(frame, rect); }
int32_t center(const Zan_LRect* frame, Zan_LRect* rect) { return Zan_CenterLRect(frame, rect); }

// Writes and reads the same memory as rectangle and as points. Not inlined, so that the optimizer cannot see that the
// three references overlap and must rely on the types alone.
[[gnu::noinline]] int writeAlternately(Zan_Rect& rect, Zan_Point& topLeft, Zan_Point& bottomRight) {
    rect.top = 1;
    rect.left = 5;
    bottomRight.h = 2;
    bottomRight.v = 6;
    topLeft.v = 4;
    rect.right = 7;
    return rect.top * 1000 + topLeft.h * 100 + bottomRight.h * 10 + rect.bottom;
}

}  // namespace

TEMPLATE_TEST_CASE("centring divides by 2 toward zero, and wraps", "", Zan_Rect, Zan_LRect) {
    using T = decltype(TestType::left);
    constexpr T kMin = std::numeric_limits<T>::min();
    constexpr T kMax = std::numeric_limits<T>::max();
    constexpr bool is16Bit = sizeof(T) == 2;
    struct Row {
        const char* what;
        TestType frame, rect;
        Edges centred;
    };
    const auto rect = [](T left, T top, T right, T bottom) {
        TestType r;
        r.left = left;
        r.top = top;
        r.right = right;
        r.bottom = bottom;
        return r;
    };
    const Row rows[] = {
        {"(9 - 4) / 2 is 2, (2 - 5) / 2 is -1", rect(0, 0, 9, 2), rect(3, 3, 7, 8), {2, -1, 6, 4}},
        {"a frame that is inverted by one", rect(1, 0, 0, 9), rect(0, 0, 4, 9), {-1, 0, 3, 9}},
        {"the width of the frame wraps to -1, and -5 / 2 is -2",
         rect(kMin, 0, kMax, 4),
         rect(3, 0, 7, 4),
         {kMin - 2LL, 0, kMin + 2LL, 4}},
        {"a rectangle of the least height: in 16 bits the heights differ by 65535, which does not wrap; "
         "in 32 bits by -1, since the difference wraps",
         rect(0, 0, 4, kMax),
         rect(0, 0, 4, kMin),
         {0, is16Bit ? kMax : 0, 4, is16Bit ? -1 : kMin}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        TestType r = row.rect;
        CHECK(center(&row.frame, &r) == 0);
        const Edges wrapped = {static_cast<T>(row.centred[0]), static_cast<T>(row.centred[1]),
                               static_cast<T>(row.centred[2]), static_cast<T>(row.centred[3])};
        CHECK(Edges{r.left, r.top, r.right, r.bottom} == wrapped);
    }
}

TEST_CASE("two empty rectangles are equal, whatever their edges") {
    const Zan_LRect narrow = {1, 2, 1, 9};
    const Zan_LRect inverted = {5, 6, 7, 5};
    const Zan_LRect unit = {5, 5, 6, 6};
    CHECK(Zan_EqualLRect(&narrow, &inverted));
    CHECK(!Zan_EqualLRect(&narrow, &unit));
    const Zan_LRect sameUnit = unit;
    CHECK(Zan_EqualLRect(&unit, &sameUnit));
}

TEST_CASE("two position-and-size records are equal when all four fields are") {
    const Zan_WHRect record = {1, 2, 3, 4};
    const Zan_WHRect same = record;
    const Zan_WHRect others[] = {{9, 2, 3, 4}, {1, 9, 3, 4}, {1, 2, 9, 4}, {1, 2, 3, 9}};
    CHECK(Zan_EqualWHRect(&record, &same));
    for (const Zan_WHRect& other : others) CHECK(!Zan_EqualWHRect(&record, &other));
}

TEST_CASE("corners of a rectangle alias its fields") {
    Zan_Rect rect;
    CHECK(writeAlternately(rect, Zan_TopLeft(rect), Zan_BottomRight(rect)) == 4576);
}

// Conversions of rectangles: 16.16 to integers with three kinds of rounding, integers to 16.16, 32 to 16 bits.
#include "tests/support/random.h"
#include "zan/geom2d.h"

#include <array>

namespace {

using Edges = std::array<int32_t, 4>;
template <class Rect>
Edges edges(const Rect& r) {
    return {r.left, r.top, r.right, r.bottom};
}

using Round = double (*)(double);
double nearest(double x) { return std::floor(x + 0.5); }

struct Conversion {
    const char* what;
    Round low, high;  // of left and top, of right and bottom
    decltype(&Zan_FixedRect2Rect) to16;
    decltype(&Zan_FixedRect2LRect) to32;
};
const Conversion kConversions[] = {
    {"to the nearest integers", nearest, nearest, Zan_FixedRect2Rect, Zan_FixedRect2LRect},
    {"inward", std::ceil, std::floor, Zan_FixedRect2RectIn, Zan_FixedRect2LRectIn},
    {"outward", std::floor, std::ceil, Zan_FixedRect2RectOut, Zan_FixedRect2LRectOut},
};

}  // namespace

TEST_CASE("16.16 rectangles round in three directions and wrap to 16 bits") {
    Random random(42);
    for (int i = 0; i < 5000; ++i) {
        const Zan_FixedRect fixed = {random.nastyInt(), random.nastyInt(), random.nastyInt(), random.nastyInt()};
        for (const Conversion& conversion : kConversions) {
            CAPTURE(conversion.what, edges(fixed));
            const auto rounded = [](Round round, Zan_Fixed x) {
                return static_cast<int16_t>(std::lround(round(x / 65536.0)));
            };
            const Edges expected = {rounded(conversion.low, fixed.left), rounded(conversion.low, fixed.top),
                                    rounded(conversion.high, fixed.right), rounded(conversion.high, fixed.bottom)};
            Zan_Rect rect16;
            REQUIRE(conversion.to16(&fixed, &rect16) == 0);
            REQUIRE(edges(rect16) == expected);
            Zan_LRect rect32;
            REQUIRE(conversion.to32(&fixed, &rect32) == 0);
            REQUIRE(edges(rect32) == expected);
        }
    }
}

TEST_CASE("integer rectangles: to 16.16 modulo 2^32, and from 32 to 16 bits where they fit") {
    Random random(43);
    for (int i = 0; i < 5000; ++i) {
        const Zan_LRect rect32 = {random.nastyInt(), random.nastyInt(), random.nastyInt(), random.nastyInt()};
        CAPTURE(edges(rect32));
        Edges shifted = edges(rect32);
        for (int32_t& edge : shifted) edge = static_cast<int32_t>(static_cast<uint32_t>(edge) << 16);
        Zan_FixedRect fixed;
        REQUIRE(Zan_LRect2FixedRect(&rect32, &fixed) == 0);
        REQUIRE(edges(fixed) == shifted);

        Zan_Rect rect16 = {11, 22, 33, 44};
        const bool fits =
            rect32.left >= -32768 && rect32.top >= -32768 && rect32.right <= 32767 && rect32.bottom <= 32767;
        REQUIRE(Zan_LRect2Rect(&rect32, &rect16) == (fits ? 0 : Zan_Result_OutOfRange));
        Edges expected = {22, 11, 44, 33};  // unchanged
        if (fits) {
            expected = edges(rect32);
            for (int32_t& edge : expected) edge = static_cast<int16_t>(edge);
        }
        REQUIRE(edges(rect16) == expected);
        if (!fits) continue;
        REQUIRE(Zan_Rect2FixedRect(&rect16, &fixed) == 0);
        REQUIRE(edges(fixed) == shifted);
    }
}

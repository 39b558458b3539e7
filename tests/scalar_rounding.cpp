// Rounding of doubles to integers and of integers to multiples, at the limits. The golden sums cover the rest.
#include "zan/scalar.h"

#include <catch2/catch.hpp>

#include <cmath>

namespace {

struct DoubleRow {
    const char* what;
    double x;
    int32_t rounded, clamped;
    int64_t rounded64;
};
constexpr DoubleRow kDoubles[] = {
    {"below 0.5, but x + 0.5 rounds to 1", 0x1.fffffffffffffp-2, 1, 1, 1},
    {"above -0.5, but x - 0.5 rounds to -1", -0x1.fffffffffffffp-2, -1, -1, -1},
    {"the last half in the 32-bit range", -2147483647.5, -2147483647, -2147483647, -2147483647},
    {"below the 32-bit range", -2147483649.5, INT32_MIN, INT32_MIN, -2147483649},
    {"an odd integer x for which x + 0.5 is not a double and rounds up to x + 1", 0x1.0000000000001p52, INT32_MIN,
     INT32_MAX, 4503599627370498},
    {"the largest double in the 64-bit range", 0x1.fffffffffffffp62, INT32_MIN, INT32_MAX, 0x7FFFFFFFFFFFFC00},
    {"2^63 does not fit", 0x1p63, INT32_MIN, INT32_MAX, INT64_MIN},
    {"-2^63 fits", -0x1p63, INT32_MIN, INT32_MIN, INT64_MIN},
    {"NaN", NAN, INT32_MIN, INT32_MIN, INT64_MIN},
};

struct MultipleRow {
    const char* what;
    int32_t x, m, rounded;
};
constexpr MultipleRow kMultiples[] = {
    {"a half rounds away from zero", 6, 4, 8},
    {"a negative half rounds away from zero", -6, 4, -8},
    {"an odd m has no halves", -7, 5, -5},
    {"m = 0 returns x", 7, 0, 7},
    {"a negative m gives a multiple that is not the nearest", 7, -4, 4},
    {"the smallest x and -1, whose quotient does not fit", INT32_MIN, -1, INT32_MIN},
    {"the smallest m", 5, INT32_MIN, 0},
    {"x + m / 2 wraps", INT32_MAX, 4, -2147483644},
};

}  // namespace

TEST_CASE("doubles whose sum with 0.5 is inexact, or that do not fit") {
    for (const DoubleRow& row : kDoubles) {
        CAPTURE(row.what, row.x);
        CHECK(Zan_RoundDouble(row.x) == row.rounded);
        CHECK(Zan_RoundDoubleSafe(row.x) == row.clamped);
        CHECK(Zan_RoundDouble64(row.x) == row.rounded64);
    }
}

TEST_CASE("integers are rounded to a multiple") {
    for (const MultipleRow& row : kMultiples) {
        CAPTURE(row.what, row.x, row.m);
        CHECK(Zan_RoundToNearestMult(row.x, row.m) == row.rounded);
    }
}

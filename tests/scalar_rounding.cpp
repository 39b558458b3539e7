// Rounding of doubles to integers, of integers to multiples, and the remainder of doubles.
#include "tests/support/random.h"
#include "zan/scalar.h"

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
    {"below the 32-bit range", -2147483649.5, INT32_MIN, INT32_MIN, -2147483649},
    {"an odd integer to which x + 0.5 does not fit", 0x1.0000000000001p52, INT32_MIN, INT32_MAX, 4503599627370498},
    {"its negative", -0x1.0000000000001p52, INT32_MIN, INT32_MIN, -4503599627370497},
    {"the largest double in the 64-bit range", 0x1.fffffffffffffp62, INT32_MIN, INT32_MAX, 0x7FFFFFFFFFFFFC00},
    {"2^63 does not fit", 0x1p63, INT32_MIN, INT32_MAX, INT64_MIN},
    {"-2^63 fits", -0x1p63, INT32_MIN, INT32_MIN, INT64_MIN},
    {"minus infinity", -INFINITY, INT32_MIN, INT32_MIN, INT64_MIN},
    {"NaN", NAN, INT32_MIN, INT32_MIN, INT64_MIN},
};

struct MultipleRow {
    const char* what;
    int32_t x, m, rounded;
};
constexpr MultipleRow kMultiples[] = {
    {"up", 7, 4, 8},
    {"down", 5, 4, 4},
    {"a half rounds away from zero", 6, 4, 8},
    {"a negative half rounds away from zero", -6, 4, -8},
    {"an odd m has no halves", -7, 5, -5},
    {"m = 0 returns x", 7, 0, 7},
    {"m = 0 returns a negative x", -7, 0, -7},
    {"a negative m gives a multiple that is not the nearest", 6, -4, 4},
    {"the same for a negative x", -6, -4, -4},
    {"the smallest x is a multiple of 1", INT32_MIN, 1, INT32_MIN},
    {"the smallest x and -1, whose quotient does not fit", INT32_MIN, -1, INT32_MIN},
    {"the smallest m", 5, INT32_MIN, 0},
    {"x + m / 2 wraps", INT32_MAX, 4, -2147483644},
};

struct RemainderRow {
    const char* what;
    double x, y, remainder;
};
constexpr RemainderRow kRemainders[] = {
    {"two positive numbers", 5.5, 2, 1.5},
    {"the sign is that of x", -5.5, -2, -1.5},
    {"exact for a quotient of a thousand bits", 1e300, 7, 1},
    {"minus zero", -0.0, 1, -0.0},
    {"y is infinite", 3, INFINITY, 3},
    {"y is 0", 3, 0, NAN},
};

}  // namespace

TEST_CASE("doubles in eighths are rounded to the nearest integer, halves up") {
    Random random(21);
    for (int i = 0; i < 20000; ++i) {
        const int64_t eighths = int64_t{random.nastyInt()} * 8 + random.below(8);
        const int64_t nearest = (eighths + 4) >> 3;
        const double x = static_cast<double>(eighths) / 8;
        CAPTURE(x);
        REQUIRE(Zan_RoundDouble(x) == (nearest > INT32_MAX ? INT32_MIN : nearest));
        REQUIRE(Zan_RoundDoubleSafe(x) == std::min<int64_t>(nearest, INT32_MAX));
        REQUIRE(Zan_RoundDouble64(x) == nearest);
    }
}

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

TEST_CASE("the remainder of doubles") {
    for (const RemainderRow& row : kRemainders) {
        CAPTURE(row.what, row.remainder);
        const double remainder = Zan_fmod(row.x, row.y);
        CAPTURE(remainder);
        CHECK(sameBits(remainder, row.remainder));
    }
}

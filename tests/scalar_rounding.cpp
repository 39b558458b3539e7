// Rounding of doubles and to a multiple, and the remainder of doubles.
#include "tests/support/random.h"
#include "zan/scalar.h"

TEST_CASE("doubles rounded to integers") {
    Random random(21);
    for (int i = 0; i < 20000; ++i) {
        // Eighths, so that no sum is rounded; the nearest integer in 64-bit arithmetic.
        const int64_t raw = int64_t{random.nastyInt()} * 8 + random.below(8), nearest = (raw + 4) >> 3;
        const double x = static_cast<double>(raw) / 8;
        CAPTURE(x);
        REQUIRE(Zan_RoundDouble(x) == (nearest > INT32_MAX ? INT32_MIN : nearest));
        REQUIRE(Zan_RoundDoubleSafe(x) == std::min<int64_t>(nearest, INT32_MAX));
        REQUIRE(Zan_RoundDouble64(x) == nearest);
    }
    // clang-format off
    const std::pair<double, int64_t> rows[] = {  // where a sum is rounded or does not fit
        {0x1.fffffffffffffp-2, 1}, {-0x1.fffffffffffffp-2, -1}, {-2147483649.5, -2147483649},
        {0x1.0000000000001p52, 4503599627370498}, {-0x1.0000000000001p52, -4503599627370497}, {0x1p63, INT64_MIN},
        {-0x1p63, INT64_MIN}, {0x1.fffffffffffffp62, 0x7FFFFFFFFFFFFC00}, {-INFINITY, INT64_MIN}, {NAN, INT64_MIN}};
    // clang-format on
    for (const auto& [x, rounded] : rows) {
        CAPTURE(x);
        const bool fits = std::fabs(x) < 1;
        CHECK(Zan_RoundDouble64(x) == rounded);
        CHECK(Zan_RoundDouble(x) == (fits ? rounded : INT32_MIN));
        CHECK(Zan_RoundDoubleSafe(x) == (fits ? rounded : x > 0 ? INT32_MAX : INT32_MIN));
    }
}

TEST_CASE("integers rounded to a multiple, and the remainder of doubles") {
    // clang-format off
    const int32_t multiples[][3] = {
        {7, 4, 8}, {6, 4, 8}, {5, 4, 4}, {-6, 4, -8}, {-7, 5, -5}, {INT32_MIN, 1, INT32_MIN}, {7, 0, 7}, {6, -4, 4},
        {-6, -4, -4}, {INT32_MIN, -1, INT32_MIN}, {5, INT32_MIN, 0}, {INT32_MAX, 4, -2147483644}, {-7, 0, -7}};
    const double remainders[][3] = {
        {5.5, 2, 1.5}, {-5.5, -2, -1.5}, {1e300, 7, 1}, {-0.0, 1, -0.0}, {3, INFINITY, 3}, {3, 0, NAN}};
    for (const auto& [x, m, rounded] : multiples) { CAPTURE(x, m); CHECK(Zan_RoundToNearestMult(x, m) == rounded); }
    for (const auto& [x, y, rest] : remainders) { CAPTURE(x, y); CHECK(sameBits(Zan_fmod(x, y), rest)); }
    // clang-format on
}

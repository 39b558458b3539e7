// Rounding of doubles and to a multiple, and the remainder of doubles.
#include <catch2/catch.hpp>

#include "values.h"
#include "zan/scalar.h"

// Long division, one bit at a time, on the integer mantissas.
static double slowRemainder(double x, double y) {
    int exponentX = 0, exponentY = 0;
    auto rest = static_cast<int64_t>(std::ldexp(std::frexp(std::fabs(x), &exponentX), 53));
    const auto divisor = static_cast<int64_t>(std::ldexp(std::frexp(std::fabs(y), &exponentY), 53));
    if (std::fabs(x) < std::fabs(y)) return x;
    rest %= divisor;
    for (int i = exponentY; i < exponentX; ++i) rest = rest * 2 % divisor;
    return std::copysign(std::ldexp(static_cast<double>(rest), exponentY - 53), x);
}

TEST_CASE("doubles rounded to integers") {
    Random random(21);
    for (int i = 0; i < 20000; ++i) {
        // Eighths, so that no sum is rounded; the nearest integer in 64-bit arithmetic.
        const int64_t raw = int64_t{random.nastyInt()} * 8 + random.below(8);
        const double x = static_cast<double>(raw) / 8;
        const int64_t nearest = (raw + 4) >> 3;
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
        const bool small = std::fabs(x) < 1;
        CHECK(Zan_RoundDouble64(x) == rounded);
        CHECK(Zan_RoundDouble(x) == (small ? rounded : INT32_MIN));
        CHECK(Zan_RoundDoubleSafe(x) == (small ? rounded : x > 0 ? INT32_MAX : INT32_MIN));
    }
}

TEST_CASE("integers rounded to a multiple") {
    // clang-format off
    const int32_t rows[][3] = {
        {7, 4, 8}, {6, 4, 8}, {5, 4, 4}, {-6, 4, -8}, {-7, 5, -5}, {INT32_MIN, 1, INT32_MIN}, {7, 0, 7}, {6, -4, 4},
        {-6, -4, -4}, {INT32_MIN, -1, INT32_MIN}, {5, INT32_MIN, 0}, {INT32_MAX, 4, -2147483644},
        {INT32_MIN, 4, 2147483644}};
    // clang-format on
    for (const auto& [x, m, rounded] : rows) {
        CAPTURE(x, m);
        CHECK(Zan_RoundToNearestMult(x, m) == rounded);
    }
}

TEST_CASE("the remainder of doubles is exact") {
    Random random(22);
    for (int i = 0; i < 5000; ++i) {
        const double x = random.nasty(), y = i % 4 == 0 ? 360.0 : std::ldexp(random.nasty(), -random.below(900));
        const bool none = !std::isfinite(x) || std::isnan(y) || y == 0;
        CAPTURE(x, y);
        REQUIRE(sameBits(Zan_fmod(x, y), none ? NAN : std::isinf(y) ? x : slowRemainder(x, y)));
    }
}

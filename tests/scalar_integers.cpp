// Bit counts, powers of two, overflow predicates, common divisors and multiples, against loops and 64 bits.
#include <bit>
#include <catch2/catch.hpp>
#include <numeric>

#include "scalar/wide_product.h"
#include "values.h"
#include "zan/scalar.h"

TEST_CASE("bit counts and powers of two") {
    Random random(11);
    for (int i = 0; i < 20000; ++i) {
        const int32_t n = random.nastyInt();
        const auto x = static_cast<uint32_t>(n);
        int leading = 32, trailing = 0;
        for (uint32_t rest = x; rest != 0; rest >>= 1) --leading;
        while (trailing < 32 && (x >> trailing) % 2 == 0) ++trailing;
        uint64_t up = 1;
        while (up < x) up *= 2;
        CAPTURE(n, x);
        REQUIRE((Zan_LeadingZeros(x) == leading && Zan_TrailingZeros(x) == trailing));
        REQUIRE(Zan_RoundUpToPowerOf2(x) == (x == 0 ? 0 : static_cast<uint32_t>(up)));
        REQUIRE(Zan_RoundDownToPowerOf2(x) == (x == 0 ? 0 : 1U << (31 - leading)));
        REQUIRE(Zan_BitsUsed(n) == (n <= 0 ? 0 : 32 - leading));
        REQUIRE(Zan_IsTopTwoBitsSame(n) == (std::llabs(int64_t{n} * 2 + 1) <= UINT32_MAX / 2));
    }
}

TEST_CASE("overflow, divisors, multiples and wide products of pairs") {
    // clang-format off
    const int32_t rows[][4] = {
        {12, 18, 6, 36}, {-12, 18, 6, -36}, {4, -6, 2, -12}, {12, 0, 1, 0}, {0, -18, 18, 0}, {0, 0, 1, 0},
        {0x40000000, -6, 2, -0x40000000}, {INT32_MIN, 6, 2, 0}, {INT32_MIN, INT32_MIN, INT32_MIN, 0}};
    // clang-format on
    int32_t divisor = 0, multiple = 0;
    for (const auto& [a, b, gcd, lcm] : rows) {
        CAPTURE(a, b);
        CHECK((Zan_SignedGCD(a, b, &divisor) == 0 && divisor == gcd));
        CHECK((Zan_SignedLCM(a, b, &multiple) == 0 && multiple == lcm));
    }
    Random random(12);
    for (int i = 0; i < 20000; ++i) {
        const int32_t a = random.nastyInt(), b = random.nastyInt();
        const auto ua = static_cast<uint32_t>(a), ub = static_cast<uint32_t>(b);
        const auto fits = [](int64_t x) { return x == static_cast<int32_t>(x); };
        const auto bits = [](int64_t x) { return std::bit_width(static_cast<uint64_t>(std::llabs(x))); };
        CAPTURE(a, b);
        REQUIRE(Zan_AddWouldOverflow(a, b) != fits(int64_t{a} + b));
        REQUIRE(Zan_MulWouldOverflow(a, b) == (bits(a) + bits(b) >= 32));  // cautious by one bit
        REQUIRE(Zan_UMulWouldOverflow(ua, ub) == (bits(ua) + bits(ub) >= 33));
        uint32_t unsignedDivisor = 0, unsignedMultiple = 0;
        REQUIRE((Zan_UnsignedGCD(ua, ub, &unsignedDivisor) == 0 && Zan_UnsignedLCM(ua, ub, &unsignedMultiple) == 0));
        REQUIRE(unsignedDivisor == (ub == 0 ? 1 : std::gcd(ua, ub)));
        REQUIRE(unsignedMultiple == ua * ub / unsignedDivisor);
        const zan::WideProduct wide = zan::wideProduct(a, b), other = {i % 2 == 0 ? a : wide.high, ub};
        const auto value = [](const zan::WideProduct& w) { return int64_t{w.high} * 0x100000000 + w.low; };
        REQUIRE(value(wide) == int64_t{a} * b);
        REQUIRE(zan::compare(wide, other) == (value(wide) > value(other)) - (value(wide) < value(other)));
    }
}

// Bit counts, powers of two, overflow predicates, common divisors and multiples, against loops and 64 bits.
#include "tests/support/random.h"
#include "zan/scalar.h"

#include <bit>
#include <numeric>

TEST_CASE("bit counts and powers of two") {
    Random random(11);
    for (int i = 0; i < 20000; ++i) {
        const int32_t n = random.nastyInt();
        const auto x = static_cast<uint32_t>(n);
        int leading = 32, trailing = 0;
        for (uint32_t rest = x; rest != 0; rest >>= 1) --leading;
        while (trailing < 32 && (x >> trailing) % 2 == 0) ++trailing;
        const uint32_t down = x == 0 ? 0 : 1U << (31 - leading), up = x == down ? x : down * 2;
        CAPTURE(n, x);
        REQUIRE((Zan_LeadingZeros(x) == leading && Zan_TrailingZeros(x) == trailing));
        REQUIRE((Zan_RoundUpToPowerOf2(x) == up && Zan_RoundDownToPowerOf2(x) == down));
        REQUIRE(Zan_BitsUsed(n) == (n <= 0 ? 0 : 32 - leading));
        REQUIRE(Zan_IsTopTwoBitsSame(n) == (n >= -0x40000000 && n <= 0x3FFFFFFF));
    }
}

TEST_CASE("overflow tests, divisors and multiples of pairs") {
    Random random(12);
    for (int i = 0; i < 20000; ++i) {
        const int32_t a = random.nastyInt(), b = random.nastyInt();
        const auto ua = static_cast<uint32_t>(a), ub = static_cast<uint32_t>(b);
        const int64_t sum = int64_t{a} + b, product = int64_t{a} * b;
        const auto bits = [](int64_t x) { return std::bit_width(static_cast<uint64_t>(std::llabs(x))); };
        CAPTURE(a, b);
        REQUIRE(Zan_AddWouldOverflow(a, b) == (sum != static_cast<int32_t>(sum)));
        REQUIRE(Zan_MulWouldOverflow(a, b) == (bits(a) + bits(b) >= 32));  // cautious by one bit
        REQUIRE(Zan_UMulWouldOverflow(ua, ub) == (bits(ua) + bits(ub) >= 33));

        int32_t gcd = -1, lcm = -1;
        uint32_t ugcd = 0, ulcm = 0;
        const int64_t divisor = b == 0 ? 1 : std::gcd(int64_t{a}, int64_t{b});
        REQUIRE((Zan_SignedGCD(a, b, &gcd) == 0 && gcd == static_cast<int32_t>(divisor)));
        REQUIRE((Zan_SignedLCM(a, b, &lcm) == 0 && lcm == static_cast<int32_t>(product) / divisor));
        REQUIRE((Zan_UnsignedGCD(ua, ub, &ugcd) == 0 && ugcd == (b == 0 ? 1 : std::gcd(ua, ub))));
        REQUIRE((Zan_UnsignedLCM(ua, ub, &ulcm) == 0 && ulcm == ua * ub / ugcd));
    }
}

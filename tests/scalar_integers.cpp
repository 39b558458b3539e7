// Bit counts, powers of two, common divisors and multiples, compared with loops and 64-bit arithmetic. The golden sums
// cover the operations that test for overflow.
#include "tests/support/random.h"
#include "zan/scalar.h"

#include <numeric>

TEST_CASE("bit counts and powers of two") {
    Random random(11);
    for (int i = 0; i < 20000; ++i) {
        const int32_t n = random.nastyInt();
        const auto x = static_cast<uint32_t>(n);
        int leading = 32;
        for (uint32_t rest = x; rest != 0; rest >>= 1) --leading;
        int trailing = 0;
        while (trailing < 32 && (x >> trailing) % 2 == 0) ++trailing;
        const uint32_t down = x == 0 ? 0 : 1U << (31 - leading);
        const uint32_t up = x == down ? x : down * 2;
        CAPTURE(n, x);
        REQUIRE(Zan_LeadingZeros(x) == leading);
        REQUIRE(Zan_TrailingZeros(x) == trailing);
        REQUIRE(Zan_RoundUpToPowerOf2(x) == up);
        REQUIRE(Zan_RoundDownToPowerOf2(x) == down);
        REQUIRE(Zan_BitsUsed(n) == (n <= 0 ? 0 : 32 - leading));
        REQUIRE(Zan_IsTopTwoBitsSame(n) == (n >= -0x40000000 && n <= 0x3FFFFFFF));
    }
}

TEST_CASE("greatest common divisors and least common multiples") {
    Random random(13);
    for (int i = 0; i < 20000; ++i) {
        const int32_t a = random.nastyInt();
        const int32_t b = random.nastyInt();
        CAPTURE(a, b);
        const int64_t divisor = b == 0 ? 1 : std::gcd(int64_t{a}, int64_t{b});
        const auto wrappedProduct = static_cast<int32_t>(int64_t{a} * b);
        int32_t result = -1;
        REQUIRE(Zan_SignedGCD(a, b, &result) == 0);
        REQUIRE(result == static_cast<int32_t>(divisor));
        REQUIRE(Zan_SignedLCM(a, b, &result) == 0);
        REQUIRE(result == wrappedProduct / divisor);
    }
}

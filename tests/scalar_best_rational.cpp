// Best rational approximations: every fraction of small terms tried, and for the real bound one mediant at a time.
#include <catch2/catch.hpp>

#include "scalar/best_rational.h"
#include "values.h"
#include "zan/scalar.h"

namespace {

// |value| = num / 2^20 against p / q: which of two fractions is nearer; of equally near ones the first stays.
struct Search {
    int64_t num;
    int64_t bestP = 0, bestQ = 1;
    int64_t error(int64_t p, int64_t q) const { return std::llabs(num * q - (p << 20)); }  // times 2^20 q
    void offer(int64_t p, int64_t q) {
        if (error(p, q) * bestQ < error(bestP, bestQ) * q) bestP = p, bestQ = q;
    }
};

}  // namespace

TEST_CASE("best rationals against every fraction of small terms") {
    Random random(71);
    for (int i = 0; i < 20000; ++i) {
        const int32_t bound = 1 + random.below(16);
        // Near fractions of about these terms, on them, and on the middles between them where they are dyadic.
        int64_t num = (int64_t{random.below(20)} << 20) / (1 + random.below(20)) + random.below(3) - 1;
        if (i % 2 == 0) num = int64_t{random.below(40 * 64)} << 14 >> random.below(7);
        const double size = static_cast<double>(std::max<int64_t>(num, 0)) * 0x1p-20;
        const auto value = static_cast<float>(i % 3 == 0 ? -size : size);
        Search search{static_cast<int64_t>(std::ldexp(std::fabs(value), 20))};
        for (int64_t terms = 1; terms <= bound; ++terms) {
            for (int64_t other = 0; other <= terms; ++other) {
                if (other > 0) search.offer(terms, other);
                search.offer(other, terms);
            }
        }
        const Zan_Ratio best = zan::bestRational(value, bound);
        CAPTURE(value, bound, best.num, best.den);
        REQUIRE(best.num == (value < 0 ? -search.bestP : search.bestP));
        REQUIRE(best.den == search.bestQ);
    }
}

TEST_CASE("doubles to ratios, one mediant at a time") {
    __extension__ using Wide = __int128;
    Random random(72);
    for (int i = 0; i < 2000; ++i) {
        const double x = std::ldexp(random.plain(1, 2), random.below(24) - 12) * (i % 2 == 0 ? 1 : -1);
        const Wide num = static_cast<int64_t>(std::ldexp(std::fabs(static_cast<float>(x)), 36)), den = int64_t{1} << 36;
        int64_t lowP = 0, lowQ = 1, highP = 1, highQ = 0;
        for (;;) {
            const int64_t p = lowP + highP, q = lowQ + highQ;
            if (p > 0x40000000 || q > 0x40000000) break;
            const bool below = p * den <= num * q;
            (below ? lowP : highP) = p, (below ? lowQ : highQ) = q;
            if (p * den == num * q) break;
        }
        const Wide below = num * lowQ - lowP * den, above = highP * den - num * highQ;  // times den lowQ, den highQ
        const bool low = below * highQ == above * lowQ ? lowQ < highQ : below * highQ < above * lowQ;
        Zan_Ratio ratio;
        bool overflow = true;
        CAPTURE(x);
        REQUIRE((Zan_FpLong2Ratio(x, &ratio, &overflow) == 0 && !overflow));
        REQUIRE(ratio.num == (x < 0 ? -1 : 1) * (low ? lowP : highP));
        REQUIRE(ratio.den == (low ? lowQ : highQ));
    }
    // clang-format off
    const struct { double x; int32_t num; uint32_t den; } rows[] = {
        {0.5, 1, 2}, {-2.5, -5, 2}, {3.75, 15, 4}, {1.0 / 3, 11184811, 33554432}, {-0.0, 0, 1}, {0x1p30, 1 << 30, 1},
        {1.5e9, 1 << 30, 1}, {-2147483647.9, -(1 << 30), 1}, {0x1p31, 0, 0}, {-3e9, 0, 0}, {INFINITY, 0, 0},
        {NAN, 0, 0}, {1e-10, 0, 1}, {5e-324, 0, 1}, {0x1.8p-31, 1, 1 << 30}, {0x1p-31, 0, 1}, {0x1.8p-32, 0, 1},
        {-0x1p-30, -1, 1 << 30}};
    // clang-format on
    for (const auto& [x, p, q] : rows) {
        Zan_Ratio ratio = {77, 7};
        bool overflow = q != 0;
        CAPTURE(x);
        CHECK((Zan_FpLong2Ratio(x, &ratio, &overflow) == 0 && overflow == (q == 0)));
        CHECK((ratio.num == p && ratio.den == q));
    }
}

// Best rational approximations, against a walk of one mediant at a time.
#include <catch2/catch.hpp>

#include "scalar/best_rational.h"
#include "values.h"
#include "zan/scalar.h"

TEST_CASE("best rationals, one mediant at a time") {
    __extension__ using Wide = __int128;
    Random random(71);
    for (int i = 0; i < 20000; ++i) {
        const int32_t bound = i % 10 == 0 ? 0x40000000 : 1 + random.below(16);
        // Near fractions of small terms, on them, and on the middles between them where they are dyadic.
        const int64_t near = (int64_t{random.below(20)} << 20) / (1 + random.below(20)) + random.below(3) - 1;
        const int64_t dyadic = int64_t{random.below(40 * 64)} << 14 >> random.below(7);
        double size = static_cast<double>(std::max<int64_t>(i % 2 == 0 ? near : dyadic, 0)) * 0x1p-20;
        if (bound > 16) size = std::ldexp(random.plain(1, 2), random.below(24) - 12);
        const auto value = static_cast<float>(i % 3 == 0 ? -size : size);
        const Wide num = static_cast<int64_t>(std::ldexp(std::fabs(value), 36)), den = int64_t{1} << 36;
        int64_t lowP = 0, lowQ = 1, highP = 1, highQ = 0;
        while (lowP + highP <= bound && lowQ + highQ <= bound && lowP * den != num * lowQ) {
            const bool below = (lowP + highP) * den <= num * (lowQ + highQ);
            (below ? lowP : highP) = lowP + highP, (below ? lowQ : highQ) = lowQ + highQ;
        }
        // The nearer one, times den lowQ and den highQ; of two equally near ones that of smaller terms.
        const Wide below = (num * lowQ - lowP * den) * highQ, above = (highP * den - num * highQ) * lowQ;
        const bool low = below == above ? lowP + lowQ < highP + highQ : below < above;
        Zan_Ratio ratio = zan::bestRational(value, bound);
        bool overflow = false;
        if (bound > 16) REQUIRE((Zan_FpLong2Ratio(value, &ratio, &overflow) == 0 && !overflow));
        CAPTURE(value, bound, ratio.num, ratio.den);
        REQUIRE((ratio.num == (value < 0 ? -1 : 1) * (low ? lowP : highP) && ratio.den == (low ? lowQ : highQ)));
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

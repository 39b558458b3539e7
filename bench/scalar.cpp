// Integers, rounding, fixed point and ratios beside the standard library, Boost.Rational and what a host would write by
// hand.
#include "zan/scalar.h"

#include "entries.h"
#include "tests/support/plain_forms.h"

#include <boost/rational.hpp>

#include <bit>
#include <numeric>

namespace zan_bench {
namespace {

struct IntPair {
    int32_t a, b;
};

/// Tests one bit at a time.
int16_t leadingZerosByLoop(uint32_t x) {
    int16_t count = 0;
    for (uint32_t bit = 0x80000000U; bit != 0 && (x & bit) == 0; bit >>= 1) ++count;
    return count;
}

int32_t floorOfSum(double x) {
    const double rounded = std::floor(x + 0.5);
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) return INT32_MIN;
    return static_cast<int32_t>(rounded);
}

int32_t nearestMultiple(int32_t x, int32_t m) {
    return static_cast<int32_t>(std::round(static_cast<double>(x) / m)) * m;
}

/// The value, or the failure value if it does not fit into 32 bits.
int32_t fitOrFail(int64_t value) {
    return value > INT32_MAX || value < -INT32_MAX ? Zan_kFixedFailure : static_cast<int32_t>(value);
}
int32_t productIn64(int32_t a, int32_t b) { return fitOrFail(int64_t{a} * b >> 16); }
int32_t quotientIn64(int32_t a, int32_t b) { return b == 0 ? Zan_kFixedFailure : fitOrFail(int64_t{a} * 65536 / b); }
/// Rounded half away from zero.
int32_t fix24ProductIn64(int32_t a, int32_t b) {
    const int64_t product = int64_t{a} * b;
    return fitOrFail((product + (product < 0 ? -0x800000 : 0x800000)) / 0x1000000);
}
int32_t fix24QuotientIn64(int32_t a, int32_t b) {
    if (b == 0) return Zan_kFixedFailure;
    const int64_t scaled = int64_t{a} * 0x2000000 / b;
    return fitOrFail((scaled + (scaled < 0 ? -1 : 1)) / 2);
}

/// The last convergent whose numerator and denominator are at most 2^30, computed in double.
Zan_Ratio fractionOf(double value) {
    double rest = std::abs(value);
    int64_t h = 1, k = 0, previousH = 0, previousK = 1;
    for (int step = 0; step < 40; ++step) {
        const double whole = std::floor(rest);
        const auto nextH = static_cast<int64_t>(whole) * h + previousH;
        const auto nextK = static_cast<int64_t>(whole) * k + previousK;
        if (nextH > (1 << 30) || nextK > (1 << 30)) break;
        previousH = std::exchange(h, nextH);
        previousK = std::exchange(k, nextK);
        if (rest - whole < 1e-9) break;
        rest = 1 / (rest - whole);
    }
    return {static_cast<int32_t>(value < 0 ? -h : h), static_cast<uint32_t>(k)};
}

void addBits() {
    static const auto words =
        inputs(kInputs, 11, [](Random& random) { return random.bits() >> random.integer(0, 31); });
    static const auto pairs = inputs(kInputs, 12, [](Random& random) {
        return IntPair{random.anyMagnitude(), random.anyMagnitude()};
    });
    const uint32_t* w = words.data();
    const IntPair* p = pairs.data();

    Entry("leading zeros", kInputs, [=](size_t i) {
        return Zan_LeadingZeros(w[i]);
    }).peer("std::countl_zero", [=](size_t i) {
          return static_cast<int16_t>(std::countl_zero(w[i]));
      }).peer("loop over bits", [=](size_t i) { return leadingZerosByLoop(w[i]); });
    Entry("trailing zeros", kInputs, [=](size_t i) {
        return Zan_TrailingZeros(w[i]);
    }).peer("std::countr_zero", [=](size_t i) { return static_cast<int16_t>(std::countr_zero(w[i])); });
    Entry("round up to a power of 2", kInputs, [=](size_t i) {
        return Zan_RoundUpToPowerOf2(w[i] >> 1);
    }).peer("std::bit_ceil", [=](size_t i) { return w[i] >> 1 == 0 ? 0 : std::bit_ceil(w[i] >> 1); });
    Entry("would a sum overflow", kInputs, [=](size_t i) {
        return Zan_AddWouldOverflow(p[i].a, p[i].b);
    }).peer("sum in 64 bits", [=](size_t i) {
        const int64_t sum = int64_t{p[i].a} + p[i].b;
        return sum != static_cast<int32_t>(sum);
    });
    // zan's test is conservative: it may also return true for a product that just fits.
    Entry("would a product overflow", kInputs, [=](size_t i) { return Zan_MulWouldOverflow(p[i].a, p[i].b); })
        .peer(
            "product in 64 bits",
            [=](size_t i) {
                const int64_t product = int64_t{p[i].a} * p[i].b;
                return product != static_cast<int32_t>(product);
            },
            [](bool zan, bool peer) { return zan || !peer; });
}

void addDivisors() {
    static const auto wide = inputs(kManyInputs, 13, [](Random& random) {
        return IntPair{random.anyMagnitude() | 1, random.anyMagnitude() | 1};
    });
    static const auto narrow = inputs(kManyInputs, 14, [](Random& random) {
        return IntPair{random.integer(1, 30000), random.integer(1, 30000)};
    });
    const IntPair* p = wide.data();
    const IntPair* q = narrow.data();

    Entry("greatest common divisor", kManyInputs, [=](size_t i) {
        int32_t divisor = 0;
        Zan_SignedGCD(p[i].a, p[i].b, &divisor);
        return divisor;
    }).peer("std::gcd", [=](size_t i) { return std::gcd(p[i].a, p[i].b); });
    Entry("least common multiple", kManyInputs, [=](size_t i) {
        int32_t multiple = 0;
        Zan_SignedLCM(q[i].a, q[i].b, &multiple);
        return multiple;
    }).peer("std::lcm", [=](size_t i) { return std::lcm(q[i].a, q[i].b); });
}

void addRounding() {
    static const auto reals = inputs(kManyInputs, 15, [](Random& random) { return random.real(-40000.0, 40000.0); });
    static const auto pairs = inputs(kInputs, 16, [](Random& random) {
        return IntPair{random.integer(-1000000, 1000000), random.integer(1, 500)};
    });
    const double* x = reals.data();
    const IntPair* p = pairs.data();

    Entry("round a double", kManyInputs, [=](size_t i) {
        return Zan_RoundDouble(x[i]);
    }).peer("std::floor(x + 0.5), range tested", [=](size_t i) {
          return floorOfSum(x[i]);
      }).peer("std::lround", [=](size_t i) { return static_cast<int32_t>(std::lround(x[i])); });
    Entry("round a double, clamped", kManyInputs, [=](size_t i) {
        return Zan_RoundDoubleSafe(x[i]);
    }).peer("std::lround(std::clamp)", [=](size_t i) {
        return static_cast<int32_t>(std::lround(std::clamp(x[i], -2147483648.0, 2147483647.0)));
    });
    Entry("round a double to 64 bits", kManyInputs, [=](size_t i) {
        return Zan_RoundDouble64(x[i]);
    }).peer("std::llround", [=](size_t i) { return static_cast<int64_t>(std::llround(x[i])); });
    Entry("round to a multiple", kInputs, [=](size_t i) {
        return Zan_RoundToNearestMult(p[i].a, p[i].b);
    }).peer("std::round of the quotient", [=](size_t i) { return nearestMultiple(p[i].a, p[i].b); });
    Entry("remainder of doubles", kManyInputs, [=](size_t i) {
        return Zan_fmod(x[i], 360.0);
    }).peer("std::fmod", [=](size_t i) { return std::fmod(x[i], 360.0); });
}

void addFixedPoint() {
    // Operands short enough for zan's result to be exact, so that both sides agree.
    static const auto factors = inputs(kInputs, 17, [](Random& random) {
        return IntPair{random.integer(-30000, 30000) * 256, random.integer(-30000, 30000) * 256};
    });
    static const auto quotients = inputs(kInputs, 18, [](Random& random) {
        return IntPair{static_cast<int32_t>(random.bits()) >> random.integer(1, 16),
                       random.integer(1, 30000) * (random.integer(0, 1) == 0 ? 65536 : -65536)};
    });
    static const auto eights = inputs(kInputs, 19, [](Random& random) {
        return IntPair{random.integer(-0xA000000, 0xA000000), random.integer(-0xA000000, 0xA000000)};
    });
    static const auto ratios = inputs(kInputs, 20, [](Random& random) {
        return IntPair{random.integer(-1000000, 1000000), random.integer(10000, 1000000)};
    });
    const IntPair* f = factors.data();
    const IntPair* q = quotients.data();
    const IntPair* e = eights.data();
    const IntPair* r = ratios.data();
    const auto oneStep = [](int32_t zan, int32_t peer) { return std::abs(zan - peer) <= 1; };

    Entry("16.16 product", kInputs, [=](size_t i) {
        return Zan_FixMul(f[i].a, f[i].b);
    }).peer("64-bit product", [=](size_t i) { return productIn64(f[i].a, f[i].b); });
    Entry("16.16 quotient", kInputs, [=](size_t i) {
        return Zan_FixDiv(q[i].a, q[i].b);
    }).peer("64-bit quotient", [=](size_t i) { return quotientIn64(q[i].a, q[i].b); });
    Entry("8.24 product", kInputs, [=](size_t i) { return Zan_Fix24Mul(e[i].a, e[i].b); })
        .peer(
            "64-bit product", [=](size_t i) { return fix24ProductIn64(e[i].a, e[i].b); }, oneStep);
    Entry("8.24 ratio", kInputs, [=](size_t i) { return Zan_Fix24Ratio(r[i].a, r[i].b); })
        .peer(
            "64-bit quotient", [=](size_t i) { return fix24QuotientIn64(r[i].a, r[i].b); }, oneStep);
}

/// boost::rational reduces every result; zan reduces only a result that would not fit into 32 bits.
using BoostRatio = boost::rational<int64_t>;
using BoostRatio32 = boost::rational<int32_t>;

struct RatioPair {
    Zan_Ratio a, b;
};
template <class Ratio>
struct BoostPair {
    Ratio a, b;
};
template <class Ratio, class Int>
std::vector<BoostPair<Ratio>> boostPairs(const std::vector<RatioPair>& pairs) {
    std::vector<BoostPair<Ratio>> all;
    for (const auto& [a, b] : pairs) {
        all.push_back({Ratio(a.num, static_cast<Int>(a.den)), Ratio(b.num, static_cast<Int>(b.den))});
    }
    return all;
}
struct SameRatio {
    bool operator()(const Zan_Ratio& zan, const Zan_Ratio& peer) const {
        return zan.num == peer.num && zan.den == peer.den;
    }
    template <class Int>
    bool operator()(const Zan_Ratio& zan, const boost::rational<Int>& peer) const {
        return int64_t{zan.num} * peer.denominator() == peer.numerator() * int64_t{zan.den};
    }
};

struct SameOrder {
    bool operator()(int32_t zan, bool less) const { return (zan < 0) == less; }
    bool operator()(int32_t zan, int32_t order) const { return zan == order; }
};

void addRatios() {
    static const auto pairs = inputs(kManyInputs, 21, [](Random& random) {
        const auto ratio = [&] {
            return Zan_Ratio{random.integer(-20000, 20000), static_cast<uint32_t>(random.integer(1, 1000))};
        };
        const Zan_Ratio a = ratio();
        return RatioPair{a, ratio()};
    });
    static const auto boosts = boostPairs<BoostRatio, int64_t>(pairs);
    static const auto boosts32 = boostPairs<BoostRatio32, int32_t>(pairs);
    static const auto values = inputs(kManyInputs, 22, [](Random& random) { return random.real(-1000, 1000); });
    const RatioPair* p = pairs.data();
    const BoostPair<BoostRatio>* q = boosts.data();
    const BoostPair<BoostRatio32>* n = boosts32.data();
    const double* x = values.data();

    Entry("ratio sum", kManyInputs,
          [=](size_t i) {
              Zan_Ratio sum;
              static_cast<void>(Zan_AddRatio(&p[i].a, &p[i].b, &sum, nullptr));
              return sum;
          })
        .plain([=](size_t i) { return plain_forms::sum(p[i].a, p[i].b); })
        .peer(
            "Boost.Rational", [=](size_t i) { return q[i].a + q[i].b; }, SameRatio())
        .peer(
            "Boost.Rational, 32-bit", [=](size_t i) { return n[i].a + n[i].b; }, SameRatio());
    Entry("ratio product", kManyInputs,
          [=](size_t i) {
              Zan_Ratio product;
              static_cast<void>(Zan_MulRatio(&p[i].a, &p[i].b, &product, nullptr));
              return product;
          })
        .plain([=](size_t i) { return plain_forms::product(p[i].a, p[i].b); })
        .peer(
            "Boost.Rational", [=](size_t i) { return q[i].a * q[i].b; }, SameRatio())
        .peer(
            "Boost.Rational, 32-bit", [=](size_t i) { return n[i].a * n[i].b; }, SameRatio());
    Entry("ratio comparison", kManyInputs,
          [=](size_t i) {
              int32_t order = 0;
              static_cast<void>(Zan_CompareRatio(&p[i].a, &p[i].b, &order));
              return order;
          })
        .plain([=](size_t i) { return plain_forms::order(p[i].a, p[i].b); })
        .peer(
            "Boost.Rational", [=](size_t i) { return q[i].a < q[i].b; }, SameOrder())
        .peer(
            "Boost.Rational, 32-bit", [=](size_t i) { return n[i].a < n[i].b; }, SameOrder())
        .peer(
            "products in 64 bits",
            [=](size_t i) {
                const auto& [a, b] = p[i];
                return int64_t{a.num} * b.den < int64_t{b.num} * a.den;
            },
            SameOrder());
    Entry("ratio reduced", kManyInputs,
          [=](size_t i) {
              Zan_Ratio reduced;
              Zan_ReduceRatio(&p[i].a, &reduced, nullptr);
              return reduced;
          })
        .peer(
            "Boost.Rational", [=](size_t i) { return BoostRatio(p[i].a.num, p[i].a.den); }, SameRatio());
    Entry("ratio from a double", kManyInputs,
          [=](size_t i) {
              Zan_Ratio ratio;
              bool overflow = false;
              Zan_FpLong2Ratio(x[i], &ratio, &overflow);
              return ratio;
          })
        .peer(
            "continued fraction in double", [=](size_t i) { return fractionOf(static_cast<float>(x[i])); },
            [](const Zan_Ratio& zan, const Zan_Ratio& peer) {
                return Near{1e-7}(static_cast<double>(zan.num) / zan.den, static_cast<double>(peer.num) / peer.den);
            });
}

}  // namespace

void addScalarEntries() {
    addBits();
    addDivisors();
    addRounding();
    addFixedPoint();
    addRatios();
}

}  // namespace zan_bench

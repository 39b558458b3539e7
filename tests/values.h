// Values for the tests: bit patterns compared, and random numbers that lean on bad places, from a seed that is printed.
#ifndef ZAN_TESTS_VALUES_H
#define ZAN_TESTS_VALUES_H

#include <catch2/catch.hpp>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>

/// The same bits; any two NaNs count as equal, since which NaN survives depends on the order of operands.
template <class T>
bool sameBits(T a, T b) {
    static_assert(std::is_floating_point_v<T>);
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}
/// The same for records of doubles.
template <class Record>
bool sameDoubles(const Record& a, const Record& b) {
    static_assert(std::is_trivially_copyable_v<Record> && sizeof(Record) % sizeof(double) == 0);
    double x[sizeof(Record) / sizeof(double)], y[sizeof(Record) / sizeof(double)];
    std::memcpy(x, &a, sizeof a);
    std::memcpy(y, &b, sizeof b);
    for (size_t i = 0; i < std::size(x); ++i) {
        if (!sameBits(x[i], y[i])) return false;
    }
    return true;
}

// clang-format off
/// Doubles at which rounding, range tests and tolerances change their answer.
inline constexpr double kNastyDoubles[] = {
    0.0, -0.0, 1.0, -1.0, 0.5, -0.5, 1.5, -2.5, 0x1.fffffffffffffp-1, 0x1.0000000000001p0,
    5e-324, -5e-324, 0x1p-1022, 1e-300, 1e300,
    1e-12, -1e-12, 0x1.19799812dea1p-40, 1e-16, 1e-20, 0.1, 0x1.9999999999999p-4,
    32766.0, 32766.5, 32767.0, 32767.5, -32768.0, -32768.5,
    2147483646.5, 2147483647.0, 2147483647.5, 2147483648.0, -2147483648.0, -2147483648.5, 9007199254740992.0,
    DBL_MAX, INFINITY, -INFINITY, NAN};
inline constexpr int32_t kNastyInts[] = {
    0, 1, -1, 2, -2, -32769, 32767, -32768, 32768, 65535, 65536, -65536,
    0x3FFFFFFF, 0x40000000, -0x40000000, -0x40000001, 0x7FFF8000, 0x7FFF0001,
    INT32_MAX, INT32_MAX - 1, INT32_MIN, INT32_MIN + 1};
// clang-format on

/// Random numbers, a third of them from the lists above. The seed is printed when a check fails in its scope.
class Random {
public:
    explicit Random(uint32_t seed)
        : engine_(seed),
          scope_(Catch::MessageBuilder("seed", CATCH_INTERNAL_LINEINFO, Catch::ResultWas::Info) << "seed " << seed) {}

    uint32_t bits() { return static_cast<uint32_t>(engine_()); }
    int32_t below(int32_t limit) { return static_cast<int32_t>(bits() % static_cast<uint32_t>(limit)); }
    /// Uniform in [low, high), no bad places.
    double plain(double low, double high) { return low + (high - low) * (bits() * 0x1p-32); }
    double nasty() {
        if (below(3) == 0) return kNastyDoubles[bits() % std::size(kNastyDoubles)];
        return std::ldexp(plain(-1.0, 1.0), below(40) - 8);
    }
    int32_t nastyInt() {
        if (below(3) == 0) return kNastyInts[bits() % std::size(kNastyInts)];
        return static_cast<int32_t>(bits()) >> below(32);
    }

private:
    std::mt19937 engine_;
    Catch::ScopedMessage scope_;
};

#endif  // ZAN_TESTS_VALUES_H

// Choices for test cases: numbers that favour boundary values, drawn from a seed or from a fuzzer's bytes.
#ifndef ZAN_TESTS_SUPPORT_CHOICES_H
#define ZAN_TESTS_SUPPORT_CHOICES_H

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>

// clang-format off
/// Doubles at which rounding, range tests and tolerances change their answer.
inline constexpr double kNastyDoubles[] = {
    0.0, -0.0, 1.0, -1.0, 0.5, -0.5, 1.5, -2.5, 0x1.fffffffffffffp-1, 0x1.0000000000001p0,
    5e-324, -5e-324, 0x1p-1022, 1e-300, 1e300,
    1e-12, -1e-12, 0x1.19799812dea1p-40, 1e-16, 1e-20, 0.1, 0x1.9999999999999p-4,
    32766.0, 32766.5, 32767.0, 32767.5, -32768.0, -32768.5,
    2147483646.5, 2147483647.0, 2147483647.5, 2147483648.0, -2147483648.0, -2147483648.5, 9007199254740992.0,
    DBL_MAX, INFINITY, -INFINITY, NAN};
/// Integers at which overflow, range tests and 16.16 rounding change their answer.
inline constexpr int32_t kNastyInts[] = {
    0, 1, -1, 2, -2, -32769, 32767, -32768, 32768, 65535, 65536, -65536,
    0x3FFFFFFF, 0x40000000, -0x40000000, -0x40000001, 0x7FFF8000, 0x7FFF0001,
    INT32_MAX, INT32_MAX - 1, INT32_MIN, INT32_MIN + 1};
// clang-format on

class Choices {
public:
    explicit Choices(uint64_t seed) : state_(seed) {}
    /// After the last byte, every choice reads zeros.
    Choices(const uint8_t* bytes, size_t count) : bytes_(bytes), left_(count) {}

    uint32_t bits() { return take(4); }
    int32_t below(int32_t limit) { return static_cast<int32_t>(take(limit <= 256 ? 1 : 4) % uint32_t(limit)); }
    /// Uniform in [low, high), without boundary values.
    double plain(double low, double high) { return low + (high - low) * (bits() * 0x1p-32); }
    template <class T, size_t N>
    T among(const T (&list)[N]) {
        return list[below(N)];
    }
    /// A third of the numbers come from kNastyDoubles or kNastyInts.
    double nasty() { return below(3) == 0 ? among(kNastyDoubles) : std::ldexp(plain(-1.0, 1.0), below(40) - 8); }
    int32_t nastyInt() { return below(3) == 0 ? among(kNastyInts) : static_cast<int32_t>(bits()) >> below(32); }

private:
    uint32_t take(int count) {
        if (bytes_ == nullptr) {  // splitmix64 (Steele, Lea and Flood, 2014)
            uint64_t z = state_ += 0x9E3779B97F4A7C15;
            z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
            return static_cast<uint32_t>(((z ^ (z >> 27)) * 0x94D049BB133111EB) >> 32);
        }
        uint32_t value = 0;
        for (; count > 0; --count, left_ -= left_ > 0) value = value << 8 | (left_ > 0 ? *bytes_++ : 0U);
        return value;
    }

    uint64_t state_ = 0;
    const uint8_t* bytes_ = nullptr;
    size_t left_ = 0;
};

#endif  // ZAN_TESTS_SUPPORT_CHOICES_H

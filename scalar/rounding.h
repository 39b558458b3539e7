// Inline truncation and rounding of doubles to integers. What does not fit gives the most negative integer.
#ifndef ZAN_SCALAR_ROUNDING_H
#define ZAN_SCALAR_ROUNDING_H

#include <cstdint>
#include <limits>

namespace zan {

/// x truncated toward zero; the most negative integer for NaN and out of range.
template <class Int>
constexpr Int truncated(double x) {
    constexpr auto kMin = static_cast<double>(std::numeric_limits<Int>::min());
    // Values in (kMin - 1, kMin) would truncate to kMin, which is the failure value too, so they need no extra test.
    return x >= kMin && x < -kMin ? static_cast<Int>(x) : std::numeric_limits<Int>::min();
}

/// x rounded to the nearest integer, halves toward plus infinity; only for an x whose result fits. Computes all
/// candidates and selects one: the sign of x is unpredictable, and a branch on it would mispredict.
template <class Int>
constexpr Int roundFitting(double x) {
    const double sum = x + 0.5;
    const Int up = static_cast<Int>(sum);
    const Int towardZero = static_cast<Int>(x);
    const Int down = static_cast<Int>(x - 0.5);
    // The sum is integral for halves, such as -2.5.
    const Int negative = static_cast<double>(up) == sum ? towardZero : down;
    return x > 0 ? up : negative;
}

/// The same for any x; the most negative integer for NaN and out of range.
template <class Int>
constexpr Int roundDouble(double x) {
    constexpr auto kMin = static_cast<double>(std::numeric_limits<Int>::min());
    return x > kMin - 0.5 && x < -kMin - 0.5 ? roundFitting<Int>(x) : std::numeric_limits<Int>::min();
}

}  // namespace zan

#endif  // ZAN_SCALAR_ROUNDING_H

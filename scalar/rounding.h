// From doubles to integers, inline: truncation and rounding with the most negative value for what does not fit.
#ifndef ZAN_SCALAR_ROUNDING_H
#define ZAN_SCALAR_ROUNDING_H

#include <cstdint>
#include <limits>

namespace zan {

/// x truncated toward zero; the most negative value for NaN and for what is out of range.
template <class Int>
constexpr Int truncated(double x) {
    constexpr auto kLeast = static_cast<double>(std::numeric_limits<Int>::min());
    // What lies between kLeast - 1 and kLeast truncates to the same value that the failure has.
    return x >= kLeast && x < -kLeast ? static_cast<Int>(x) : std::numeric_limits<Int>::min();
}

/// x rounded to the nearest integer, halves toward plus infinity; the most negative value for NaN and for what is out
/// of range.
template <class Int>
constexpr Int roundDouble(double x) {
    if (x > 0) return truncated<Int>(x + 0.5);
    const double sum = x + 0.5;
    if (static_cast<double>(truncated<Int>(sum)) == sum) return truncated<Int>(x);
    return truncated<Int>(x - 0.5);
}

}  // namespace zan

#endif  // ZAN_SCALAR_ROUNDING_H

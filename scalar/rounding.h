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

/// x rounded to the nearest integer, halves toward plus infinity; for an x whose result fits. All that it may be is
/// formed, so that no processor has to guess the sign.
template <class Int>
constexpr Int roundFitting(double x) {
    const double sum = x + 0.5;
    const Int above = static_cast<Int>(sum), inside = static_cast<Int>(x), below = static_cast<Int>(x - 0.5);
    const Int negative = static_cast<double>(above) == sum ? inside : below;
    return x > 0 ? above : negative;
}

/// The same for any x; the most negative value for NaN and for what is out of range.
template <class Int>
constexpr Int roundDouble(double x) {
    constexpr auto kLeast = static_cast<double>(std::numeric_limits<Int>::min());
    return x > kLeast - 0.5 && x < -kLeast - 0.5 ? roundFitting<Int>(x) : std::numeric_limits<Int>::min();
}

}  // namespace zan

#endif  // ZAN_SCALAR_ROUNDING_H

// Integer helpers that the other rooms build on, inline: bit counts, magnitudes, arithmetic that wraps, tests for
// overflow, the greatest common divisor. The exported operations are these.
#ifndef ZAN_SCALAR_INTEGERS_H
#define ZAN_SCALAR_INTEGERS_H

#include <bit>
#include <cstdint>
#include <type_traits>

namespace zan {

/// 32 for 0.
constexpr int leadingZeros(uint32_t x) { return std::countl_zero(x); }
/// 32 for 0.
constexpr int trailingZeros(uint32_t x) { return std::countr_zero(x); }

/// |x|; 2^31 for the most negative value.
constexpr uint32_t magnitude(int32_t x) { return x < 0 ? 0U - static_cast<uint32_t>(x) : static_cast<uint32_t>(x); }

template <class T>
constexpr T wrapAdd(T a, T b) {
    using U = std::make_unsigned_t<T>;
    return static_cast<T>(static_cast<U>(static_cast<U>(a) + static_cast<U>(b)));
}
template <class T>
constexpr T wrapSubtract(T a, T b) {
    using U = std::make_unsigned_t<T>;
    return static_cast<T>(static_cast<U>(static_cast<U>(a) - static_cast<U>(b)));
}
constexpr int32_t wrapMultiply(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

/// Exact.
constexpr bool addWouldOverflow(int32_t a, int32_t b) {
    if ((a < 0) != (b < 0)) return false;
    return (wrapAdd(a, b) < 0) != (a < 0);
}
/// Cautious: may say yes to a product that fits, never no to one that does not.
constexpr bool multiplyWouldOverflow(int32_t a, int32_t b) {
    return leadingZeros(magnitude(a)) + leadingZeros(magnitude(b)) <= 32;
}
/// Cautious in the same way.
constexpr bool multiplyWouldOverflow(uint32_t a, uint32_t b) { return leadingZeros(a) + leadingZeros(b) <= 31; }

/// Euclid's algorithm; 1 for b = 0, whatever a is.
constexpr uint32_t greatestCommonDivisor(uint32_t a, uint32_t b) {
    if (b == 0) return 1;
    for (uint32_t remainder = a % b; remainder != 0; remainder = a % b) {
        a = b;
        b = remainder;
    }
    return b;
}

}  // namespace zan

#endif  // ZAN_SCALAR_INTEGERS_H

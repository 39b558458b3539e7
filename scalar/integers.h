// Inline integer helpers, shared with the other subsystems: bit counts, magnitudes, wrapping arithmetic, overflow tests
// and the greatest common divisor.
#ifndef ZAN_SCALAR_INTEGERS_H
#define ZAN_SCALAR_INTEGERS_H

#include <algorithm>
#include <bit>
#include <cstdint>
#include <type_traits>

namespace zan {

/// 32 for 0.
constexpr int leadingZeros(uint32_t x) { return std::countl_zero(x); }
/// 32 for 0.
constexpr int trailingZeros(uint32_t x) { return std::countr_zero(x); }

/// |x|; 2^31 for INT32_MIN. With a mask, because a branch on the sign would mispredict.
constexpr uint32_t magnitude(int32_t x) {
    const auto sign = static_cast<uint32_t>(x >> 31);
    return (static_cast<uint32_t>(x) ^ sign) - sign;
}

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
/// Conservative: true for every product that does not fit, and for some that do.
constexpr bool multiplyWouldOverflow(int32_t a, int32_t b) {
    return leadingZeros(magnitude(a)) + leadingZeros(magnitude(b)) <= 32;
}
/// Conservative, as above.
constexpr bool multiplyWouldOverflow(uint32_t a, uint32_t b) { return leadingZeros(a) + leadingZeros(b) <= 31; }

/// 1 for b = 0, whatever a is. The binary algorithm (Stein, 1967), without a branch on which value is smaller, since it
/// would mispredict.
constexpr uint32_t greatestCommonDivisor(uint32_t a, uint32_t b) {
    if (b == 0) return 1;
    if (a == 0) return b;
    const int common = trailingZeros(a | b);
    int64_t first = a >> trailingZeros(a);
    int64_t second = b >> trailingZeros(b);
    for (int64_t difference = first - second; difference != 0; difference = first - second) {
        second = std::min(first, second);
        first = (difference < 0 ? -difference : difference) >> std::countr_zero(static_cast<uint64_t>(difference));
    }
    return static_cast<uint32_t>(first) << common;
}

}  // namespace zan

#endif  // ZAN_SCALAR_INTEGERS_H

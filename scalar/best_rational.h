// The best rational approximation of a single-precision value with both terms bounded: convergents of its continued
// fraction, and at the bound the last semiconvergent (Khinchin, Continued Fractions, 1935).
#ifndef ZAN_SCALAR_BEST_RATIONAL_H
#define ZAN_SCALAR_BEST_RATIONAL_H

#include "zan/types.h"

#include <cmath>
#include <cstdint>

namespace zan {

/// whole + rest / divisor, not less than 1, approximated by h / k with h <= bound, for a whole part below the bound.
/// @param inverted  the value that counts is k / h: which of two equally good fractions is nearer is asked of that
constexpr void expandFraction(int64_t whole, uint32_t divisor, uint32_t rest, int64_t bound, bool inverted, int64_t* h,
                              int64_t* k) {
    int64_t beforeH = 1;
    int64_t beforeK = 0;
    *h = whole;
    *k = 1;
    while (rest != 0) {
        const int64_t quotient = divisor / rest;
        const uint32_t next = divisor % rest;
        const int64_t most = (bound - beforeH) / *h;
        if (most <= quotient) {
            bool semiconvergent = 2 * most > quotient;
            if (2 * most == quotient) {
                const int64_t before = inverted ? beforeH : beforeK;
                const int64_t current = inverted ? *h : *k;
                semiconvergent = rest * before > next * current;
            }
            if (semiconvergent) {
                *h = beforeH + most * *h;
                *k = beforeK + most * *k;
            }
            return;
        }
        const int64_t nextH = quotient * *h + beforeH;
        const int64_t nextK = quotient * *k + beforeK;
        beforeH = *h;
        beforeK = *k;
        *h = nextH;
        *k = nextK;
        divisor = rest;
        rest = next;
    }
}

/// The fraction nearest to a finite value, numerator and denominator at most bound; of two equally near ones the one
/// with the smaller terms. A larger value is clipped to bound / 1.
/// @param bound  1 to 2^30
inline Zan_Ratio bestRational(float value, int32_t bound) {
    // |value| = mantissa / 2^scale, exactly, with 24 bits of mantissa.
    int exponent = 0;
    const float size = std::fabs(value);
    const auto mantissa = static_cast<uint32_t>(std::ldexp(std::frexp(size, &exponent), 24));
    const int scale = 24 - exponent;
    int64_t num = 0;
    int64_t den = 1;
    if (size >= 0x1p31F) {
        num = bound;
    } else if (size >= 1) {
        const uint64_t shifted = uint64_t{mantissa} << (exponent - 1);  // |value| * 2^23
        const auto whole = static_cast<int64_t>(shifted >> 23);
        num = bound;
        if (whole < bound) expandFraction(whole, 1U << 23, shifted & 0x7FFFFFU, bound, false, &num, &den);
    } else if (size > 0x1p-31F) {
        const uint64_t power = uint64_t{1} << scale;
        const auto whole = static_cast<int64_t>(power / mantissa);
        if (whole < bound) {
            expandFraction(whole, mantissa, static_cast<uint32_t>(power % mantissa), bound, true, &den, &num);
        } else if (2 * int64_t{bound} > whole) {
            num = 1;
            den = bound;
        }
    }  // What is smaller is no nearer to 1 / bound than to 0.
    return {static_cast<int32_t>(value < 0 ? -num : num), static_cast<uint32_t>(den)};
}

}  // namespace zan

#endif  // ZAN_SCALAR_BEST_RATIONAL_H

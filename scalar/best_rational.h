// The best rational approximation of a single-precision value with bounded terms: the last convergent of its continued
// fraction within the bound, or the last semiconvergent (Khinchin, Continued Fractions, 1935).
#ifndef ZAN_SCALAR_BEST_RATIONAL_H
#define ZAN_SCALAR_BEST_RATIONAL_H

#include "zan/types.h"

#include <cmath>
#include <cstdint>

namespace zan {

/// Which quotient of the two outputs of expandFraction approximates the value.
enum class Quotient { kHOverK, kKOverH };

/// Approximates whole + remainder / divisor, which is at least 1, by h / k with h <= bound; whole is below bound.
/// @param wanted  decides when exactly half of the next coefficient fits: of the convergent and the semiconvergent, it
///                takes the one that is nearer in this quotient
constexpr void expandFraction(int64_t whole, uint32_t divisor, uint32_t remainder, int64_t bound, Quotient wanted,
                              int64_t* h, int64_t* k) {
    int64_t previousH = 1;
    int64_t previousK = 0;
    *h = whole;
    *k = 1;
    while (remainder != 0) {
        const int64_t coefficient = divisor / remainder;
        const uint32_t nextRemainder = divisor % remainder;
        // The largest coefficient whose next h is within the bound.
        const int64_t largestWithinBound = (bound - previousH) / *h;
        if (largestWithinBound <= coefficient) {
            bool takeSemiconvergent = 2 * largestWithinBound > coefficient;
            if (2 * largestWithinBound == coefficient) {
                // A tie: of the convergent and the semiconvergent, takes the one with the smaller error. term and
                // previousTerm are denominators of the wanted quotient. With q = divisor / remainder and L =
                // largestWithinBound, the error of the convergent is proportional to 1 / term, that of the
                // semiconvergent to (q - L) / (previousTerm + L * term), with the same factor.
                const int64_t previousTerm = wanted == Quotient::kKOverH ? previousH : previousK;
                const int64_t term = wanted == Quotient::kKOverH ? *h : *k;
                takeSemiconvergent = remainder * previousTerm > nextRemainder * term;
            }
            if (takeSemiconvergent) {
                *h = previousH + largestWithinBound * *h;
                *k = previousK + largestWithinBound * *k;
            }
            return;
        }
        const int64_t nextH = coefficient * *h + previousH;
        const int64_t nextK = coefficient * *k + previousK;
        previousH = *h;
        previousK = *k;
        *h = nextH;
        *k = nextK;
        divisor = remainder;
        remainder = nextRemainder;
    }
}

/// The ratio nearest to a finite value with both terms at most bound; of two equally near ones the one with the smaller
/// terms. A value beyond the bound gives bound / 1 with its sign.
/// @param bound  1 to 2^30
inline Zan_Ratio bestRational(float value, int32_t bound) {
    // |value| = mantissa / 2^scale exactly, with a mantissa of 24 bits.
    int exponent = 0;
    const float magnitude = std::fabs(value);
    const auto mantissa = static_cast<uint32_t>(std::ldexp(std::frexp(magnitude, &exponent), 24));
    const int scale = 24 - exponent;
    int64_t num = 0;
    int64_t den = 1;
    if (magnitude >= 0x1p31F) {
        num = bound;
    } else if (magnitude >= 1) {
        const uint64_t shifted = uint64_t{mantissa} << (exponent - 1);  // |value| * 2^23
        const auto whole = static_cast<int64_t>(shifted >> 23);
        num = bound;
        if (whole < bound) {
            expandFraction(whole, 1U << 23, shifted & 0x7FFFFFU, bound, Quotient::kHOverK, &num, &den);
        }
    } else if (magnitude > 0x1p-31F) {
        // Expands the reciprocal, 2^scale / mantissa.
        const uint64_t power = uint64_t{1} << scale;
        const auto whole = static_cast<int64_t>(power / mantissa);
        if (whole < bound) {
            const auto remainder = static_cast<uint32_t>(power % mantissa);
            expandFraction(whole, mantissa, remainder, bound, Quotient::kKOverH, &den, &num);
        } else if (2 * int64_t{bound} > whole) {
            num = 1;
            den = bound;
        }
    }  // A smaller magnitude is no nearer to 1 / bound than to 0, so it stays 0 / 1.
    return {static_cast<int32_t>(value < 0 ? -num : num), static_cast<uint32_t>(den)};
}

}  // namespace zan

#endif  // ZAN_SCALAR_BEST_RATIONAL_H

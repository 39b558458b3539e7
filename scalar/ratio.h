// Constants and inline helpers that all ratio operations share.
#ifndef ZAN_SCALAR_RATIO_H
#define ZAN_SCALAR_RATIO_H

#include "frame/report.h"
#include "zan/scalar.h"

#include <optional>

namespace zan {

/// Output of a failed operation. Internally it also stands for a result that does not fit, because no result has a
/// denominator of 0. (std::optional would be returned through memory: written in parts and read as a whole, which
/// defeats store-to-load forwarding.)
inline constexpr Zan_Ratio kFailedRatio = {0, 0};
constexpr bool fits(const Zan_Ratio& result) { return result.den != 0; }

/// 2^31: the smallest denominator that does not fit a numerator.
inline constexpr uint32_t kNumeratorLimit = 0x80000000U;

constexpr double toDouble(const Zan_Ratio& r) { return static_cast<double>(r.num) / static_cast<double>(r.den); }

/// Early out for the overflow tests: non-zero factors with a product below 2^30 in magnitude pass the conservative
/// tests of integers.h, also after they are divided by a common divisor. Two such products can be added.
constexpr bool isSmallProduct(int64_t product) { return product > -0x40000000 && product < 0x40000000; }
constexpr bool isSmallProduct(uint64_t product) { return product < 0x40000000; }

/// Reports Zan_Err_ZeroDenominator and returns it if one of the denominators is 0; otherwise returns 0.
inline int32_t checkDenominators(uint32_t a, uint32_t b, Site site, Message context) {
    return a == 0 || b == 0 ? report(site, Zan_Err_ZeroDenominator, context) : 0;
}

}  // namespace zan

#endif  // ZAN_SCALAR_RATIO_H

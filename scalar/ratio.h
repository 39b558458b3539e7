// What the ratio operations share: reduction, the exact sum, addition with its modes, comparison, conversion.
#ifndef ZAN_SCALAR_RATIO_H
#define ZAN_SCALAR_RATIO_H

#include "frame/report.h"
#include "zan/scalar.h"

#include <optional>

namespace zan {

/// What a failed operation leaves in its destination, and what stands for a result that does not fit: no result has a
/// denominator of 0. (A std::optional would come back through memory, half of it written and all of it read.)
inline constexpr Zan_Ratio kFailedRatio = {0, 0};
constexpr bool fits(const Zan_Ratio& result) { return result.den != 0; }
/// A denominator from here on is no signed 32-bit numerator.
inline constexpr uint32_t kUnsignedOnly = 0x80000000U;

constexpr double toDouble(const Zan_Ratio& r) { return static_cast<double>(r.num) / static_cast<double>(r.den); }

/// A product like that, of factors that are not 0, is far from what 32 bits hold, and its factors need no counting of
/// their bits: they pass the cautious tests for overflow, and so do they divided by anything.
constexpr bool plainlySmall(int64_t product) { return product > -0x40000000 && product < 0x40000000; }
constexpr bool plainlySmall(uint64_t product) { return product < 0x40000000; }

/// Reports a zero denominator where there is one; 0 otherwise.
inline int32_t checkDenominators(uint32_t a, uint32_t b, Site site, Message context) {
    return a == 0 || b == 0 ? report(site, Zan_Err_ZeroDenominator, context) : 0;
}

/// Divides both terms by their greatest common divisor; false when that is 1. A zero over 2^31 or more keeps its
/// denominator and counts as reduced all the same.
bool reduce(Zan_Ratio* ratio);

/// The best approximation with both terms at most 2^30; nothing for |value| >= 2^31 and for NaN.
std::optional<Zan_Ratio> ratioFromDouble(double value);

/// a + b or a - b, reducing the operands only when the plain form overflows; kFailedRatio when it does not fit.
Zan_Ratio exactSum(Zan_Ratio a, Zan_Ratio b, bool subtract);

/// What the caller's status pointer asks for.
struct StatusMode {
    uint8_t* byte;  ///< a real status byte, already cleared, or null
    bool mayApproximate;
};
StatusMode readStatus(uint8_t* status);

/// Addition or subtraction as the interface has it.
int32_t addRatios(const Zan_Ratio& a, const Zan_Ratio& b, bool subtract, Message context, Zan_Ratio* destination,
                  uint8_t* status);

/// Negative, 0 or positive as a is less than, equal to or greater than b.
int32_t orderRatios(const Zan_Ratio& a, const Zan_Ratio& b, int32_t* order);

}  // namespace zan

#endif  // ZAN_SCALAR_RATIO_H

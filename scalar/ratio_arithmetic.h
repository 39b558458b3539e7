// Sums and differences of ratios, for the other ratio operations.
#ifndef ZAN_SCALAR_RATIO_ARITHMETIC_H
#define ZAN_SCALAR_RATIO_ARITHMETIC_H

#include "frame/messages.h"
#include "zan/types.h"

namespace zan {

enum class SumKind { kSum, kDifference };

/// a + b or a - b. Reduces the operands only when the sum of the unreduced ones may overflow; kFailedRatio if the
/// result does not fit.
Zan_Ratio exactSum(Zan_Ratio a, Zan_Ratio b, SumKind kind);

/// Zan_AddRatio or Zan_SubRatio with a context of the caller's for the reports.
int32_t addRatios(const Zan_Ratio& a, const Zan_Ratio& b, SumKind kind, Message context, Zan_Ratio* destination,
                  uint8_t* status);

}  // namespace zan

#endif  // ZAN_SCALAR_RATIO_ARITHMETIC_H

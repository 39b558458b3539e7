// Reduction to lowest terms, and the conversion of a double to a ratio.
#ifndef ZAN_SCALAR_RATIO_CONVERT_H
#define ZAN_SCALAR_RATIO_CONVERT_H

#include "zan/types.h"

#include <optional>

namespace zan {

/// Divides both terms by their greatest common divisor; false if it is 1. A zero with a denominator of 2^31 or more
/// keeps its denominator, but the function still returns true.
bool reduce(Zan_Ratio* ratio);

/// The nearest ratio with both terms at most 2^30, after rounding to single precision; none for |value| >= 2^31 and
/// for NaN.
std::optional<Zan_Ratio> ratioFromDouble(double value);

}  // namespace zan

#endif  // ZAN_SCALAR_RATIO_CONVERT_H

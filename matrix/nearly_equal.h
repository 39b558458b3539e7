// Equality of two numbers within a tolerance.
#ifndef ZAN_MATRIX_NEARLY_EQUAL_H
#define ZAN_MATRIX_NEARLY_EQUAL_H

#include <algorithm>
#include <cmath>

namespace zan {

/// True when a and b differ by less than 1e-12 times the larger of their magnitudes, or by less than 563 * 2^-49 (about
/// 1e-12). False when either is NaN or infinite.
inline bool nearlyEqual(double a, double b) {
    constexpr double kLeastTolerance = 563 * 0x1p-49;
    const double difference = std::fabs(a - b);
    return difference < kLeastTolerance || difference < std::max(std::fabs(a), std::fabs(b)) * 1e-12;
}

}  // namespace zan

#endif  // ZAN_MATRIX_NEARLY_EQUAL_H

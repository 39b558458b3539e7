// Equality of two numbers within a tolerance.
#ifndef ZAN_MATRIX_NEARLY_EQUAL_H
#define ZAN_MATRIX_NEARLY_EQUAL_H

namespace zan {

/// True when a and b differ by less than 1e-12 times the larger of them, or by less than 563 * 2^-49 (about 1e-12). Two
/// negative numbers are compared by their magnitudes. False when either is NaN or infinite.
inline bool nearlyEqual(double a, double b) {
    constexpr double kLeastTolerance = 563 * 0x1p-49;
    double lo = b < a ? b : a;
    double hi = b < a ? a : b;
    if (hi < 0) {
        const double magnitude = -lo;
        lo = -hi;
        hi = magnitude;
    }
    const double relative = hi * 1e-12;
    return hi - lo < (relative > kLeastTolerance ? relative : kLeastTolerance);
}

}  // namespace zan

#endif  // ZAN_MATRIX_NEARLY_EQUAL_H

// The tolerant equality of two numbers that the matrix operations share.
#ifndef ZAN_MATRIX_NEARLY_EQUAL_H
#define ZAN_MATRIX_NEARLY_EQUAL_H

namespace zan {

/// a and b differ by less than 1e-12 of the larger of them, or by less than 563 * 2^-49. A negative pair is compared by
/// its mirror image. NaN is nearly equal to nothing, an infinity neither.
inline bool nearlyEqual(double a, double b) {
    constexpr double kFloor = 563 * 0x1p-49;
    double lo = b < a ? b : a;
    double hi = b < a ? a : b;
    if (hi < 0) {
        const double mirrored = -lo;
        lo = -hi;
        hi = mirrored;
    }
    const double relative = hi * 1e-12;
    return hi - lo < (relative > kFloor ? relative : kFloor);
}

}  // namespace zan

#endif  // ZAN_MATRIX_NEARLY_EQUAL_H

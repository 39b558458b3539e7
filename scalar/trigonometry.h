// Trigonometric functions that keep errno as it was, and the conversion between degrees and radians.
#ifndef ZAN_SCALAR_TRIGONOMETRY_H
#define ZAN_SCALAR_TRIGONOMETRY_H

#include "frame/keep_errno.h"

namespace zan {

inline constexpr double kRadiansPerDegree = 0.017453292519943295;  // pi / 180
inline constexpr double kDegreesPerRadian = 57.29577951308232;     // 180 / pi

struct SineCosine {
    double sine, cosine;
};

// Defined in another file, so that the compiler cannot move the call past the guard below: it merges sin and cos into
// one call that it believes never writes errno.
SineCosine sineAndCosineUnguarded(double radians);
double tangentUnguarded(double radians);

inline SineCosine sineAndCosine(double radians) {
    const KeepErrno keepErrno;
    return sineAndCosineUnguarded(radians);
}
inline double tangent(double radians) {
    const KeepErrno keepErrno;
    return tangentUnguarded(radians);
}

}  // namespace zan

#endif  // ZAN_SCALAR_TRIGONOMETRY_H

// Sine and cosine of one angle, and its tangent.
#ifndef ZAN_SCALAR_SINE_COSINE_H
#define ZAN_SCALAR_SINE_COSINE_H

#include "frame/keep_errno.h"

namespace zan {

struct SineCosine {
    double sine, cosine;
};

/// In a file of their own: the compiler takes sine and cosine at once by a function that it believes to leave errno
/// alone, and would call that behind the guard below.
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

#endif  // ZAN_SCALAR_SINE_COSINE_H

// Sine and cosine of one angle.
#ifndef ZAN_SCALAR_SINE_COSINE_H
#define ZAN_SCALAR_SINE_COSINE_H

#include "frame/keep_errno.h"

namespace zan {

struct SineCosine {
    double sine, cosine;
};

/// In a file of its own: the compiler takes both at once by a function that it believes to leave errno alone, and would
/// call that behind the guard below.
SineCosine sineAndCosineUnguarded(double radians);

inline SineCosine sineAndCosine(double radians) {
    const KeepErrno keepErrno;
    return sineAndCosineUnguarded(radians);
}

}  // namespace zan

#endif  // ZAN_SCALAR_SINE_COSINE_H

// Sine, cosine and tangent of one angle, by the C library.
#include "scalar/sine_cosine.h"

#include <cmath>

zan::SineCosine zan::sineAndCosineUnguarded(double radians) { return {std::sin(radians), std::cos(radians)}; }
double zan::tangentUnguarded(double radians) { return std::tan(radians); }

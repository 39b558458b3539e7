// Sine, cosine and tangent from the C library, without the errno guard.
#include "scalar/trigonometry.h"

#include <cmath>

zan::SineCosine zan::sineAndCosineUnguarded(double radians) { return {std::sin(radians), std::cos(radians)}; }
double zan::tangentUnguarded(double radians) { return std::tan(radians); }

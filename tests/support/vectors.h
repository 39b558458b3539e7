// The vectors of doubles, by short names.
#ifndef ZAN_TESTS_SUPPORT_VECTORS_H
#define ZAN_TESTS_SUPPORT_VECTORS_H

#include "zan/types.h"

using Vector2 = Zan_Vector2T<double>;
using Vector3 = Zan_Vector3T<double>;
using Vector4 = Zan_Vector4T<double>;

#endif  // ZAN_TESTS_SUPPORT_VECTORS_H

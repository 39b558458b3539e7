// Greatest common divisor and least common multiple.
#include "scalar/integers.h"
#include "zan/scalar.h"

using zan::greatestCommonDivisor;
using zan::magnitude;

int32_t Zan_SignedGCD(int32_t a, int32_t b, int32_t* divisor) {
    *divisor = static_cast<int32_t>(greatestCommonDivisor(magnitude(a), magnitude(b)));
    return 0;
}

int32_t Zan_UnsignedGCD(uint32_t a, uint32_t b, uint32_t* divisor) {
    *divisor = greatestCommonDivisor(a, b);
    return 0;
}

int32_t Zan_SignedLCM(int32_t a, int32_t b, int32_t* multiple) {
    // In 64 bits, because a divisor of 2^31 does not fit int32_t.
    const int64_t divisor = greatestCommonDivisor(magnitude(a), magnitude(b));
    *multiple = static_cast<int32_t>(zan::wrapMultiply(a, b) / divisor);
    return 0;
}

int32_t Zan_UnsignedLCM(uint32_t a, uint32_t b, uint32_t* multiple) {
    *multiple = a * b / greatestCommonDivisor(a, b);
    return 0;
}

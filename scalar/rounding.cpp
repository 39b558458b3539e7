// Rounding of doubles to integers and of integers to multiples, and the remainder of doubles.
#include "scalar/rounding.h"

#include "frame/keep_errno.h"
#include "scalar/integers.h"
#include "zan/scalar.h"

#include <cmath>

int32_t Zan_RoundToNearestMult(int32_t x, int32_t m) {
    if (m == 0) return x;
    const int32_t half = m / 2;
    // In 64 bits, because INT32_MIN % -1 overflows in 32.
    const auto remainder = [m](int32_t s) { return static_cast<int32_t>(int64_t{s} % int64_t{m}); };
    if (x >= 0) {
        const int32_t s = zan::wrapAdd(x, half);
        return zan::wrapSubtract(s, remainder(s));
    }
    const int32_t s = zan::wrapSubtract(half, x);
    return zan::wrapSubtract(remainder(s), s);
}

int32_t Zan_RoundDouble(double x) { return zan::roundDouble<int32_t>(x); }

int32_t Zan_RoundDoubleSafe(double x) {
    if (x > 2147483646.5) return INT32_MAX;
    if (x < -2147483647.5) return INT32_MIN;
    return zan::roundDouble<int32_t>(x);
}

int64_t Zan_RoundDouble64(double x) { return zan::roundDouble<int64_t>(x); }

double Zan_fmod(double x, double y) {
    const zan::KeepErrno keepErrno;
    return std::fmod(x, y);
}

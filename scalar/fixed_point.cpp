// Multiplication and division: 16.16 in 32-bit integer arithmetic, 8.24 in double precision.
#include "frame/report.h"
#include "scalar/integers.h"
#include "scalar/rounding.h"
#include "zan/scalar.h"

namespace {

using zan::magnitude;
using zan::Message;
using zan::Site;

constexpr double kFix24One = 16777216.0;

// a * b / 65536. The 16 bits to drop are shifted out before the multiplication, so that 32 bits suffice: trailing zeros
// if both factors together have more than 16 of them, else 8 bits of each.
int32_t fixedProduct(int32_t a, int32_t b) {
    const int zerosA = zan::trailingZeros(magnitude(a));
    if (zerosA > 16) return zan::wrapMultiply(a >> 16, b);
    if (zerosA + zan::trailingZeros(magnitude(b)) > 16) return zan::wrapMultiply(a >> zerosA, b >> (16 - zerosA));
    return zan::wrapMultiply(a >> 8, b >> 8);
}

// Values in (-129, -128) and [128 - 2^-25, 128) pass the range test but do not fit: they fail without a report.
Zan_Fix24 fix24FromDouble(double x, Site site, Message context) {
    if (x >= 128.0 || x <= -129.0) {
        zan::report(site, Zan_Err_Overflow, context);
        return Zan_kFixedFailure;
    }
    const double raw = x * kFix24One;
    return zan::truncated<int32_t>(x < 0 ? raw - 0.5 : raw + 0.5);
}

}  // namespace

Zan_Fixed Zan_FixMul(Zan_Fixed a, Zan_Fixed b) {
    const int32_t product = fixedProduct(a, b);
    const bool wrongSign = (a < 0) == (b < 0) ? product < 0 : product > 0;
    return wrongSign ? Zan_kFixedFailure : product;
}

Zan_Fixed Zan_FixDiv(Zan_Fixed a, Zan_Fixed b) {
    if (b == 0) return Zan_kFixedFailure;
    const uint32_t dividend = magnitude(a);
    const int leadingZeros = zan::leadingZeros(dividend);
    uint32_t quotient = 0;
    if (leadingZeros >= 16) {
        quotient = (dividend << 16) / magnitude(b);
    } else {
        const uint32_t divisor = magnitude(b) >> (16 - leadingZeros);
        if (divisor == 0) return Zan_kFixedFailure;
        quotient = (dividend << leadingZeros) / divisor;
    }
    if ((a < 0) != (b < 0)) {
        const auto negative = static_cast<int32_t>(0U - quotient);
        return negative <= 0 ? negative : Zan_kFixedFailure;
    }
    return quotient < 0x80000000U ? static_cast<int32_t>(quotient) : Zan_kFixedFailure;
}

Zan_Fix24 Zan_Fix24Mul(Zan_Fix24 a, Zan_Fix24 b) {
    const double x = (a * 0x1p-24) * (b * 0x1p-24);
    return fix24FromDouble(x, Site::Fix24Mul, Message::InFix24Multiply);
}

Zan_Fix24 Zan_Fix24Ratio(int32_t numerator, int32_t denominator) {
    if (denominator == 0) {
        zan::report(Site::Fix24Ratio, Zan_Err_DivideByZero, Message::InFix24Divide);
        return Zan_kFixedFailure;
    }
    const double x = static_cast<double>(numerator) / static_cast<double>(denominator);
    return fix24FromDouble(x, Site::Fix24Ratio, Message::InFix24Divide);
}

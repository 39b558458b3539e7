// Conversions of ratios: to lowest terms, to the reciprocal, to another denominator, and from a double.
#include "scalar/ratio_convert.h"

#include "scalar/best_rational.h"
#include "scalar/integers.h"
#include "scalar/ratio.h"
#include "scalar/rounding.h"

#include <cmath>

using zan::magnitude;
using zan::Message;
using zan::Site;

bool zan::reduce(Zan_Ratio* ratio) {
    const uint32_t divisor = greatestCommonDivisor(magnitude(ratio->num), ratio->den);
    if (divisor < kNumeratorLimit) {  // divides by 1 as well, because a branch on it would mispredict
        ratio->num /= static_cast<int32_t>(divisor);
        ratio->den /= divisor;
    } else if (ratio->num != 0) {
        // A divisor of 2^31 or more can only come from -2^31 / 2^31 or from a zero, which stays unchanged.
        *ratio = {-1, 1};
    }
    return divisor != 1;
}

std::optional<Zan_Ratio> zan::ratioFromDouble(double value) {
    if (!std::isfinite(value)) return std::nullopt;
    int exponent = 0;
    if (std::frexp(value, &exponent) == 0 || exponent < -31) return Zan_Ratio{0, 1};
    if (exponent > 31) return std::nullopt;
    Zan_Ratio ratio = bestRational(static_cast<float>(value), 1 << 30);
    reduce(&ratio);
    return ratio;
}

namespace {

// The numerator of num / oldDen when it is written with the denominator newDen, computed in double precision and
// rounded; none if it does not fit.
std::optional<int32_t> changeDenominator(int32_t num, uint32_t oldDen, uint32_t newDen) {
    const double x = static_cast<double>(newDen) / static_cast<double>(oldDen) * static_cast<double>(num);
    if (x > 2147483647.0 || x < -2147483648.0) return std::nullopt;
    return zan::roundDouble<int32_t>(x);
}

void setFlag(bool* flag, bool value) {
    if (flag != nullptr) *flag = value;
}

// Signals an overflow through the flag if there is one, else through a report and the returned code.
int32_t signalOverflow(bool overflowed, bool* overflow, Site site) {
    setFlag(overflow, overflowed);
    if (!overflowed || overflow != nullptr) return 0;
    return zan::report(site, Zan_Err_Overflow, Message::ConvertingDenominators);
}

}  // namespace

int32_t Zan_ReduceRatio(const Zan_Ratio* source, Zan_Ratio* destination, bool* changed) {
    Zan_Ratio ratio = *source;
    setFlag(changed, zan::reduce(&ratio));
    *destination = ratio;
    return 0;
}

int32_t Zan_RecipRatio(const Zan_Ratio* source, Zan_Ratio* destination, bool* exact) {
    Zan_Ratio ratio = *source;
    const bool negative = ratio.num < 0;
    bool halved = false;
    if (ratio.den >= zan::kNumeratorLimit) halved = !zan::reduce(&ratio);
    const int shift = halved ? 1 : 0;
    const uint32_t num = ratio.den >> shift;
    *destination = {static_cast<int32_t>(negative ? 0U - num : num), magnitude(ratio.num) >> shift};
    setFlag(exact, !halved);
    return 0;
}

int32_t Zan_ConvRatio(const Zan_Ratio* source, uint32_t newDenominator, Zan_Ratio* destination, bool* exact,
                      bool* overflow) {
    const Zan_Ratio ratio = *source;
    const int32_t invalid =
        zan::checkDenominators(ratio.den, newDenominator, Site::ConvRatio, Message::ConvertingDenominators);
    if (invalid != 0) {
        *destination = zan::kFailedRatio;
        setFlag(overflow, false);
        return invalid;
    }
    if (ratio.den == newDenominator) {
        *destination = ratio;
        setFlag(exact, true);
        setFlag(overflow, false);
        return 0;
    }
    const std::optional<int32_t> num = changeDenominator(ratio.num, ratio.den, newDenominator);
    *destination = num ? Zan_Ratio{*num, newDenominator} : zan::kFailedRatio;
    setFlag(exact, num && static_cast<double>(ratio.num) * newDenominator == static_cast<double>(*num) * ratio.den);
    return signalOverflow(!num, overflow, Site::ConvRatio);
}

int32_t Zan_ShortConvRatio(int32_t numerator, uint32_t oldDenominator, uint32_t newDenominator, int32_t* destination,
                           bool* overflow) {
    const int32_t invalid =
        zan::checkDenominators(oldDenominator, newDenominator, Site::ShortConvRatio, Message::ConvertingDenominators);
    if (invalid != 0) {
        *destination = 0;
        setFlag(overflow, false);
        return invalid;
    }
    const std::optional<int32_t> num =
        oldDenominator == newDenominator ? numerator : changeDenominator(numerator, oldDenominator, newDenominator);
    *destination = num.value_or(0);
    return signalOverflow(!num, overflow, Site::ShortConvRatio);
}

int32_t Zan_FpLong2Ratio(double value, Zan_Ratio* destination, bool* overflow) {
    const std::optional<Zan_Ratio> ratio = zan::ratioFromDouble(value);
    *overflow = !ratio;
    *destination = ratio.value_or(zan::kFailedRatio);
    return 0;
}

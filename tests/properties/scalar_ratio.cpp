// Ratios compared with 128-bit fractions, and best rational approximations compared with a walk by mediants.
#include "property.h"
#include "scalar/best_rational.h"
#include "tests/support/host_reports.h"
#include "zan/scalar.h"

namespace {

__extension__ using Wide = __int128;
constexpr uint32_t kLargeDenominator = 0x80000000;  // from here on, comparisons may be approximate and divisions fail

bool same(const Zan_Ratio& a, const Zan_Ratio& b) { return a.num == b.num && a.den == b.den; }

Zan_Ratio drawRatio(Choices& c) {
    const bool small = c.below(4) == 0;
    const int32_t num = small ? c.below(5) - 2 : c.nastyInt();
    return {num, small ? 1 + c.bits() % 4 : std::max(1U, static_cast<uint32_t>(c.nastyInt()) >> c.below(2))};
}

// -1, 0 or 1 as a is less than, equal to or greater than b.
int compare(const Zan_Ratio& a, const Zan_Ratio& b) {
    const Wide x = Wide{a.num} * b.den, y = Wide{b.num} * a.den;
    return (x > y) - (x < y);
}

int32_t codeOf(const std::string& report) { return report.empty() ? 0 : Zan_Err_Overflow; }

struct Operation {
    int32_t (*call)(const Zan_Ratio*, const Zan_Ratio*, Zan_Ratio*, uint8_t*);
    const char* overflow;
};
constexpr Operation kOperations[] = {{Zan_AddRatio, "0x110010 sev 8: overflow in ratio addition."},
                                     {Zan_SubRatio, "0x110010 sev 8: overflow in ratio subtraction."},
                                     {Zan_MulRatio, "0x110011 sev 8: overflow in ratio multiply."},
                                     {Zan_DivRatio, "0x110011 sev 8: overflow in ratio multiply."}};
constexpr int32_t kDivision = 3;

// Checks CompareRatio, MinRatio and MaxRatio. Returns whether a is greater than b by CompareRatio.
bool checkOrder(const Zan_Ratio& a, const Zan_Ratio& b) {
    int32_t order = 0;
    Zan_Ratio least, most;
    must(Zan_CompareRatio(&a, &b, &order) == 0);
    must(Zan_MinRatio(&a, &b, &least) == 0);
    must(Zan_MaxRatio(&a, &b, &most) == 0);
    const int sign = (order > 0) - (order < 0);
    const bool approximate = a.den >= kLargeDenominator || b.den >= kLargeDenominator;
    must(sign == compare(a, b) || (sign == 0 && approximate));
    must(same(least, order > 0 ? b : a));
    must(same(most, order < 0 ? b : a));

    uint8_t status = 0;
    Zan_Ratio difference;
    must(Zan_SubRatio(&a, &b, &difference, &status) == 0);
    must(status != Zan_RatioExact || order == difference.num);
    return order > 0;
}

bool arithmetic(Choices& c) {
    HostReports host;
    const Zan_Ratio a = drawRatio(c);
    const Zan_Ratio b = drawRatio(c);
    const bool greater = checkOrder(a, b);
    const int32_t which = c.below(4);
    if (which == kDivision && (b.num == 0 || b.den >= kLargeDenominator)) return greater;

    const Wide an = a.num, ad = a.den, bn = b.num, bd = b.den, sign = bn < 0 ? -1 : 1;
    const Wide nums[] = {an * bd + bn * ad, an * bd - bn * ad, an * bn, sign * an * bd};
    const Wide num = nums[which], den = which == kDivision ? ad * bn * sign : ad * bd;
    const double value = static_cast<double>(num) / static_cast<double>(den);
    const double clipped = std::clamp(value, -0x1p30, 0x1p30);
    const auto& [call, overflow] = kOperations[which];

    // With approximation allowed, a result is exact, or within single precision, or failed because it is too large.
    uint8_t status = Zan_RatioAllowApproximation;
    Zan_Ratio result;
    must(call(&a, &b, &result, &status) == 0);
    const double error = std::fabs(static_cast<double>(result.num) / result.den - clipped);
    switch (status) {
        case Zan_RatioExact:
            must(Wide{result.num} * den == num * result.den);
            break;
        case Zan_RatioFailed:
            must(same(result, {}));
            must(std::fabs(value) > 0x1p31 - 1);
            break;
        case Zan_RatioApproximated:
            must(error <= std::fabs(clipped) * 0x1p-23 + 0x1p-31);
            break;
        default:
            must(false);
    }
    // Terms below 2^13 can never overflow.
    const auto small = [](const Zan_Ratio& r) { return r.num / 8192 == 0 && r.den < 8192; };
    must(status == Zan_RatioExact || !small(a) || !small(b));

    // The other status pointers, each with the destination on an operand.
    const std::string inexactReport = status == Zan_RatioExact ? "" : overflow;
    const std::string failedReport = status == Zan_RatioFailed ? overflow : "";
    Zan_Ratio exact = a;
    must(call(&exact, &b, &exact, nullptr) == codeOf(inexactReport));
    must(host.takeAll() == inexactReport);
    must(same(exact, status == Zan_RatioExact ? result : Zan_Ratio{}));

    Zan_Ratio approximate = b;
    must(call(&a, &approximate, &approximate, Zan_kRatioApproximate) == codeOf(failedReport));
    must(host.takeAll() == failedReport);
    must(same(approximate, result));

    uint8_t noApproximation = 0xFD;  // every bit but Zan_RatioAllowApproximation
    Zan_Ratio silent = a;
    must(call(&silent, &b, &silent, &noApproximation) == 0);
    must(noApproximation == (status == Zan_RatioExact ? Zan_RatioExact : Zan_RatioFailed));
    must(host.takeAll().empty());
    must(same(silent, exact));
    return greater;
}

// The sum, or {0, 0} when it is not exact.
Zan_Ratio exactSum(const Zan_Ratio& a, const Zan_Ratio& b) {
    Zan_Ratio sum;
    uint8_t status = 0;
    return Zan_AddRatio(&a, &b, &sum, &status) == 0 && status == Zan_RatioExact ? sum : Zan_Ratio{};
}

Zan_Ratio clip(const Zan_Ratio& value, const Zan_Ratio& low, const Zan_Ratio& high) {
    if (compare(value, low) <= 0) return low;
    return compare(value, high) < 0 ? value : high;
}

// The same for the span from start to start + length; {0, 0} when the end of the span overflows.
Zan_Ratio clipToSpan(const Zan_Ratio& value, const Zan_Ratio& start, const Zan_Ratio& length) {
    if (compare(value, start) <= 0) return start;
    const Zan_Ratio end = exactSum(start, length);
    return end.den == 0 ? end : clip(value, start, end);
}

bool clips(Choices& c) {
    HostReports host;
    Zan_Ratio r[4];
    for (Zan_Ratio& ratio : r) {
        ratio = drawRatio(c);
        ratio.den = std::max(1U, ratio.den >> 1);
    }
    const Zan_Ratio &value = r[0], &low = r[1], &high = r[2], &length = r[3];
    const Zan_Ratio inSpan = clipToSpan(value, low, length);
    const bool invalidRange = compare(low, high) > 0, overflows = inSpan.den == 0;
    for (int operand = 1; operand < 4; ++operand) {  // the operand that is the destination
        Zan_Ratio range[] = {{}, value, low, high};
        const Zan_Ratio expected = invalidRange ? range[operand] : clip(value, low, high);
        must(Zan_ClipRatio(&range[1], &range[2], &range[3], &range[operand]) == (invalidRange ? 3 : 0));
        must(same(range[operand], expected));
        must(host.takeAll() == (invalidRange ? "0x110018 sev 8 code 3: invalid rational range" : ""));

        Zan_Ratio span[] = {{}, value, low, length};
        must(Zan_ClipRatioToSpan(&span[1], &span[2], &span[3], &span[operand]) == (overflows ? Zan_Err_Overflow : 0));
        must(same(span[operand], inSpan));
        must(host.takeAll() == (overflows ? "0x110010 sev 8: overflow in ratio span." : ""));
    }

    // A span clipped to a span: both ends are clipped, and the length is their difference.
    Zan_Ratio end = exactSum(value, high);
    if (end.den != 0) end = clipToSpan(end, low, length);
    Zan_Ratio clippedLength{};
    uint8_t status = Zan_RatioFailed;
    if (!overflows && end.den != 0) {
        status = 0;
        must(Zan_SubRatio(&end, &inSpan, &clippedLength, &status) == 0);
    }
    const bool good = status == Zan_RatioExact;
    Zan_Ratio from = value, size = high;
    must(Zan_ClipSpanToSpan(&from, &size, &low, &length, &from, &size) == (good ? 0 : Zan_Err_Overflow));
    must(same(from, good ? inSpan : Zan_Ratio{}));
    must(same(size, good ? clippedLength : Zan_Ratio{}));
    must(host.takeAll().empty() == good);
    return good;
}

// A multiple of 2^-20: on or next to a fraction of small terms, or a multiple of a coarser step, 2^-6 to 2^-12. The
// coarse ones are often halfway between two candidates.
double drawCloseToFraction(Choices& c, bool coarse) {
    const int64_t fraction = (int64_t{c.below(20)} << 20) / (1 + c.below(20)) + c.below(3) - 1;
    const int64_t binary = int64_t{c.below(40 * 64)} << 14 >> c.below(7);
    return static_cast<double>(std::max<int64_t>(coarse ? binary : fraction, 0)) * 0x1p-20;
}

bool best(Choices& c) {
    const int32_t kind = c.below(10), bound = kind == 0 ? 0x40000000 : 1 + c.below(16);
    double magnitude = drawCloseToFraction(c, kind % 2 != 0);
    if (bound > 16) magnitude = std::ldexp(c.plain(1, 2), c.below(24) - 12);
    const auto value = static_cast<float>(c.below(3) == 0 ? -magnitude : magnitude);

    // The walk narrows the interval of low and high by their mediant until its terms exceed the bound.
    const Wide num = static_cast<int64_t>(std::ldexp(std::fabs(value), 36)), den = int64_t{1} << 36;
    int64_t lowP = 0, lowQ = 1, highP = 1, highQ = 0;
    while (lowP + highP <= bound && lowQ + highQ <= bound && lowP * den != num * lowQ) {
        const int64_t p = lowP + highP, q = lowQ + highQ;
        if (p * den <= num * q) {
            lowP = p;
            lowQ = q;
        } else {
            highP = p;
            highQ = q;
        }
    }
    // The nearer end is the best approximation; of two equally near ends, the one of smaller terms. Both distances are
    // multiplied by den * lowQ * highQ.
    const Wide toLow = (num * lowQ - lowP * den) * highQ, toHigh = (highP * den - num * highQ) * lowQ;
    const bool low = toLow == toHigh ? lowP + lowQ < highP + highQ : toLow < toHigh;
    Zan_Ratio ratio = zan::bestRational(value, bound);
    bool overflow = false;
    if (bound > 16) {
        must(Zan_FpLong2Ratio(value, &ratio, &overflow) == 0);
        must(!overflow);
    }
    must(ratio.num == (value < 0 ? -1 : 1) * (low ? lowP : highP));
    must(ratio.den == (low ? lowQ : highQ));
    return low;
}

const Property kArithmetic("scalar_ratio", 40000, arithmetic);
const Property kClips("scalar_ratio_clips", 20000, clips);
const Property kBest("scalar_best_rational", 20000, best);

}  // namespace

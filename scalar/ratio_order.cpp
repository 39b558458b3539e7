// Comparison of ratios, the smaller and the larger, and clipping to ranges and spans.
#include "scalar/integers.h"
#include "scalar/ratio.h"
#include "scalar/wide_product.h"

using zan::Message;
using zan::Site;

int32_t zan::orderRatios(const Zan_Ratio& a, const Zan_Ratio& b, int32_t* order) {
    *order = 0;
    const int32_t invalid = checkDenominators(a.den, b.den, Site::RatioSum, Message::ComparingRatios);
    if (invalid != 0) return invalid;
    const int64_t first = int64_t{a.num} * b.den;
    const int64_t second = int64_t{b.num} * a.den;
    if (plainlySmall(uint64_t{a.den} * b.den) && plainlySmall(first) && plainlySmall(second) && a.num != 0 &&
        b.num != 0) {
        // The numerator of the difference over the least common denominator.
        const auto divisor = static_cast<int32_t>(greatestCommonDivisor(a.den, b.den));
        *order = static_cast<int32_t>(first - second) / divisor;
    } else if (const Zan_Ratio difference = exactSum(a, b, true); fits(difference)) {
        *order = difference.num;
    } else if (a.den < kUnsignedOnly && b.den < kUnsignedOnly) {
        *order =
            compare(wideProduct(a.num, static_cast<int32_t>(b.den)), wideProduct(b.num, static_cast<int32_t>(a.den)));
    } else {
        const double roundedFirst = static_cast<double>(b.den) * static_cast<double>(a.num);
        const double roundedSecond = static_cast<double>(a.den) * static_cast<double>(b.num);
        *order = roundedSecond > roundedFirst ? -1 : static_cast<int32_t>(roundedFirst != roundedSecond);
    }
    return 0;
}

namespace {

// A number of the sign that orderRatios gives.
int32_t signOfOrder(const Zan_Ratio& a, const Zan_Ratio& b, int32_t* sign) {
    const auto usual = [](uint32_t den) { return den != 0 && den < zan::kUnsignedOnly; };
    if (!usual(a.den) || !usual(b.den)) return zan::orderRatios(a, b, sign);
    *sign = zan::compare(zan::wideProduct(a.num, static_cast<int32_t>(b.den)),
                         zan::wideProduct(b.num, static_cast<int32_t>(a.den)));
    return 0;
}

int32_t fail(Zan_Ratio* destination, int32_t code) {
    *destination = zan::kFailedRatio;
    return code;
}

// b when the order of a and b has the wanted sign, else a.
int32_t choose(const Zan_Ratio& a, const Zan_Ratio& b, bool positive, Zan_Ratio* destination) {
    int32_t order = 0;
    const int32_t code = signOfOrder(a, b, &order);
    if (code != 0) return fail(destination, code);
    *destination = (positive ? order > 0 : order < 0) ? b : a;
    return 0;
}

int32_t clipToSpan(const Zan_Ratio& value, const Zan_Ratio& start, const Zan_Ratio& length, Zan_Ratio* destination) {
    int32_t order = 0;
    int32_t code = signOfOrder(value, start, &order);
    Zan_Ratio end = start;
    if (code == 0 && order > 0) {
        code = zan::addRatios(start, length, false, Message::InRatioSpan, &end, nullptr);
        if (code == 0) code = signOfOrder(value, end, &order);
        if (code == 0 && order < 0) end = value;
    }
    if (code != 0) return fail(destination, code);
    *destination = end;
    return 0;
}

}  // namespace

int32_t Zan_CompareRatio(const Zan_Ratio* a, const Zan_Ratio* b, int32_t* order) {
    // Copies, since the order may be written into one of them.
    const Zan_Ratio first = *a;
    const Zan_Ratio second = *b;
    return zan::orderRatios(first, second, order);
}

int32_t Zan_MinRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination) {
    return choose(*a, *b, true, destination);
}

int32_t Zan_MaxRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination) {
    return choose(*a, *b, false, destination);
}

int32_t Zan_ClipRatio(const Zan_Ratio* value, const Zan_Ratio* low, const Zan_Ratio* high, Zan_Ratio* destination) {
    int32_t order = 0;
    int32_t code = signOfOrder(*low, *high, &order);
    if (code != 0) return code;
    if (order > 0) return zan::reportPlatform(Site::ClipRatio, kBel_Err_BadRange, Message::InvalidRationalRange);
    code = signOfOrder(*value, *low, &order);
    Zan_Ratio clipped = *low;
    if (code == 0 && order > 0) {
        code = signOfOrder(*value, *high, &order);
        clipped = order < 0 ? *value : *high;
    }
    if (code != 0) return fail(destination, code);
    *destination = clipped;
    return 0;
}

int32_t Zan_ClipRatioToSpan(const Zan_Ratio* value, const Zan_Ratio* start, const Zan_Ratio* length,
                            Zan_Ratio* destination) {
    return clipToSpan(*value, *start, *length, destination);
}

int32_t Zan_ClipSpanToSpan(const Zan_Ratio* start1, const Zan_Ratio* length1, const Zan_Ratio* start2,
                           const Zan_Ratio* length2, Zan_Ratio* destinationStart, Zan_Ratio* destinationLength) {
    Zan_Ratio start = {};
    Zan_Ratio end = {};
    Zan_Ratio length = {};
    int32_t code = clipToSpan(*start1, *start2, *length2, &start);
    if (code == 0) code = zan::addRatios(*start1, *length1, false, Message::InRatioAddition, &end, nullptr);
    if (code == 0) code = clipToSpan(end, *start2, *length2, &end);
    if (code == 0) code = zan::addRatios(end, start, true, Message::InRatioSubtraction, &length, nullptr);
    *destinationStart = code == 0 ? start : zan::kFailedRatio;
    *destinationLength = code == 0 ? length : zan::kFailedRatio;
    return code;
}

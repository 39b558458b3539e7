// Comparison, minimum and maximum of ratios, and clipping to ranges and spans.
#include "scalar/integers.h"
#include "scalar/ratio.h"
#include "scalar/ratio_arithmetic.h"

using zan::kNumeratorLimit;
using zan::Message;
using zan::Site;
using zan::SumKind;

namespace {

// -1, 0 or 1 for a < b, a == b, a > b.
int32_t compare(int64_t a, int64_t b) { return a < b ? -1 : static_cast<int32_t>(a > b); }

// Zan_CompareRatio: a negative number, 0 or a positive number for a < b, a == b, a > b.
int32_t orderRatios(const Zan_Ratio& a, const Zan_Ratio& b, int32_t* order) {
    *order = 0;
    const int32_t invalid = zan::checkDenominators(a.den, b.den, Site::RatioSum, Message::ComparingRatios);
    if (invalid != 0) return invalid;
    const int64_t productA = int64_t{a.num} * b.den;
    const int64_t productB = int64_t{b.num} * a.den;
    if (zan::isSmallProduct(uint64_t{a.den} * b.den) && zan::isSmallProduct(productA) &&
        zan::isSmallProduct(productB) && a.num != 0 && b.num != 0) {
        // The numerator of a - b over the least common denominator.
        const auto divisor = static_cast<int32_t>(zan::greatestCommonDivisor(a.den, b.den));
        *order = static_cast<int32_t>(productA - productB) / divisor;
    } else if (const Zan_Ratio difference = zan::exactSum(a, b, SumKind::kDifference); zan::fits(difference)) {
        *order = difference.num;
    } else if (a.den < kNumeratorLimit && b.den < kNumeratorLimit) {
        *order = compare(productA, productB);
    } else {
        const double roundedA = static_cast<double>(b.den) * static_cast<double>(a.num);
        const double roundedB = static_cast<double>(a.den) * static_cast<double>(b.num);
        *order = roundedB > roundedA ? -1 : static_cast<int32_t>(roundedA != roundedB);
    }
    return 0;
}

// Stores a number with the sign of what orderRatios stores. For denominators below 2^31 it only compares two products,
// so the magnitude may differ.
int32_t signOfOrder(const Zan_Ratio& a, const Zan_Ratio& b, int32_t* sign) {
    const auto usual = [](uint32_t den) { return den != 0 && den < kNumeratorLimit; };
    if (!usual(a.den) || !usual(b.den)) return orderRatios(a, b, sign);
    *sign = compare(int64_t{a.num} * b.den, int64_t{b.num} * a.den);
    return 0;
}

int32_t fail(Zan_Ratio* destination, int32_t code) {
    *destination = zan::kFailedRatio;
    return code;
}

enum class Extreme { kMinimum, kMaximum };

int32_t storeExtreme(const Zan_Ratio& a, const Zan_Ratio& b, Extreme wanted, Zan_Ratio* destination) {
    int32_t order = 0;
    const int32_t code = signOfOrder(a, b, &order);
    if (code != 0) return fail(destination, code);
    *destination = (wanted == Extreme::kMinimum ? order > 0 : order < 0) ? b : a;
    return 0;
}

int32_t clipToSpan(const Zan_Ratio& value, const Zan_Ratio& start, const Zan_Ratio& length, Zan_Ratio* destination) {
    int32_t order = 0;
    int32_t code = signOfOrder(value, start, &order);
    Zan_Ratio end = start;
    if (code == 0 && order > 0) {
        code = zan::addRatios(start, length, SumKind::kSum, Message::InRatioSpan, &end, nullptr);
        if (code == 0) code = signOfOrder(value, end, &order);
        if (code == 0 && order < 0) end = value;
    }
    if (code != 0) return fail(destination, code);
    *destination = end;
    return 0;
}

}  // namespace

int32_t Zan_CompareRatio(const Zan_Ratio* a, const Zan_Ratio* b, int32_t* order) {
    // Copies, because order may point into one of them.
    const Zan_Ratio first = *a;
    const Zan_Ratio second = *b;
    return orderRatios(first, second, order);
}

int32_t Zan_MinRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination) {
    return storeExtreme(*a, *b, Extreme::kMinimum, destination);
}

int32_t Zan_MaxRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination) {
    return storeExtreme(*a, *b, Extreme::kMaximum, destination);
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
    if (code == 0) code = zan::addRatios(*start1, *length1, SumKind::kSum, Message::InRatioAddition, &end, nullptr);
    if (code == 0) code = clipToSpan(end, *start2, *length2, &end);
    if (code == 0)
        code = zan::addRatios(end, start, SumKind::kDifference, Message::InRatioSubtraction, &length, nullptr);
    *destinationStart = code == 0 ? start : zan::kFailedRatio;
    *destinationLength = code == 0 ? length : zan::kFailedRatio;
    return code;
}

// Sum, difference, product and quotient of ratios. Exact in 32 bits; if that may overflow, exact after cancelling
// common factors; if that does not fit, approximated in double precision where the caller allows it.
#include "scalar/ratio_arithmetic.h"

#include "scalar/integers.h"
#include "scalar/ratio.h"
#include "scalar/ratio_convert.h"

#include <utility>

using zan::addWouldOverflow;
using zan::fits;
using zan::isSmallProduct;
using zan::Message;
using zan::multiplyWouldOverflow;
using zan::Site;
using zan::SumKind;

namespace {

// What the status pointer allows.
struct StatusMode {
    uint8_t* byte;  // null unless the caller has a status byte
    bool mayApproximate;
};

// Reads and clears the status byte, if there is one.
StatusMode readStatus(uint8_t* status) {
    if (status == nullptr) return {nullptr, false};
    if (status == Zan_kRatioApproximate) return {nullptr, true};
    const bool mayApproximate = (*status & Zan_RatioAllowApproximation) != 0;
    *status = Zan_RatioExact;
    return {status, mayApproximate};
}

Zan_Ratio sumWithoutReducing(const Zan_Ratio& a, const Zan_Ratio& b, SumKind kind) {
    const bool subtract = kind == SumKind::kDifference;
    if (subtract && b.num == INT32_MIN) return zan::kFailedRatio;  // -INT32_MIN does not fit
    const Zan_Ratio other = {subtract ? -b.num : b.num, b.den};
    if (a.num == 0) return other;
    if (other.num == 0) return a;
    if (a.den == other.den && !addWouldOverflow(a.num, other.num)) return {a.num + other.num, a.den};
    const uint32_t divisor = zan::greatestCommonDivisor(a.den, other.den);
    const uint32_t factorA = other.den / divisor;
    const uint32_t factorB = a.den / divisor;
    const uint64_t den = uint64_t{factorA} * a.den;
    const int64_t numA = int64_t{factorA} * a.num;
    const int64_t numB = int64_t{factorB} * other.num;
    if (isSmallProduct(den) && isSmallProduct(numA) && isSmallProduct(numB)) {
        return {static_cast<int32_t>(numA + numB), static_cast<uint32_t>(den)};
    }
    // A product that passes this test also has factorA and factorB below 2^31.
    if (multiplyWouldOverflow(factorA, a.den)) return zan::kFailedRatio;
    const auto signedA = static_cast<int32_t>(factorA);
    const auto signedB = static_cast<int32_t>(factorB);
    if (multiplyWouldOverflow(signedA, a.num) || multiplyWouldOverflow(signedB, other.num)) return zan::kFailedRatio;
    const int32_t first = signedA * a.num;
    const int32_t second = signedB * other.num;
    if (addWouldOverflow(first, second)) return zan::kFailedRatio;
    return {first + second, factorA * a.den};
}

Zan_Ratio productWithoutReducing(const Zan_Ratio& a, const Zan_Ratio& b) {
    const uint64_t den = uint64_t{a.den} * b.den;
    const int64_t num = int64_t{a.num} * b.num;
    if (isSmallProduct(den) && isSmallProduct(num) && num != 0) {
        return {static_cast<int32_t>(num), static_cast<uint32_t>(den)};
    }
    if (multiplyWouldOverflow(a.den, b.den) || multiplyWouldOverflow(a.num, b.num)) return zan::kFailedRatio;
    return {a.num * b.num, a.den * b.den};
}

Zan_Ratio exactProduct(Zan_Ratio a, Zan_Ratio b) {
    const Zan_Ratio unreduced = productWithoutReducing(a, b);
    if (fits(unreduced)) return unreduced;
    // Cancels within each operand, then across them.
    bool changed = zan::reduce(&a);
    changed |= zan::reduce(&b);
    std::swap(a.num, b.num);
    changed |= zan::reduce(&a);
    changed |= zan::reduce(&b);
    return changed ? productWithoutReducing(a, b) : zan::kFailedRatio;
}

double sum(const Zan_Ratio& a, const Zan_Ratio& b) { return zan::toDouble(a) + zan::toDouble(b); }
double difference(const Zan_Ratio& a, const Zan_Ratio& b) { return zan::toDouble(a) - zan::toDouble(b); }
double product(const Zan_Ratio& a, const Zan_Ratio& b) { return zan::toDouble(a) * zan::toDouble(b); }

struct Operation {
    Site site;
    Message context;
    double (*approximate)(const Zan_Ratio& a, const Zan_Ratio& b);
};

// Stores the exact result, or an approximation if the exact one does not fit and the caller allows it. Signals a
// failure through the status byte if there is one, else through a report.
int32_t storeResult(Zan_Ratio result, const Operation& operation, const Zan_Ratio& a, const Zan_Ratio& b,
                    const StatusMode& mode, Zan_Ratio* destination) {
    uint8_t outcome = Zan_RatioExact;
    if (!fits(result)) {
        if (mode.mayApproximate) result = zan::ratioFromDouble(operation.approximate(a, b)).value_or(result);
        outcome = fits(result) ? Zan_RatioApproximated : Zan_RatioFailed;
    }
    *destination = result;
    if (mode.byte != nullptr) {
        *mode.byte = outcome;
        return 0;
    }
    return fits(result) ? 0 : zan::report(operation.site, Zan_Err_Overflow, operation.context);
}

}  // namespace

Zan_Ratio zan::exactSum(Zan_Ratio a, Zan_Ratio b, SumKind kind) {
    const Zan_Ratio unreduced = sumWithoutReducing(a, b, kind);
    if (fits(unreduced)) return unreduced;
    bool changed = reduce(&a);
    changed |= reduce(&b);
    return changed ? sumWithoutReducing(a, b, kind) : kFailedRatio;
}

int32_t zan::addRatios(const Zan_Ratio& a, const Zan_Ratio& b, SumKind kind, Message context, Zan_Ratio* destination,
                       uint8_t* status) {
    const StatusMode mode = readStatus(status);
    const int32_t invalid = checkDenominators(a.den, b.den, Site::RatioSum, context);
    if (invalid != 0) {
        *destination = kFailedRatio;
        return invalid;
    }
    const Operation operation = {Site::RatioSum, context, kind == SumKind::kDifference ? difference : sum};
    return storeResult(exactSum(a, b, kind), operation, a, b, mode, destination);
}

int32_t Zan_AddRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination, uint8_t* status) {
    return zan::addRatios(*a, *b, SumKind::kSum, Message::InRatioAddition, destination, status);
}

int32_t Zan_SubRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination, uint8_t* status) {
    return zan::addRatios(*a, *b, SumKind::kDifference, Message::InRatioSubtraction, destination, status);
}

int32_t Zan_MulRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination, uint8_t* status) {
    const StatusMode mode = readStatus(status);
    const int32_t invalid = zan::checkDenominators(a->den, b->den, Site::RatioProduct, Message::InRatioMultiply);
    if (invalid != 0) {
        *destination = zan::kFailedRatio;
        return invalid;
    }
    const Operation operation = {Site::RatioProduct, Message::InRatioMultiply, product};
    return storeResult(exactProduct(*a, *b), operation, *a, *b, mode, destination);
}

int32_t Zan_DivRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination, uint8_t* status) {
    Zan_Ratio divisor = *b;
    uint8_t* const byte = status == Zan_kRatioApproximate ? nullptr : status;
    bool halved = false;
    if (divisor.den >= zan::kNumeratorLimit) {
        const bool mayHalve = byte != nullptr ? (*byte & Zan_RatioAllowHalving) != 0 : status != nullptr;
        if (!mayHalve) {
            *destination = zan::kFailedRatio;
            if (byte == nullptr) return zan::report(Site::RatioProduct, Zan_Err_Overflow, Message::InRatioDivide);
            *byte = Zan_RatioFailed;
            return 0;
        }
        divisor = {divisor.num / 2, divisor.den / 2};
        halved = true;
    }
    Zan_Ratio reciprocal = divisor;  // keeps a zero denominator, which the multiplication reports
    if (divisor.den != 0) {
        const auto num = static_cast<int32_t>(divisor.den);
        reciprocal = {divisor.num < 0 ? -num : num, zan::magnitude(divisor.num)};
    }
    const int32_t result = Zan_MulRatio(a, &reciprocal, destination, status);
    if (halved && byte != nullptr) *byte = static_cast<uint8_t>(*byte | Zan_RatioDivisorHalved);
    return result;
}

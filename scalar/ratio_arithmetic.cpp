// Sum, difference, product and quotient of ratios: exact in 32 bits as long as it can be, with common factors cancelled
// when it cannot, and in double precision only where the caller allows it.
#include "scalar/integers.h"
#include "scalar/ratio.h"

#include <utility>

using zan::addWouldOverflow;
using zan::fits;
using zan::Message;
using zan::multiplyWouldOverflow;
using zan::plainlySmall;
using zan::Site;

zan::StatusMode zan::readStatus(uint8_t* status) {
    if (status == nullptr) return {nullptr, false};
    if (status == Zan_kRatioApproximate) return {nullptr, true};
    const bool mayApproximate = (*status & Zan_RatioAllowApproximation) != 0;
    *status = Zan_RatioExact;
    return {status, mayApproximate};
}

namespace {

using zan::StatusMode;

// What division adds to the status byte.
constexpr uint8_t kDivisorHalved = 2;

Zan_Ratio sumAsItIs(const Zan_Ratio& a, const Zan_Ratio& b, bool subtract) {
    if (subtract && b.num == INT32_MIN) return zan::kFailedRatio;  // it has no negative
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
    if (plainlySmall(den) && plainlySmall(numA) && plainlySmall(numB)) {
        return {static_cast<int32_t>(numA + numB), static_cast<uint32_t>(den)};
    }
    // This also holds both factors below 2^31.
    if (multiplyWouldOverflow(factorA, a.den)) return zan::kFailedRatio;
    const auto signedA = static_cast<int32_t>(factorA);
    const auto signedB = static_cast<int32_t>(factorB);
    if (multiplyWouldOverflow(signedA, a.num) || multiplyWouldOverflow(signedB, other.num)) return zan::kFailedRatio;
    const int32_t first = signedA * a.num;
    const int32_t second = signedB * other.num;
    if (addWouldOverflow(first, second)) return zan::kFailedRatio;
    return {first + second, factorA * a.den};
}

Zan_Ratio productAsItIs(const Zan_Ratio& a, const Zan_Ratio& b) {
    const uint64_t den = uint64_t{a.den} * b.den;
    const int64_t num = int64_t{a.num} * b.num;
    if (plainlySmall(den) && plainlySmall(num) && num != 0) {
        return {static_cast<int32_t>(num), static_cast<uint32_t>(den)};
    }
    if (multiplyWouldOverflow(a.den, b.den) || multiplyWouldOverflow(a.num, b.num)) return zan::kFailedRatio;
    return {a.num * b.num, a.den * b.den};
}

Zan_Ratio exactProduct(Zan_Ratio a, Zan_Ratio b) {
    const Zan_Ratio plain = productAsItIs(a, b);
    if (fits(plain)) return plain;
    bool changed = zan::reduce(&a);
    changed |= zan::reduce(&b);
    std::swap(a.num, b.num);
    changed |= zan::reduce(&a);
    changed |= zan::reduce(&b);
    return changed ? productAsItIs(a, b) : zan::kFailedRatio;
}

double sum(const Zan_Ratio& a, const Zan_Ratio& b) { return zan::toDouble(a) + zan::toDouble(b); }
double difference(const Zan_Ratio& a, const Zan_Ratio& b) { return zan::toDouble(a) - zan::toDouble(b); }
double product(const Zan_Ratio& a, const Zan_Ratio& b) { return zan::toDouble(a) * zan::toDouble(b); }

struct Operation {
    Site site;
    Message context;
    double (*approximate)(const Zan_Ratio& a, const Zan_Ratio& b);
};

// Writes the exact result; where there is none, approximates if that is allowed. Then tells in the way that the caller
// chose.
int32_t finish(Zan_Ratio result, const Operation& operation, const Zan_Ratio& a, const Zan_Ratio& b,
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

Zan_Ratio zan::exactSum(Zan_Ratio a, Zan_Ratio b, bool subtract) {
    const Zan_Ratio plain = sumAsItIs(a, b, subtract);
    if (fits(plain)) return plain;
    // What has been reduced reduces no further, so one more try is enough.
    bool changed = reduce(&a);
    changed |= reduce(&b);
    return changed ? sumAsItIs(a, b, subtract) : kFailedRatio;
}

int32_t zan::addRatios(const Zan_Ratio& a, const Zan_Ratio& b, bool subtract, Message context, Zan_Ratio* destination,
                       uint8_t* status) {
    const StatusMode mode = readStatus(status);
    const int32_t invalid = checkDenominators(a.den, b.den, Site::RatioSum, context);
    if (invalid != 0) {
        *destination = kFailedRatio;
        return invalid;
    }
    const Operation operation = {Site::RatioSum, context, subtract ? difference : sum};
    return finish(exactSum(a, b, subtract), operation, a, b, mode, destination);
}

int32_t Zan_AddRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination, uint8_t* status) {
    return zan::addRatios(*a, *b, false, Message::InRatioAddition, destination, status);
}

int32_t Zan_SubRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination, uint8_t* status) {
    return zan::addRatios(*a, *b, true, Message::InRatioSubtraction, destination, status);
}

int32_t Zan_MulRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination, uint8_t* status) {
    const StatusMode mode = zan::readStatus(status);
    const int32_t invalid = zan::checkDenominators(a->den, b->den, Site::RatioProduct, Message::InRatioMultiply);
    if (invalid != 0) {
        *destination = zan::kFailedRatio;
        return invalid;
    }
    const Operation operation = {Site::RatioProduct, Message::InRatioMultiply, product};
    return finish(exactProduct(*a, *b), operation, *a, *b, mode, destination);
}

int32_t Zan_DivRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination, uint8_t* status) {
    Zan_Ratio divisor = *b;
    uint8_t* const byte = status == Zan_kRatioApproximate ? nullptr : status;
    bool halved = false;
    if (divisor.den >= zan::kUnsignedOnly) {
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
    Zan_Ratio reciprocal = divisor;  // with a zero denominator it stays as it is, for the multiplication to report
    if (divisor.den != 0) {
        const auto num = static_cast<int32_t>(divisor.den);
        reciprocal = {divisor.num < 0 ? -num : num, zan::magnitude(divisor.num)};
    }
    const int32_t result = Zan_MulRatio(a, &reciprocal, destination, status);
    if (halved && byte != nullptr) *byte = static_cast<uint8_t>(*byte | kDivisorHalved);
    return result;
}

// Ratios at the limits, with results calculated by hand. The property scalar_ratio covers usual ratios.
#include "tests/support/host_reports.h"
#include "zan/scalar.h"

#include <catch2/catch.hpp>

#include <cmath>

// Outside the namespace, where argument-dependent lookup finds them.
static bool operator==(const Zan_Ratio& a, const Zan_Ratio& b) { return a.num == b.num && a.den == b.den; }
static std::ostream& operator<<(std::ostream& out, const Zan_Ratio& r) { return out << r.num << '/' << r.den; }

namespace {

constexpr uint32_t kBig = 0x80000000;  // the smallest denominator that does not fit a numerator
constexpr int32_t kMin = INT32_MIN;
constexpr int32_t kMax = INT32_MAX;
constexpr int32_t kBound = 0x40000000;  // of the terms of an approximation
constexpr Zan_Ratio kFailed = {0, 0};

struct Failure {
    int32_t code;
    std::string report;
};
const Failure kNone = {0, ""};
const Failure kZeroInSum = {Zan_Err_ZeroDenominator, "0x110010 sev 8: zero denominator in ratio addition."};
const Failure kZeroInDifference = {Zan_Err_ZeroDenominator, "0x110010 sev 8: zero denominator in ratio subtraction."};
const Failure kZeroInProduct = {Zan_Err_ZeroDenominator, "0x110011 sev 8: zero denominator in ratio multiply."};
const Failure kQuotientOverflow = {Zan_Err_Overflow, "0x110011 sev 8: overflow in ratio divide."};

// The status pointer of a call: null, Zan_kRatioApproximate, or a byte with its value on entry and afterwards.
struct Status {
    enum { kNull, kApproximate, kByte } pointer;
    uint8_t before = 0, after = 0;
};
constexpr Status kNull = {Status::kNull};
constexpr Status kApproximate = {Status::kApproximate};
constexpr Status byte(int before, int after) {
    return {Status::kByte, static_cast<uint8_t>(before), static_cast<uint8_t>(after)};
}
constexpr int kHalving = Zan_RatioAllowHalving;
constexpr int kApproximation = Zan_RatioAllowApproximation;

using Operation = int32_t (*)(const Zan_Ratio*, const Zan_Ratio*, Zan_Ratio*, uint8_t*);
struct Row {
    const char* what;
    Operation operation;
    Zan_Ratio a, b;
    Status status;
    Zan_Ratio result;
    Failure failure = kNone;
};
// clang-format off
const Row kRows[] = {
    {"a zero denominator clears the byte",
     Zan_AddRatio, {1, 2}, {1, 0}, byte(kHalving | kApproximation, 0), kFailed, kZeroInSum},
    {"a zero denominator of the first operand",
     Zan_SubRatio, {1, 0}, {1, 2}, kNull, kFailed, kZeroInDifference},
    {"a zero denominator in a product",
     Zan_MulRatio, {1, 2}, {1, 0}, byte(kApproximation, 0), kFailed, kZeroInProduct},
    {"a divisor of 0",
     Zan_DivRatio, {1, 2}, {0, 4}, byte(kHalving | kApproximation, 0), kFailed, kZeroInProduct},
    {"a divisor with denominator 0",
     Zan_DivRatio, {1, 2}, {3, 0}, kNull, kFailed, kZeroInProduct},
    {"-2^31 cannot be subtracted",
     Zan_SubRatio, {0, kBig}, {kMin, 1}, byte(0, Zan_RatioFailed), kFailed},
    {"-2^31 cannot be multiplied even by 0",
     Zan_MulRatio, {kMin, 1}, {0, 1}, byte(0, Zan_RatioFailed), kFailed},
    {"a divisor that would have to be halved",
     Zan_DivRatio, {1, 2}, {-3, kBig}, kNull, kFailed, kQuotientOverflow},
    {"the same with a byte that allows only approximation",
     Zan_DivRatio, {1, 2}, {-3, kBig}, byte(kApproximation, Zan_RatioFailed), kFailed},
    {"the same with a byte that allows halving",
     Zan_DivRatio, {1, 2}, {-3, kBig}, byte(kHalving, Zan_RatioDivisorHalved), {-0x20000000, 1}},
    {"both terms are halved with the pointer that allows it",
     Zan_DivRatio, {1, 2}, {-2, 0xFFFFFFFF}, kApproximate, {-kBound, 1}},
    {"halved, and the product still does not fit",
     Zan_DivRatio, {3, 2}, {-3, kBig + 2}, byte(kHalving, Zan_RatioFailed | Zan_RatioDivisorHalved), kFailed},
    {"a divisor that halving turns into 0",
     Zan_DivRatio, {1, 2}, {-1, kBig}, byte(kHalving, Zan_RatioDivisorHalved), kFailed, kZeroInProduct},
};
// clang-format on

struct FormRow {
    const char* what;
    Zan_Ratio source, reduced;
    bool changed;
    Zan_Ratio reciprocal;
    bool exact;
};
constexpr FormRow kForms[] = {
    {"a common divisor", {6, 8}, {3, 4}, true, {8, 6}, true},
    {"an invalid ratio", {3, 0}, {3, 0}, false, {0, 3}, true},
    {"a reciprocal that fits after reducing", {2, kBig}, {1, kBound}, true, {kBound, 1}, true},
    {"the largest denominator", {-7, 0xFFFFFFFF}, {-7, 0xFFFFFFFF}, false, {-kMax, 3}, false},
    {"the smallest numerator", {kMin, 6}, {-kBound, 3}, true, {-6, kBig}, true},
    {"a common divisor of 2^31", {kMin, kBig}, {-1, 1}, true, {-1, 1}, true},
    {"a zero over 2^31 is copied, changed is true; its reciprocal wraps", {0, kBig}, {0, kBig}, true, {kMin, 0}, true},
};

struct DoubleRow {
    const char* what;
    double value;
    Zan_Ratio ratio;  // kFailed for an overflow
};
constexpr DoubleRow kDoubles[] = {
    {"exact only after rounding to single precision", 1.0 / 3, {11184811, 33554432}},
    {"minus zero", -0.0, {0, 1}},
    {"the bound itself", 0x1p30, {kBound, 1}},
    {"clipped to the bound", 1.5e9, {kBound, 1}},
    {"2^31 does not fit", 0x1p31, kFailed},
    {"NaN", NAN, kFailed},
    {"too small", 1e-10, {0, 1}},
    {"the smallest single that is not 0/1", 0x1.000002p-31, {1, kBound}},
    {"as near to 0 as to 1 / 2^30", 0x1p-31, {0, 1}},
    {"the reciprocal of the bound", -0x1p-30, {-1, kBound}},
};

struct ConversionRow {
    const char* what;
    Zan_Ratio source;
    uint32_t newDenominator;
    int32_t num;  // 0 on failure
    bool exact = true;
    bool overflow = false;
};
constexpr ConversionRow kConversions[] = {
    {"rounded", {1, 3}, 10, 3, false},
    {"-0.5 rounds up", {-1, 2}, 1, 0, false},
    {"the same denominator for the smallest numerator", {kMin, 4}, 4, kMin},
    {"above the range", {kMax, 1}, 2, 0, false, true},
    {"below the range", {kMin, 2}, 4, 0, false, true},
    {"half above the range", {1431655765, 2}, 3, 0, false, true},
    {"an invalid ratio", {1, 0}, 3, 0},
    {"an invalid new denominator", {1, 3}, 0, 0},
};

// What a conversion at a site returns and reports.
Failure conversionFailure(const ConversionRow& row, const std::string& site, bool hasFlag) {
    const std::string start = site + " sev 8: ";
    if (row.source.den == 0 || row.newDenominator == 0) {
        return {Zan_Err_ZeroDenominator, start + "zero denominator converting ratio denominators."};
    }
    if (row.overflow && !hasFlag) return {Zan_Err_Overflow, start + "overflow converting ratio denominators."};
    return kNone;
}

}  // namespace

TEST_CASE("sums, products and quotients of ratios for each status pointer") {
    for (const Row& row : kRows) {
        CAPTURE(row.what);
        HostReports host;
        Zan_Ratio result = {77, 7};
        uint8_t status = row.status.before;
        uint8_t* pointer = row.status.pointer == Status::kByte          ? &status
                           : row.status.pointer == Status::kApproximate ? Zan_kRatioApproximate
                                                                        : nullptr;
        CHECK(row.operation(&row.a, &row.b, &result, pointer) == row.failure.code);
        CHECK(result == row.result);
        CHECK(int{status} == int{row.status.after});
        CHECK(host.takeAll() == row.failure.report);
    }
}

TEST_CASE("a zero denominator is reported by every comparison and clipping") {
    static constexpr Zan_Ratio kHalf = {1, 2};
    static constexpr Zan_Ratio kInvalid = {1, 0};
    struct InvalidRow {
        const char* what;
        int32_t (*call)(Zan_Ratio* result);
        Zan_Ratio result;
    };
    const InvalidRow rows[] = {
        {"minimum", [](Zan_Ratio* r) { return Zan_MinRatio(&kHalf, &kInvalid, r); }, kFailed},
        {"maximum", [](Zan_Ratio* r) { return Zan_MaxRatio(&kInvalid, &kHalf, r); }, kFailed},
        {"clipping to a range", [](Zan_Ratio* r) { return Zan_ClipRatio(&kInvalid, &kHalf, &kHalf, r); }, kFailed},
        {"an invalid range leaves the destination alone",
         [](Zan_Ratio* r) { return Zan_ClipRatio(&kHalf, &kInvalid, &kHalf, r); }, kHalf},
        {"clipping to a span", [](Zan_Ratio* r) { return Zan_ClipRatioToSpan(&kHalf, &kInvalid, &kHalf, r); }, kFailed},
        {"comparison", [](Zan_Ratio* r) { return Zan_CompareRatio(&kHalf, &kInvalid, &r->num); }, {0, 2}},
    };
    for (const InvalidRow& row : rows) {
        CAPTURE(row.what);
        HostReports host;
        Zan_Ratio result = kHalf;
        CHECK(row.call(&result) == Zan_Err_ZeroDenominator);
        CHECK(result == row.result);
        CHECK(host.takeAll() == "0x110010 sev 8: zero denominator comparing ratios.");
    }
}

TEST_CASE("lowest terms and reciprocals, in place") {
    HostReports host;
    for (const FormRow& row : kForms) {
        CAPTURE(row.what);
        Zan_Ratio ratio = row.source;
        bool changed = !row.changed;
        CHECK(Zan_ReduceRatio(&ratio, &ratio, &changed) == 0);
        CHECK(ratio == row.reduced);
        CHECK(changed == row.changed);

        ratio = row.source;
        bool exact = !row.exact;
        CHECK(Zan_RecipRatio(&ratio, &ratio, &exact) == 0);
        CHECK(ratio == row.reciprocal);
        CHECK(exact == row.exact);
    }
    CHECK(host.takeAll().empty());
}

TEST_CASE("ratios of doubles") {
    HostReports host;
    for (const DoubleRow& row : kDoubles) {
        CAPTURE(row.what);
        const bool fits = row.ratio.den != 0;
        Zan_Ratio ratio = {77, 7};
        bool overflow = fits;
        CHECK(Zan_FpLong2Ratio(row.value, &ratio, &overflow) == 0);
        CHECK(overflow == !fits);
        CHECK(ratio == row.ratio);
    }
    CHECK(host.takeAll().empty());
}

TEST_CASE("ratios and numerators over another denominator") {
    for (const ConversionRow& row : kConversions) {
        for (const bool hasFlag : {false, true}) {
            CAPTURE(row.what, hasFlag);
            HostReports host;
            const Failure ratioFails = conversionFailure(row, "0x110012", hasFlag);
            const Failure numeratorFails = conversionFailure(row, "0x110013", hasFlag);
            Zan_Ratio ratio = row.source;
            bool exact = true;
            bool overflow = !row.overflow;
            CHECK(Zan_ConvRatio(&ratio, row.newDenominator, &ratio, &exact, hasFlag ? &overflow : nullptr) ==
                  ratioFails.code);
            CHECK(ratio.num == row.num);
            CHECK(ratio.den == (ratioFails.code != 0 || row.overflow ? 0 : row.newDenominator));
            CHECK(exact == row.exact);
            CHECK(overflow == (hasFlag ? row.overflow : !row.overflow));
            CHECK(host.takeAll() == ratioFails.report);

            int32_t num = 77;
            overflow = !row.overflow;
            CHECK(Zan_ShortConvRatio(row.source.num, row.source.den, row.newDenominator, &num,
                                     hasFlag ? &overflow : nullptr) == numeratorFails.code);
            CHECK(num == row.num);
            CHECK(overflow == (hasFlag ? row.overflow : !row.overflow));
            CHECK(host.takeAll() == numeratorFails.report);
        }
    }
}

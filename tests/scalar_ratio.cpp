// Ratios: rows by hand for every mode and report, random operands against 128-bit fractions.
#include <catch2/catch.hpp>
#include <string>

#include "host_reports.h"
#include "values.h"
#include "zan/scalar.h"

namespace {

__extension__ using Wide = __int128;
// clang-format off
constexpr uint32_t kBig = 0x80000000;
constexpr int32_t kMin = INT32_MIN, kMax = INT32_MAX, kClip = 0x40000000;
constexpr uint8_t kNull = 100, kAllOnes = 101;  // the two pointers that are no status byte
constexpr Zan_Ratio kUntouched = {77, 7};
#define AT(site) "0x1100" #site " sev 8: "
constexpr char kAddOver[] = AT(10) "overflow in ratio addition.",
    kAddZero[] = AT(10) "zero denominator in ratio addition.",
    kSubOver[] = AT(10) "overflow in ratio subtraction.", kSubZero[] = AT(10) "zero denominator in ratio subtraction.",
    kSpanOver[] = AT(10) "overflow in ratio span.", kSpanZero[] = AT(10) "zero denominator in ratio span.",
    kMulOver[] = AT(11) "overflow in ratio multiply.", kMulZero[] = AT(11) "zero denominator in ratio multiply.",
    kDivOver[] = AT(11) "overflow in ratio divide.", kOrderZero[] = AT(10) "zero denominator comparing ratios.",
    kRange[] = "0x110018 sev 8 code 3: invalid rational range", kConverting[] = " converting ratio denominators.";

using Operation = int32_t (*)(const Zan_Ratio*, const Zan_Ratio*, Zan_Ratio*, uint8_t*);
constexpr Operation kAdd = Zan_AddRatio, kSub = Zan_SubRatio, kMul = Zan_MulRatio, kDiv = Zan_DivRatio;
struct Row { Operation op; Zan_Ratio a, b; uint8_t status; Zan_Ratio result; uint8_t left = 0; const char* told = ""; };
const Row kRows[] = {
    // plain, with one denominator, with a common divisor, with a zero, reduced after an overflow
    {kAdd, {1, 2}, {1, 3}, kNull, {5, 6}}, {kSub, {1, 2}, {1, 2}, 3, {0, 2}}, {kAdd, {1, 4}, {1, 6}, 0xFF, {5, 12}},
    {kSub, {0, 7}, {2, 4}, kNull, {-2, 4}}, {kAdd, {2, 4}, {0, 7}, kNull, {2, 4}},
    {kAdd, {kClip, kClip}, {1, 3}, kNull, {4, 3}},
    // does not fit, not even approximately, in every mode; may not be approximated; is clipped
    {kAdd, {kMax, 1}, {1, 1}, kNull, {}, 0, kAddOver}, {kSub, {kMax, 1}, {-1, 1}, kAllOnes, {}, 0, kSubOver},
    {kAdd, {kMax, 1}, {1, 1}, 2, {}, 1}, {kAdd, {kMax, 2}, {1, 1}, 1, {}, 1},
    {kAdd, {kMax, 2}, {1, 1}, 2, {kClip, 1}, 2}, {kSub, {-kMax, 2}, {1, 1}, kAllOnes, {-kClip, 1}},
    // a zero denominator; the least numerator, which has no negative and reduces like any other
    {kAdd, {1, 2}, {1, 0}, 3, {}, 0, kAddZero}, {kSub, {1, 0}, {1, 2}, kNull, {}, 0, kSubZero},
    {kSub, {0, kBig}, {kMin, 1}, 0, {}, 1}, {kSub, {0, 1}, {kMin, 1}, 0, {}, 1}, {kSub, {0, 1}, {kMin, 2}, kNull, {kClip, 1}},
    {kAdd, {kMin, kBig}, {1, 3}, kNull, {-2, 3}}, {kMul, {2, 3}, {3, 4}, kNull, {6, 12}},
    {kMul, {0x10000, 7}, {0x70007, 0x10000}, kNull, {0x10001, 1}},
    {kMul, {0x10000, 3}, {0x10000, 5}, kNull, {}, 0, kMulOver}, {kMul, {kMax, 1}, {2, 1}, kAllOnes, {}, 0, kMulOver},
    {kMul, {0x10000, 3}, {0x10000, 5}, 1, {}, 1}, {kMul, {0x10000, 3}, {0x10000, 5}, 2, {286331168, 1}, 2},
    {kMul, {1, 2}, {1, 0}, 2, {}, 0, kMulZero}, {kMul, {kMin, 3}, {3, 4}, kNull, {-0x20000000, 1}},
    {kMul, {kMin, 1}, {0, 1}, 0, {}, 1}, {kDiv, {1, 2}, {-3, 4}, kNull, {-4, 6}},
    {kDiv, {1, 2}, {0, 4}, 3, {}, 0, kMulZero}, {kDiv, {1, 2}, {3, 0}, kNull, {}, 0, kMulZero},
    // a divisor that must be halved and may not, halved, halved and fails, halved to zero
    {kDiv, {1, 2}, {-3, kBig}, kNull, {}, 0, kDivOver}, {kDiv, {1, 2}, {-3, kBig}, 2, {}, 1},
    {kDiv, {1, 2}, {-3, kBig}, 1, {-0x20000000, 1}, 2}, {kDiv, {1, 2}, {-2, 0xFFFFFFFF}, kAllOnes, {-kClip, 1}},
    {kDiv, {3, 2}, {-3, kBig + 2}, 1, {}, 3}, {kDiv, {1, 2}, {-1, kBig}, 1, {}, 2, kMulZero},
    {kDiv, {-1, 1}, {kMin, 4}, kNull, {1, 0x20000000}}};

struct FormRow { Zan_Ratio source, reduced; bool changed; Zan_Ratio reciprocal; bool exact; };
const FormRow kForms[] = {
    {{6, 8}, {3, 4}, true, {8, 6}, true}, {{0, 5}, {0, 1}, true, {5, 0}, true}, {{3, 0}, {3, 0}, false, {0, 3}, true},
    {{-3, 4}, {-3, 4}, false, {-4, 3}, true}, {{3, kBig}, {3, kBig}, false, {kClip, 1}, false},
    {{2, kBig}, {1, kClip}, true, {kClip, 1}, true}, {{kMin, kBig}, {-1, 1}, true, {-1, 1}, true},
    {{-7, 0xFFFFFFFF}, {-7, 0xFFFFFFFF}, false, {-kMax, 3}, false}, {{kMin, 6}, {-kClip, 3}, true, {-6, kBig}, true},
    {{0, kBig}, {0, kBig}, true, {kMin, 0}, true}};
struct ConvRow { Zan_Ratio source; uint32_t den; int32_t num; bool exact = true, overflow = false; };
const ConvRow kConversions[] = {
    {{1, 3}, 6, 2}, {{1, 3}, 10, 3, false}, {{-1, 2}, 1, 0, false}, {{5, 7}, 7, 5}, {{kMin, 4}, 4, kMin},
    {{kMin, 4}, 2, -kClip}, {{kMax, 1}, 2, 0, false, true}, {{kMin, 2}, 4, 0, false, true},
    {{1431655765, 2}, 3, 0, false, true}, {{1, 0}, 3, 0},
    {{1, 3}, 0, 0}};

struct ClipRow { Zan_Ratio value, low, high, result; const char* report = ""; };
const ClipRow kClips[] = {
    {{1, 2}, {2, 4}, {3, 4}, {2, 4}}, {{2, 3}, {2, 4}, {3, 4}, {2, 3}}, {{6, 8}, {2, 4}, {3, 4}, {3, 4}},
    {{2, 1}, {1, 1}, {2, 2}, {2, 2}}, {{1, 2}, {1, 1}, {0, 1}, kUntouched, kRange},
    {{1, 2}, {1, 0}, {0, 1}, kUntouched, kOrderZero}, {{1, 0}, {0, 1}, {1, 1}, {}, kOrderZero}};
const ClipRow kSpanClips[] = {  // start and length
    {{1, 2}, {2, 4}, {1, 0}, {2, 4}}, {{2, 3}, {1, 2}, {1, 2}, {2, 3}}, {{3, 2}, {1, 2}, {1, 2}, {2, 2}},
    {{4, 4}, {1, 2}, {1, 2}, {2, 2}}, {{2, 3}, {1, 2}, {1, 0}, {}, kSpanZero},
    {{2, 3}, {1, 0}, {1, 2}, {}, kOrderZero}, {{2, 1}, {1, 1}, {kMax, 1}, {}, kSpanOver}};
struct SpanRow { Zan_Ratio start1, length1, start2, length2, start, length; const char* report = ""; };
const SpanRow kSpans[] = {
    {{0, 1}, {10, 1}, {2, 1}, {3, 1}, {2, 1}, {3, 1}}, {{3, 1}, {1, 1}, {2, 1}, {3, 1}, {3, 1}, {1, 1}},
    {{2, 1}, {kMax, 1}, {1, 1}, {2, 1}, {}, {}, kAddOver}, {{1, 1}, {1, 0}, {2, 1}, {3, 1}, {}, {}, kAddZero},
    {{0, 1}, {1, 65535}, {1, 65537}, {1, 65537}, {}, {}, kSubOver}};
// clang-format on

bool same(const Zan_Ratio& a, const Zan_Ratio& b) { return a.num == b.num && a.den == b.den; }
int32_t codeOf(const std::string& report) {
    if (report.empty() || report == kRange) return report.empty() ? 0 : 3;
    return report.find("overflow") != std::string::npos ? 0x1102 : 0x1106;
}

}  // namespace

TEST_CASE("sums, products and quotients of ratios in every mode, also in place") {
    HostReports host;
    for (const Row& r : kRows) {
        CAPTURE(&r - kRows, r.a.num, r.a.den, r.b.num, r.b.den, int{r.status});
        for (const int place : {0, 1, 2}) {
            Zan_Ratio records[] = {kUntouched, r.a, r.b};
            uint8_t byte = r.status;
            uint8_t* const status = byte == kNull ? nullptr : byte == kAllOnes ? Zan_kRatioApproximate : &byte;
            CHECK(r.op(&records[1], &records[2], &records[place], status) == codeOf(r.told));
            CHECK(same(records[place], r.result));
            CHECK((status != &byte || byte == r.left));
            CHECK(host.takeAll() == r.told);
        }
    }
}

TEST_CASE("ratios in lowest terms, upside down and over other denominators") {
    HostReports host;
    for (const FormRow& r : kForms) {
        CAPTURE(r.source.num, r.source.den);
        Zan_Ratio ratio = r.source, reciprocal = r.source;
        bool changed = !r.changed, exact = !r.exact;
        CHECK((Zan_ReduceRatio(&ratio, &ratio, &changed) == 0 && same(ratio, r.reduced) && changed == r.changed));
        CHECK((Zan_RecipRatio(&reciprocal, &reciprocal, &exact) == 0 && exact == r.exact));
        CHECK(same(reciprocal, r.reciprocal));
    }
    for (const ConvRow& r : kConversions) {
        const bool invalid = r.source.den == 0 || r.den == 0;
        for (const bool flagged : {false, true}) {
            CAPTURE(r.source.num, r.source.den, r.den, flagged);
            bool exact = true, overflow[] = {!r.overflow, !r.overflow};
            Zan_Ratio ratio = r.source;
            int32_t num = 77;
            const std::string kind = invalid ? "zero denominator" : r.overflow && !flagged ? "overflow" : "";
            const auto report = [&](const std::string& at) { return kind.empty() ? kind : at + kind + kConverting; };
            CHECK(Zan_ConvRatio(&ratio, r.den, &ratio, &exact, flagged ? &overflow[0] : nullptr) ==
                  codeOf(report(AT(12))));
            CHECK((same(ratio, {r.num, invalid || r.overflow ? 0 : r.den}) && exact == r.exact));
            CHECK(host.takeAll() == report(AT(12)));
            CHECK(Zan_ShortConvRatio(r.source.num, r.source.den, r.den, &num, flagged ? &overflow[1] : nullptr) ==
                  codeOf(report(AT(13))));
            CHECK(num == r.num);
            CHECK(host.takeAll() == report(AT(13)));
            CHECK((!flagged || (overflow[0] == r.overflow && overflow[1] == r.overflow)));
        }
    }
}

TEST_CASE("clipping of ratios, also in place") {
    HostReports host;
    const auto check = [&](const ClipRow& r, auto clip) {
        CAPTURE(r.value.num, r.value.den, r.low.num, r.low.den, r.high.num, r.high.den);
        for (const int place : {0, 1, 2, 3}) {
            Zan_Ratio records[] = {kUntouched, r.value, r.low, r.high};
            const Zan_Ratio before = records[place];
            CHECK(clip(&records[1], &records[2], &records[3], &records[place]) == codeOf(r.report));
            CHECK(same(records[place], same(r.result, kUntouched) ? before : r.result));
            CHECK(host.takeAll() == r.report);
        }
    };
    for (const ClipRow& r : kClips) check(r, Zan_ClipRatio);
    for (const ClipRow& r : kSpanClips) check(r, Zan_ClipRatioToSpan);
    for (const SpanRow& r : kSpans) {
        CAPTURE(r.start1.num, r.length1.num);
        Zan_Ratio start = r.start1, length = r.length1;
        CHECK(Zan_ClipSpanToSpan(&start, &length, &r.start2, &r.length2, &start, &length) == codeOf(r.report));
        CHECK((same(start, r.start) && same(length, r.length)));
        CHECK(host.takeAll() == r.report);
    }
    const Zan_Ratio half = {1, 2}, invalid = {1, 0};
    Zan_Ratio least = kUntouched, most = kUntouched;
    int32_t order = 77;
    CHECK((Zan_CompareRatio(&half, &invalid, &order) == 0x1106 && order == 0 && host.takeAll() == kOrderZero));
    CHECK((Zan_MinRatio(&half, &invalid, &least) == 0x1106 && same(least, {}) && host.takeAll() == kOrderZero));
    CHECK((Zan_MaxRatio(&invalid, &half, &most) == 0x1106 && same(most, {}) && host.takeAll() == kOrderZero));
}

TEST_CASE("random ratios against 128 bits") {
    HostReports host;
    Random random(61);
    const auto any = [&]() -> Zan_Ratio {
        if (random.below(4) == 0) return {random.below(5) - 2, 1 + random.bits() % 4};
        return {random.nastyInt(), std::max(1U, static_cast<uint32_t>(random.nastyInt()) >> random.below(2))};
    };
    for (int i = 0; i < 40000; ++i) {
        const Zan_Ratio a = any(), b = any();
        CAPTURE(a.num, a.den, b.num, b.den, i % 4);
        const Wide an = a.num, ad = a.den, bn = b.num, bd = b.den, sign = bn < 0 ? -1 : 1;
        int32_t order = 0;
        Zan_Ratio least, most, result;
        REQUIRE((Zan_CompareRatio(&a, &b, &order) | Zan_MinRatio(&a, &b, &least) | Zan_MaxRatio(&a, &b, &most)) == 0);
        const int expected = (an * bd > bn * ad) - (an * bd < bn * ad), actual = (order > 0) - (order < 0);
        REQUIRE((actual == expected || (actual == 0 && (a.den >= kBig || b.den >= kBig))));
        REQUIRE((same(least, order > 0 ? b : a) && same(most, order < 0 ? b : a)));
        uint8_t exactly = 0;
        REQUIRE((Zan_SubRatio(&a, &b, &result, &exactly) == 0 && (exactly != 0 || order == result.num)));

        // Exact, near within single precision, or too large; always exact where the plain form is small.
        if (i % 4 == 3 && (bn == 0 || b.den >= kBig)) continue;
        const Wide nums[] = {an * bd + bn * ad, an * bd - bn * ad, an * bn, sign * an * bd};
        const Wide num = nums[i % 4], den = i % 4 < 3 ? ad * bd : ad * bn * sign;
        const double value = static_cast<double>(num) / static_cast<double>(den);
        const double clipped = std::clamp(value, -0x1p30, 0x1p30);
        const Operation operations[] = {kAdd, kSub, kMul, kDiv};
        uint8_t status = 2;
        REQUIRE(operations[i % 4](&a, &b, &result, &status) == 0);
        const double error = std::fabs(static_cast<double>(result.num) / result.den - clipped);
        if (status == 0) REQUIRE(Wide{result.num} * den == num * result.den);
        if (status == 1) REQUIRE((same(result, {}) && std::fabs(value) > 0x1p31 - 1));
        if (status == 2) REQUIRE(error <= std::fabs(clipped) * 0x1p-23 + 0x1p-31);
        const auto small = [](const Zan_Ratio& r) { return r.num / 8192 == 0 && r.den < 8192; };
        REQUIRE((status < 3 && (status == 0 || !small(a) || !small(b))));
    }
    CHECK(host.takeAll().empty());
}

// Ratios, answers worked by hand.
#include "tests/support/host_reports.h"
#include "tests/support/random.h"
#include "zan/scalar.h"

namespace {

// clang-format off
constexpr uint32_t kBig = 0x80000000;
constexpr int32_t kMin = INT32_MIN, kMax = INT32_MAX, kClip = 0x40000000;
constexpr uint8_t kNull = 100, kAllOnes = 101;  // the two pointers that are no status byte
#define AT(site) "0x1100" #site " sev 8: "
constexpr char kMulZero[] = AT(11) "zero denominator in ratio multiply.",
    kDivOver[] = AT(11) "overflow in ratio divide.", kOrderZero[] = AT(10) "zero denominator comparing ratios.",
    kConverting[] = " converting ratio denominators.";

using Operation = int32_t (*)(const Zan_Ratio*, const Zan_Ratio*, Zan_Ratio*, uint8_t*);
constexpr Operation kAdd = Zan_AddRatio, kSub = Zan_SubRatio, kMul = Zan_MulRatio, kDiv = Zan_DivRatio;
struct Row { Operation op; Zan_Ratio a, b; uint8_t status; Zan_Ratio result; uint8_t left = 0; const char* told = ""; };
const Row kRows[] = {
    // plain, with one denominator, with a common divisor, with a zero, reduced after an overflow, not even then
    {kAdd, {1, 2}, {1, 3}, kNull, {5, 6}}, {kSub, {1, 2}, {1, 2}, 3, {0, 2}}, {kAdd, {1, 4}, {1, 6}, 0xFF, {5, 12}},
    {kSub, {0, 7}, {2, 4}, kNull, {-2, 4}}, {kAdd, {2, 4}, {0, 7}, kNull, {2, 4}}, {kAdd, {kMax, 2}, {1, 1}, 1, {}, 1},
    {kAdd, {kClip, kClip}, {1, 3}, kNull, {4, 3}}, {kMul, {0x10000, 7}, {0x70007, 0x10000}, kNull, {0x10001, 1}},
    // a zero denominator; the least numerator, which has no negative and reduces like any other
    {kAdd, {1, 2}, {1, 0}, 3, {}, 0, AT(10) "zero denominator in ratio addition."},
    {kSub, {1, 0}, {1, 2}, kNull, {}, 0, AT(10) "zero denominator in ratio subtraction."},
    {kMul, {1, 2}, {1, 0}, 2, {}, 0, kMulZero},
    {kDiv, {1, 2}, {0, 4}, 3, {}, 0, kMulZero}, {kDiv, {1, 2}, {3, 0}, kNull, {}, 0, kMulZero},
    {kSub, {0, kBig}, {kMin, 1}, 0, {}, 1}, {kSub, {0, 1}, {kMin, 2}, kNull, {kClip, 1}},
    {kMul, {kMin, 3}, {3, 4}, kNull, {-0x20000000, 1}}, {kMul, {kMin, 1}, {0, 1}, 0, {}, 1},
    // a divisor that must be halved and may not, halved, halved and fails, halved to zero
    {kDiv, {1, 2}, {-3, kBig}, kNull, {}, 0, kDivOver}, {kDiv, {1, 2}, {-3, kBig}, 2, {}, 1},
    {kDiv, {1, 2}, {-3, kBig}, 1, {-0x20000000, 1}, 2}, {kDiv, {1, 2}, {-2, 0xFFFFFFFF}, kAllOnes, {-kClip, 1}},
    {kDiv, {3, 2}, {-3, kBig + 2}, 1, {}, 3}, {kDiv, {1, 2}, {-1, kBig}, 1, {}, 2, kMulZero}};

struct FormRow { Zan_Ratio source, reduced; bool changed; Zan_Ratio reciprocal; bool exact; };
const FormRow kForms[] = {
    {{6, 8}, {3, 4}, true, {8, 6}, true}, {{0, 5}, {0, 1}, true, {5, 0}, true}, {{3, 0}, {3, 0}, false, {0, 3}, true},
    {{-3, 4}, {-3, 4}, false, {-4, 3}, true}, {{3, kBig}, {3, kBig}, false, {kClip, 1}, false},
    {{2, kBig}, {1, kClip}, true, {kClip, 1}, true}, {{kMin, kBig}, {-1, 1}, true, {-1, 1}, true},
    {{-7, 0xFFFFFFFF}, {-7, 0xFFFFFFFF}, false, {-kMax, 3}, false}, {{kMin, 6}, {-kClip, 3}, true, {-6, kBig}, true},
    {{0, kBig}, {0, kBig}, true, {kMin, 0}, true}};
const struct { double x; int32_t num; uint32_t den; } kDoubles[] = {
    {0.5, 1, 2}, {-2.5, -5, 2}, {1.0 / 3, 11184811, 33554432}, {-0.0, 0, 1}, {0x1p30, 1 << 30, 1}, {NAN, 0, 0},
    {1.5e9, 1 << 30, 1}, {-2147483647.9, -(1 << 30), 1}, {0x1p31, 0, 0}, {-3e9, 0, 0}, {INFINITY, 0, 0},
    {1e-10, 0, 1}, {5e-324, 0, 1}, {0x1.000002p-31, 1, 1 << 30}, {0x1p-31, 0, 1}, {0x1.8p-32, 0, 1},
    {-0x1p-30, -1, 1 << 30}};
struct ConvRow { Zan_Ratio source; uint32_t den; int32_t num; bool exact = true, overflow = false; };
const ConvRow kConversions[] = {
    {{1, 3}, 6, 2}, {{1, 3}, 10, 3, false}, {{-1, 2}, 1, 0, false}, {{5, 7}, 7, 5}, {{kMin, 4}, 4, kMin},
    {{kMin, 4}, 2, -kClip}, {{kMax, 1}, 2, 0, false, true}, {{kMin, 2}, 4, 0, false, true},
    {{1431655765, 2}, 3, 0, false, true}, {{1, 0}, 3, 0}, {{1, 3}, 0, 0}};
// clang-format on

bool same(const Zan_Ratio& a, const Zan_Ratio& b) { return a.num == b.num && a.den == b.den; }
int32_t codeOf(const std::string& report) {
    return report.empty() ? 0 : report.find("overflow") != std::string::npos ? 0x1102 : 0x1106;
}

}  // namespace

TEST_CASE("sums, products and quotients of ratios in every mode") {
    HostReports host;
    for (const Row& r : kRows) {
        CAPTURE(&r - kRows);
        Zan_Ratio result = {77, 7};
        uint8_t byte = r.status;
        uint8_t* const status = byte == kNull ? nullptr : byte == kAllOnes ? Zan_kRatioApproximate : &byte;
        CHECK((r.op(&r.a, &r.b, &result, status) == codeOf(r.told) && same(result, r.result)));
        CHECK((host.takeAll() == r.told && (status != &byte || byte == r.left)));
    }
    const Zan_Ratio half = {1, 2}, invalid = {1, 0};
    Zan_Ratio a = half, b = half, c = half, d = half, e = half;
    int32_t order = 77;
    const std::string none = kOrderZero, lines = none + "\n" + none + "\n" + none + "\n" + none + "\n" + none;
    const int32_t codes[] = {Zan_CompareRatio(&half, &invalid, &order), Zan_MinRatio(&half, &invalid, &a),
                             Zan_MaxRatio(&invalid, &half, &b), Zan_ClipRatio(&invalid, &half, &half, &c),
                             Zan_ClipRatioToSpan(&half, &invalid, &half, &d)};
    for (const int32_t code : codes) CHECK(code == 0x1106);
    CHECK((order == 0 && same(a, {}) && same(b, {}) && same(c, {}) && same(d, {}) && host.takeAll() == lines));
    CHECK((Zan_ClipRatio(&half, &invalid, &half, &e) == 0x1106 && same(e, half) && host.takeAll() == none));
}

TEST_CASE("ratios in lowest terms, upside down, of doubles and over other denominators") {
    HostReports host;
    for (const FormRow& r : kForms) {
        CAPTURE(r.source.num, r.source.den);
        Zan_Ratio ratio = r.source, reciprocal = r.source;
        bool changed = !r.changed, exact = !r.exact;
        CHECK((Zan_ReduceRatio(&ratio, &ratio, &changed) == 0 && same(ratio, r.reduced) && changed == r.changed));
        CHECK((Zan_RecipRatio(&reciprocal, &reciprocal, &exact) == 0 && exact == r.exact));
        CHECK(same(reciprocal, r.reciprocal));
    }
    for (const auto& [x, num, den] : kDoubles) {
        Zan_Ratio ratio = {77, 7};
        bool overflow = den != 0;
        CAPTURE(x);
        CHECK((Zan_FpLong2Ratio(x, &ratio, &overflow) == 0 && overflow == (den == 0) && same(ratio, {num, den})));
    }
    for (const ConvRow& r : kConversions) {
        const bool invalid = r.source.den == 0 || r.den == 0;
        for (const bool flagged : {false, true}) {
            CAPTURE(r.source.num, r.source.den, r.den, flagged);
            bool exact = true, overflow[] = {!r.overflow, !r.overflow};
            Zan_Ratio ratio = r.source;
            int32_t num = 77;
            const std::string kind = invalid ? "zero denominator" : r.overflow && !flagged ? "overflow" : "";
            const std::string told[] = {kind.empty() ? "" : AT(12) + kind + kConverting,
                                        kind.empty() ? "" : AT(13) + kind + kConverting};
            bool* const flags[] = {flagged ? &overflow[0] : nullptr, flagged ? &overflow[1] : nullptr};
            CHECK(Zan_ConvRatio(&ratio, r.den, &ratio, &exact, flags[0]) == codeOf(told[0]));
            CHECK((same(ratio, {r.num, invalid || r.overflow ? 0 : r.den}) && exact == r.exact));
            CHECK(host.takeAll() == told[0]);
            CHECK(Zan_ShortConvRatio(r.source.num, r.source.den, r.den, &num, flags[1]) == codeOf(told[1]));
            CHECK((num == r.num && host.takeAll() == told[1]));
            CHECK((!flagged || (overflow[0] == r.overflow && overflow[1] == r.overflow)));
        }
    }
}

// Ratios against 128-bit fractions; best rational approximations against a walk of one mediant at a time.

#include "property.h"
#include "scalar/best_rational.h"
#include "tests/support/host_reports.h"
#include "zan/scalar.h"

namespace {

__extension__ using Wide = __int128;
constexpr uint32_t kBig = 0x80000000;

bool same(const Zan_Ratio& a, const Zan_Ratio& b) { return a.num == b.num && a.den == b.den; }
Zan_Ratio any(Choices& c) {
    const bool small = c.below(4) == 0;
    const int32_t num = small ? c.below(5) - 2 : c.nastyInt();
    return {num, small ? 1 + c.bits() % 4 : std::max(1U, static_cast<uint32_t>(c.nastyInt()) >> c.below(2))};
}
int compare(const Zan_Ratio& a, const Zan_Ratio& b) {
    const Wide x = Wide{a.num} * b.den, y = Wide{b.num} * a.den;
    return (x > y) - (x < y);
}
int32_t codeOf(const std::string& report) { return report.empty() ? 0 : 0x1102; }

constexpr struct {
    int32_t (*call)(const Zan_Ratio*, const Zan_Ratio*, Zan_Ratio*, uint8_t*);
    const char* overflow;
} kOperations[] = {{Zan_AddRatio, "0x110010 sev 8: overflow in ratio addition."},
                   {Zan_SubRatio, "0x110010 sev 8: overflow in ratio subtraction."},
                   {Zan_MulRatio, "0x110011 sev 8: overflow in ratio multiply."},
                   {Zan_DivRatio, "0x110011 sev 8: overflow in ratio multiply."}};

bool arithmetic(Choices& c) {
    HostReports host;
    const Zan_Ratio a = any(c), b = any(c);
    const Wide an = a.num, ad = a.den, bn = b.num, bd = b.den, sign = bn < 0 ? -1 : 1;
    int32_t order = 0;
    Zan_Ratio least, most, result;
    must((Zan_CompareRatio(&a, &b, &order) | Zan_MinRatio(&a, &b, &least) | Zan_MaxRatio(&a, &b, &most)) == 0);
    const int actual = (order > 0) - (order < 0);
    must(actual == compare(a, b) || (actual == 0 && (a.den >= kBig || b.den >= kBig)));
    must(same(least, order > 0 ? b : a) && same(most, order < 0 ? b : a));
    uint8_t exactly = 0, roughly = 2;
    must(Zan_SubRatio(&a, &b, &result, &exactly) == 0 && (exactly != 0 || order == result.num));

    // Exact, near within single precision, or too large; always exact where the plain form is small.
    const int32_t which = c.below(4);
    if (which == 3 && (bn == 0 || b.den >= kBig)) return order > 0;
    const Wide nums[] = {an * bd + bn * ad, an * bd - bn * ad, an * bn, sign * an * bd};
    const Wide num = nums[which], den = which < 3 ? ad * bd : ad * bn * sign;
    const double value = static_cast<double>(num) / static_cast<double>(den);
    const double clipped = std::clamp(value, -0x1p30, 0x1p30);
    const auto& [call, overflow] = kOperations[which];
    must(call(&a, &b, &result, &roughly) == 0);
    const double error = std::fabs(static_cast<double>(result.num) / result.den - clipped);
    if (roughly == 0) must(Wide{result.num} * den == num * result.den);
    if (roughly == 1) must(same(result, {}) && std::fabs(value) > 0x1p31 - 1);
    if (roughly == 2) must(error <= std::fabs(clipped) * 0x1p-23 + 0x1p-31);
    const auto small = [](const Zan_Ratio& r) { return r.num / 8192 == 0 && r.den < 8192; };
    must(roughly < 3 && (roughly == 0 || !small(a) || !small(b)));

    // The other modes, in place.
    Zan_Ratio first = a, second = b, third = a;
    const std::string told = roughly == 0 ? "" : overflow, both = roughly == 1 ? overflow : "";
    must(call(&first, &b, &first, nullptr) == codeOf(told) && host.takeAll() == told);
    must(call(&a, &second, &second, Zan_kRatioApproximate) == codeOf(both) && host.takeAll() == both);
    exactly = 0xFD;
    must(call(&third, &b, &third, &exactly) == 0 && exactly == (roughly != 0) && host.takeAll().empty());
    must(same(first, roughly == 0 ? result : Zan_Ratio{}) && same(second, result) && same(third, first));
    return order > 0;
}

bool clips(Choices& c) {
    HostReports host;
    Zan_Ratio r[4];
    for (Zan_Ratio& ratio : r) ratio = any(c), ratio.den = std::max(1U, ratio.den >> 1);
    const Zan_Ratio &value = r[0], &low = r[1], &high = r[2], &length = r[3];
    const auto clipped = [](const Zan_Ratio& v, const Zan_Ratio& l, const Zan_Ratio& h) {
        return compare(v, l) <= 0 ? l : compare(v, h) < 0 ? v : h;
    };
    const auto add = [](const Zan_Ratio& a, const Zan_Ratio& b) {
        Zan_Ratio sum;
        uint8_t status = 0;
        return Zan_AddRatio(&a, &b, &sum, &status) == 0 && status == 0 ? sum : Zan_Ratio{};
    };
    const auto inSpan = [&](const Zan_Ratio& v) {
        const Zan_Ratio end = compare(v, low) <= 0 ? low : add(low, length);
        return end.den == 0 ? end : clipped(v, low, end);
    };
    const Zan_Ratio spanned = inSpan(value);
    const bool wrong = compare(low, high) > 0, fails = spanned.den == 0;
    for (int place = 1; place < 4; ++place) {  // in place of each of the three
        Zan_Ratio in[] = {{}, value, low, high}, of[] = {{}, value, low, length};
        const Zan_Ratio expected = wrong ? in[place] : clipped(value, low, high);
        must(Zan_ClipRatio(&in[1], &in[2], &in[3], &in[place]) == (wrong ? 3 : 0) && same(in[place], expected));
        must(host.takeAll() == (wrong ? "0x110018 sev 8 code 3: invalid rational range" : ""));
        must(Zan_ClipRatioToSpan(&of[1], &of[2], &of[3], &of[place]) == (fails ? 0x1102 : 0) &&
             same(of[place], spanned));
        must(host.takeAll() == (fails ? "0x110010 sev 8: overflow in ratio span." : ""));
    }
    Zan_Ratio last = add(value, high), difference, from = value, size = high;
    if (last.den != 0) last = inSpan(last);
    uint8_t status = 0;
    bool good = !fails && last.den != 0;
    good = good && Zan_SubRatio(&last, &spanned, &difference, &status) == 0 && status == 0;
    must(Zan_ClipSpanToSpan(&from, &size, &low, &length, &from, &size) == (good ? 0 : 0x1102));
    must(same(from, good ? spanned : Zan_Ratio{}) && same(size, good ? difference : Zan_Ratio{}));
    must(host.takeAll().empty() == good);
    return good;
}

bool best(Choices& c) {
    const int32_t kind = c.below(10), bound = kind == 0 ? 0x40000000 : 1 + c.below(16);
    // Near fractions of small terms, on them, and on the middles between them where they are dyadic.
    const int64_t near = (int64_t{c.below(20)} << 20) / (1 + c.below(20)) + c.below(3) - 1;
    const int64_t dyadic = int64_t{c.below(40 * 64)} << 14 >> c.below(7);
    double size = static_cast<double>(std::max<int64_t>(kind % 2 == 0 ? near : dyadic, 0)) * 0x1p-20;
    if (bound > 16) size = std::ldexp(c.plain(1, 2), c.below(24) - 12);
    const auto value = static_cast<float>(c.below(3) == 0 ? -size : size);
    const Wide num = static_cast<int64_t>(std::ldexp(std::fabs(value), 36)), den = int64_t{1} << 36;
    int64_t lowP = 0, lowQ = 1, highP = 1, highQ = 0;
    while (lowP + highP <= bound && lowQ + highQ <= bound && lowP * den != num * lowQ) {
        const bool below = (lowP + highP) * den <= num * (lowQ + highQ);
        (below ? lowP : highP) = lowP + highP, (below ? lowQ : highQ) = lowQ + highQ;
    }
    // The nearer one, times den lowQ and den highQ; of two equally near ones that of smaller terms.
    const Wide below = (num * lowQ - lowP * den) * highQ, above = (highP * den - num * highQ) * lowQ;
    const bool low = below == above ? lowP + lowQ < highP + highQ : below < above;
    Zan_Ratio ratio = zan::bestRational(value, bound);
    bool overflow = false;
    if (bound > 16) must(Zan_FpLong2Ratio(value, &ratio, &overflow) == 0 && !overflow);
    must(ratio.num == (value < 0 ? -1 : 1) * (low ? lowP : highP) && ratio.den == (low ? lowQ : highQ));
    return low;
}

const Property kArithmetic("scalar_ratio", 40000, arithmetic), kClips("scalar_ratio_clips", 20000, clips),
    kBest("scalar_best_rational", 20000, best);

}  // namespace

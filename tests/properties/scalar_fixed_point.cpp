// Quotients in 16.16, products and quotients in 8.24 against exact integers.

#include "property.h"
#include "tests/support/host_reports.h"
#include "zan/scalar.h"

namespace {

constexpr int32_t kFail = INT32_MIN;

// An 8.24 number that is num / den within half a step and what double precision rounds off; a failure where it does not
// fit, with a report where even the whole part does not.
bool nearest(int32_t raw, int64_t num, int64_t den, const std::string& report, const char* overflow) {
    __extension__ using Wide = __int128;
    if (den < 0) num = -num, den = -den;
    if (static_cast<double>(num) / static_cast<double>(den) >= 0x1p31 || Wide{num} <= Wide{den} * -129 * (1 << 24)) {
        must(raw == kFail && report == overflow);
        return false;
    }
    const Wide off = (Wide{raw} * den - num) * 2;
    const bool near = (off < 0 ? -off : off) <= den + (den >> 20) + 1;
    const double rounded = static_cast<double>(num) / static_cast<double>(den);
    must(report.empty() && (near || (raw == kFail && (rounded > 0x1p31 - 0.75 || rounded < -0x1p31))));
    return true;
}

bool fixedPoint(Choices& c) {
    HostReports host;
    const int32_t small = c.nastyInt() % 0x10000, a = c.nastyInt(), b = c.nastyInt();
    const int64_t quotient = b == 0 ? 0 : int64_t{small} * 65536 / b;
    must(Zan_FixDiv(small, b) == (b == 0 || std::llabs(quotient) > INT32_MAX ? kFail : quotient));
    const int32_t raw = Zan_Fix24Mul(a, b);
    const bool fits =
        nearest(raw, int64_t{a} * b, 1 << 24, host.takeAll(), "0x110008 sev 8: overflow in fix24 multiply.");
    if (b == 0) return fits;
    const int32_t ratio = Zan_Fix24Ratio(a, b);
    nearest(ratio, int64_t{a} * (1 << 24), b, host.takeAll(), "0x110009 sev 8: overflow in fix24 divide.");
    return fits;
}

const Property kProperty("scalar_fixed_point", 40000, fixedPoint);

}  // namespace

// Quotients in 16.16, and products and quotients in 8.24, compared with exact integers.
#include "property.h"
#include "tests/support/host_reports.h"
#include "zan/scalar.h"

namespace {

constexpr int32_t kFail = INT32_MIN;

// Checks that raw is num / den in 8.24, within half a step plus the error of double precision. A quotient of
// 128 or more, or of -129 or less, must give kFail and the overflow report. One that only rounding carries to 128, or
// that lies between -129 and -128, may give kFail without a report. Returns false only for the reported failure.
bool checkFix24(int32_t raw, int64_t num, int64_t den, const std::string& report, const char* overflow) {
    __extension__ using Wide = __int128;
    if (den < 0) {
        num = -num;
        den = -den;
    }
    const double quotient = static_cast<double>(num) / static_cast<double>(den);
    if (quotient >= 0x1p31 || Wide{num} <= Wide{den} * -129 * (1 << 24)) {
        must(raw == kFail);
        must(report == overflow);
        return false;
    }
    const Wide twiceError = (Wide{raw} * den - num) * 2;
    const bool nearest = (twiceError < 0 ? -twiceError : twiceError) <= den + (den >> 20) + 1;
    must(nearest || raw == kFail);
    must(nearest || quotient > 0x1p31 - 0.75 || quotient < -0x1p31);
    must(report.empty());
    return true;
}

bool fixedPoint(Choices& c) {
    HostReports host;
    const int32_t small = c.nastyInt() % 0x10000, a = c.nastyInt(), b = c.nastyInt();
    const int64_t quotient = b == 0 ? 0 : int64_t{small} * 65536 / b;
    const bool quotientFits = b != 0 && std::llabs(quotient) <= INT32_MAX;
    must(Zan_FixDiv(small, b) == (quotientFits ? quotient : kFail));

    const int32_t product24 = Zan_Fix24Mul(a, b);
    const bool unreported =
        checkFix24(product24, int64_t{a} * b, 1 << 24, host.takeAll(), "0x110008 sev 8: overflow in fix24 multiply.");
    if (b == 0) return unreported;
    const int32_t ratio24 = Zan_Fix24Ratio(a, b);
    checkFix24(ratio24, int64_t{a} * (1 << 24), b, host.takeAll(), "0x110009 sev 8: overflow in fix24 divide.");
    return unreported;
}

const Property kProperty("scalar_fixed_point", 40000, fixedPoint);

}  // namespace

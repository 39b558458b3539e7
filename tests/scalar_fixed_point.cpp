// Products and quotients at the limits of 16.16 and 8.24, with results calculated by hand. The property
// scalar_fixed_point covers the rest, the golden sums cover 16.16 products.
#include "tests/support/host_reports.h"
#include "zan/scalar.h"

#include <catch2/catch.hpp>

namespace {

constexpr int32_t kMin = INT32_MIN;
constexpr int32_t kFails = Zan_kFixedFailure;

struct Row {
    const char* what;
    int32_t a, b, result;
    const char* report = "";
};
constexpr Row kFixMul[] = {
    {"16 trailing zeros in both together are too few: the low 8 bits of both are dropped", 0x10000, 0x12345, 0x12300},
    {"17 trailing zeros in one operand: exact", 0x60000, 0x12345, 0x6D39E},
    {"15 in both together are too few, too", 0x300, 0x20180, 0x603},
    {"15 in one operand and 15 in the other: exact", 0x18000, 0x18000, 0x24000},
    {"dropping bits of a negative number rounds toward minus infinity", -1, 0x10001, -0x100},
    {"all bits of both are dropped", 1, 1, 0},
    {"a positive product that does not fit", 0x7FFF0000, 0x20000, kFails},
    {"a negative product that does not fit", -0x7FFF0000, 0x20000, kFails},
    {"-32768 negated does not fit", kMin, -0x10000, kFails},
    {"-32768 fits, and equals the failure value", kMin, 0x10000, kMin},
    {"a product that wraps to the right sign is not detected", 0x1000000, 0x1020000, 0x2000000},
};
constexpr Row kFixDiv[] = {
    {"the smallest dividend for which the divisor loses a bit", 0x10000, 7, 0x2AAAAAAA},
    {"the divisor loses all its bits", 0x1000000, 0x100, kFails},
    {"the largest quotient", 0x7FFFFFFF, 0x10000, 0x7FFFFFFF},
    {"-32768 fits, and equals the failure value", kMin, 0x10000, kMin},
    {"a divisor of -32768", 0x7FFF0000, kMin, -0xFFFE},
    {"-32768 divided by itself", kMin, kMin, 0x10000},
};
constexpr Row kFix24Mul[] = {
    {"128 - 2^-41, which the rounding carries to 128, fails without a report", 0x8000008, 0xFFFFFF0, kFails},
};
constexpr Row kFix24Ratio[] = {
    {"-128.5 fails without a report", -257, 2, kFails},
    {"128 is reported", 128, 1, kFails, "0x110009 sev 8: overflow in fix24 divide."},
    {"-129 is reported", -129, 1, kFails, "0x110009 sev 8: overflow in fix24 divide."},
    {"a zero denominator is reported", 5, 0, kFails, "0x110009 sev 8: divide by zero in fix24 divide."},
};

template <size_t N>
void check(int32_t (*operation)(int32_t, int32_t), const Row (&rows)[N]) {
    for (const Row& row : rows) {
        CAPTURE(row.what);
        HostReports host;
        CHECK(operation(row.a, row.b) == row.result);
        CHECK(host.takeAll() == row.report);
    }
}

}  // namespace

TEST_CASE("16.16 products") { check(Zan_FixMul, kFixMul); }
TEST_CASE("16.16 quotients") { check(Zan_FixDiv, kFixDiv); }
TEST_CASE("8.24 products") { check(Zan_Fix24Mul, kFix24Mul); }
TEST_CASE("8.24 quotients") { check(Zan_Fix24Ratio, kFix24Ratio); }

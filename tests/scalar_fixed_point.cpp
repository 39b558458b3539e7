// Multiplication and division in 16.16 and 8.24.
#include <catch2/catch.hpp>

#include "host_reports.h"
#include "values.h"
#include "zan/scalar.h"

namespace {
// clang-format off
constexpr int32_t kFail = INT32_MIN;
constexpr int32_t kProducts[][3] = {
    // exact: all the zeros in one operand, or more than 16 in both
    {0x10000, 0x10000, 0x10000}, {0x18000, 0x18000, 0x24000}, {0x60000, 0x12345, 0x6D39E}, {0x300, 0x20200, 0x606},
    // 16 are too few: the low bytes are dropped, toward minus infinity
    {0x10000, 0x12345, 0x12300}, {0x300, 0x20180, 0x603}, {0x12345, 0x10001, 0x12300}, {-1, 0x10001, -0x100}, {1, 1, 0},
    // the wrong sign, the right one by chance, none
    {0x7FFF0000, 0x20000, kFail}, {-0x7FFF0000, 0x20000, kFail}, {kFail, -0x10000, kFail}, {kFail, 0x10000, kFail},
    {0x1000000, 0x1020000, 0x2000000}, {-0x18000, -0x20000, 0x30000}, {0, -0x10000, 0}, {-0x12345, 0, 0}};
constexpr int32_t kQuotients[][3] = {
    // 16 leading zeros leave the divisor whole; fewer take bits from it, in the end all
    {0x10000, 0x30000, 0x5555}, {-0x10000, 0x30000, -0x5555}, {0xFFFF, 3, 0x55550000}, {0x10000, 7, 0x2AAAAAAA},
    {0x1000000, 0x100, kFail}, {0x7FFFFFFF, 0x10000, 0x7FFFFFFF}, {0x10000, 0, kFail}, {0, 0, kFail},
    // what does not fit, and the least value
    {0xFFFF, 1, kFail}, {-0xFFFF, 1, kFail}, {kFail, 0x10000, kFail}, {kFail, 0x20000, -0x40000000},
    {0x7FFF0000, kFail, -0xFFFE}, {kFail, kFail, 0x10000}};

constexpr const char* kTooLarge[] = {"0x110008 sev 8: overflow in fix24 multiply.",
                                     "0x110009 sev 8: overflow in fix24 divide."};
struct Fix24Row { int32_t (*operation)(int32_t, int32_t), a, b, result; const char* report = ""; };
const Fix24Row kFix24[] = {
    {Zan_Fix24Mul, -0x1000, 0x800, -1}, {Zan_Fix24Mul, 0xFFF, 0x800, 0}, {Zan_Fix24Mul, INT32_MAX, 0x1000000, INT32_MAX},
    {Zan_Fix24Mul, 0x8000000, 0x10000000, kFail, kTooLarge[0]},
    {Zan_Fix24Mul, -0x40800000, 0x2000000, kFail, kTooLarge[0]},
    {Zan_Fix24Mul, 0x8000000, -0x10000000, kFail}, {Zan_Fix24Mul, -0x40400000, 0x2000000, kFail},  // silently
    {Zan_Fix24Mul, 0x8000008, 0xFFFFFF0, kFail},
    {Zan_Fix24Ratio, 1, 3, 0x555555}, {Zan_Fix24Ratio, -1, 3, -0x555555}, {Zan_Fix24Ratio, -1, 0x2000000, -1},
    {Zan_Fix24Ratio, kFail, 0x40000000, -0x2000000}, {Zan_Fix24Ratio, INT32_MAX, 0x1000000, INT32_MAX},
    {Zan_Fix24Ratio, -257, 2, kFail}, {Zan_Fix24Ratio, 128, 1, kFail, kTooLarge[1]},
    {Zan_Fix24Ratio, -129, 1, kFail, kTooLarge[1]},
    {Zan_Fix24Ratio, 5, 0, kFail, "0x110009 sev 8: divide by zero in fix24 divide."}};
// clang-format on
}  // namespace

TEST_CASE("16.16 products and quotients") {
    HostReports host;
    for (const auto& [a, b, product] : kProducts) {
        CAPTURE(a, b);
        CHECK(Zan_FixMul(a, b) == product);
    }
    for (const auto& [a, b, quotient] : kQuotients) {
        CAPTURE(a, b);
        CHECK(Zan_FixDiv(a, b) == quotient);
    }
    Random random(31);
    for (int i = 0; i < 20000; ++i) {
        const int32_t a = random.nastyInt() % 0x10000, b = random.nastyInt() | 1;
        const int64_t quotient = int64_t{a} * 65536 / b;
        CAPTURE(a, b);
        REQUIRE(Zan_FixDiv(a, b) == (std::llabs(quotient) > INT32_MAX ? kFail : quotient));
    }
    CHECK(host.takeAll().empty());
}

TEST_CASE("8.24 products and ratios") {
    HostReports host;
    for (const Fix24Row& r : kFix24) {
        CAPTURE(r.a, r.b);
        CHECK(r.operation(r.a, r.b) == r.result);
        CHECK(host.takeAll() == r.report);
    }
}

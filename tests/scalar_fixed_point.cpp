// Multiplication and division in 16.16 and 8.24, answers worked by hand.
#include "tests/support/host_reports.h"
#include "tests/support/random.h"
#include "zan/scalar.h"

TEST_CASE("products and quotients in 16.16 and 8.24") {
    constexpr int32_t kFail = INT32_MIN;
    // clang-format off
    const struct { int32_t (*operation)(int32_t, int32_t); std::vector<int32_t> rows; } tables[] = {  // a, b, result
        {Zan_FixMul, {
        // exact: all the zeros in one operand, or more than 16 in both
        0x18000, 0x18000, 0x24000, 0x60000, 0x12345, 0x6D39E, 0x300, 0x20200, 0x606,
        // 16 are too few: the low bytes are dropped, toward minus infinity
        0x10000, 0x12345, 0x12300, 0x300, 0x20180, 0x603, -1, 0x10001, -0x100, 1, 1, 0,
        // the wrong sign, the right one by chance, none
        0x7FFF0000, 0x20000, kFail, -0x7FFF0000, 0x20000, kFail, kFail, -0x10000, kFail, kFail, 0x10000, kFail,
        0x1000000, 0x1020000, 0x2000000, -0x18000, -0x20000, 0x30000, 0, -0x10000, 0, -0x12345, 0, 0}},
        {Zan_FixDiv, {
        // 16 leading zeros leave the divisor whole; fewer take bits from it, in the end all
        0xFFFF, 3, 0x55550000, 0x10000, 7, 0x2AAAAAAA, 0x1000000, 0x100, kFail, 0x7FFFFFFF, 0x10000, 0x7FFFFFFF,
        // what does not fit, and the least value
        0, 0, kFail, -0xFFFF, 1, kFail, kFail, 0x10000, kFail, kFail, 0x20000, -0x40000000,
        0x7FFF0000, kFail, -0xFFFE, kFail, kFail, 0x10000}},
        // halves, and what fails without a report
        {Zan_Fix24Mul, {-0x1000, 0x800, -1, 0xFFF, 0x800, 0, 0x8000000, -0x10000000, kFail, -0x40400000, 0x2000000, kFail,
        0x8000008, 0xFFFFFF0, kFail}},
        {Zan_Fix24Ratio, {-1, 0x2000000, -1, kFail, 0x40000000, -0x2000000, -257, 2, kFail}}};
    // clang-format on
    HostReports host;
    for (const auto& [operation, rows] : tables) {
        for (size_t i = 0; i < rows.size(); i += 3) {
            CAPTURE(&operation - &tables[0].operation, i);
            CHECK(operation(rows[i], rows[i + 1]) == rows[i + 2]);
        }
    }
    CHECK(host.takeAll().empty());
    CHECK((Zan_Fix24Ratio(5, 0) == kFail && host.takeAll() == "0x110009 sev 8: divide by zero in fix24 divide."));
    for (const int32_t outside : {128, -129}) {
        CHECK((Zan_Fix24Ratio(outside, 1) == kFail && host.takeAll() == "0x110009 sev 8: overflow in fix24 divide."));
    }
}

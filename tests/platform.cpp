// The platform stand-in's own promises: counts, failures on demand, per-thread state, handlers under fire.
#include "tests/support/host_reports.h"
#include "zan/frame.h"

#include <catch2/catch.hpp>

#include <array>
#include <atomic>
#include <bit>
#include <cstring>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

// Handles, their bytes, tracked blocks, their bytes, tracked news and deletes.
using Counts = std::array<uint64_t, 6>;
Counts memory() { return std::bit_cast<Counts>(memoryCounts()); }

const char* tellText(void* text, const char* /*module*/, const char* /*key*/) { return static_cast<const char*>(text); }

// Every thread reports its own number twice, as site and as code; the handler reports another, and installs itself.
void check(void* right, const Bel_Report* report) {
    const auto number = static_cast<int16_t>(report->errorNumber & 0xFFFF);
    Bel_SetReportHandler(check, right);
    if (number < 100) Zanp_ReportErr(static_cast<uint16_t>(number + 100), number + 100, 0);
    const std::string expected = "unknown error (" + std::to_string(number) + ").";
    if (expected == report->text) ++*static_cast<std::atomic<int>*>(right);
}

struct TextRow {
    const char *entry, *translation;
    bool taken = false;
};
constexpr TextRow kTexts[] = {
    {"k=in matrix", "100 %%", true},
    {"k=overflow %s.", "%s: 100 %% trop", true},
    {"k=%s takes %5.2f%%", "%%: %s, %5.2f", true},
    {"k=overflow %s.", nullptr},
    {"k=in matrix", "%n"},
    {"k=overflow %s.", "%s %"},
    {"k=overflow %s.", "%%s"},
    {"k=overflow %s.", "%999999999s"},  // the same argument, but not in a buffer
    {"k=error (%d).", "5 % de %d"},
    {"k=%1$s", "%1$d"},
    {"k=%s %d", "%d %s"},
    {"a key as long as it may be, which is one less than its 64 bytes=x", "y", true},
    {"a key as long as it may be, which is one less than its 64 bytes.=x", "y"},
};

struct FailureRow {
    uint32_t kinds;
    uint64_t n;
    bool andAllAfter;
    const char* outcome;  // of a handle, a quiet handle and a tracked block, three times
};
constexpr FailureRow kFailures[] = {
    {0, 0, true, "+++++++++"},
    {kBel_HandleAllocations, 2, false, "+++-+++++"},
    {kBel_QuietAllocations, 1, true, "+-++-++-+"},
    {kBel_HandleAllocations | kBel_TrackedAllocations, 3, true, "+++-+--+-"},
    {kBel_QuietAllocations | kBel_TrackedAllocations, 4, false, "+++++-+++"},
};

}  // namespace

TEST_CASE("a translation is taken only where it reads the same arguments") {
    for (const TextRow& r : kTexts) {
        CAPTURE(r.entry, r.translation != nullptr ? r.translation : "none");
        Zan_MessageEntry entries[] = {{r.entry, 0, 0, 0}, {nullptr, UINTPTR_MAX, UINTPTR_MAX, 0}};
        const Zan_MessageTable table = {"Test", 2, entries, 0};
        Bel_SetCatalogue(tellText, const_cast<char*>(r.translation));
        const std::string text = Bel_ZLookupLStrCache(&table, 0, 0, 0);
        CHECK(text == (r.taken ? r.translation : std::strchr(r.entry, '=') + 1));
        for (const int32_t outside : {-1, 1}) CHECK(std::string(Bel_ZLookupLStrCache(&table, outside, 0, 0)).empty());
    }
    Bel_SetCatalogue(nullptr, nullptr);
}

TEST_CASE("handles and tracked memory are counted") {
    const Counts at = memory();
    Bel_Handle handle = Bel_AllocateHandleQuiet(100), other = Bel_AllocateHandleQuiet(7);
    REQUIRE((handle != nullptr && other != nullptr));
    CHECK(std::string(static_cast<char*>(*handle), 100) == std::string(100, '\0'));
    void* block = Bel_MemTrackedObject::TrackedNew(24, false);
    CHECK(reinterpret_cast<uintptr_t>(block) % alignof(std::max_align_t) == 0);
    CHECK(memory() == Counts{at[0] + 2, at[1] + 107, at[2] + 1, at[3] + 24, at[4] + 1, at[5]});
    for (const Bel_Handle reclaimed : {handle, handle, Bel_Handle{}}) Bel_ReclaimHandle(reclaimed);
    CHECK(*handle == nullptr);
    CHECK(memory() == Counts{at[0] + 2, at[1] + 7, at[2] + 1, at[3] + 24, at[4] + 1, at[5]});
    for (const Bel_Handle freed : {handle, other, Bel_Handle{}}) Bel_FreeHandle(freed);
    for (void* const deleted : {block, static_cast<void*>(nullptr)}) Bel_MemTrackedObject::TrackedDelete(deleted);
    CHECK(memory() == Counts{at[0], at[1], at[2], at[3], at[4] + 1, at[5] + 1});
    CHECK_THROWS_AS(Bel_MemTrackedObject::TrackedNew(SIZE_MAX, false), std::bad_alloc);
}

TEST_CASE("allocations fail on demand") {
    HostReports host;
    for (const FailureRow& r : kFailures) {
        Bel_SetAllocationFailure(r.kinds, r.n, r.andAllAfter);
        std::string outcome;
        for (int i = 0; i < 3; ++i) {
            for (const Bel_Handle got : {Bel_AllocateHandle(0x42, "a block", 8), Bel_AllocateHandleQuiet(8)}) {
                outcome += got != nullptr ? '+' : '-';
                Bel_FreeHandle(got);
            }
            try {
                Bel_MemTrackedObject::TrackedDelete(Bel_MemTrackedObject::TrackedNew(1, false));
                outcome += '+';
            } catch (const std::bad_alloc&) {
                outcome += '-';
            }
            const bool told = outcome[outcome.size() - 3] == '-';
            CHECK(host.takeAll() == (told ? "0x42 sev 8: not enough memory for a block." : ""));
        }
        CHECK(outcome == r.outcome);
    }
    Bel_SetAllocationFailure(0, 0, false);
}

TEST_CASE("exceptions become codes, and a platform's own error has its text") {
    HostReports host;
    CHECK(Bel_TranslateAndReportException(std::bad_alloc()) == kBel_Err_OutOfMemory);
    CHECK(Bel_TranslateAndReportException(std::length_error("too long")) == kBel_Err_TooLong);
    CHECK(Bel_TranslateAndReportException(std::runtime_error("why")) == kBel_Err_Exception);
    CHECK(host.takeAll() == "0x0 sev 8: std::bad_alloc\n0x0 sev 8: too long\n0x0 sev 8: why");
    CHECK(Belp_ReportVamoErrString(1, 8, 99, nullptr) == 99);
    Belp_ReportErrString(2, 4, nullptr);
    CHECK(host.takeAll() == "0x1 sev 8 code 99: platform error.\n0x2 sev 4: ");
}

TEST_CASE("threads report side by side, in handlers too, while the handlers change") {
    std::atomic<int> right{0};
    Bel_SetReportHandler(check, &right);
    std::vector<std::thread> threads;
    for (int16_t t = 1; t <= 4; ++t) {
        threads.emplace_back([t, &right, others = Belp_GetThreadLoggingBuffer()] {
            for (int i = 0; i < 200; ++i) {
                Belp_SetThreadLastError(t);
                if (Bel_GetThreadLastError() == t && Belp_GetThreadLoggingBuffer() != others) ++right;
                Zanp_ReportErr(static_cast<uint16_t>(t), t, 0);
            }
        });
    }
    for (int i = 0; i < 200; ++i) {
        Bel_SetCatalogue(i % 2 != 0 ? tellText : nullptr, const_cast<char*>("unknown error (%d)."));
    }
    Bel_SetCatalogue(nullptr, nullptr);
    for (std::thread& thread : threads) thread.join();
    Bel_SetReportHandler(nullptr, nullptr);
    CHECK(right == 4 * 200 * 3);
}

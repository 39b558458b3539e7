// The platform stand-in: memory counts, allocation failures, translations, exceptions, and handlers that several
// threads call and replace.
#include "tests/support/host_reports.h"
#include "zan/frame.h"

#include <catch2/catch.hpp>

#include <atomic>
#include <cstring>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

// A catalogue that has the same text for every key.
const char* returnText(void* text, const char* /*module*/, const char* /*key*/) {
    return static_cast<const char*>(text);
}

struct TextRow {
    const char* what;
    const char* entry;  // key=English text
    const char* translation;
    bool accepted;
};
constexpr TextRow kTexts[] = {
    {"neither the text nor the English text has a conversion", "k=in matrix", "100 %%", true},
    {"the same conversion elsewhere in the text", "k=overflow %s.", "%s: 100 %% trop", true},
    {"several conversions with flags, in order", "k=%s takes %5.2f%%", "%%: %s, %5.2f", true},
    {"the longest key", "a key as long as it may be, which is one less than its 64 bytes=x", "y", true},
    {"a key that is too long", "a key as long as it may be, which is one less than its 64 bytes.=x", "y", false},
    {"the catalogue has no text", "k=overflow %s.", nullptr, false},
    {"a conversion that English does not have", "k=in matrix", "%n", false},
    {"one conversion more than in English, without a letter", "k=overflow %s.", "%s %", false},
    {"no conversion, because %% is none", "k=overflow %s.", "%%s", false},
    {"the same argument, but with a width that does not fit the buffer", "k=overflow %s.", "%999999999s", false},
    {"a percent sign that reads as a conversion", "k=error (%d).", "5 % de %d", false},
    {"a positional argument of another type", "k=%1$s", "%1$d", false},
    {"the conversions in another order", "k=%s %d", "%d %s", false},
};

struct FailureRow {
    const char* what;
    uint32_t kinds;
    uint64_t n;
    bool andAllAfter;
    const char* outcome;  // + or - for a handle, a quiet handle and a tracked block, three times
};
constexpr FailureRow kFailures[] = {
    {"n = 0 fails none", kBel_HandleAllocations, 0, true, "+++ +++ +++"},
    {"only the second handle", kBel_HandleAllocations, 2, false, "+++ -++ +++"},
    {"every quiet handle", kBel_QuietAllocations, 1, true, "+-+ +-+ +-+"},
    {"two kinds share one count: all allocations from the third on fail",
     kBel_HandleAllocations | kBel_TrackedAllocations, 3, true, "+++ -+- -+-"},
};

bool allocates(Bel_Handle handle) {
    Bel_FreeHandle(handle);
    return handle != nullptr;
}

bool allocatesTracked() {
    try {
        Bel_MemTrackedObject::TrackedDelete(Bel_MemTrackedObject::TrackedNew(1, false));
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

constexpr int kThreads = 4;
constexpr int kRounds = 200;
constexpr int16_t kNested = 100;  // added to the number of a report that the handler makes

// Counts the reports that have their own number in the text. Makes another report and installs itself anew.
void countCorrectReports(void* correct, const Bel_Report* report) {
    const auto number = static_cast<int16_t>(report->errorNumber & 0xFFFF);
    Bel_SetReportHandler(countCorrectReports, correct);
    if (number < kNested) {
        const auto nested = static_cast<uint16_t>(number + kNested);
        Zanp_ReportErr(nested, nested, 0);
    }
    const std::string expected = "unknown error (" + std::to_string(number) + ").";
    if (expected == report->text) ++*static_cast<std::atomic<int>*>(correct);
}

}  // namespace

TEST_CASE("a translation is accepted only if it has the same conversions") {
    for (const TextRow& row : kTexts) {
        CAPTURE(row.what);
        Zan_MessageEntry entries[] = {{row.entry, 0, 0, 0}, {nullptr, UINTPTR_MAX, UINTPTR_MAX, 0}};
        const Zan_MessageTable table = {"Test", 2, entries, 0};
        Bel_SetCatalogue(returnText, const_cast<char*>(row.translation));
        const char* english = std::strchr(row.entry, '=') + 1;
        CHECK(std::string(Bel_ZLookupLStrCache(&table, 0, 0, 0)) == (row.accepted ? row.translation : english));
        CHECK(std::string(Bel_ZLookupLStrCache(&table, -1, 0, 0)).empty());
        CHECK(std::string(Bel_ZLookupLStrCache(&table, 1, 0, 0)).empty());
    }
    Bel_SetCatalogue(nullptr, nullptr);
}

TEST_CASE("handles are zeroed and counted, and keep their count when reclaimed") {
    const Bel_MemoryCounts before = memoryCounts();
    const Bel_Handle handle = Bel_AllocateHandleQuiet(100);
    const Bel_Handle other = Bel_AllocateHandleQuiet(7);
    REQUIRE(handle != nullptr);
    REQUIRE(other != nullptr);
    CHECK(std::string(static_cast<char*>(*handle), 100) == std::string(100, '\0'));
    CHECK(memoryCounts().handles == before.handles + 2);
    CHECK(memoryCounts().handleBytes == before.handleBytes + 107);

    Bel_ReclaimHandle(handle);
    Bel_ReclaimHandle(handle);
    Bel_ReclaimHandle(nullptr);
    CHECK(*handle == nullptr);
    CHECK(memoryCounts().handles == before.handles + 2);
    CHECK(memoryCounts().handleBytes == before.handleBytes + 7);

    Bel_FreeHandle(handle);
    Bel_FreeHandle(other);
    Bel_FreeHandle(nullptr);
    CHECK(memoryCounts().handles == before.handles);
    CHECK(memoryCounts().handleBytes == before.handleBytes);
}

TEST_CASE("tracked memory is aligned and counted") {
    const Bel_MemoryCounts before = memoryCounts();
    void* block = Bel_MemTrackedObject::TrackedNew(24, false);
    CHECK(reinterpret_cast<uintptr_t>(block) % alignof(std::max_align_t) == 0);
    CHECK(memoryCounts().trackedBlocks == before.trackedBlocks + 1);
    CHECK(memoryCounts().trackedBytes == before.trackedBytes + 24);
    CHECK(memoryCounts().trackedNews == before.trackedNews + 1);
    CHECK(memoryCounts().trackedDeletes == before.trackedDeletes);

    Bel_MemTrackedObject::TrackedDelete(block);
    Bel_MemTrackedObject::TrackedDelete(nullptr);
    CHECK(memoryCounts().trackedBlocks == before.trackedBlocks);
    CHECK(memoryCounts().trackedBytes == before.trackedBytes);
    CHECK(memoryCounts().trackedNews == before.trackedNews + 1);
    CHECK(memoryCounts().trackedDeletes == before.trackedDeletes + 1);
    CHECK_THROWS_AS(Bel_MemTrackedObject::TrackedNew(SIZE_MAX, false), std::bad_alloc);
}

TEST_CASE("allocations fail on demand, and only Bel_AllocateHandle reports it") {
    for (const FailureRow& row : kFailures) {
        CAPTURE(row.what);
        HostReports host;
        Bel_SetAllocationFailure(row.kinds, row.n, row.andAllAfter);
        std::string outcome;
        for (int round = 0; round < 3; ++round) {
            if (round != 0) outcome += ' ';
            const bool handle = allocates(Bel_AllocateHandle(0x42, "a block", 8));
            CHECK(host.takeAll() == (handle ? "" : "0x42 sev 8: not enough memory for a block."));
            outcome += handle ? '+' : '-';
            outcome += allocates(Bel_AllocateHandleQuiet(8)) ? '+' : '-';
            outcome += allocatesTracked() ? '+' : '-';
            CHECK(host.takeAll().empty());
        }
        CHECK(outcome == row.outcome);
    }
    Bel_SetAllocationFailure(0, 0, false);
}

TEST_CASE("exceptions become codes") {
    HostReports host;
    CHECK(Bel_TranslateAndReportException(std::bad_alloc()) == kBel_Err_OutOfMemory);
    CHECK(host.takeAll() == "0x0 sev 8: std::bad_alloc");
    CHECK(Bel_TranslateAndReportException(std::length_error("too long")) == kBel_Err_TooLong);
    CHECK(host.takeAll() == "0x0 sev 8: too long");
    CHECK(Bel_TranslateAndReportException(std::runtime_error("why")) == kBel_Err_Exception);
    CHECK(host.takeAll() == "0x0 sev 8: why");
}

TEST_CASE("a report without a text has the platform's text, or none") {
    HostReports host;
    CHECK(Belp_ReportVamoErrString(1, 8, 99, nullptr) == 99);
    CHECK(host.takeAll() == "0x1 sev 8 code 99: platform error.");
    Belp_ReportErrString(2, 4, nullptr);
    CHECK(host.takeAll() == "0x2 sev 4: ");
}

TEST_CASE("threads report simultaneously, also from handlers, while handler and catalogue change") {
    std::atomic<int> correctReports{0};
    std::atomic<int> ownStates{0};
    Bel_SetReportHandler(countCorrectReports, &correctReports);
    std::vector<std::thread> threads;
    const char* const mainBuffer = Belp_GetThreadLoggingBuffer();
    for (int16_t number = 1; number <= kThreads; ++number) {
        threads.emplace_back([number, mainBuffer, &ownStates] {
            for (int i = 0; i < kRounds; ++i) {
                Belp_SetThreadLastError(number);
                if (Bel_GetThreadLastError() == number && Belp_GetThreadLoggingBuffer() != mainBuffer) ++ownStates;
                Zanp_ReportErr(static_cast<uint16_t>(number), number, 0);
            }
        });
    }
    for (int i = 0; i < kRounds; ++i) {
        Bel_SetCatalogue(i % 2 != 0 ? returnText : nullptr, const_cast<char*>("unknown error (%d)."));
    }
    Bel_SetCatalogue(nullptr, nullptr);
    for (std::thread& thread : threads) thread.join();
    Bel_SetReportHandler(nullptr, nullptr);
    CHECK(ownStates == kThreads * kRounds);
    CHECK(correctReports == kThreads * kRounds * 2);  // each report and the one that its handler makes
}

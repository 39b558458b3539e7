// The platform stand-in's own promises: counts, failures on demand, per-thread state, handlers under fire.
#include <atomic>
#include <catch2/catch.hpp>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "host_reports.h"
#include "platform/bel.h"
#include "zan/frame.h"

namespace {

using Counts = std::vector<uint64_t>;

// Handles, their bytes, tracked blocks, their bytes, tracked news and deletes.
Counts memory() {
    Bel_MemoryCounts c;
    Bel_GetMemoryCounts(&c);
    return {c.handles, c.handleBytes, c.trackedBlocks, c.trackedBytes, c.trackedNews, c.trackedDeletes};
}

const char* tellText(void* text, const char* /*module*/, const char* /*key*/) { return static_cast<const char*>(text); }

struct TextRow {
    const char* entry;
    const char* translation;
    bool taken;
};
constexpr TextRow kTexts[] = {
    {"k=in matrix", "100 %%", true},
    {"k=overflow %s.", "%s: 100 %% trop", true},
    {"k=%s takes %5.2f%%", "%%: %s, %5.2f", true},
    {"k=overflow %s.", nullptr, false},
    {"k=in matrix", "%n", false},
    {"k=in matrix", "100 %", false},
    {"k=overflow %s.", "%s %s", false},
    {"k=overflow %s.", "%s %", false},
    {"k=overflow %s.", "%%s", false},
    {"k=overflow %s.", "%ls", false},
    {"k=overflow %s.", "%1$s", false},
    {"k=overflow %s.", "%999999999s", false},  // the same argument, but not in a buffer
    {"k=error (%d).", "5 % de %d", false},
    {"k=%1$s", "%1$d", false},
    {"k=%s %d", "%d %s", false},
    {"a key longer than any key that a table should have, by a character or so=x", "y", false},
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
    }
    Bel_SetCatalogue(nullptr, nullptr);
}

TEST_CASE("handles and tracked memory are counted") {
    const Counts at = memory();
    Bel_Handle handle = Bel_AllocateHandleQuiet(100);
    Bel_Handle other = Bel_AllocateHandleQuiet(7);
    REQUIRE((handle != nullptr && other != nullptr));
    CHECK(std::string(static_cast<char*>(*handle), 100) == std::string(100, '\0'));
    void* block = Bel_MemTrackedObject::TrackedNew(24, false);
    CHECK(reinterpret_cast<uintptr_t>(block) % alignof(std::max_align_t) == 0);
    CHECK(memory() == Counts{at[0] + 2, at[1] + 107, at[2] + 1, at[3] + 24, at[4] + 1, at[5]});
    Bel_ReclaimHandle(handle);
    CHECK(*handle == nullptr);
    Bel_ReclaimHandle(handle);
    Bel_ReclaimHandle(nullptr);
    CHECK(memory() == Counts{at[0] + 2, at[1] + 7, at[2] + 1, at[3] + 24, at[4] + 1, at[5]});
    Bel_FreeHandle(handle);
    Bel_FreeHandle(other);
    Bel_FreeHandle(nullptr);
    Bel_MemTrackedObject::TrackedDelete(block);
    Bel_MemTrackedObject::TrackedDelete(nullptr);
    CHECK(memory() == Counts{at[0], at[1], at[2], at[3], at[4] + 1, at[5] + 1});
}

TEST_CASE("allocations fail on demand") {
    HostReports host;
    const auto attempts = [] {
        std::string outcome;
        for (int i = 0; i < 4; ++i) {
            Bel_Handle handle = Bel_AllocateHandle(0x42, "a block", 8);
            outcome += handle != nullptr ? '+' : '-';
            Bel_FreeHandle(handle);
        }
        return outcome;
    };
    Bel_SetAllocationFailure(kBel_HandleAllocations, 2, false);
    CHECK(attempts() == "+-++");
    CHECK(host.takeAll() == "0x42 sev 8: not enough memory for a block.");
    Bel_SetAllocationFailure(kBel_HandleAllocations | kBel_TrackedAllocations, 3, true);
    CHECK(attempts() == "++--");
    CHECK_THROWS_AS(Bel_MemTrackedObject::TrackedNew(1, false), std::bad_alloc);
    Bel_SetAllocationFailure(kBel_QuietAllocations, 1, true);
    CHECK(attempts() == "++++");  // another kind neither fails nor counts
    CHECK(Bel_AllocateHandleQuiet(8) == nullptr);
    Bel_SetAllocationFailure(kBel_TrackedAllocations, 3, false);
    CHECK(attempts() == "++++");
    Bel_MemTrackedObject::TrackedDelete(Bel_MemTrackedObject::TrackedNew(1, false));
    Bel_SetAllocationFailure(0, 0, false);
    CHECK_THROWS_AS(Bel_MemTrackedObject::TrackedNew(SIZE_MAX, false), std::bad_alloc);
}

TEST_CASE("exceptions become codes") {
    HostReports host;
    CHECK(Bel_TranslateAndReportException(std::bad_alloc()) == kBel_Err_OutOfMemory);
    CHECK(Bel_TranslateAndReportException(std::length_error("too long")) == kBel_Err_TooLong);
    CHECK(Bel_TranslateAndReportException(std::runtime_error("why")) == kBel_Err_Exception);
    CHECK(host.takeAll() == "0x0 sev 8: std::bad_alloc\n0x0 sev 8: too long\n0x0 sev 8: why");
    CHECK(Belp_ReportVamoErrString(1, 8, 99, nullptr) == 99);
    Belp_ReportErrString(2, 4, nullptr);
    CHECK(host.takeAll() == "0x1 sev 8 code 99: platform error.\n0x2 sev 4: ");
}

TEST_CASE("a handler may report and replace itself") {
    HostReports host;
    std::string texts;
    Bel_SetReportHandler(
        [](void* context, const Bel_Report* report) {
            Bel_SetReportHandler([](void* inner, const Bel_Report* r) { *static_cast<std::string*>(inner) += r->text; },
                                 context);
            Zanp_ReportErr(1, 2, 0);
            *static_cast<std::string*>(context) += report->text;
        },
        &texts);
    Zanp_ReportErr(1, 1, 0);
    CHECK(texts == "unknown error (2).unknown error (1).");
}

TEST_CASE("threads report side by side while the handlers change") {
    std::atomic<int> wrong{0};
    const auto check = [](void* context, const Bel_Report* report) {
        // Every thread reports its own number twice, as site and as code.
        const std::string expected = "unknown error (" + std::to_string(report->errorNumber & 0xFFFF) + ").";
        if (expected != report->text) ++*static_cast<std::atomic<int>*>(context);
    };
    Bel_SetReportHandler(check, &wrong);
    std::vector<std::thread> threads;
    for (int16_t t = 1; t <= 4; ++t) {
        threads.emplace_back([t, &wrong, mine = Belp_GetThreadLoggingBuffer()] {
            if (Belp_GetThreadLoggingBuffer() == mine) ++wrong;
            for (int i = 0; i < 200; ++i) {
                Belp_SetThreadLastError(t);
                if (Bel_GetThreadLastError() != t) ++wrong;
                Zanp_ReportErr(static_cast<uint16_t>(t), t, 0);
            }
        });
    }
    for (int i = 0; i < 200; ++i) {
        Bel_SetReportHandler(check, &wrong);
        Bel_SetCatalogue(i % 2 != 0 ? tellText : nullptr, const_cast<char*>("unknown error (%d)."));
    }
    Bel_SetCatalogue(nullptr, nullptr);
    for (std::thread& thread : threads) thread.join();
    Bel_SetReportHandler(nullptr, nullptr);
    CHECK(wrong == 0);
}

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

Bel_MemoryCounts memory() {
    Bel_MemoryCounts counts;
    Bel_GetMemoryCounts(&counts);
    return counts;
}

}  // namespace

TEST_CASE("handles and tracked memory are counted") {
    const Bel_MemoryCounts before = memory();
    const Bel_Handle handle = Bel_AllocateHandleQuiet(100);
    REQUIRE(handle != nullptr);
    CHECK(std::string(static_cast<char*>(*handle), 100) == std::string(100, '\0'));
    void* block = Bel_MemTrackedObject::TrackedNew(24, false);
    CHECK(reinterpret_cast<uintptr_t>(block) % alignof(std::max_align_t) == 0);
    CHECK((memory().handles == before.handles + 1 && memory().handleBytes == before.handleBytes + 100));
    CHECK((memory().trackedBlocks == before.trackedBlocks + 1 && memory().trackedBytes == before.trackedBytes + 24));
    Bel_ReclaimHandle(handle);
    CHECK(*handle == nullptr);
    CHECK((memory().handles == before.handles + 1 && memory().handleBytes == before.handleBytes));
    Bel_ReclaimHandle(handle);
    Bel_ReclaimHandle(nullptr);
    Bel_FreeHandle(handle);
    Bel_FreeHandle(nullptr);
    Bel_MemTrackedObject::TrackedDelete(block);
    Bel_MemTrackedObject::TrackedDelete(nullptr);
    CHECK((memory().handles == before.handles && memory().trackedBlocks == before.trackedBlocks));
    CHECK((memory().trackedNews == before.trackedNews + 1 && memory().trackedDeletes == before.trackedDeletes + 1));
}

TEST_CASE("allocations fail on demand") {
    HostReports host;
    const auto attempts = [] {
        std::string outcome;
        for (int i = 0; i < 4; ++i) {
            const Bel_Handle handle = Bel_AllocateHandle(0x42, "a block", 8);
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
    CHECK(attempts() == "++++");
    CHECK(Bel_AllocateHandleQuiet(8) == nullptr);
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
    CHECK(host.takeAll() == "0x1 sev 8 code 99: platform error.");
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
        threads.emplace_back([t, &wrong] {
            for (int i = 0; i < 200; ++i) {
                Belp_SetThreadLastError(t);
                if (Bel_GetThreadLastError() != t) ++wrong;
                Zanp_ReportErr(static_cast<uint16_t>(t), t, 0);
            }
        });
    }
    for (int i = 0; i < 200; ++i) {
        Bel_SetReportHandler(check, &wrong);
        Bel_SetCatalogue(nullptr, nullptr);
    }
    for (std::thread& thread : threads) thread.join();
    Bel_SetReportHandler(nullptr, nullptr);
    CHECK(wrong == 0);
}

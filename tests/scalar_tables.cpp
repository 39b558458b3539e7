// The lookup tables: their entries, prepare and unprepare calls, and rebuilding after the platform reclaimed memory.
#include "tests/support/host_reports.h"
#include "zan/frame.h"
#include "zan/scalar.h"

#include <catch2/catch.hpp>

#include <cmath>
#include <cstring>
#include <vector>

namespace {

using Handle = void** Zan_Globals::*;

// The operations and fields of one service under common names, so that each test runs for both services.
struct Service {
    uint32_t flag;
    std::vector<Handle> handles;
    uint16_t Zan_Globals::*prepareCount;
    size_t tableBytes;
    int32_t (*prepare)(bool reportFailure, bool failIfReclaimed, bool* ok, const void* (&tables)[2]);
    int32_t (*unprepare)();
    std::string unavailable, notRunning, notRunningAtUnprepare;  // reports
};

// The output pointers start as something that is not null, so that a null must have been stored.
int32_t prepareCharMath(bool reportFailure, bool failIfReclaimed, bool* ok, const void* (&tables)[2]) {
    uint8_t other = 0;
    uint8_t* products = &other;
    uint8_t* quotients = &other;
    const int32_t result = Zan_PrepareFCMD(reportFailure, failIfReclaimed, ok, &products, &quotients);
    tables[0] = products;
    tables[1] = quotients;
    return result;
}
int32_t prepareTrig(bool reportFailure, bool failIfReclaimed, bool* ok, const void* (&tables)[2]) {
    float other = 0;
    float* sines = &other;
    const int32_t result = Zan_PrepareFTrig(reportFailure, failIfReclaimed, ok, &sines);
    tables[0] = sines;
    tables[1] = nullptr;
    return result;
}

const Service kCharMath = {Zan_Service_FastCharMath,
                           {&Zan_Globals::charMultiplyTable, &Zan_Globals::charDivideTable},
                           &Zan_Globals::charMathPrepareCount,
                           65536,
                           prepareCharMath,
                           Zan_UnprepareFCMD,
                           "0x11001F sev 8: fast character math will be unavailable.",
                           "0x11001F sev 8: attempt to use unrequested math service (fast char math).",
                           "0x110020 sev 8: attempt to use unrequested math service (fast char math)."};
const Service kTrig = {Zan_Service_FastTrig,
                       {&Zan_Globals::sineTable},
                       &Zan_Globals::sinePrepareCount,
                       1024,
                       prepareTrig,
                       Zan_UnprepareFTrig,
                       "0x11002A sev 8: fast trig will be unavailable.",
                       "0x11002A sev 8: attempt to use unrequested math service (fast trig).",
                       "0x11002A sev 8: attempt to use unrequested math service (fast trig)."};
const Service* const kServices[] = {&kCharMath, &kTrig};

enum class Reclaimed : unsigned { kNone = 0, kFirst = 1, kSecond = 2, kBoth = 3 };
enum class Outcome {
    kReady,     // the tables are ready
    kNotReady,  // they stay reclaimed
    kLost,      // rebuilding failed, and the service no longer runs
};

struct PrepareRow {
    const char* what;
    const Service& service;
    Reclaimed reclaimed;
    bool prepared;  // by an earlier call
    bool failIfReclaimed, reportFailure;
    uint64_t failingAllocation;  // 1 is the first; 0 for none
    Outcome outcome;
    uint64_t handles, tablesInMemory;  // allocated afterwards, and tables not reclaimed
};
const PrepareRow kPrepareRows[] = {
    {"tables in place", kCharMath, Reclaimed::kNone, false, true, true, 0, Outcome::kReady, 2, 2},
    {"the first is reclaimed: both are rebuilt", kCharMath, Reclaimed::kFirst, false, false, true, 0, Outcome::kReady,
     2, 2},
    {"the second is reclaimed: both are rebuilt", kCharMath, Reclaimed::kSecond, false, false, false, 0,
     Outcome::kReady, 2, 2},
    {"rebuilding is not wanted; reported", kCharMath, Reclaimed::kFirst, false, true, true, 0, Outcome::kNotReady, 2,
     1},
    {"rebuilding is not wanted; not reported", kCharMath, Reclaimed::kSecond, false, true, false, 0, Outcome::kNotReady,
     2, 1},
    {"tables that are prepared are not checked", kCharMath, Reclaimed::kBoth, true, true, true, 0, Outcome::kReady, 2,
     0},
    {"no memory for the first; the second is allocated", kCharMath, Reclaimed::kFirst, false, false, true, 1,
     Outcome::kLost, 1, 1},
    {"no memory for the second", kCharMath, Reclaimed::kBoth, false, false, false, 2, Outcome::kLost, 1, 1},
    {"the only table in place", kTrig, Reclaimed::kNone, false, true, true, 0, Outcome::kReady, 1, 1},
    {"the only table is reclaimed and rebuilt", kTrig, Reclaimed::kFirst, false, false, true, 0, Outcome::kReady, 1, 1},
    {"rebuilding it is not wanted", kTrig, Reclaimed::kFirst, false, true, true, 0, Outcome::kNotReady, 1, 0},
    {"no memory for it; not reported", kTrig, Reclaimed::kFirst, false, false, false, 1, Outcome::kLost, 0, 0},
};

// The bytes of a service's tables, computed in floating point.
std::vector<std::string> expectedTables(const Service& service) {
    std::string products, quotients, sines;
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            const double quotient = b >= a ? 255 : std::floor((b * 255 + std::floor(a / 2.0)) / a);
            products += static_cast<char>(static_cast<int>(std::floor((a * b + 127) / 255.0)));
            quotients += static_cast<char>(static_cast<int>(quotient));
        }
        const auto sine = static_cast<float>(std::sin(a / 255.0 * 1.5707963267948966));
        sines.append(reinterpret_cast<const char*>(&sine), sizeof sine);
    }
    return &service == &kCharMath ? std::vector{products, quotients} : std::vector{sines};
}

}  // namespace

TEST_CASE("a prepare call checks, rebuilds and counts the tables") {
    for (const PrepareRow& row : kPrepareRows) {
        CAPTURE(row.what);
        const Service& service = row.service;
        HostReports host;
        REQUIRE(Zan_Birth(service.flag, nullptr) == 0);
        bool ok = false;
        const void* tables[2] = {};
        if (row.prepared) REQUIRE(service.prepare(true, true, nullptr, tables) == 0);
        for (size_t i = 0; i < service.handles.size(); ++i) {
            if ((static_cast<unsigned>(row.reclaimed) >> i & 1U) != 0) Bel_ReclaimHandle(Zanp_G.*service.handles[i]);
        }
        Bel_SetAllocationFailure(kBel_QuietAllocations, row.failingAllocation, false);
        Belp_SetThreadLastError(77);
        const int32_t result = service.prepare(row.reportFailure, row.failIfReclaimed, &ok, tables);
        Bel_SetAllocationFailure(0, 0, false);

        const bool ready = row.outcome == Outcome::kReady;
        const bool reported = !ready && row.reportFailure;
        CHECK(ok == ready);
        CHECK(result == (reported ? Zan_Result_Failed : 0));
        CHECK(host.takeAll() == (reported ? service.unavailable : ""));
        CHECK(Bel_GetThreadLastError() == 77);
        CHECK(Zanp_G.*service.prepareCount == (row.prepared ? 2 : 1));
        CHECK(memoryCounts().handles == row.handles);
        CHECK(memoryCounts().handleBytes == row.tablesInMemory * service.tableBytes);
        const std::vector<std::string> expected = expectedTables(service);
        for (size_t i = 0; i < service.handles.size(); ++i) {
            CAPTURE(i);
            const void* address = ready ? *(Zanp_G.*service.handles[i]) : nullptr;
            CHECK(tables[i] == address);
            if (address != nullptr) CHECK(std::memcmp(address, expected[i].data(), service.tableBytes) == 0);
        }

        const bool lost = row.outcome == Outcome::kLost;
        CHECK(service.unprepare() == (lost ? Zan_Err_UnrequestedService : 0));
        CHECK(host.takeAll() == (lost ? service.notRunningAtUnprepare : ""));
        CHECK(Zanp_G.*service.prepareCount == (lost || row.prepared ? 1 : 0));
        CHECK(Zan_Death() == 0);
        CHECK(memoryCounts().handles == 0);
        Zanp_G = {};
    }
}

TEST_CASE("every output of a prepare call may be null") {
    REQUIRE(Zan_Birth(Zan_Service_FastCharMath | Zan_Service_FastTrig, nullptr) == 0);
    CHECK(Zan_PrepareFCMD(true, true, nullptr, nullptr, nullptr) == 0);
    CHECK(Zan_PrepareFTrig(true, true, nullptr, nullptr) == 0);
    CHECK(Zan_Death() == 0);
    Zanp_G = {};
}

TEST_CASE("one unprepare call too many wraps the count, and tables are not checked then") {
    HostReports host;
    REQUIRE(Zan_Birth(Zan_Service_FastTrig, nullptr) == 0);
    CHECK(Zan_UnprepareFTrig() == 0);
    CHECK(Zanp_G.sinePrepareCount == 0xFFFF);
    Bel_ReclaimHandle(Zanp_G.sineTable);
    bool ok = false;
    CHECK(Zan_PrepareFTrig(true, true, &ok, nullptr) == 0);
    CHECK(ok);
    CHECK(Zanp_G.sinePrepareCount == 0);
    CHECK(Zan_Death() == 0);
    CHECK(host.takeAll().empty());
    Zanp_G = {};
}

TEST_CASE("a service that does not run is reported and counts nothing") {
    struct Row {
        const char* what;
        bool flagSet, tablesThere;
    };
    constexpr uint32_t kBoth = Zan_Service_FastCharMath | Zan_Service_FastTrig;
    for (const Row& row : {Row{"the service is not in the services field", false, true},
                           Row{"the service has no tables", true, false}, Row{"neither", false, false}}) {
        for (const Service* service : kServices) {
            CAPTURE(row.what, service->unavailable);
            HostReports host;
            REQUIRE(Zan_Birth(row.tablesThere ? kBoth : kBoth & ~service->flag, nullptr) == 0);
            Zanp_G.services = row.flagSet ? kBoth : kBoth & ~service->flag;
            bool ok = true;
            const void* tables[2];
            CHECK(service->prepare(false, false, &ok, tables) == Zan_Err_UnrequestedService);
            CHECK_FALSE(ok);
            CHECK(tables[0] == nullptr);
            CHECK(tables[1] == nullptr);
            CHECK(host.takeAll() == service->notRunning);
            CHECK(service->unprepare() == Zan_Err_UnrequestedService);
            CHECK(host.takeAll() == service->notRunningAtUnprepare);
            CHECK(Zanp_G.*service->prepareCount == 0);
            Zanp_G.services = kBoth;
            CHECK(Zan_Death() == 0);
            Zanp_G = {};
        }
    }
}

// Start and stop of the library, and Zan_GetGlobals and Zan_SetGlobals, which move its globals out and in.
#include "tests/support/host_reports.h"
#include "zan/frame.h"
#include "zan/platform/oska.h"

#include <catch2/catch.hpp>

#include <cstring>

namespace {

constexpr uint32_t kTables = Zan_Service_FastTrig | Zan_Service_FastCharMath;
constexpr uint32_t kAllProvided = Zan_Service_Basic | kTables;

void freeTables(Zan_Globals& block) {
    for (void** Zan_Globals::*table :
         {&Zan_Globals::sineTable, &Zan_Globals::charMultiplyTable, &Zan_Globals::charDivideTable}) {
        Bel_FreeHandle(block.*table);
        block.*table = nullptr;
    }
}

// A library that is not started, with values that no lifecycle operation may touch. Frees what a test leaves behind.
struct Library {
    Library() {
        Zanp_G = {};
        Zanp_G.charMathPrepareCount = 3;
        Zanp_G.sinePrepareCount = 4;
        Zanp_G.reserved1[3] = 5;
        Zanp_G.reserved2[7] = 6;
    }
    ~Library() {
        Bel_SetAllocationFailure(0, 0, false);
        freeTables(Zanp_G);
        Zanp_G = {};
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
};

bool same(const Zan_Globals& a, const Zan_Globals& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

Zan_Globals withMagics(Zan_Globals block, uint32_t head, uint32_t tail) {
    block.headMagic = head;
    block.tailMagic = tail;
    return block;
}

struct BirthRow {
    const char* what;
    uint32_t services;
    uint64_t failingAllocation;  // 1 is the first; 0 for none
    bool andAllAfter;
    int32_t result;
    uint32_t started;
    uint64_t tables;  // allocated afterwards
    const char* reports;
};
constexpr BirthRow kBirths[] = {
    {"bits that are no service are ignored", 0xFFFFFFF0, 0, false, 0, 0, 0, ""},
    {"the basic service has no table", Zan_Service_Basic, 0, false, 0, Zan_Service_Basic, 0, ""},
    {"all provided services", kAllProvided, 0, false, 0, kAllProvided, 3, ""},
    {"the services before the failing one are recorded", Zan_Service_FastTrig | Zan_Service_Gaussian, 0, false,
     kBel_Err_NoService, Zan_Service_FastTrig, 1, "0x11001D sev 8 code 5: Gaussian table initialization."},
    {"the services after the failing one start but are not recorded", kAllProvided, 1, false, Zan_Result_Failed,
     Zan_Service_Basic, 2, "0x110019 sev 8: not enough memory for FCM/D table."},
    {"without any memory each service reports", kAllProvided, 1, true, Zan_Result_Failed, Zan_Service_Basic, 0,
     "0x110019 sev 8: not enough memory for FCM/D table.\n0x11001B sev 8: not enough memory for FCM/D table."},
    {"after the first char table fails, the second is not tried", Zan_Service_FastCharMath, 1, false, Zan_Result_Failed,
     0, 0, "0x11001B sev 8: not enough memory for FCM/D table."},
    {"after the second char table fails, the first is freed; the first error is returned",
     Zan_Service_FastCharMath | Zan_Service_Gaussian, 2, false, Zan_Result_Failed, 0, 0,
     "0x11001B sev 8: not enough memory for FCM/D table.\n0x11001D sev 8 code 5: Gaussian table initialization."},
};

// The block is copied although it is invalid.
void moveInInvalid(uint32_t headMagic, uint32_t tailMagic) {
    Zan_Globals block = withMagics({}, headMagic, tailMagic);
    block.services = kAllProvided;
    CHECK(Zan_SetGlobals(&block) == kBel_Err_BadGlobals);
    CHECK(same(Zanp_G, block));
}

// Calls that leave the library not started.
struct NotStartedRow {
    const char* what;
    void (*reach)();
    const char* reports = "";
};
const NotStartedRow kNotStarted[] = {
    {"never started", [] {}},
    {"one of its services failed to start",
     [] { CHECK(Zan_Birth(Zan_Service_FastTrig | Zan_Service_Gaussian, nullptr) == kBel_Err_NoService); },
     "0x11001D sev 8 code 5: Gaussian table initialization."},
    {"stopped",
     [] {
         CHECK(Zan_Birth(Zan_Service_Basic, nullptr) == 0);
         CHECK(Zan_Death() == 0);
     }},
    {"its globals are moved out",
     [] {
         Zan_Globals block;
         CHECK(Zan_Birth(Zan_Service_Basic, nullptr) == 0);
         CHECK(Zan_GetGlobals(&block) == 0);
     }},
    {"globals with a wrong head magic are moved in", [] { moveInInvalid(1, Zan_kGlobalsMagic); },
     "0x110017 sev 8 code 2: the globals block is not valid."},
    {"globals with a wrong tail magic are moved in", [] { moveInInvalid(Zan_kGlobalsMagic, 1); },
     "0x110017 sev 8 code 2: the globals block is not valid."},
};

}  // namespace

TEST_CASE("Zan_Birth starts the requested services") {
    for (const BirthRow& row : kBirths) {
        CAPTURE(row.what);
        const Library library;
        HostReports host;
        uint32_t started = 99;
        Belp_SetThreadLastError(77);
        Bel_SetAllocationFailure(kBel_HandleAllocations, row.failingAllocation, row.andAllAfter);
        CHECK(Zan_Birth(row.services, &started) == row.result);
        CHECK(started == row.started);
        CHECK(memoryCounts().handles == row.tables);
        CHECK(host.takeAll() == row.reports);
        CHECK(Bel_GetThreadLastError() == 77);
        const uint32_t magic = row.result == 0 ? Zan_kGlobalsMagic : 0;
        CHECK(Zanp_G.headMagic == magic);
        CHECK(Zanp_G.tailMagic == magic);
        CHECK(Zanp_G.services == row.started);
        CHECK(Zanp_G.charMathPrepareCount == 3);
        CHECK(Zanp_G.sinePrepareCount == 4);
        CHECK(Zanp_G.reserved1[3] == 5);
        CHECK(Zanp_G.reserved2[7] == 6);
    }
}

TEST_CASE("a library that is not started keeps its globals and cannot be stopped") {
    for (const NotStartedRow& row : kNotStarted) {
        CAPTURE(row.what);
        const Library library;
        HostReports host;
        row.reach();
        CHECK(host.takeAll() == row.reports);
        const Zan_Globals before = Zanp_G;
        Zan_Globals block = {};
        CHECK(Zan_GetGlobals(&block) == kBel_Err_NotStarted);
        CHECK(same(block, {}));
        CHECK(host.takeAll() == "0x110016 sev 8 code 11: the library has not been started.");
        CHECK(Zan_Death() == kBel_Err_NotStarted);
        CHECK(host.takeAll() == "0x110015 sev 8 code 11: the library has not been started.");
        CHECK(same(Zanp_G, before));
    }
}

TEST_CASE("the tables of a failed start are leaked by the next start, unless the host has freed them before") {
    const Library library;
    HostReports host;
    const auto fail = [&] {
        REQUIRE(Zan_Birth(kTables | Zan_Service_Gaussian, nullptr) == kBel_Err_NoService);
        CHECK(host.takeAll() == "0x11001D sev 8 code 5: Gaussian table initialization.");
    };
    fail();
    Zan_Globals forgotten = Zanp_G;
    REQUIRE(Zan_Birth(kTables, nullptr) == 0);
    REQUIRE(Zan_Death() == 0);
    CHECK(memoryCounts().handles == 3);
    freeTables(forgotten);
    fail();
    freeTables(Zanp_G);
    REQUIRE(Zan_Birth(kTables, nullptr) == 0);
    REQUIRE(Zan_Death() == 0);
    CHECK(memoryCounts().handles == 0);
}

TEST_CASE("a started library cannot be started again, nor take other globals") {
    const Library library;
    HostReports host;
    REQUIRE(Zan_Birth(kAllProvided, nullptr) == 0);
    const Zan_Globals before = Zanp_G;
    uint32_t started = 99;
    CHECK(Zan_Birth(kAllProvided | Zan_Service_Gaussian, &started) == kBel_Err_AlreadyStarted);
    CHECK(started == 99);
    CHECK(host.takeAll() == "0x110014 sev 8 code 12: the library has already been started.");
    const Zan_Globals block = withMagics({}, Zan_kGlobalsMagic, Zan_kGlobalsMagic);
    CHECK(Zan_SetGlobals(&block) == kBel_Err_AlreadyStarted);
    CHECK(host.takeAll() == "0x110017 sev 8 code 12: the library has already been started.");
    CHECK(same(Zanp_G, before));
}

TEST_CASE("Zan_Death frees the tables and changes nothing but the magics and the handles") {
    const Library library;
    HostReports host;
    REQUIRE(Zan_Birth(kAllProvided, nullptr) == 0);
    Zan_Globals expected = withMagics(Zanp_G, 0, 0);
    expected.sineTable = nullptr;
    expected.charMultiplyTable = nullptr;
    expected.charDivideTable = nullptr;
    CHECK(Zan_Death() == 0);
    CHECK(same(Zanp_G, expected));
    CHECK(memoryCounts().handles == 0);
    CHECK(host.takeAll().empty());
}

TEST_CASE("globals move out, with the tables, and in again") {
    const Library library;
    HostReports host;
    REQUIRE(Zan_Birth(kAllProvided, nullptr) == 0);
    const Zan_Globals running = Zanp_G;
    Zan_Globals block = {};
    CHECK(Zan_GetGlobals(&block) == 0);
    CHECK(same(block, running));
    CHECK(same(Zanp_G, withMagics(running, 0, 0)));
    CHECK(memoryCounts().handles == 3);
    CHECK(Zan_SetGlobals(&block) == 0);
    CHECK(same(Zanp_G, running));
    CHECK(Zan_Death() == 0);
    CHECK(memoryCounts().handles == 0);
    CHECK(host.takeAll().empty());
}

TEST_CASE("globals may bring in the Gaussian service, whose stop is reported") {
    const Library library;
    HostReports host;
    Zan_Globals block = withMagics({}, Zan_kGlobalsMagic, Zan_kGlobalsMagic);
    block.services = kAllProvided | Zan_Service_Gaussian;
    REQUIRE(Zan_SetGlobals(&block) == 0);
    CHECK(Zan_Death() == kBel_Err_NoService);
    CHECK(host.takeAll() == "0x11001E sev 8 code 5: Gaussian table initialization.");
    CHECK(same(Zanp_G, withMagics(block, 0, 0)));
}

TEST_CASE("each call to start or stop is logged, the refused ones too") {
    const Library library;
    HostReports host;
    std::string log;
    const auto addLine = [](void* lines, int32_t kind, const char* category, const char* function, const char* text) {
        *static_cast<std::string*>(lines) +=
            std::to_string(kind) + ' ' + category + ' ' + function + ": " + text + '\n';
    };
    OSKA_SetLogHandler(addLine, &log);
    CHECK(Zan_Birth(Zan_Service_Basic, nullptr) == 0);
    CHECK(Zan_Birth(Zan_Service_Basic, nullptr) == kBel_Err_AlreadyStarted);
    CHECK(Zan_Death() == 0);
    CHECK(Zan_Death() == kBel_Err_NotStarted);
    OSKA_SetLogHandler(nullptr, nullptr);
    CHECK(log ==
          "10 Zan Birth: Zan Birth\n"
          "10 Zan Birth: Zan Birth\n"
          "10 Zan Death: Zan Death\n"
          "10 Zan Death: Zan Death\n");
}

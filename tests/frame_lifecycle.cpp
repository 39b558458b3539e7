// Start and stop, and the globals block that moves out and in between.
#include "platform/oska.h"
#include "tests/support/host_reports.h"
#include "zan/frame.h"

#include <catch2/catch.hpp>

#include <cstdlib>
#include <cstring>
#include <map>

namespace {

bool same(const Zan_Globals& a, const Zan_Globals& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

struct BirthRow {
    const char* what;
    uint32_t services;
    int failing;  // the allocation that fails, negative with all that follow, 0 for none
    int32_t result;
    uint32_t started;
    uint64_t tables;  // handles held afterwards
    const char* reports;
};
const BirthRow kBirths[] = {
    {"bits without a service are ignored", 0xFFFFFFF0, 0, 0, 0, 0, ""},
    {"basic", 1, 0, 0, 1, 0, ""},
    {"all that there are", 1 | 2 | 4, 0, 0, 7, 3, ""},
    {"what started before the failure is recorded", 2 | 8, 0, 5, 2, 1,
     "0x11001D sev 8 code 5: Gaussian table initialization.\n"},
    {"no sine memory: the char tables start but are not recorded", 1 | 2 | 4, 1, 4, 1, 2,
     "0x110019 sev 8: not enough memory for FCM/D table.\n"},
    {"no memory at all: each service says so", 1 | 2 | 4, -1, 4, 1, 0,
     "0x110019 sev 8: not enough memory for FCM/D table.\n0x11001B sev 8: not enough memory for FCM/D table.\n"},
    {"no first char table: the second is not tried", 4, 1, 4, 0, 0,
     "0x11001B sev 8: not enough memory for FCM/D table.\n"},
    {"no second: the first is freed; the first error is returned", 4 | 8, 2, 4, 0, 0,
     "0x11001B sev 8: not enough memory for FCM/D table.\n0x11001D sev 8 code 5: Gaussian table initialization.\n"},
};

// What a library that does not run says to questions and to a stop.
const std::string kStopped =
    "0x110016 sev 8 code 11: the library has not been started.\n"
    "0x110015 sev 8 code 11: the library has not been started.";
// What one that runs says to a second start, then stopped; then to two invalid blocks; then to a service that it lacks.
const std::string kStarted =
    "0x110014 sev 8 code 12: the library has already been started.\n"
    "0x110017 sev 8 code 12: the library has already been started.\n" +
    kStopped +
    "\n0x110017 sev 8 code 2: the globals block is not valid.\n"
    "0x110015 sev 8 code 11: the library has not been started.\n"
    "0x110017 sev 8 code 2: the globals block is not valid.\n"
    "0x110015 sev 8 code 11: the library has not been started.\n"
    "0x11001E sev 8 code 5: Gaussian table initialization.";

using Log = std::map<std::string, int>;
void keepEntry(void* log, int32_t kind, const char* category, const char* function, const char* text) {
    ++(*static_cast<Log*>(log))[std::to_string(kind) + ' ' + category + ' ' + function + ' ' + text];
}

}  // namespace

TEST_CASE("start, stop, and the globals out and in between") {
    HostReports host;
    Log log;
    OSKA_SetLogHandler(keepEntry, &log);
    for (const BirthRow& r : kBirths) {
        CAPTURE(r.what);
        Zanp_G.charMathPrepareCount = 3;  // nobody touches these
        Zanp_G.sinePrepareCount = 4;
        Zanp_G.reserved1[3] = Zanp_G.reserved2[7] = 5;
        const bool starts = r.result == 0;
        uint32_t started = 99;
        Belp_SetThreadLastError(77);
        Bel_SetAllocationFailure(kBel_HandleAllocations, static_cast<uint64_t>(std::abs(r.failing)), r.failing < 0);
        CHECK((Zan_Birth(r.services, &started) == r.result && started == r.started &&
               memoryCounts().handles == r.tables));
        const Zan_Globals running = Zanp_G;
        CHECK((running.headMagic == (starts ? Zan_kGlobalsMagic : 0) && running.tailMagic == running.headMagic));
        CHECK((running.services == r.started && running.charMathPrepareCount == 3 && running.sinePrepareCount == 4));
        Zan_Globals copy = {}, none = {}, stopped = running;
        stopped.headMagic = stopped.tailMagic = 0;
        if (starts) {  // what has been started is not started again, nor taken in
            CHECK((Zan_Birth(15, &none.services) == 12 && Zan_SetGlobals(&copy) == 12 && same(Zanp_G, running)));
            CHECK((Zan_GetGlobals(&copy) == 0 && same(copy, running)));
        }
        CHECK((Zan_GetGlobals(&none) == 11 && Zan_Death() == 11 && same(none, {}) && same(Zanp_G, stopped)));
        if (starts) {
            for (uint32_t Zan_Globals::*magic : {&Zan_Globals::headMagic, &Zan_Globals::tailMagic}) {
                Zan_Globals broken = copy;
                broken.*magic = 1;
                CHECK((Zan_SetGlobals(&broken) == 2 && same(Zanp_G, broken) && Zan_Death() == 11));
            }
            CHECK((Zan_SetGlobals(&copy) == 0 && same(Zanp_G, running) && Zan_Death() == 0 &&
                   memoryCounts().handles == 0));
            stopped.sineTable = stopped.charMultiplyTable = stopped.charDivideTable = nullptr;
            CHECK(same(Zanp_G, stopped));
            // A block from elsewhere may have the Gaussian service.
            copy = {Zan_kGlobalsMagic, 8, {}, nullptr, nullptr, {}, nullptr, Zan_kGlobalsMagic, 0, 0};
            CHECK((Zan_SetGlobals(&copy) == 0 && Zan_Death() == 5));
        }
        CHECK((host.takeAll() == (starts ? kStarted : r.reports + kStopped) && Bel_GetThreadLastError() == 77));
        for (Bel_Handle table : {Zanp_G.sineTable, Zanp_G.charMultiplyTable, Zanp_G.charDivideTable}) {
            Bel_FreeHandle(table);
        }
        Zanp_G = {};
    }
    OSKA_SetLogHandler(nullptr, nullptr);
    CHECK(log == Log{{"10 Zan Birth Zan Birth", 11}, {"10 Zan Death Zan Death", 20}});
}

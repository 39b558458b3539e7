// Start, stop, versions, and the globals block that moves out and in.
#include <catch2/catch.hpp>
#include <cstring>
#include <string>
#include <vector>

#include "host_reports.h"
#include "platform/oska.h"
#include "zan/frame.h"

namespace {

uint64_t handles() {
    Bel_MemoryCounts counts;
    Bel_GetMemoryCounts(&counts);
    return counts.handles;
}

// Leaves the library as a fresh process has it, whatever a case did to it.
struct FreshLibrary {
    FreshLibrary() { reset(); }
    ~FreshLibrary() {
        Bel_SetAllocationFailure(0, 0, false);
        reset();
    }
    static void reset() {
        Bel_FreeHandle(Zanp_G.sineTable);
        Bel_FreeHandle(Zanp_G.charMultiplyTable);
        Bel_FreeHandle(Zanp_G.charDivideTable);
        Zanp_G = {};
    }
};

constexpr const char* kNoGaussian = "0x11001D sev 8 code 5: Gaussian table initialization.";
constexpr const char* kNoSineMemory = "0x110019 sev 8: not enough memory for FCM/D table.";
constexpr const char* kNoCharMemory = "0x11001B sev 8: not enough memory for FCM/D table.";

struct BirthRow {
    const char* what;
    uint32_t services;
    uint64_t failing;  // the allocation that fails, 0 for none
    int32_t result;
    uint32_t started;
    uint64_t tables;  // handles held afterwards
    const char* report;
};
const BirthRow kBirths[] = {
    {"no service", 0, 0, 0, 0, 0, ""},
    {"bits without a service are ignored", 0xFFFFFFF0, 0, 0, 0, 0, ""},
    {"basic", 1, 0, 0, 1, 0, ""},
    {"both tables", 2 | 4, 0, 0, 6, 3, ""},
    {"the refused one", 8, 0, 5, 0, 0, kNoGaussian},
    {"what started before the failure is recorded", 2 | 8, 0, 5, 2, 1, kNoGaussian},
    {"no sine memory: the char tables start but are not recorded", 1 | 2 | 4, 1, 4, 1, 2, kNoSineMemory},
    {"no first char table: the second is not tried", 4, 1, 4, 0, 0, kNoCharMemory},
    {"no second char table: the first is freed", 2 | 4, 3, 4, 2, 1, kNoCharMemory},
    {"the first error is returned", 4 | 8, 2, 4, 0, 0,
     "0x11001B sev 8: not enough memory for FCM/D table.\n0x11001D sev 8 code 5: Gaussian table initialization."},
};

}  // namespace

TEST_CASE("birth starts what was asked for, in order") {
    HostReports host;
    const FreshLibrary fresh;
    for (const BirthRow& r : kBirths) {
        CAPTURE(r.what);
        FreshLibrary::reset();
        Zanp_G.charMathPrepareCount = 3;  // nobody touches the counts
        Zanp_G.sinePrepareCount = 4;
        const uint64_t before = handles();
        Bel_SetAllocationFailure(kBel_HandleAllocations, r.failing, false);
        uint32_t started = 99;
        CHECK(Zan_Birth(r.services, &started) == r.result);
        CHECK(started == r.started);
        CHECK(Zanp_G.services == r.started);
        CHECK(handles() - before == r.tables);
        CHECK(host.takeAll() == r.report);
        CHECK(Zanp_G.headMagic == (r.result == 0 ? Zan_kGlobalsMagic : 0));
        CHECK(Zanp_G.tailMagic == Zanp_G.headMagic);
        const bool birthFailed = r.result != 0;
        CHECK(Zan_Death() == (birthFailed ? 11 : 0));
        CHECK(host.takeAll() == (birthFailed ? "0x110015 sev 8 code 11: the library has not been started." : ""));
        CHECK(handles() - before == (birthFailed ? r.tables : 0));
        CHECK((Zanp_G.headMagic | Zanp_G.tailMagic) == 0);
        CHECK(Zanp_G.services == r.started);
        CHECK((Zanp_G.charMathPrepareCount == 3 && Zanp_G.sinePrepareCount == 4));
    }
}

TEST_CASE("a second birth changes nothing") {
    HostReports host;
    const FreshLibrary fresh;
    REQUIRE(Zan_Birth(2, nullptr) == 0);
    const Zan_Globals before = Zanp_G;
    uint32_t started = 99;
    Belp_SetThreadLastError(77);
    CHECK(Zan_Birth(4, &started) == 12);
    CHECK(started == 99);
    CHECK(std::memcmp(&before, &Zanp_G, sizeof before) == 0);
    CHECK(host.takeAll() == "0x110014 sev 8 code 12: the library has already been started.");
    // Each magic counts: a block with only one of them is not a started library.
    for (uint32_t Zan_Globals::*magic : {&Zan_Globals::headMagic, &Zan_Globals::tailMagic}) {
        Zanp_G.*magic = 0;
        CHECK(Zan_Death() == 11);
        CHECK(host.takeAll() == "0x110015 sev 8 code 11: the library has not been started.");
        Zanp_G.*magic = Zan_kGlobalsMagic;
    }
    // A recorded Gaussian service (a block from elsewhere) is refused at the end as well; its result is the last.
    Zanp_G.services |= Zan_Service_Gaussian;
    CHECK(Zan_Death() == 5);
    CHECK(host.takeAll() == "0x11001E sev 8 code 5: Gaussian table initialization.");
    CHECK(Bel_GetThreadLastError() == 77);  // the platform's own errors leave it alone
}

TEST_CASE("the globals move out and in") {
    HostReports host;
    const FreshLibrary fresh;
    REQUIRE(Zan_Birth(2 | 4, nullptr) == 0);
    Zanp_G.reserved1[3] = 3;
    Zanp_G.reserved2[7] = 7;
    const Zan_Globals running = Zanp_G;
    Zan_Globals copy = {};
    CHECK(Zan_GetGlobals(&copy) == 0);
    CHECK(std::memcmp(&copy, &running, sizeof copy) == 0);
    Zan_Globals left = running;
    left.headMagic = left.tailMagic = 0;
    CHECK(std::memcmp(&Zanp_G, &left, sizeof left) == 0);

    Zan_Globals untouched = {};
    CHECK(Zan_GetGlobals(&untouched) == 11);
    CHECK(untouched.services == 0);
    CHECK(host.takeAll() == "0x110016 sev 8 code 11: the library has not been started.");

    for (uint32_t Zan_Globals::*magic : {&Zan_Globals::headMagic, &Zan_Globals::tailMagic}) {
        Zan_Globals broken = copy;
        broken.*magic = 1;
        broken.sinePrepareCount = 5;
        CHECK(Zan_SetGlobals(&broken) == 2);
        CHECK(host.takeAll() == "0x110017 sev 8 code 2: the globals block is not valid.");
        CHECK(Zanp_G.sinePrepareCount == 5);
    }

    CHECK(Zan_SetGlobals(&copy) == 0);
    CHECK(std::memcmp(&Zanp_G, &running, sizeof running) == 0);
    CHECK(Zan_SetGlobals(&copy) == 12);
    CHECK(host.takeAll() == "0x110017 sev 8 code 12: the library has already been started.");
    CHECK(Zan_Death() == 0);
    CHECK(host.takeAll().empty());
}

TEST_CASE("versions") {
    HostReports host;
    CHECK(Zan_PkgObjectVersion() == 0x120004);
    CHECK(Zan_CheckVersions(0x1234, 18) == 0);
    Bel_SetInterfaceVersion(1);  // nobody looks again
    CHECK(Zan_CheckVersions(0x1234, 18) == 0);
    Bel_SetInterfaceVersion(61);
    CHECK(host.takeAll().empty());
    Belp_SetThreadLastError(5);
    CHECK(Zan_CheckVersions(0x1234, 17) == 7);
    CHECK(Bel_GetThreadLastError() == 0);
    CHECK(host.takeAll() ==
          "0x1234 sev 16: Plug-in version mismatch detected (did you install over an older version of Sarnet?). Try "
          "uninstalling and re-installing. (Zan package v18 != Zan.h v17)");
}

TEST_CASE("start and stop are logged, whatever comes of them") {
    HostReports host;
    const FreshLibrary fresh;
    std::string log;
    OSKA_SetLogHandler(
        [](void* context, int32_t kind, const char* category, const char* function, const char* text) {
            *static_cast<std::string*>(context) +=
                std::to_string(kind) + " " + category + " " + function + " " + text + "\n";
        },
        &log);
    CHECK(Zan_Birth(0, nullptr) == 0);
    CHECK(Zan_Birth(0, nullptr) == 12);
    CHECK(Zan_Death() == 0);
    CHECK(Zan_Death() == 11);
    OSKA_SetLogHandler(nullptr, nullptr);
    CHECK(log == "10 Zan Birth Zan Birth\n10 Zan Birth Zan Birth\n10 Zan Death Zan Death\n10 Zan Death Zan Death\n");
}

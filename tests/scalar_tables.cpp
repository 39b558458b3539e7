// The lookup tables and their prepare counts.
#include <catch2/catch.hpp>
#include <cmath>
#include <string>
#include <utility>

#include "host_reports.h"
#include "zan/frame.h"
#include "zan/scalar.h"

namespace {

// Both services behind one face, so that each case runs for each of them.
struct Service {
    const char* name;
    uint32_t flag;
    size_t tables, bytes;
    int32_t (*prepare)(bool reportFailure, bool failIfReclaimed, bool* ok, void** tables);
    int32_t (*unprepare)();
    uint16_t Zan_Globals::*count;
    void** Zan_Globals::*handles[2];
    const char* unrequestedPrepare;
    const char* unrequestedUnprepare;
    const char* unavailable;
};
const Service kServices[] = {
    {"char math",
     4,
     2,
     65536,
     [](bool reportFailure, bool failIfReclaimed, bool* ok, void** tables) {
         auto* products = reinterpret_cast<uint8_t*>(16);
         auto* quotients = products;
         const int32_t result = Zan_PrepareFCMD(reportFailure, failIfReclaimed, ok, &products, &quotients);
         tables[0] = products;
         tables[1] = quotients;
         return result;
     },
     Zan_UnprepareFCMD,
     &Zan_Globals::charMathPrepareCount,
     {&Zan_Globals::charMultiplyTable, &Zan_Globals::charDivideTable},
     "0x11001F sev 8: attempt to use unrequested math service (fast char math).",
     "0x110020 sev 8: attempt to use unrequested math service (fast char math).",
     "0x11001F sev 8: fast character math will be unavailable."},
    {"trig",
     2,
     1,
     1024,
     [](bool reportFailure, bool failIfReclaimed, bool* ok, void** tables) {
         auto* sines = reinterpret_cast<float*>(16);
         const int32_t result = Zan_PrepareFTrig(reportFailure, failIfReclaimed, ok, &sines);
         tables[0] = sines;
         return result;
     },
     Zan_UnprepareFTrig,
     &Zan_Globals::sinePrepareCount,
     {&Zan_Globals::sineTable, nullptr},
     "0x11002A sev 8: attempt to use unrequested math service (fast trig).",
     "0x11002A sev 8: attempt to use unrequested math service (fast trig).",
     "0x11002A sev 8: fast trig will be unavailable."},
};

struct Started {
    explicit Started(uint32_t services) {
        Zanp_G = {};
        REQUIRE(Zan_Birth(services, nullptr) == 0);
    }
    ~Started() {
        CHECK(Zan_Death() == 0);
        Zanp_G = {};
    }
};

// Handles and the bytes in them.
std::pair<uint64_t, uint64_t> held() {
    Bel_MemoryCounts counts;
    Bel_GetMemoryCounts(&counts);
    return {counts.handles, counts.handleBytes};
}

}  // namespace

TEST_CASE("table entries") {
    const Started started(2 | 4);
    uint8_t* products = nullptr;
    uint8_t* quotients = nullptr;
    float* sines = nullptr;
    REQUIRE(Zan_PrepareFCMD(true, false, nullptr, &products, &quotients) == 0);
    REQUIRE(Zan_PrepareFTrig(true, false, nullptr, &sines) == 0);
    int wrong = 0;
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            wrong += products[a * 256 + b] != static_cast<int>(std::floor((a * b + 127) / 255.0));
            const int quotient = b >= a ? 255 : static_cast<int>(std::floor((b * 255 + std::floor(a / 2.0)) / a));
            wrong += quotients[a * 256 + b] != quotient;
        }
        const double sine = std::sin(a / 255.0 * 1.5707963267948966);
        wrong += sines[a] != static_cast<float>(sine);
    }
    CHECK(wrong == 0);
    const int rows[][4] = {{128, 128, 64, 255}, {1, 127, 0, 255}, {1, 128, 1, 255}, {255, 254, 254, 254},
                           {128, 64, 32, 128},  {3, 1, 0, 85},    {3, 2, 0, 170},   {5, 5, 0, 255}};
    for (const auto& r : rows) {
        CAPTURE(r[0], r[1]);
        CHECK(products[r[0] * 256 + r[1]] == r[2]);
        CHECK(quotients[r[0] * 256 + r[1]] == r[3]);
    }
    CHECK((sines[0] == 0.0F && sines[255] == 1.0F));
    CHECK(sines[128] == Approx(0.7092813));
    CHECK(sines[1] == Approx(0.0061599));
    CHECK(Zan_UnprepareFCMD() == 0);
    CHECK(Zan_UnprepareFTrig() == 0);
}

TEST_CASE("a service that does not run is reported and counts nothing") {
    HostReports host;
    for (const Service& s : kServices) {
        CAPTURE(s.name);
        const Started started(6U & ~s.flag);
        // Whether or not it was asked for, a service needs its tables.
        for (const uint32_t services : {Zanp_G.services, Zanp_G.services | s.flag}) {
            Zanp_G.services = services;
            bool ok = true;
            void* tables[2] = {};
            CHECK(s.prepare(false, false, &ok, tables) == 0x1105);
            CHECK((!ok && tables[0] == nullptr && tables[1] == nullptr));
            CHECK(host.takeAll() == s.unrequestedPrepare);
            CHECK(s.unprepare() == 0x1105);
            CHECK(host.takeAll() == s.unrequestedUnprepare);
            CHECK(Zanp_G.*s.count == 0);
        }
    }
}

TEST_CASE("a reclaimed table is rebuilt at count zero only") {
    HostReports host;
    for (const Service& s : kServices) {
        for (size_t t = 0; t < s.tables; ++t) {
            CAPTURE(s.name, t);
            const Started started(s.flag);
            CHECK(held() == std::pair<uint64_t, uint64_t>(s.tables, s.tables * s.bytes));
            bool ok = false;
            void* tables[2] = {};
            CHECK(s.prepare(true, true, &ok, tables) == 0);
            REQUIRE(ok);
            std::string contents[2];
            for (size_t i = 0; i < s.tables; ++i) {
                CHECK(tables[i] == *(Zanp_G.*s.handles[i]));
                contents[i].assign(static_cast<char*>(tables[i]), s.bytes);
            }
            Bel_ReclaimHandle(Zanp_G.*s.handles[t]);
            CHECK(s.prepare(true, true, nullptr, tables) == 0);  // somebody holds it: not looked at
            CHECK((tables[t] == nullptr && Zanp_G.*s.count == 2));
            CHECK(s.unprepare() == 0);
            CHECK(s.unprepare() == 0);
            CHECK(Zanp_G.*s.count == 0);

            CHECK(s.prepare(true, false, &ok, tables) == 0);
            REQUIRE(ok);
            for (size_t i = 0; i < s.tables; ++i) {
                CHECK((contents[i] == std::string(static_cast<char*>(tables[i]), s.bytes)));
            }
            CHECK(held() == std::pair<uint64_t, uint64_t>(s.tables, s.tables * s.bytes));
            CHECK(s.unprepare() == 0);
            CHECK(host.takeAll().empty());

            // One call too many wraps the count.
            CHECK(s.unprepare() == 0);
            CHECK(Zanp_G.*s.count == 65535);
            Zanp_G.*s.count = 0;
        }
    }
}

TEST_CASE("a table that cannot be made ready") {
    HostReports host;
    for (const Service& s : kServices) {
        // The allocation that fails; 0 asks for no rebuilding.
        for (uint64_t failing = 0; failing <= s.tables; ++failing) {
            for (const bool loud : {false, true}) {
                CAPTURE(s.name, failing, loud);
                const Started started(s.flag);
                Bel_ReclaimHandle(Zanp_G.*s.handles[0]);
                Bel_SetAllocationFailure(kBel_QuietAllocations, failing, false);
                Belp_SetThreadLastError(77);
                bool ok = true;
                void* tables[2] = {};
                CHECK(s.prepare(loud, failing == 0, &ok, tables) == (loud ? 4 : 0));
                CHECK((!ok && tables[0] == nullptr && tables[1] == nullptr));
                CHECK(host.takeAll() == (loud ? s.unavailable : ""));
                CHECK(Bel_GetThreadLastError() == 77);
                CHECK(Zanp_G.*s.count == 1);
                CHECK(held().first == s.tables - (failing == 0 ? 0 : 1));
                // With a handle gone the service no longer runs.
                CHECK(s.unprepare() == (failing == 0 ? 0 : 0x1105));
                CHECK(host.takeAll() == (failing == 0 ? "" : s.unrequestedUnprepare));
                CHECK(Zanp_G.*s.count == (failing == 0 ? 0 : 1));
                Bel_SetAllocationFailure(0, 0, false);
            }
        }
    }
}

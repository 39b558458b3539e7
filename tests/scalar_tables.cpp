// The lookup tables and their prepare counts.
#include <catch2/catch.hpp>
#include <cmath>
#include <cstring>

#include "host_reports.h"
#include "zan/frame.h"
#include "zan/scalar.h"

namespace {

// Both services behind one face, so that each case runs for each of them.
struct Service {
    const char* name;
    uint32_t flag;
    uint64_t tables;
    int32_t (*prepare)(bool reportFailure, bool failIfReclaimed, bool* ok, void** table);
    int32_t (*unprepare)();
    uint16_t Zan_Globals::*count;
    void** Zan_Globals::*lastTable;
    const char* unrequestedPrepare;
    const char* unrequestedUnprepare;
    const char* unavailable;
};
const Service kServices[] = {
    {"char math", 4, 2,
     [](bool reportFailure, bool failIfReclaimed, bool* ok, void** table) {
         auto* poison = reinterpret_cast<uint8_t*>(16);
         uint8_t* products = poison;
         uint8_t* quotients = poison;
         const int32_t result = Zan_PrepareFCMD(reportFailure, failIfReclaimed, ok, &products, &quotients);
         CHECK((products != poison && quotients != poison));
         *table = quotients;
         return result;
     },
     Zan_UnprepareFCMD, &Zan_Globals::charMathPrepareCount, &Zan_Globals::charDivideTable,
     "0x11001F sev 8: attempt to use unrequested math service (fast char math).",
     "0x110020 sev 8: attempt to use unrequested math service (fast char math).",
     "0x11001F sev 8: fast character math will be unavailable."},
    {"trig", 2, 1,
     [](bool reportFailure, bool failIfReclaimed, bool* ok, void** table) {
         auto* sines = reinterpret_cast<float*>(16);
         const int32_t result = Zan_PrepareFTrig(reportFailure, failIfReclaimed, ok, &sines);
         *table = sines;
         return result;
     },
     Zan_UnprepareFTrig, &Zan_Globals::sinePrepareCount, &Zan_Globals::sineTable,
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
        Bel_SetAllocationFailure(0, 0, false);
        CHECK(Zan_Death() == 0);
        Zanp_G = {};
    }
};

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
            void* table = nullptr;
            CHECK(s.prepare(false, false, &ok, &table) == 0x1105);
            CHECK((!ok && table == nullptr));
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
        CAPTURE(s.name);
        const Started started(s.flag);
        bool ok = false;
        void* first = nullptr;
        CHECK(s.prepare(true, true, &ok, &first) == 0);
        CHECK((ok && first == *(Zanp_G.*s.lastTable)));
        const uint8_t entry = static_cast<uint8_t*>(first)[700];
        Bel_ReclaimHandle(Zanp_G.*s.lastTable);
        void* second = nullptr;
        CHECK(s.prepare(true, true, nullptr, &second) == 0);  // somebody holds it: not looked at
        CHECK(second == nullptr);
        CHECK(Zanp_G.*s.count == 2);
        CHECK(s.unprepare() == 0);
        CHECK(s.unprepare() == 0);
        CHECK(Zanp_G.*s.count == 0);

        CHECK(s.prepare(false, true, &ok, &second) == 0);  // asked not to rebuild, and quietly
        CHECK((!ok && second == nullptr));
        CHECK(Zanp_G.*s.count == 1);
        CHECK(s.unprepare() == 0);
        CHECK(host.takeAll().empty());
        CHECK(s.prepare(true, true, &ok, &second) == 4);  // the same, loudly
        CHECK((!ok && second == nullptr));
        CHECK(host.takeAll() == s.unavailable);
        CHECK(s.unprepare() == 0);

        CHECK(s.prepare(true, false, &ok, &second) == 0);
        REQUIRE((ok && second != nullptr));
        CHECK(static_cast<uint8_t*>(second)[700] == entry);
        CHECK(s.unprepare() == 0);

        // One call too many wraps the count.
        CHECK(s.unprepare() == 0);
        CHECK(Zanp_G.*s.count == 65535);
        Zanp_G.*s.count = 0;

        for (uint64_t failing = 1; failing <= s.tables; ++failing) {
            CAPTURE(failing);
            const Zan_Globals before = Zanp_G;
            Bel_ReclaimHandle(Zanp_G.*s.lastTable);
            Bel_SetAllocationFailure(kBel_QuietAllocations, failing, false);
            CHECK(s.prepare(true, false, &ok, &second) == 4);
            CHECK((!ok && second == nullptr));
            CHECK(host.takeAll() == s.unavailable);
            CHECK(Zanp_G.*s.count == before.*s.count + 1);
            // With a handle gone the service no longer runs.
            CHECK(s.prepare(true, false, &ok, &second) == 0x1105);
            CHECK(host.takeAll() == s.unrequestedPrepare);
            CHECK(Zan_Death() == 0);
            Zanp_G = {};
            REQUIRE(Zan_Birth(s.flag, nullptr) == 0);
        }
    }
}

// The lookup tables and their prepare counts: what is in them, and every way in which a call can find them.
#include "tests/support/host_reports.h"
#include "zan/frame.h"
#include "zan/scalar.h"

#include <catch2/catch.hpp>

#include <cmath>
#include <cstring>
#include <vector>

namespace {

// Both services behind one face, so that each case runs for each of them.
struct Service {
    uint32_t flag;
    std::vector<void* * Zan_Globals::*> handles;
    uint16_t Zan_Globals::*count;
    int32_t (*unprepare)();
    std::string prepareAt, unprepareAt, name, unavailable;

    int32_t prepare(bool reportFailure, bool failIfReclaimed, bool* ok, const void* (&tables)[2]) const {
        auto *products = reinterpret_cast<uint8_t*>(16), *quotients = products;
        auto* sines = reinterpret_cast<float*>(16);
        const int32_t result = flag == 4 ? Zan_PrepareFCMD(reportFailure, failIfReclaimed, ok, &products, &quotients)
                                         : Zan_PrepareFTrig(reportFailure, failIfReclaimed, ok, &sines);
        tables[0] = flag == 4 ? static_cast<const void*>(products) : sines;
        tables[1] = flag == 4 ? quotients : nullptr;
        return result;
    }
    int32_t prepareForNobody() const {
        return flag == 4 ? Zan_PrepareFCMD(true, true, nullptr, nullptr, nullptr)
                         : Zan_PrepareFTrig(true, true, nullptr, nullptr);
    }
};
// clang-format off
const Service kServices[] = {
    {4, {&Zan_Globals::charMultiplyTable, &Zan_Globals::charDivideTable}, &Zan_Globals::charMathPrepareCount,
     Zan_UnprepareFCMD, "0x11001F sev 8: ", "0x110020 sev 8: ", "fast char math",
     "fast character math will be unavailable."},
    {2, {&Zan_Globals::sineTable}, &Zan_Globals::sinePrepareCount, Zan_UnprepareFTrig, "0x11002A sev 8: ",
     "0x11002A sev 8: ", "fast trig", "fast trig will be unavailable."}};
// clang-format on

// The bytes of a service's tables, worked out in floating point.
std::vector<std::string> contents(const Service& s) {
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
    return s.flag == 4 ? std::vector{products, quotients} : std::vector{sines};
}

// Of the 192 combinations, some are the same for a single table.
void checkPrepare(const Service& s, const std::vector<std::string>& expected, unsigned combination) {
    const bool inUse = (combination & 1) != 0, loud = (combination & 2) != 0, failIfReclaimed = (combination & 4) != 0;
    const size_t reclaimed = combination / 8 % 4 % (1U << s.handles.size()),
                 failing = combination / 32 % (s.handles.size() + 1);
    const bool onward = combination >= 96;  // those that follow fail, too
    CAPTURE(s.name, reclaimed, failing, inUse, loud, failIfReclaimed, onward);
    HostReports host;
    REQUIRE((Zan_Birth(s.flag, nullptr) == 0 && (!inUse || s.prepareForNobody() == 0)));
    for (size_t t = 0; t < s.handles.size(); ++t) {
        if (reclaimed >> t & 1) Bel_ReclaimHandle(Zanp_G.*s.handles[t]);
    }
    Bel_SetAllocationFailure(kBel_QuietAllocations, failing, onward);
    Belp_SetThreadLastError(77);
    bool ok = true;
    const void* tables[2];
    const int32_t result = s.prepare(loud, failIfReclaimed, &ok, tables);
    Bel_SetAllocationFailure(0, 0, false);

    const bool looks = reclaimed != 0 && !inUse;  // who has the addresses keeps them
    const bool rebuilds = looks && !failIfReclaimed, lost = rebuilds && failing != 0,
               ready = !looks || rebuilds != lost;
    CHECK((ok == ready && result == (ready || !loud ? 0 : 4) && Zanp_G.*s.count == (inUse ? 2 : 1)));
    CHECK((host.takeAll() == (ready || !loud ? "" : s.prepareAt + s.unavailable) && Bel_GetThreadLastError() == 77));
    size_t bytes = 0, handles = 0;
    for (size_t t = 0; t < s.handles.size(); ++t) {
        const bool gone = !rebuilds && (reclaimed >> t & 1) != 0, handedOut = ready && !gone;
        CHECK((tables[t] != nullptr) == handedOut);
        if (handedOut) CHECK(std::memcmp(tables[t], expected[t].data(), expected[t].size()) == 0);
        const bool failed = lost && (onward ? t + 1 >= failing : t + 1 == failing);
        handles += failed ? 0 : 1;
        if (!gone && !failed) bytes += expected[t].size();
    }
    const Bel_MemoryCounts counts = memoryCounts();
    CHECK((counts.handles == handles && counts.handleBytes == bytes));
    // Without all of its tables the service no longer runs; one call too many wraps the count.
    for (int left = inUse ? 1 : 0; left >= -1; --left) {
        CHECK(s.unprepare() == (lost ? 0x1105 : 0));
        CHECK(Zanp_G.*s.count == (lost ? 1 : static_cast<uint16_t>(left)));
    }
    CHECK((Zan_Death() == 0 && host.takeAll().empty() == !lost));
    Zanp_G = {};
}

}  // namespace

TEST_CASE("tables are handed out, rebuilt where nobody uses them, and counted") {
    for (const Service& s : kServices) {
        const std::vector<std::string> expected = contents(s);
        for (unsigned combination = 0; combination < 192; ++combination) checkPrepare(s, expected, combination);
    }
}

TEST_CASE("a service that does not run is reported and counts nothing") {
    HostReports host;
    for (const Service& s : kServices) {
        for (const unsigned missing : {1U, 2U, 3U}) {  // the service, its tables, both
            CAPTURE(s.name, missing);
            REQUIRE(Zan_Birth(missing > 1 ? 6 & ~s.flag : 6, nullptr) == 0);
            Zanp_G.services = missing != 2 ? 6 & ~s.flag : 6;
            const std::string report = "attempt to use unrequested math service (" + s.name + ").";
            bool ok = true;
            const void* tables[2];
            CHECK((s.prepare(false, false, &ok, tables) == 0x1105 && !ok && !tables[0] && !tables[1]));
            CHECK(host.takeAll() == s.prepareAt + report);
            CHECK((s.unprepare() == 0x1105 && Zanp_G.*s.count == 0));
            CHECK(host.takeAll() == s.unprepareAt + report);
            Zanp_G.services = 6;
            CHECK(Zan_Death() == 0);
            Zanp_G = {};
        }
    }
}

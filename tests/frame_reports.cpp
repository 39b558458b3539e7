// The error reporter and the message table.
#include "tests/support/host_reports.h"
#include "zan/frame.h"

#include <catch2/catch.hpp>

#include <cstring>
#include <sstream>

TEST_CASE("a report says what and where") {
    HostReports host;
    for (const int32_t code : {0, 0x1101, 0x1103, 0x1109, 0x110B, -1}) {  // the others are reported elsewhere
        Belp_SetThreadLastError(77);
        CHECK(Zanp_ReportErr(0xBEEF, code, 39) == code);
        CHECK(Bel_GetThreadLastError() == (code == 0 ? 77 : 0));
    }
    CHECK(host.takeAll() == R"(0x11BEEF sev 8: unknown error (4353).
0x11BEEF sev 4: underflow in vector divide.
0x11BEEF sev 8: unable to calculate normal vector.
0x11BEEF sev 8: unknown error (4363).
0x11BEEF sev 8: unknown error (-1).)");
    std::string asked;  // a context before its message
    const auto french = [](void* keys, const char* module, const char* key) {
        *static_cast<std::string*>(keys) += std::string(module) + key + ' ';
        return std::strstr(key, "0002") != nullptr ? "100 %% : depassement %s !" : "dans la multiplication";
    };
    Bel_SetCatalogue(french, &asked);
    Zanp_ReportErr(1, 0x1102, 21);
    Bel_SetCatalogue(nullptr, nullptr);
    CHECK(host.takeAll() == "0x110001 sev 8: 100 % : depassement dans la multiplication !");
    CHECK(asked == "Zan$$$/Ko/Zan/LStr/0021 Zan$$$/Ko/Zan/LStr/0002 ");
}

TEST_CASE("the message table is what the string service reads") {
    const auto& table = *static_cast<const Zan_MessageTable*>(Zan_G_zref);
    std::ostringstream text;
    text << table.module << table.entryCount << ' ' << table.reserved << '\n';
    for (uintptr_t i = 0; i < table.entryCount; ++i) {
        const Zan_MessageEntry& e = table.entries[i];
        text << (e.key ? e.key : "end") << ' ' << e.cache1 << ' ' << e.cache2 << ' ' << e.cache3 << '\n';
    }
    uint64_t sum = 0xCBF29CE484222325;  // FNV-1a
    for (const char c : text.str()) sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    CAPTURE(text.str());
    CHECK(sum == 0xC001703A5586249B);  // of the texts that translators have worked from
}

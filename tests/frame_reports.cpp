// The error reporter and the message table.
#include "tests/support/host_reports.h"
#include "zan/frame.h"

#include <catch2/catch.hpp>

#include <cstring>
#include <sstream>

namespace {

constexpr int16_t kInVectorDivide = 39;
constexpr int16_t kInFix24Multiply = 21;

struct ReportRow {
    const char* what;
    int32_t code;
    int32_t lastError;  // of the thread, which was 77
    const char* report;
};
constexpr ReportRow kReports[] = {
    {"success is not reported", 0, 77, ""},
    {"below the codes with a message", 0x1101, 0, "0x11BEEF sev 8: unknown error (4353)."},
    {"a message with a context; only underflow has severity 4", Zan_Err_Underflow, 0,
     "0x11BEEF sev 4: underflow in vector divide."},
    {"a message without a context", Zan_Err_NoNormal, 0, "0x11BEEF sev 8: unable to calculate normal vector."},
    {"a gap between the codes with a message", 0x110B, 0, "0x11BEEF sev 8: unknown error (4363)."},
    {"a negative code", -1, 0, "0x11BEEF sev 8: unknown error (-1)."},
};

}  // namespace

TEST_CASE("a report has the site, the severity and the message of its code") {
    for (const ReportRow& row : kReports) {
        CAPTURE(row.what);
        HostReports host;
        Belp_SetThreadLastError(77);
        CHECK(Zanp_ReportErr(0xBEEF, row.code, kInVectorDivide) == row.code);
        CHECK(Bel_GetThreadLastError() == row.lastError);
        CHECK(host.takeAll() == row.report);
    }
}

TEST_CASE("message and context come from the host's catalogue, the context first") {
    HostReports host;
    std::string keys;
    const auto french = [](void* asked, const char* module, const char* key) {
        *static_cast<std::string*>(asked) += std::string(module) + ' ' + key + '\n';
        return std::strstr(key, "0002") != nullptr ? "100 %% : depassement %s !" : "dans la multiplication";
    };
    Bel_SetCatalogue(french, &keys);
    Zanp_ReportErr(1, Zan_Err_Overflow, kInFix24Multiply);
    Bel_SetCatalogue(nullptr, nullptr);
    CHECK(host.takeAll() == "0x110001 sev 8: 100 % : depassement dans la multiplication !");
    CHECK(keys == "Zan $$$/Ko/Zan/LStr/0021\nZan $$$/Ko/Zan/LStr/0002\n");
}

TEST_CASE("the message table has the keys and texts that translators work from") {
    const auto& table = *static_cast<const Zan_MessageTable*>(Zan_G_zref);
    std::ostringstream text;
    text << table.module << table.entryCount << ' ' << table.reserved << '\n';
    for (uintptr_t i = 0; i < table.entryCount; ++i) {
        const Zan_MessageEntry& entry = table.entries[i];
        text << (entry.key != nullptr ? entry.key : "end") << ' ' << entry.cache1 << ' ' << entry.cache2 << ' '
             << entry.cache3 << '\n';
    }
    uint64_t hash = 0xCBF29CE484222325;  // FNV-1a
    for (const char c : text.str()) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    }
    CAPTURE(text.str());
    CHECK(hash == 0xC001703A5586249B);
}

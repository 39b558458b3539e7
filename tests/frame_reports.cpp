// The error reporter and the message table.
#include <catch2/catch.hpp>
#include <cstring>
#include <string>

#include "host_reports.h"
#include "zan/frame.h"

namespace {

struct ReportRow {
    const char* what;
    int32_t code;
    int16_t context;
    const char* report;
};
constexpr ReportRow kReports[] = {
    {"success tells nothing", 0, 19, ""},
    {"overflow with its context", 0x1102, 19, "0x11BEEF sev 8: overflow in fixed multiply."},
    {"underflow is the mild one", 0x1103, 39, "0x11BEEF sev 4: underflow in vector divide."},
    {"divide by zero", 0x1104, 22, "0x11BEEF sev 8: divide by zero in fix24 divide."},
    {"a service", 0x1105, 31, "0x11BEEF sev 8: attempt to use unrequested math service (fast trig)."},
    {"zero denominator", 0x1106, 14, "0x11BEEF sev 8: zero denominator converting ratio denominators."},
    {"the context does not matter to these", 0x1107, 19, "0x11BEEF sev 8: unable to invert matrix."},
    {"decompose", 0x1108, 0, "0x11BEEF sev 8: unable to decompose matrix."},
    {"normal", 0x1109, -1, "0x11BEEF sev 8: unable to calculate normal vector."},
    {"plane", 0x110A, 0, "0x11BEEF sev 8: unable to intersect plane."},
    {"unknown: small", 4, 19, "0x11BEEF sev 8: unknown error (4)."},
    {"unknown: below the codes", 0x1101, 0, "0x11BEEF sev 8: unknown error (4353)."},
    {"unknown: above the codes", 0x110B, 0, "0x11BEEF sev 8: unknown error (4363)."},
    {"unknown: thrown only", 0x110C, 0, "0x11BEEF sev 8: unknown error (4364)."},
    {"unknown: negative", -1, 0, "0x11BEEF sev 8: unknown error (-1)."},
};

// The whole table, as a host's translators know it; each text ends in a bar.
constexpr const char* kTexts =
    "unknown error (%d).|underflow %s.|overflow %s.|divide by zero %s.|trig table initialization.|"
    "Gaussian table initialization.|FCM/D table|attempt to use unrequested math service (%s).|"
    "fast character math will be unavailable.|FCMD unprepare without prepare.|zero denominator %s.|"
    "in ratio addition|in ratio subtraction|in ratio multiply|converting ratio denominators|comparing ratios|"
    "invalid rational range|in ratio span|fast char math|in fixed multiply|in fixed divide|in fix24 multiply|"
    "in fix24 divide|in matrix conversion|unable to invert matrix.|in fixed point transformation|"
    "in point transformation|in fixed vector transformation|unimplemented on this platform|in ratio divide|"
    "Trig table|fast trig|fast trig will be unavailable.|Fast Trig unprepare without prepare.|"
    "unable to decompose matrix.|unable to build rotation matrix.|unable to calculate normal vector.|"
    "unable to intersect plane.|cannot normalize zero vector|in vector divide|homogeneous point has W=0|"
    "attempt to normalize a homegeneous point|";

// A translation that notes the keys that it is asked for.
std::string asked;
const char* french(void* /*context*/, const char* module, const char* key) {
    if (std::strcmp(module, "Zan") != 0 || std::strncmp(key, "$$$/Ko/Zan/LStr/", 16) != 0) return nullptr;
    asked += key + 16;
    asked += ' ';
    if (std::strcmp(key + 16, "0002") == 0) return "100 %% : depassement %s !";
    if (std::strcmp(key + 16, "0021") == 0) return "dans la multiplication";
    if (std::strcmp(key + 16, "0003") == 0) return "division par zero %d.";  // not the English conversions
    return nullptr;
}

}  // namespace

TEST_CASE("a report says what and where") {
    HostReports host;
    for (const ReportRow& r : kReports) {
        CAPTURE(r.what);
        Belp_SetThreadLastError(77);
        CHECK(Zanp_ReportErr(0xBEEF, r.code, r.context) == r.code);
        CHECK(host.takeAll() == r.report);
        CHECK(Bel_GetThreadLastError() == (r.code == 0 ? 77 : 0));
    }
}

TEST_CASE("the message table is what the string service reads") {
    const auto* table = static_cast<const Zan_MessageTable*>(Zan_G_zref);
    CHECK(std::string(table->module) == "Zan");
    REQUIRE(table->entryCount == 43);
    CHECK(table->reserved == 0);
    const char* text = kTexts;
    for (int i = 0; i < 42; ++i) {
        char key[256];
        const char* end = std::strchr(text, '|');
        std::snprintf(key, sizeof key, "$$$/Ko/Zan/LStr/%04d=%.*s", i, static_cast<int>(end - text), text);
        text = end + 1;
        const Zan_MessageEntry& entry = table->entries[i];
        CHECK(std::string(entry.key) == key);
        CHECK((entry.cache1 == 0 && entry.cache2 == 0 && entry.cache3 == 0));
    }
    const Zan_MessageEntry& end = table->entries[42];
    CHECK((end.key == nullptr && end.cache1 == UINTPTR_MAX && end.cache2 == UINTPTR_MAX && end.cache3 == 0));
}

TEST_CASE("a catalogue translates, and falls back to English") {
    HostReports host;
    Bel_SetCatalogue(french, nullptr);
    const struct {
        int32_t code;
        int16_t context;
        const char* report;
        const char* asked;  // a context before its message
    } rows[] = {{0x1102, 21, "0x110001 sev 8: 100 % : depassement dans la multiplication !", "0021 0002 "},
                {0x1102, 20, "0x110001 sev 8: 100 % : depassement in fixed divide !", "0020 0002 "},
                {0x1104, 21, "0x110001 sev 8: divide by zero dans la multiplication.", "0021 0003 "},
                {0x1107, 21, "0x110001 sev 8: unable to invert matrix.", "0024 "},
                {21, 21, "0x110001 sev 8: unknown error (21).", "0000 "}};
    for (const auto& r : rows) {
        asked.clear();
        Zanp_ReportErr(1, r.code, r.context);
        CHECK(host.takeAll() == r.report);
        CHECK(asked == r.asked);
    }
    Bel_SetCatalogue(nullptr, nullptr);
    Zanp_ReportErr(1, 0x1102, 21);
    CHECK(host.takeAll() == "0x110001 sev 8: overflow in fix24 multiply.");
    CHECK(std::string(Bel_ZLookupLStrCache(Zan_G_zref, 42, 0, 0)).empty());
    CHECK(std::string(Bel_ZLookupLStrCache(Zan_G_zref, -1, 0, 0)).empty());
}

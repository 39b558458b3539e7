// What the very first Zan_CheckVersions of a process gives: run with the name of one case. With one more
// argument nobody listens to the reports.
#include <cstdio>
#include <cstring>

#include "platform/bel.h"
#include "platform/vun.h"
#include "zan/frame.h"

namespace {

struct Case {
    const char* name;
    int32_t bel, vun, header;
    int32_t first;       // result of the first call
    const char* report;  // all that the host is told by the first call
    int32_t second;      // result of a second call with the right header
};
constexpr Case kCases[] = {
    {"good", 61, 3, 18, 0, "", 0},
    {"bel", 60, 3, 18, 7, "110001/16 Bel provides interface version 60, not 61.|", 0},
    {"vun", 61, 4, 18, 7, "110001/16 VUN provides interface version 4, not 3.|", 0},
    {"both", 1, 2, 18, 7,
     "110001/16 Bel provides interface version 1, not 61.|110001/16 VUN provides interface version 2, not 3.|", 0},
    // A wrong header does not save the platform from its one check.
    {"wrong_header", 60, 3, 17, 7,
     "110001/16 Bel provides interface version 60, not 61.|"
     "4D2/16 Plug-in version mismatch detected (did you install over an older version of Sarnet?). Try "
     "uninstalling and re-installing. (Zan package v18 != Zan.h v17)|",
     0},
};

char told[1024];

void keep(void* /*context*/, const Bel_Report* report) {
    const size_t used = std::strlen(told);
    std::snprintf(told + used, sizeof told - used, "%X/%d %s|", report->errorNumber, report->severity, report->text);
}

}  // namespace

int main(int argc, char** argv) {
    for (const Case& c : kCases) {
        if (argc < 2 || std::strcmp(c.name, argv[1]) != 0) continue;
        if (argc == 2) Bel_SetReportHandler(keep, nullptr);
        Bel_SetInterfaceVersion(c.bel);
        VUN_SetInterfaceVersion(c.vun);
        const int32_t first = Zan_CheckVersions(1234, c.header);
        const int32_t second = Zan_CheckVersions(1234, 18);
        if (first == c.first && second == c.second && std::strcmp(told, c.report) == 0) return 0;
        std::printf("%s: first %d, second %d, told \"%s\"\n", c.name, first, second, told);
        return 1;
    }
    std::printf("no such case\n");
    return 1;
}

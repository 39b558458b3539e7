// What the very first Zan_CheckVersions of a process gives: run with the name of one case. With one more
// argument nobody listens to the reports.
#include <cstdio>
#include <cstring>
#include <string>

#include "host_reports.h"
#include "platform/vun.h"
#include "zan/frame.h"

namespace {

struct Case {
    const char* name;
    int32_t bel, vun, header;  // 0: what the platform has
    std::string report;        // all that the host is told by the first call, which fails with it
};
const std::string kNoBel = "0x110001 sev 16: Bel provides interface version 60, not 61.\n";
const std::string kNoVun = "0x110001 sev 16: VUN provides interface version 4, not 3.\n";
const Case kCases[] = {
    {"good", 0, 0, 18, ""},
    {"bel", 60, 0, 18, kNoBel},
    {"vun", 0, 4, 18, kNoVun},
    // A wrong header does not save the platform from its one check.
    {"wrong_header", 60, 4, 17,
     kNoBel + kNoVun +
         "0x4D2 sev 16: Plug-in version mismatch detected (did you install over an older version of Sarnet?). Try "
         "uninstalling and re-installing. (Zan package v18 != Zan.h v17)\n"},
};

}  // namespace

int main(int argc, char** argv) {
    for (const Case& c : kCases) {
        if (argc < 2 || std::strcmp(c.name, argv[1]) != 0) continue;
        HostReports host;
        if (argc > 2) Bel_SetReportHandler(nullptr, nullptr);
        if (c.bel != 0) Bel_SetInterfaceVersion(c.bel);
        if (c.vun != 0) VUN_SetInterfaceVersion(c.vun);
        Belp_SetThreadLastError(5);
        const int32_t first = Zan_CheckVersions(1234, c.header), error = Bel_GetThreadLastError();
        std::string told = host.takeAll();
        if (!told.empty()) told += '\n';
        const int32_t second = Zan_CheckVersions(1234, 18);  // nobody looks again
        if (first == (c.report.empty() ? 0 : 7) && second == 0 && told == (argc > 2 ? "" : c.report) &&
            error == (c.header == 18 ? 5 : 0) && host.takeAll().empty() && Zan_PkgObjectVersion() == 0x120004) {
            return 0;
        }
        std::printf("%s: first %d, second %d, last error %d, told \"%s\"\n", c.name, first, second, error,
                    told.c_str());
    }
    return 1;
}

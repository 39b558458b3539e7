// The reports that the host receives, each as a line of text: "0x110008 sev 8: overflow in fix24 multiply." or, for an
// error of the platform, "0x110014 sev 8 code 12: ...". And the counts of the host's memory.
#ifndef ZAN_TESTS_SUPPORT_HOST_REPORTS_H
#define ZAN_TESTS_SUPPORT_HOST_REPORTS_H

#include "zan/platform/bel.h"

#include <cstdio>
#include <string>

/// Handles the reports while it lives.
class HostReports {
public:
    HostReports() { Bel_SetReportHandler(keep, this); }
    ~HostReports() { Bel_SetReportHandler(nullptr, nullptr); }
    HostReports(const HostReports&) = delete;
    HostReports& operator=(const HostReports&) = delete;

    /// The reports since the last call, separated by line ends; empty if there were none.
    std::string takeAll() {
        std::string taken;
        taken.swap(lines_);
        return taken;
    }

private:
    static void keep(void* context, const Bel_Report* report) {
        std::string& lines = static_cast<HostReports*>(context)->lines_;
        char head[64];
        std::snprintf(head, sizeof head, "0x%X sev %d", report->errorNumber, report->severity);
        if (!lines.empty()) lines += '\n';
        lines += head;
        if (report->fromPlatform) lines += " code " + std::to_string(report->platformCode);
        lines += std::string(": ") + report->text;
    }

    std::string lines_;
};

inline Bel_MemoryCounts memoryCounts() {
    Bel_MemoryCounts counts;
    Bel_GetMemoryCounts(&counts);
    return counts;
}

#endif  // ZAN_TESTS_SUPPORT_HOST_REPORTS_H

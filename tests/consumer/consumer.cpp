// The smallest program of a host: starts zan, calls one operation, receives one report, and stops zan.
#include "zan/platform/bel.h"
#include "zan/zan.h"

#include <cstdio>

static void show(void* /*context*/, const Bel_Report* report) {
    std::printf("report 0x%X: %s\n", report->errorNumber, report->text);
}

int main() {
    Bel_SetReportHandler(show, nullptr);
    if (Zan_CheckVersions(1, Zan_kInterfaceVersion) != 0) return 1;
    if (Zan_Birth(Zan_Service_Basic, nullptr) != 0) return 1;

    Zan_Matrix3 m(true);
    m.m20 = 5;
    std::printf("kind %d\n", m.GetType());

    const int32_t again = Zan_Birth(Zan_Service_Basic, nullptr);
    std::printf("result %d\n", again);
    return Zan_Death();
}

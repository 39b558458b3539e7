// Starts zan twice on the host's own platform. The second start fails, and the platform prints the report.
#include "zan/zan.h"

int main() {
    if (Zan_CheckVersions(1, Zan_kInterfaceVersion) != 0) return 1;
    if (Zan_Birth(Zan_Service_FastTrig, nullptr) != 0) return 1;
    if (Zan_Birth(Zan_Service_Basic, nullptr) == 0) return 1;
    return Zan_Death();
}

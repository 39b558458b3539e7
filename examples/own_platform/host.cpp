// Starts zan twice on the host's own platform; the second start is the report that the host prints.
#include "zan/zan.h"

int main() {
    if (Zan_CheckVersions(1, Zan_kInterfaceVersion) != 0) return 1;
    if (Zan_Birth(Zan_Service_FastTrig, nullptr) != 0) return 1;
    if (Zan_Birth(Zan_Service_Basic, nullptr) == 0) return 1;
    return Zan_Death();
}

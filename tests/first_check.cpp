// Prints the results of the first and second Zan_CheckVersions of a process. There is no report handler, so that the
// reports go to standard error. Arguments: the header's version, then the versions of Bel and VUN.
#include "zan/frame.h"
#include "zan/platform/vun.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    if (argc > 3) {
        Bel_SetInterfaceVersion(std::atoi(argv[2]));
        VUN_SetInterfaceVersion(std::atoi(argv[3]));
    }
    Belp_SetThreadLastError(5);
    const int32_t first = Zan_CheckVersions(1234, argc > 1 ? std::atoi(argv[1]) : 0);
    const int32_t error = Bel_GetThreadLastError();
    const int32_t second = Zan_CheckVersions(1234, Zan_kInterfaceVersion);
    std::printf("first %d, last error %d, second %d, object 0x%X\n", first, error, second, Zan_PkgObjectVersion());
    return 0;
}

// The benchmark program: starts the library with its services and runs every room's entries.
#include "entries.h"
#include "zan/frame.h"

#include <cstdio>

#ifdef ZAN_BENCH_PLAIN
const bool zan_bench::kPlainKernels = true;
#else
const bool zan_bench::kPlainKernels = false;
#endif

int main(int argc, char** argv) {
    if (Zan_Birth(Zan_Service_Basic | Zan_Service_FastTrig | Zan_Service_FastCharMath, nullptr) != 0) {
        std::fputs("zan does not start\n", stderr);
        return 1;
    }
    zan_bench::addFrameEntries();
    zan_bench::addScalarEntries();
    zan_bench::addGeom2dEntries();
    zan_bench::addMatrixEntries();
    zan_bench::addSpaceEntries();
    zan_bench::addPolyEntries();
    benchmark::AddCustomContext("compiler", ZAN_BENCH_COMPILER);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return Zan_Death();
}

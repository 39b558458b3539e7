// The benchmark program: starts the library with its services, registers all entries and runs them.
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
        std::fputs("the library does not start\n", stderr);
        return 1;
    }
    zan_bench::addScalarTables();
    zan_bench::addScalarEntries();
    zan_bench::addGeom2dEntries();
    zan_bench::addMatrixProducts();
    zan_bench::addMatrixPoints();
    zan_bench::addMatrixIntegerPoints();
    zan_bench::addMatrixRectangles();
    zan_bench::addMatrixBuilders();
    zan_bench::addMatrixInverses();
    zan_bench::addMatrixDecompositions();
    zan_bench::addSpaceEntries();
    zan_bench::addPolyHitTests();
    zan_bench::addPolyHulls();
    zan_bench::addPolyClips();
    zan_bench::addPolyLayers();
    benchmark::AddCustomContext("compiler", ZAN_BENCH_COMPILER);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return Zan_Death();
}

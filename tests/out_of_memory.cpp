// Operations that allocate memory, with allocation failures. For each operation, allocation 1 fails, then allocation 2,
// and so on until the operation succeeds; first that one alone, then with all later ones. Each failed operation must
// leave the documented outcome, report nothing, leak nothing, and succeed when it is repeated.
#include "tests/support/host_reports.h"
#include "tests/support/vectors.h"
#include "zan/zan.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

namespace {

// State of this program's operator new.
struct Heap {
    int countdown = 0;  // 1 if the next allocation fails, and so on; 0 if none fails
    bool andAllAfter = false;
    bool hasFailed = false;  // since the field was cleared
    int blocks = 0;          // allocated and not freed
};
Heap heap;

int reports = 0;

using Polygon = std::vector<Vector4>;
constexpr Vector2 kSquare[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
constexpr Vector2 kCentre(5, 5);

// Inputs and outputs of the operations. Each attempt has a new one.
struct State {
    Zan_TransformPoly3D withoutOutline;
    Zan_TransformPoly3D withOutline;
    Zan_TransformPoly2D planeLayer;
    std::vector<Vector2> square{std::begin(kSquare), std::end(kSquare)};
    std::vector<Vector2> hull;
    Polygon clipSubject{{0, 0, 0, 1}, {10, 0, 0, 1}, {10, 10, 0, 1}, {0, 10, 0, 1}};
    Polygon clipArea{{4, 4, 0, 1}, {14, 4, 0, 1}, {14, 14, 0, 1}, {4, 14, 0, 1}};
    Polygon clipped = Polygon(3);
    Polygon hullInSpace;
    std::vector<Vector2> thousandVertices = std::vector<Vector2>(1000, Vector2(3, 5));
    int number = 0;

    State() {
        for (int32_t i = 0; i < 4; ++i) {
            withoutOutline.SetLayerPoint(i, kSquare[i]);
            planeLayer.SetLayerPoint(i, kSquare[i]);
        }
        Zan_Matrix4 layerToEye(true);
        layerToEye.m32 = 1;
        withoutOutline.TransformPointsToEye(layerToEye);
        withoutOutline.TransformPointsToScreen(Zan_Matrix4(true));
        withOutline = withoutOutline;
        withOutline.InitPolyPoints();
    }
};

// The operations.
void makeOutline(State& s) { s.withoutOutline.InitPolyPoints(); }
void assign(State& s) { s.withoutOutline = s.withOutline; }
void copy(State& s) { s.number = Zan_TransformPoly3D(s.withOutline).NumPolyPoints(); }
void findHull(State& s) { Zan_ComputeConvexHull(s.square.cbegin(), s.square.cend(), s.hull); }
void findHullInSpace(State& s) { Zan_ComputeConvexHull(s.clipArea.cbegin(), s.clipArea.cend(), s.hullInSpace); }
void clip(State& s) { Zan_PolyPolyClip2D(&s.clipArea, &s.clipSubject, &s.clipped); }

// Operations that allocate nothing.
void hitTestLargeOutline(State& s) {
    unsigned char inside = 9;
    const int32_t code = Zan_IsFloatPointInConcavePoly(&kCentre, s.thousandVertices.data(), 1000, 2.0, &inside);
    s.number = code == 0 ? inside : -1;
}
void hitTestPlaneLayer(State& s) {
    s.number = s.planeLayer.IsPointInside(&kCentre, 0) && s.planeLayer.GetMinimumEdgeDistance(&kCentre) == 5 ? 1 : 0;
}
void reportFailure(State& s) {
    const Zan_Matrix3 singular(false);
    Zan_Matrix3 inverse;
    const bool failed = Zan_InverseMatrix(&singular, &inverse) == Zan_Err_CannotInvert;
    s.number = failed ? reports : -1;
    reports = 0;
}

// The outcomes.
int outlinePoints(const State& s) { return s.withoutOutline.NumPolyPoints(); }
int outlineHit(const State& s) { return s.withoutOutline.IsPointInside(&kCentre, 0) ? 1 : 0; }
int number(const State& s) { return s.number; }
int hullPoints(const State& s) { return static_cast<int>(s.hull.size()); }
int hullPointsInSpace(const State& s) { return static_cast<int>(s.hullInSpace.size()); }
int clippedPoints(const State& s) { return static_cast<int>(s.clipped.size()); }

const struct Row {
    const char* what;
    void (*operation)(State& s);
    int (*outcome)(const State& s);
    int success, failure;  // equal where nothing is allocated
} kRows[] = {
    {"making an outline: its points", makeOutline, outlinePoints, 4, 0},
    {"making an outline: a hit test on it", makeOutline, outlineHit, 1, 0},
    {"assigning a layer: points of its outline", assign, outlinePoints, 4, 0},
    {"assigning a layer: a hit test on it", assign, outlineHit, 1, 0},
    {"copying a layer: points of its outline", copy, number, 4, 0},
    {"hull in the plane: its points", findHull, hullPoints, 4, 0},
    {"hull in space: its points", findHullInSpace, hullPointsInSpace, 4, 0},
    {"clipping: points of the output, which is kept on failure", clip, clippedPoints, 4, 3},
    {"hit test on an outline of a thousand vertices allocates nothing", hitTestLargeOutline, number, 1, 1},
    {"hit test on a layer in the plane allocates nothing", hitTestPlaneLayer, number, 1, 1},
    {"a report allocates nothing", reportFailure, number, 1, 1},
};

int failedChecks = 0;

// Runs the operation once with the given allocation failing. False when the operation succeeded.
bool runWithFailure(const Row& row, int failingAllocation, bool andAllAfter) {
    const auto check = [&](bool holds, const char* claim) {
        if (holds) return;
        std::printf("%s; allocation %d fails%s; this does not hold: %s\n", row.what, failingAllocation,
                    andAllAfter ? " and all later ones" : "", claim);
        ++failedChecks;
    };
    const Bel_MemoryCounts countsBefore = memoryCounts();
    const int blocksBefore = heap.blocks;
    bool outOfMemory = false;
    {
        State state;
        heap.hasFailed = false;
        Bel_SetAllocationFailure(kBel_TrackedAllocations, static_cast<uint64_t>(failingAllocation), andAllAfter);
        heap.countdown = failingAllocation;
        heap.andAllAfter = andAllAfter;
        try {
            row.operation(state);
        } catch (const std::bad_alloc&) {
            outOfMemory = true;
        }
        heap.countdown = 0;
        Bel_SetAllocationFailure(0, 0, false);
        const bool allocates = row.failure != row.success;
        const bool expectFailure = allocates && failingAllocation == 1;
        check(outOfMemory || !heap.hasFailed, "a failed allocation is thrown as bad_alloc");
        check(outOfMemory || !expectFailure, "the first allocation fails");
        check(!outOfMemory || allocates, "nothing is allocated");
        check(row.outcome(state) == (outOfMemory ? row.failure : row.success), "the documented outcome");
        row.operation(state);
        check(row.outcome(state) == row.success, "the repeated operation succeeds");
    }
    const Bel_MemoryCounts counts = memoryCounts();
    check(heap.blocks == blocksBefore, "no heap block is leaked");
    check(counts.trackedBlocks == countsBefore.trackedBlocks, "no tracked block is leaked");
    check(counts.trackedBytes == countsBefore.trackedBytes, "no tracked byte is leaked");
    check(counts.handles == countsBefore.handles, "no handle is leaked");
    check(reports == 0, "nothing is reported");
    return outOfMemory;
}

}  // namespace

// Not inlined: GCC would warn that memory from malloc is freed by delete.
[[gnu::noinline]] void* operator new(std::size_t bytes) {
    if (heap.countdown > 0 && --heap.countdown == 0) {
        heap.hasFailed = true;
        heap.countdown = heap.andAllAfter ? 1 : 0;
        throw std::bad_alloc();
    }
    void* block = std::malloc(bytes != 0 ? bytes : 1);
    if (block == nullptr) throw std::bad_alloc();
    ++heap.blocks;
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    if (block != nullptr) --heap.blocks;
    std::free(block);
}
void operator delete(void* block, std::size_t /*bytes*/) noexcept { operator delete(block); }

int main() {
    Bel_SetReportHandler([](void* count, const Bel_Report* /*report*/) { ++*static_cast<int*>(count); }, &reports);
    for (const Row& row : kRows) {
        for (const bool andAllAfter : {false, true}) {
            int failingAllocation = 1;
            while (failedChecks == 0 && runWithFailure(row, failingAllocation, andAllAfter)) ++failingAllocation;
        }
    }
    return failedChecks == 0 ? 0 : 1;
}

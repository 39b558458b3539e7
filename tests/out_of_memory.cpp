// What the operations that take memory do when there is none: allocation 1 of a call fails, then 2, 3, ... until the
// call succeeds, once each alone and once with all that follow. The outputs hold what is stated, nobody is told,
// nothing is lost, and the next try succeeds.
#include "tests/support/host_reports.h"
#include "zan/zan.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

namespace {

int countdown = 0;  // the heap's allocations until the one that fails; 0 for none
bool onward = false;
bool struck = false;  // one has failed
int held = 0;         // blocks that are allocated and not freed
int reports = 0;

using Point = Zan_Vector2T<double>;
using Polygon = std::vector<Zan_Vector4T<double>>;
constexpr Point kSquare[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
constexpr Point kCentre(5, 5);

// What the calls are given, made anew for each, and their outputs.
struct State {
    Zan_TransformPoly3D bare, whole;  // without an outline, and with one
    Zan_TransformPoly2D plane;
    std::vector<Point> square{std::begin(kSquare), std::end(kSquare)}, hull;
    Polygon subject{{0, 0, 0, 1}, {10, 0, 0, 1}, {10, 10, 0, 1}, {0, 10, 0, 1}}, hullInSpace;
    Polygon box{{4, 4, 0, 1}, {14, 4, 0, 1}, {14, 14, 0, 1}, {4, 14, 0, 1}}, clipped = Polygon(3);
    std::vector<Point> many = std::vector<Point>(1000, Point(3, 5));
    int number = 0;
    State() {
        for (int32_t i = 0; i < 4; ++i) bare.SetLayerPoint(i, kSquare[i]), plane.SetLayerPoint(i, kSquare[i]);
        Zan_Matrix4 away(true);
        away.m32 = 1;
        bare.TransformPointsToEye(away);
        bare.TransformPointsToScreen(Zan_Matrix4(true));
        whole = bare;
        whole.InitPolyPoints();
    }
};

void makeOutline(State& s) { s.bare.InitPolyPoints(); }
void assign(State& s) { s.bare = s.whole; }
void copy(State& s) { s.number = Zan_TransformPoly3D(s.whole).NumPolyPoints(); }
void findHull(State& s) { Zan_ComputeConvexHull(s.square.cbegin(), s.square.cend(), s.hull); }
void findHullInSpace(State& s) { Zan_ComputeConvexHull(s.box.cbegin(), s.box.cend(), s.hullInSpace); }
void clip(State& s) { Zan_PolyPolyClip2D(&s.box, &s.subject, &s.clipped); }
// These take none: an outline of many points, a layer in the plane, a report.
void takeNone(State& s) {
    unsigned char inside = 9;
    Zan_Matrix3 singular(false), inverse;
    s.number = Zan_IsFloatPointInConcavePoly(&kCentre, s.many.data(), 1000, 2.0, &inside) == 0 && inside == 1 &&
               s.plane.IsPointInside(&kCentre, 0) && s.plane.GetMinimumEdgeDistance(&kCentre) == 5 &&
               Zan_InverseMatrix(&singular, &inverse) == Zan_Err_CannotInvert && reports-- == 1;
}

int outline(const State& s) { return s.bare.NumPolyPoints() * 10 + s.bare.IsPointInside(&kCentre, 0); }
int number(const State& s) { return s.number; }
int hull(const State& s) { return static_cast<int>(s.hull.size() + s.hullInSpace.size()); }
int clipped(const State& s) { return static_cast<int>(s.clipped.size()); }

const struct Row {
    const char* what;
    void (*call)(State& s);
    int (*outcome)(const State& s);
    int good, failed;  // the same where no memory is taken
} kRows[] = {
    {"outline", makeOutline, outline, 41, 0},
    {"assignment", assign, outline, 41, 0},
    {"copy", copy, number, 4, 0},
    {"hull", findHull, hull, 4, 0},
    {"hull in space", findHullInSpace, hull, 4, 0},
    {"clip", clip, clipped, 4, 3},
    {"no memory needed", takeNone, number, 1, 1},
};

int failures = 0;

void run(const Row& row, bool all) {
    for (int n = 1; failures == 0; ++n) {
        const auto expect = [&](bool holds, const char* claim) {
            if (!holds) std::printf("%s, allocation %d: %s\n", row.what, n, claim), ++failures;
        };
        const Bel_MemoryCounts before = memoryCounts();
        const int heldBefore = held;
        bool starved = false;
        {
            State state;
            struck = false;
            Bel_SetAllocationFailure(kBel_TrackedAllocations, static_cast<uint64_t>(n), all);
            countdown = n, onward = all;
            try {
                row.call(state);
            } catch (const std::bad_alloc&) {
                starved = true;
            }
            countdown = 0;
            Bel_SetAllocationFailure(0, 0, false);
            expect(starved || (!struck && (n > 1) == (row.failed != row.good)), "failed unnoticed");
            expect(row.outcome(state) == (starved ? row.failed : row.good), "not the stated outcome");
            row.call(state);
            expect(row.outcome(state) == row.good, "the next try");
        }
        Bel_MemoryCounts after = memoryCounts();
        after.trackedNews = before.trackedNews, after.trackedDeletes = before.trackedDeletes;
        expect(held == heldBefore && std::memcmp(&after, &before, sizeof after) == 0, "lost");
        expect(reports == 0, "told");
        if (!starved) return;
    }
}

}  // namespace

// Not inlined, or the compiler takes malloc and free for a mismatch with what it knows of new and delete.
[[gnu::noinline]] void* operator new(std::size_t bytes) {
    if (countdown > 0 && --countdown == 0) {
        struck = true;
        countdown = onward ? 1 : 0;
        throw std::bad_alloc();
    }
    void* block = std::malloc(bytes != 0 ? bytes : 1);
    if (block == nullptr) throw std::bad_alloc();
    ++held;
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    held -= block != nullptr;
    std::free(block);
}
void operator delete(void* block, std::size_t /*bytes*/) noexcept { operator delete(block); }

int main() {
    Bel_SetReportHandler([](void* count, const Bel_Report* /*report*/) { ++*static_cast<int*>(count); }, &reports);
    for (const Row& row : kRows) {
        for (const bool all : {false, true}) run(row, all);
    }
    return failures != 0;
}

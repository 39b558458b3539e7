// What the operations that take memory do when there is none: allocation 1 of a call fails, then 2, 3, ... until the
// call succeeds, once each alone and once with all that follow. Every answer, with its reports and what the outputs
// hold, is the stated one; nothing is lost; the next try succeeds.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "platform/bel.h"
#include "zan/zan.h"

namespace {

struct Fault {
    uint32_t kinds;  // which of the platform's allocations, 0 for the heap's
    int n;           // 0 for none
    bool onward;
};

int countdown = 0;  // the heap's allocations until the one that fails; 0 for none
bool onward = false;
bool struck = false;  // one has failed
int held = 0;         // blocks that are allocated and not freed
std::string reports;

void keepReport(void* /*context*/, const Bel_Report* report) {
    char line[200];
    std::snprintf(line, sizeof line, " 0x%X %s", report->errorNumber, report->text);
    reports += line;
}

// What a call under a fault returned, threw and reported.
template <class Call>
void under(const Fault& fault, std::string& said, const Call& call) {
    char code[20] = "bad_alloc";
    reports.clear();
    struck = false;
    if (fault.kinds != 0) Bel_SetAllocationFailure(fault.kinds, static_cast<uint64_t>(fault.n), fault.onward);
    if (fault.kinds == 0) countdown = fault.n, onward = fault.onward;
    try {
        const int32_t result = call();
        std::snprintf(code, sizeof code, "%d", static_cast<int>(result));
    } catch (const std::bad_alloc&) {
    } catch (long thrown) {
        std::snprintf(code, sizeof code, "thrown %ld", thrown);
    }
    countdown = 0;
    Bel_SetAllocationFailure(0, 0, false);
    said += code + reports;
}

void append(std::string& said, const char* name, uint64_t value) {
    char text[40];
    std::snprintf(text, sizeof text, ", %s %d", name, static_cast<int>(value));
    said += text;
}

Bel_MemoryCounts memory() {
    Bel_MemoryCounts counts;
    Bel_GetMemoryCounts(&counts);
    counts.trackedNews = counts.trackedDeletes = 0;
    return counts;
}

// A start that failed leaves the tables that it made.
void freeTables() {
    for (Bel_Handle table : {Zanp_G.sineTable, Zanp_G.charMultiplyTable, Zanp_G.charDivideTable}) Bel_FreeHandle(table);
    Zanp_G = {};
}

void birth(const Fault& fault, std::string& said) {
    uint32_t started = 99;
    under(fault, said, [&] { return Zan_Birth(7, &started); });
    append(said, "started", started);
    append(said, "tables", memory().handles);
    freeTables();
}

template <uint32_t service>
void prepare(const Fault& fault, std::string& said) {
    static_cast<void>(Zan_Birth(service, nullptr));
    for (Bel_Handle table : {Zanp_G.sineTable, Zanp_G.charMultiplyTable, Zanp_G.charDivideTable}) {
        Bel_ReclaimHandle(table);
    }
    bool ok = false;
    uint8_t *multiply = nullptr, *divide = nullptr;
    float* sine = nullptr;
    under(fault, said, [&] {
        return service == Zan_Service_FastTrig ? Zan_PrepareFTrig(true, false, &ok, &sine)
                                               : Zan_PrepareFCMD(true, false, &ok, &multiply, &divide);
    });
    append(said, "ok", ok);
    append(said, "addresses", (sine != nullptr) + (multiply != nullptr) + (divide != nullptr));
    append(said, "tables", memory().handles);
    static_cast<void>(Zan_Death());
    freeTables();
}

using Point = Zan_Vector2T<double>;
using Polygon = std::vector<Zan_Vector4T<double>>;
constexpr Point kSquare[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
constexpr Point kCentre(5, 5);

template <class Poly>
Poly layer() {
    Poly poly;
    for (int32_t i = 0; i < 4; ++i) poly.SetLayerPoint(i, kSquare[i]);
    return poly;
}

Zan_TransformPoly3D layerInSpace() {
    auto poly = layer<Zan_TransformPoly3D>();
    Zan_Matrix4 away(true);
    away.m32 = 1;
    poly.TransformPointsToEye(away);
    poly.TransformPointsToScreen(Zan_Matrix4(true));
    return poly;
}

void outline(const Fault& fault, std::string& said) {
    const auto poly = layerInSpace();
    for (const Fault& f : {fault, Fault{}}) {
        under(f, said, [&] { return poly.InitPolyPoints(), 0; });
        append(said, "points", static_cast<uint64_t>(poly.NumPolyPoints()));
        append(said, "inside", poly.IsPointInside(&kCentre, 0));
    }
}

void copy(const Fault& fault, std::string& said) {
    auto whole = layerInSpace();
    whole.InitPolyPoints();
    under(fault, said, [&] { return Zan_TransformPoly3D(whole).NumPolyPoints(); });
}

void assign(const Fault& fault, std::string& said) {
    auto whole = layerInSpace(), former = layerInSpace();
    whole.InitPolyPoints();
    under(fault, said, [&] { return former = whole, 0; });
    append(said, "points", static_cast<uint64_t>(former.NumPolyPoints()));
}

template <class Vector>
void hull(const Fault& fault, std::string& said) {
    std::vector<Vector> points(5), vertices(7);
    for (size_t i = 0; i < 4; ++i) points[i].x = kSquare[i].x, points[i].y = kSquare[i].y;
    points[4].x = points[4].y = 4;
    under(fault, said, [&] { return Zan_ComputeConvexHull(points.cbegin(), points.cend(), vertices), 0; });
    said += vertices.size() == 4 ? ", hull" : vertices.empty() || vertices.size() == 7 ? ", as it was or empty" : "?";
}

void clip(const Fault& fault, std::string& said) {
    const Polygon subject = {{0, 0, 0, 1}, {10, 0, 0, 1}, {10, 10, 0, 1}, {0, 10, 0, 1}};
    const Polygon box = {{4, 4, 0, 1}, {14, 4, 0, 1}, {14, 14, 0, 1}, {4, 14, 0, 1}};
    Polygon result(3);
    under(fault, said, [&] { return Zan_PolyPolyClip2D(&box, &subject, &result), 0; });
    append(said, "points", result.size());
}

// These take none: an outline of many points, a layer in the plane, a report.
void without(const Fault& fault, std::string& said) {
    const std::vector<Point> many(1000, Point(3, 5));
    const auto plane = layer<Zan_TransformPoly2D>();
    unsigned char inside = 9;
    under(fault, said, [&] {
        Zan_Matrix3 singular(false), inverse;
        const bool good = Zan_IsFloatPointInConcavePoly(&kCentre, many.data(), 1000, 2.0, &inside) == 0 &&
                          plane.IsPointInside(&kCentre, 0) && plane.GetMinimumEdgeDistance(&kCentre) == 5;
        return Zan_InverseMatrix(&singular, &inverse) + good;
    });
    append(said, "inside", inside);
}

struct Row {
    const char* what;
    uint32_t kinds;
    void (*call)(const Fault& fault, std::string& said);
    const char* good;
    // What is said when the first allocation fails, the second, ...; the last is for the others too.
    std::vector<const char*> alone;
    std::vector<const char*> all;  // when all that follow fail too; empty where that is the same
};
const Row kRows[] = {
    {"start",
     kBel_HandleAllocations,
     birth,
     "0, started 7, tables 3",
     {"4 0x110019 not enough memory for FCM/D table., started 1, tables 2",
      "4 0x11001B not enough memory for FCM/D table., started 3, tables 1",
      "4 0x11001B not enough memory for FCM/D table., started 3, tables 1"},
     {"4 0x110019 not enough memory for FCM/D table. 0x11001B not enough memory for FCM/D table., started 1, tables 0",
      "4 0x11001B not enough memory for FCM/D table., started 3, tables 1",
      "4 0x11001B not enough memory for FCM/D table., started 3, tables 1"}},
    {"sine table",
     kBel_QuietAllocations,
     prepare<Zan_Service_FastTrig>,
     "0, ok 1, addresses 1, tables 1",
     {"4 0x11002A fast trig will be unavailable., ok 0, addresses 0, tables 0"},
     {}},
    {"char tables",
     kBel_QuietAllocations,
     prepare<Zan_Service_FastCharMath>,
     "0, ok 1, addresses 2, tables 2",
     {"4 0x11001F fast character math will be unavailable., ok 0, addresses 0, tables 1",
      "4 0x11001F fast character math will be unavailable., ok 0, addresses 0, tables 1"},
     {"4 0x11001F fast character math will be unavailable., ok 0, addresses 0, tables 0",
      "4 0x11001F fast character math will be unavailable., ok 0, addresses 0, tables 1"}},
    {"outline",
     kBel_TrackedAllocations,
     outline,
     "0, points 4, inside 10, points 4, inside 1",
     {"bad_alloc, points 0, inside 00, points 4, inside 1"},
     {}},
    {"copy", kBel_TrackedAllocations, copy, "4", {"bad_alloc"}, {}},
    {"assignment", kBel_TrackedAllocations, assign, "0, points 4", {"bad_alloc, points 0"}, {}},
    {"hull", 0, hull<Point>, "0, hull", {"bad_alloc, as it was or empty"}, {}},
    {"hull in space", 0, hull<Zan_Vector4T<double>>, "0, hull", {"bad_alloc, as it was or empty"}, {}},
    {"clip", 0, clip, "0, points 4", {"bad_alloc, points 3"}, {}},
    {"no memory needed", 0, without, "4360 0x110023 unable to invert matrix., inside 1", {}, {}},
};

int failures = 0;
void check(bool good, const Row& row, int n, const char* what, const std::string& said) {
    if (!good) std::printf("%s, allocation %d: %s: %s\n", row.what, n, what, said.c_str()), ++failures;
}

void run(const Row& row, bool all) {
    const auto& expected = all && !row.all.empty() ? row.all : row.alone;
    std::string said;
    said.reserve(1000);
    for (int n = 1; failures == 0; ++n) {
        const Bel_MemoryCounts before = memory();
        const int heldBefore = held;
        for (const int failing : {n, 0}) {
            said.clear();
            row.call({row.kinds, failing, all}, said);
            const Bel_MemoryCounts after = memory();
            check(held == heldBefore && std::memcmp(&after, &before, sizeof after) == 0, row, failing, "lost", said);
            if (failing == 0) {
                check(said == row.good, row, 0, "next try", said);
            } else if (said == row.good) {
                check(!struck && static_cast<size_t>(n) > expected.size(), row, n, "failed unnoticed", said);
                return;
            } else {
                check(!expected.empty() && said == expected[std::min(static_cast<size_t>(n), expected.size()) - 1], row,
                      n, "not as stated", said);
            }
        }
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
// A sanitizer's own would not come by the ones above.
void* operator new[](std::size_t bytes) { return operator new(bytes); }
void operator delete[](void* block) noexcept { operator delete(block); }
void operator delete[](void* block, std::size_t /*bytes*/) noexcept { operator delete(block); }

int main() {
    reports.reserve(1000);
    Bel_SetReportHandler(keepReport, nullptr);
    for (const Row& row : kRows) {
        for (const bool all : {false, true}) run(row, all);
    }
    return failures != 0;
}

// What the operations that use the heap do when it is exhausted: the n-th allocation of a call fails, for each n.
#include <cstdio>
#include <cstdlib>
#include <new>
#include <vector>

#include "host_reports.h"
#include "zan/poly.h"

namespace {

int failingCountdown = 0;  // allocations until the one that fails; 0 for none
int held = 0;              // blocks that are allocated and not freed

using Point = Zan_Vector2T<double>;
constexpr Point kSquare[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};

int failures = 0;
void check(bool good, const char* what, int n) {
    if (good) return;
    std::printf("%s, allocation %d\n", what, n);
    ++failures;
}

// Runs a call with its n-th allocation failing, for n = 1, 2, ... until it needs no n-th. It must need one.
template <class Call>
void eachAllocation(const char* what, const Call& call) {
    for (int n = 1;; ++n) {
        failingCountdown = n;
        const int before = held;
        const bool failed = call(n);
        const bool reached = failingCountdown == 0;
        failingCountdown = 0;
        check(failed == reached, what, n);
        check(held == before, "memory is left", n);
        if (reached) continue;
        check(n > 1, "nothing was allocated", n);
        return;
    }
}

}  // namespace

void* operator new(std::size_t bytes) {
    if (failingCountdown > 0 && --failingCountdown == 0) throw std::bad_alloc();
    void* block = std::malloc(bytes != 0 ? bytes : 1);
    if (block == nullptr) throw std::bad_alloc();
    ++held;
    return block;
}
void operator delete(void* block) noexcept {
    held -= block != nullptr;
    std::free(block);
}
void operator delete(void* block, std::size_t /*bytes*/) noexcept { operator delete(block); }

int main() {
    HostReports host;
    const Point centre(5, 5);
    eachAllocation("point in polygon", [&](int n) {
        unsigned char inside = 9;
        const int32_t result = Zan_IsFloatPointInConcavePoly(&centre, kSquare, 4, 1.0, &inside);
        const std::string report = host.takeAll();
        check(result == 0 ? inside == 1 && report.empty()
                          : result == kBel_Err_OutOfMemory && inside == 0 && report == "0x0 sev 8: std::bad_alloc",
              "answer and report", n);
        return result != 0;
    });
    Zan_TransformPoly2D layer;
    for (int32_t i = 0; i < 4; ++i) layer.SetLayerPoint(i, kSquare[i]);
    eachAllocation("a layer throws the code", [&](int n) {
        try {
            check(layer.IsPointInside(&centre, 0), "layer hit", n);
            return false;
        } catch (long code) {
            return code == kBel_Err_OutOfMemory && !host.takeAll().empty();
        }
    });
    // These pass the exception on, and the clip leaves its result alone.
    const auto fails = [](const auto& call) {
        try {
            call();
            return false;
        } catch (const std::bad_alloc&) {
            return true;
        }
    };
    eachAllocation("hull", [&](int /*n*/) {
        std::vector<Point> hull;
        return fails([&] { Zan_ComputeConvexHull(kSquare, kSquare + 4, hull); });
    });
    using Polygon = std::vector<Zan_Vector4T<double>>;
    const Polygon square = {{0, 0, 0, 1}, {10, 0, 0, 1}, {10, 10, 0, 1}, {0, 10, 0, 1}};
    const Polygon inner = {{1, 1, 0, 1}, {2, 1, 0, 1}, {1, 2, 0, 1}};
    eachAllocation("clip", [&](int n) {
        Polygon result;
        const bool failed = fails([&] { Zan_PolyPolyClip2D(&square, &inner, &result); });
        check(result.size() == (failed ? 0 : 3), "result of the clip", n);
        return failed;
    });
    unsigned char inside = 9;
    failingCountdown = 1;
    check(Zan_IsFloatPointInConcavePoly(&centre, kSquare, 0, 1.0, &inside) == 0 && inside == 0, "no vertices", 1);
    check(failingCountdown == 1, "no vertices need no memory", 1);
    failingCountdown = 0;
    return failures != 0;
}

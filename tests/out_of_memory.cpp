// What the operations that use the heap do when it is exhausted: the n-th allocation of a call fails, for each n.
#include <cstdio>
#include <cstdlib>
#include <new>
#include <vector>

#include "zan/poly.h"

namespace {

int failingCountdown = 0;  // allocations until the one that fails; 0 for none
int held = 0;              // blocks that are allocated and not freed

using Point = Zan_Vector2T<double>;
constexpr Point kSquare[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};

int failures = 0;
void check(bool good, const char* what) {
    if (!good) std::printf("%s\n", what), ++failures;
}

// Runs a call with its n-th allocation failing, for n = 1, 2, ... until it needs no n-th. It must need one, and fail
// by this exception or by returning true.
template <class Thrown, class Call>
void eachAllocation(const char* what, const Call& call) {
    bool reached = true;
    for (int n = 1; reached; ++n) {
        failingCountdown = n;
        const int before = held;
        bool failed = true;
        try {
            failed = call();
        } catch (const Thrown&) {
        }
        reached = failingCountdown == 0;
        failingCountdown = 0;
        check(failed == reached && held == before && (reached || n > 1), what);
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
// A sanitizer's own would not come by the ones above.
void* operator new[](std::size_t bytes) { return operator new(bytes); }
void operator delete[](void* block) noexcept { operator delete(block); }
void operator delete[](void* block, std::size_t /*bytes*/) noexcept { operator delete(block); }

int main() {
    using Polygon = std::vector<Zan_Vector4T<double>>;
    const Polygon square = {{0, 0, 0, 1}, {10, 0, 0, 1}, {10, 10, 0, 1}, {0, 10, 0, 1}};
    eachAllocation<std::bad_alloc>("hull and clip", [&] {
        Polygon hull, result;
        Zan_ComputeConvexHull(square.begin(), square.end(), hull);
        Zan_PolyPolyClip2D(&square, &hull, &result);
        return result.size() != 4;
    });
    const std::vector<Point> outline(1000, Point(3, 5));
    const Point centre(5, 5);
    unsigned char inside = 9;
    Zan_TransformPoly2D layer;
    for (int32_t i = 0; i < 4; ++i) layer.SetLayerPoint(i, kSquare[i]);
    failingCountdown = 1;
    check(Zan_IsFloatPointInConcavePoly(&centre, outline.data(), 1000, 2.0, &inside) == 0 && inside == 1, "outline");
    check(layer.IsPointInside(&centre, 0), "layer");
    check(failingCountdown == 1, "hit tests take no memory");
    failingCountdown = 0;
    return failures != 0;
}

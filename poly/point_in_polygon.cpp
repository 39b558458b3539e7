// Hit test: whether a point is inside an outline, or within a tolerance of it.
//
// The answer is yes if the point is near one edge or on it, else the parity of the crossings; the order of the edges
// does not matter. Repeated vertices are not removed: an edge between equal vertices spans no x and is no nearer to the
// point than its neighbours.
//
// Two filters avoid the exact test of most edges. Both have kernels and no branches. In an outline of up to eight
// vertices, the error-bound filter classifies all edges at once. In a longer one, a scan of up to 64 edges at a time
// finds those that span the point's x or may be near the point; with a tolerance, the error-bound filter then tests
// each of these before the exact test does.
#include "poly/point_in_polygon.h"

#include "frame/processor.h"
#include "matrix/nearly_equal.h"
#include "poly/edge_rules.h"
#include "space/segment_distance.h"
#include "zan/poly.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace {

using zan::Vector2;

template <class T>
Vector2 widen(const Zan_Vector2T<T>& v) {
    return {v.x, v.y};
}

template <class T>
auto bytesOf(const Zan_Vector2T<T>& v) {
    return std::bit_cast<std::array<unsigned char, sizeof v>>(v);
}
template <class T>
bool allRepeatFirst(const Zan_Vector2T<T>* vertices, int32_t count) {
    const auto repeatsFirst = [vertices](const Zan_Vector2T<T>& v) { return bytesOf(v) == bytesOf(*vertices); };
    return std::all_of(vertices + 1, vertices + count, repeatsFirst);
}

// HitQuery::margin: an edge farther away than this fails isNear. The squares that isNear compares have relative errors
// of a few 2^-53, which 1e-10 covers. The distance to an edge counts only for a point beside an edge of length at
// most 1e12, so its absolute error is a few times 1e12 * 2^-53 = 1.1e-4, which 0.01 covers.
double farMargin(double tolerance, double toleranceSquared) {
    if (!(toleranceSquared < 1e300)) return std::numeric_limits<double>::infinity();
    return std::fabs(tolerance) * (1 + 1e-10) + 0.01;
}

// Result of the exact test of an edge. kCrossed: the ray from the point toward increasing y crosses it. kHit: the point
// is near the edge or on it. Combined with ^=, bit 0 is the parity of the crossings; the first hit ends the test.
enum EdgeResult : unsigned { kNotCrossed = 0, kCrossed = 1, kHit = 2 };

bool isNear(const Vector2& p, const Vector2& start, const Vector2& end, double toleranceSquared) {
    bool within = false;
    double distance = 0;
    zan::perpDistTo2DLine(p, start, end, within, distance);
    return (within && toleranceSquared >= distance * distance) || toleranceSquared >= p.DistanceSquared(start) ||
           toleranceSquared >= p.DistanceSquared(end);
}

template <bool kTolerant, class T>
class HitTest {
public:
    using Vertex = Zan_Vector2T<T>;

    HitTest(const Vector2& point, double tolerance, double toleranceSquared)
        : toleranceSquared_(toleranceSquared),
          query_{point.x, point.y, kTolerant ? farMargin(tolerance, toleranceSquared) : 0,
                 (std::fabs(point.y) + 1) * 0x1p-39} {}

    // The rare paths are functions of their own; inlined, they would make this one save registers at every call.
    bool contains(const Vertex* vertices, int32_t count) const {
        if (count > zan::kSmallOutlineVertices) return containsInLargeOutline(vertices, count);
        const zan::EdgeClasses edges = kernel().smallOutlineScans[kVariant](vertices, count, query_);
        static_assert(zan::kSmallOutlineVertices <= 8);
        constexpr unsigned kParityOf4Bits = 0x6996;  // bit n is the parity of n
        const unsigned odd = kParityOf4Bits >> ((edges.above ^ edges.above >> 4) & 0xF) & 1;
        return edges.uncertain == 0 ? odd != 0 : resolveUncertain(vertices, count, edges.uncertain, odd);
    }

private:
    [[gnu::noinline]] bool resolveUncertain(const Vertex* vertices, int32_t count, uint32_t edges,
                                            unsigned result) const {
        for (; edges != 0 && result < kHit; edges &= edges - 1) {
            const int32_t i = std::countr_zero(edges);
            result ^= testEdgeExactly(vertices[i], vertices[i + 1 < count ? i + 1 : 0]);
        }
        return result != kNotCrossed;
    }

    [[gnu::noinline]] bool containsInLargeOutline(const Vertex* vertices, int32_t count) const {
        const zan::EdgeKernel& kernel = HitTest::kernel();
        unsigned result = testEdge(vertices[count - 1], vertices[0]);
        for (int32_t done = 0; done < count - 1 && result < kHit;) {
            const int32_t edges = std::min(count - 1 - done, zan::kEdgesPerScan);
            // A last block with fewer edges than the kernel accepts is scanned with the end of the block before.
            const int32_t overlap = std::max(kernel.minEdges - edges, 0);
            const Vertex* first = vertices + (done - overlap);
            const zan::EdgeBits found = kernel.scans[kVariant](first, edges + overlap, query_);
            for (uint64_t bits = (found.spanning | found.maybeNear) >> overlap; bits != 0 && result < kHit;
                 bits &= bits - 1) {
                const Vertex* v = vertices + done + std::countr_zero(bits);
                result ^= testEdge(v[0], v[1]);
            }
            done += edges;
        }
        return result != kNotCrossed;
    }

    unsigned testEdge(const Vertex& start, const Vertex& end) const {
        if constexpr (!kTolerant) return testEdgeExactly(start, end);
        const zan::EdgeClass edgeClass = zan::classifyEdge<kTolerant>(query_, start, end);
        return edgeClass == zan::kUncertain ? testEdgeExactly(start, end) : unsigned{edgeClass};
    }
    EdgeResult testEdgeExactly(const Vertex& from, const Vertex& to) const {
        const Vector2 p = {query_.x, query_.y}, start = widen(from), end = widen(to);
        if (kTolerant && isNear(p, start, end, toleranceSquared_)) return kHit;
        if ((start.x < p.x) == (end.x < p.x)) return kNotCrossed;
        // If a coordinate of the edge is NaN, edgeY is NaN: the edge is not crossed.
        const double edgeY = (p.x - end.x) / (start.x - end.x) * (start.y - end.y) + end.y;
        const double height = edgeY - p.y;
        // Early out: beyond yTolerance, edgeY and p.y are not nearly equal.
        if (!(std::fabs(height) > query_.yTolerance) && zan::nearlyEqual(edgeY, p.y)) return kHit;
        return static_cast<EdgeResult>(height > 0);
    }

    static const zan::EdgeKernel& kernel() { return *zan::kEdgeKernels[static_cast<int>(zan::activeInstructionSet())]; }
    static constexpr zan::HitTestVariant kVariant = sizeof(T) == sizeof(float)
                                                        ? (kTolerant ? zan::kTolerantFloats : zan::kFloats)
                                                        : (kTolerant ? zan::kTolerantDoubles : zan::kDoubles);

    double toleranceSquared_;
    zan::HitQuery query_;
};

template <class T>
bool contains(const Zan_Vector2T<T>& point, const Zan_Vector2T<T>* vertices, int32_t count, double tolerance) {
    const double toleranceSquared = tolerance * tolerance;
    if (!(toleranceSquared > 0)) {
        if (point == vertices[0] && allRepeatFirst(vertices, count)) return true;
        return HitTest<zan::kWithoutTolerance, T>(widen(point), tolerance, toleranceSquared).contains(vertices, count);
    }
    // An outline that is one point: for doubles the general path computes the same value. For floats the squared
    // distance is rounded to single precision, so this case is separate.
    if constexpr (!std::is_same_v<T, double>) {
        if (allRepeatFirst(vertices, count)) return toleranceSquared >= double(point.DistanceSquared(vertices[0]));
    }
    return HitTest<zan::kWithTolerance, T>(widen(point), tolerance, toleranceSquared).contains(vertices, count);
}

template <class Vector>
int32_t testPoint(const Vector* point, const Vector* vertices, int32_t count, double tolerance, unsigned char* inside) {
    *inside = count >= 1 && contains(*point, vertices, count, tolerance) ? 1 : 0;
    return 0;
}

}  // namespace

bool zan::isPointInside(const Vector2& p, const Vector2* outline, int32_t count, double tolerance) {
    return contains(p, outline, count, tolerance);
}

template <>
int32_t Zan_IsFloatPointInConcavePoly(const Vector2* point, const Vector2* vertices, int32_t count, double tolerance,
                                      unsigned char* inside) {
    return testPoint(point, vertices, count, tolerance, inside);
}

template <>
int32_t Zan_IsFloatPointInConcavePoly(const Zan_Vector2T<float>* point, const Zan_Vector2T<float>* vertices,
                                      int32_t count, double tolerance, unsigned char* inside) {
    return testPoint(point, vertices, count, tolerance, inside);
}

int32_t Zan_IsFloatPointInQuad(const Vector2* point, const Vector2* vertices, unsigned char* inside) {
    return Zan_IsFloatPointInConcavePoly(point, vertices, 4, 0.0, inside);
}

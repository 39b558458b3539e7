// Is a point inside an outline, or within a tolerance of it?
//
// The answer is yes as soon as one edge is near the point or has it on itself, else the parity of the crossings, so the
// order of the edges does not matter. An edge between two vertices that repeat neither spans the point's x nor brings
// it nearer than its neighbours do, so vertices that repeat need no taking out. Most edges of a short outline are told
// without a closer look, four at a time. Of a long one the edges that can matter are found first, up to 64 at a time;
// all without branches.
#include "frame/processor.h"
#include "matrix/nearly_equal.h"
#include "poly/edge_rules.h"
#include "poly/outline.h"
#include "space/segment_distance.h"
#include "zan/poly.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace {

using Point = Zan_Vector2T<double>;

template <class T>
Point widen(const Zan_Vector2T<T>& v) {
    return {v.x, v.y};
}

template <class T>
auto bytes(const Zan_Vector2T<T>& v) {
    return std::bit_cast<std::array<unsigned char, sizeof v>>(v);
}
template <class T>
bool allTheSame(const Zan_Vector2T<T>* vertices, int32_t count) {
    const auto repeatsFirst = [vertices](const Zan_Vector2T<T>& v) { return bytes(v) == bytes(*vertices); };
    return std::all_of(vertices + 1, vertices + count, repeatsFirst);
}

// A point farther than this from both ends of an edge, on the same side of it in x or in y, is not within the
// tolerance. An edge that has a distance is at most 1e12 long, so its distance is computed to within 0.005.
double farMargin(double tolerance, double squared) {
    if (!(squared < 1e300)) return std::numeric_limits<double>::infinity();
    return std::fabs(tolerance) * (1 + 1e-10) + 0.01;
}

// What an edge has to do with the point, exactly as defined: nothing, it passes above, or it is near the point or has
// it on itself.
enum Answer : unsigned { kNothing = 0, kPassesAbove = 1, kHit = 2 };

bool isNear(const Point& p, const Point& start, const Point& end, double squared) {
    bool within = false;
    double distance = 0;
    zan::perpDistTo2DLine(p, start, end, within, distance);
    return (within && squared >= distance * distance) || squared >= p.DistanceSquared(start) ||
           squared >= p.DistanceSquared(end);
}

template <bool kTolerant, class T>
class HitTest {
public:
    using Vertex = Zan_Vector2T<T>;

    HitTest(const Point& point, double tolerance, double squared)
        : squared_(squared),
          target_{point.x, point.y, kTolerant ? farMargin(tolerance, squared) : 0, (std::fabs(point.y) + 1) * 0x1p-39} {
    }

    // What is seldom needed is in functions of its own, or this one would save registers for it at every call.
    bool contains(const Vertex* vertices, int32_t count) const {
        if (count > zan::kFewVertices) return containedByMany(vertices, count);
        const zan::FewEdges edges = kernel().few[kQuestion](vertices, count, target_);
        constexpr unsigned kParities = 0x6996;
        const unsigned odd = kParities >> edges.above & 1;
        return edges.close == 0 ? odd != 0 : containedOnCloserLook(vertices, count, edges.close, odd);
    }

private:
    [[gnu::noinline]] bool containedOnCloserLook(const Vertex* vertices, int32_t count, uint32_t edges,
                                                 unsigned answers) const {
        for (; edges != 0 && answers < kHit; edges &= edges - 1) {
            const int32_t i = std::countr_zero(edges);
            answers ^= lookClosely(vertices[i], vertices[i + 1 < count ? i + 1 : 0]);
        }
        return answers != kNothing;
    }

    [[gnu::noinline]] bool containedByMany(const Vertex* vertices, int32_t count) const {
        const zan::EdgeKernel& kernel = HitTest::kernel();
        unsigned answers = look(vertices[count - 1], vertices[0]);
        for (int32_t at = 0; at < count - 1 && answers < kHit;) {
            const int32_t edges = std::min(count - 1 - at, zan::kEdgesAtOnce);
            // A last block that is too short for the kernel overlaps the one before.
            const int32_t again = std::max(kernel.fewest - edges, 0);
            const Vertex* first = vertices + (at - again);
            const zan::EdgeBits found = kernel.scans[kQuestion](first, edges + again, target_);
            for (uint64_t bits = (found.spanning | found.near) >> again; bits != 0 && answers < kHit;
                 bits &= bits - 1) {
                const Vertex* v = vertices + at + std::countr_zero(bits);
                answers ^= look(v[0], v[1]);
            }
            at += edges;
        }
        return answers != kNothing;
    }

    unsigned look(const Vertex& start, const Vertex& end) const {
        if constexpr (!kTolerant) return lookClosely(start, end);
        const zan::Meeting meeting = zan::meet<kTolerant>(target_, start, end);
        return meeting == zan::kClose ? lookClosely(start, end) : unsigned{meeting};
    }
    Answer lookClosely(const Vertex& from, const Vertex& to) const {
        const Point p = {target_.x, target_.y}, start = widen(from), end = widen(to);
        if (kTolerant && isNear(p, start, end, squared_)) return kHit;
        if ((start.x < p.x) == (end.x < p.x)) return kNothing;
        // NaN if one of the ends is at NaN; that is above and below nothing.
        const double edgeY = (p.x - end.x) / (start.x - end.x) * (start.y - end.y) + end.y;
        const double height = edgeY - p.y;
        if (!(std::fabs(height) > target_.ySize) && zan::nearlyEqual(edgeY, p.y)) return kHit;
        return static_cast<Answer>(height > 0);
    }

    static const zan::EdgeKernel& kernel() { return *zan::kEdgeKernels[static_cast<int>(zan::instructions())]; }
    static constexpr auto kQuestion = static_cast<zan::EdgeQuestion>((sizeof(T) == sizeof(float) ? 2 : 0) + kTolerant);

    double squared_;
    zan::HitTarget target_;
};

template <class T>
bool contains(const Zan_Vector2T<T>& point, const Zan_Vector2T<T>* vertices, int32_t count, double tolerance) {
    const double squared = tolerance * tolerance;
    if (!(squared > 0)) {
        if (point == vertices[0] && allTheSame(vertices, count)) return true;
        return HitTest<false, T>(widen(point), tolerance, squared).contains(vertices, count);
    }
    // The same number of doubles, but one of floats.
    if constexpr (!std::is_same_v<T, double>) {
        if (allTheSame(vertices, count)) return squared >= double(point.DistanceSquared(vertices[0]));
    }
    return HitTest<true, T>(widen(point), tolerance, squared).contains(vertices, count);
}

}  // namespace

bool zan::pointInside(const Point& p, const Point* outline, int32_t count, double tolerance) {
    return contains(p, outline, count, tolerance);
}

template <class Vector>
int32_t Zan_IsFloatPointInConcavePoly(const Vector* point, const Vector* vertices, int32_t count, double tolerance,
                                      unsigned char* inside) {
    *inside = count >= 1 && contains(*point, vertices, count, tolerance) ? 1 : 0;
    return 0;
}

template ZAN_API int32_t Zan_IsFloatPointInConcavePoly(const Zan_Vector2T<double>*, const Zan_Vector2T<double>*,
                                                       int32_t, double, unsigned char*);
template ZAN_API int32_t Zan_IsFloatPointInConcavePoly(const Zan_Vector2T<float>*, const Zan_Vector2T<float>*, int32_t,
                                                       double, unsigned char*);

int32_t Zan_IsFloatPointInQuad(const Zan_Vector2T<double>* point, const Zan_Vector2T<double>* vertices,
                               unsigned char* inside) {
    return Zan_IsFloatPointInConcavePoly(point, vertices, 4, 0.0, inside);
}

// Is a point inside an outline, or within a tolerance of it?
//
// The answer is yes as soon as one edge is near the point or has it on itself, else the parity of the crossings, so the
// order of the edges does not matter. An edge between two vertices that repeat neither spans the point's x nor brings
// it nearer than its neighbours do, so vertices that repeat need no taking out. First the edges that can matter are
// found, up to 64 at a time and without branches; then each of those is looked at exactly.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

#include "frame/processor.h"
#include "matrix/nearly_equal.h"
#include "poly/edge_rules.h"
#include "space/segment_distance.h"
#include "zan/poly.h"

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

// A point farther than this from both ends of an edge, on the same side of it in x or in y, is not within the
// tolerance. An edge that has a distance is at most 1e12 long, so its distance is computed to within 0.005.
double farMargin(double tolerance, double squared) {
    if (!(squared < 1e300)) return std::numeric_limits<double>::infinity();
    return std::fabs(tolerance) * (1 + 1e-10) + 0.01;
}

bool nearEdge(const Point& p, const Point& start, const Point& end, const zan::HitTarget& target, double squared) {
    // Most edges whose box is near are nevertheless far: the point is beside their line.
    const double dx = end.x - start.x, dy = end.y - start.y;
    const double cross = dx * (p.y - start.y) - dy * (p.x - start.x);
    const double size = std::fabs(dx) + std::fabs(dy);
    if (size < 1e12 && std::fabs(cross) > size * target.margin) return false;
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

    HitTest(const Vertex& point, double tolerance, double squared)
        : p_(widen(point)), squared_(squared), target_{p_.x, p_.y, farMargin(tolerance, squared)} {}

    bool contains(const Vertex* vertices, int32_t count) {
        for (int32_t at = 0; at < count - 1; at += zan::kEdgesAtOnce) {
            const int32_t edges = std::min(count - 1 - at, zan::kEdgesAtOnce);
            if (hits(vertices + at, scan(vertices + at, edges))) return true;
        }
        const Vertex closing[] = {vertices[count - 1], vertices[0]};
        return hits(closing, zan::scanEdges<kTolerant>(closing, 1, target_)) || odd_;
    }

private:
    zan::EdgeBits scan(const Vertex* vertices, int32_t edges) const {
        if (edges < kWorthwhile) return zan::scanEdges<kTolerant>(vertices, edges, target_);
        constexpr auto question = static_cast<zan::EdgeQuestion>((sizeof(T) == sizeof(float) ? 2 : 0) + kTolerant);
        return zan::kEdgeKernels[static_cast<int>(zan::instructions())]->scans[question](vertices, edges, target_);
    }

    // Whether one of the edges is near the point or has it on itself; else counts those that are crossed.
    bool hits(const Vertex* vertices, const zan::EdgeBits& edges) {
        for (uint64_t bits = edges.near; kTolerant && bits != 0; bits &= bits - 1) {
            const Vertex* v = vertices + std::countr_zero(bits);
            if (nearEdge(p_, widen(v[0]), widen(v[1]), target_, squared_)) return true;
        }
        for (uint64_t bits = edges.spanning; bits != 0; bits &= bits - 1) {
            const Vertex* v = vertices + std::countr_zero(bits);
            const Point start = widen(v[0]), end = widen(v[1]);
            // NaN if one of the ends is at NaN; that is above and below nothing.
            const double edgeY = (p_.x - end.x) / (start.x - end.x) * (start.y - end.y) + end.y;
            if (zan::nearlyEqual(edgeY, p_.y)) return true;
            odd_ ^= edgeY > p_.y;
        }
        return false;
    }

    static constexpr int32_t kWorthwhile = 8;

    Point p_;
    double squared_;
    zan::HitTarget target_;
    bool odd_ = false;
};

template <class T>
bool contains(const Zan_Vector2T<T>& point, const Zan_Vector2T<T>* vertices, int32_t count, double tolerance) {
    const double squared = tolerance * tolerance;
    const bool tolerant = squared > 0;
    const auto repeatsFirst = [&](const Zan_Vector2T<T>& v) { return bytes(v) == bytes(vertices[0]); };
    if (std::all_of(vertices + 1, vertices + count, repeatsFirst)) {
        return tolerant ? squared >= static_cast<double>(point.DistanceSquared(vertices[0])) : point == vertices[0];
    }
    if (tolerant) return HitTest<true, T>(point, tolerance, squared).contains(vertices, count);
    return HitTest<false, T>(point, tolerance, squared).contains(vertices, count);
}

}  // namespace

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

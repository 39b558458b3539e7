// Is a point inside an outline, or within a tolerance of it? Exceptions end here and become result codes.
//
// The answer is yes as soon as one edge is near the point or has it on itself, else the parity of the crossings, so the
// order of the edges does not matter. An edge between two vertices that repeat neither spans the point's x nor brings
// it nearer than its neighbours do, so vertices that repeat need no taking out. First the edges that can matter are
// listed, without branches; then each of those is looked at exactly.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <exception>
#include <limits>
#include <memory>

#include "frame/report.h"
#include "matrix/nearly_equal.h"
#include "platform/bel.h"
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

bool farAside(double start, double end, double at, double margin) {
    return (start - at > margin && end - at > margin) || (start - at < -margin && end - at < -margin);
}

// Where a vertex lies from the point, sideways: bit 0 for left of it, the others for far to the right and far to the
// left.
constexpr unsigned kLeft = 1;
template <bool kTolerant>
unsigned place(double x, double at, double margin) {
    const unsigned left = x < at ? kLeft : 0;
    if constexpr (!kTolerant) return left;
    const double dx = x - at;
    return left | (dx > margin ? 2U : 0) | (dx < -margin ? 4U : 0);
}

// Lists the edges, by their start, that can span the point's x or be near it. Returns how many.
template <bool kTolerant, class T>
int32_t listEdges(const Point& p, const Zan_Vector2T<T>* vertices, int32_t count, double margin, int32_t* edges) {
    int32_t listed = 0;
    const unsigned first = place<kTolerant>(vertices[0].x, p.x, margin);
    unsigned start = first;
    for (int32_t i = 0; i < count; ++i) {
        const unsigned end = i + 1 < count ? place<kTolerant>(vertices[i + 1].x, p.x, margin) : first;
        unsigned matters = (start ^ end) & kLeft;
        if constexpr (kTolerant) matters |= static_cast<unsigned>((start & end & ~kLeft) == 0);
        edges[listed] = i;
        listed += static_cast<int32_t>(matters);
        start = end;
    }
    return listed;
}

bool nearEdge(const Point& p, const Point& start, const Point& end, double squared) {
    bool within = false;
    double distance = 0;
    zan::throwIfFailed(zan::perpDistTo2DLine(p, start, end, within, distance));
    return (within && squared >= distance * distance) || squared >= p.DistanceSquared(start) ||
           squared >= p.DistanceSquared(end);
}

bool spans(const Point& p, const Point& start, const Point& end) {
    return (start.x < p.x && p.x <= end.x) || (end.x < p.x && p.x <= start.x);
}

template <class T>
bool contains(const Zan_Vector2T<T>& point, const Zan_Vector2T<T>* vertices, int32_t count, double tolerance) {
    const auto edges = std::make_unique_for_overwrite<int32_t[]>(static_cast<size_t>(count));
    const double squared = tolerance * tolerance;
    const bool tolerant = squared > 0;
    const auto repeatsFirst = [&](const Zan_Vector2T<T>& v) { return bytes(v) == bytes(vertices[0]); };
    if (std::all_of(vertices + 1, vertices + count, repeatsFirst)) {
        return tolerant ? squared >= static_cast<double>(point.DistanceSquared(vertices[0])) : point == vertices[0];
    }
    const Point p = widen(point);
    const double margin = farMargin(tolerance, squared);
    const int32_t listed = tolerant ? listEdges<true>(p, vertices, count, margin, edges.get())
                                    : listEdges<false>(p, vertices, count, margin, edges.get());
    bool odd = false;
    for (int32_t i = 0; i < listed; ++i) {
        const int32_t from = edges[static_cast<size_t>(i)];
        const Point start = widen(vertices[from]);
        const Point end = widen(vertices[from + 1 < count ? from + 1 : 0]);
        if (tolerant && !farAside(start.y, end.y, p.y, margin) && nearEdge(p, start, end, squared)) return true;
        if (!spans(p, start, end)) continue;
        const double edgeY = (p.x - end.x) / (start.x - end.x) * (start.y - end.y) + end.y;
        if (zan::nearlyEqual(edgeY, p.y)) return true;
        odd ^= edgeY > p.y;
    }
    return odd;
}

}  // namespace

template <class Vector>
int32_t Zan_IsFloatPointInConcavePoly(const Vector* point, const Vector* vertices, int32_t count, double tolerance,
                                      unsigned char* inside) {
    *inside = 0;
    if (count < 1) return 0;
    try {
        *inside = contains(*point, vertices, count, tolerance) ? 1 : 0;
        return 0;
    } catch (long code) {
        return static_cast<int32_t>(code);
    } catch (const std::exception& exception) {
        return Bel_TranslateAndReportException(exception);
    }
}

template ZAN_API int32_t Zan_IsFloatPointInConcavePoly(const Zan_Vector2T<double>*, const Zan_Vector2T<double>*,
                                                       int32_t, double, unsigned char*);
template ZAN_API int32_t Zan_IsFloatPointInConcavePoly(const Zan_Vector2T<float>*, const Zan_Vector2T<float>*, int32_t,
                                                       double, unsigned char*);

int32_t Zan_IsFloatPointInQuad(const Zan_Vector2T<double>* point, const Zan_Vector2T<double>* vertices,
                               unsigned char* inside) {
    return Zan_IsFloatPointInConcavePoly(point, vertices, 4, 0.0, inside);
}

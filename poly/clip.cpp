// One polygon clipped to another, which is convex, edge by edge. The result is written last, so it may be an input.
#include "matrix/point_rules.h"
#include "poly/small_buffer.h"
#include "zan/poly.h"

#include <cstring>

namespace {

using zan::Vector4;
using Polygon = std::vector<Vector4>;

// A point is inside a clip line when its cross product with the edge is below this.
constexpr double kInsideLimit = -1e-6;

// The line a x + b y + c = 0 through a directed edge.
struct Line {
    double a, b, c;

    Line(const Vector4& from, const Vector4& to)
        : a(-(to.y - from.y)), b(to.x - from.x), c(from.x * (to.y - from.y) - from.y * (to.x - from.x)) {}
    // cross(to - from, p - from): 0 on the line, negative to the right of the edge.
    double evaluate(const Vector4& p) const { return a * p.x + b * p.y + c; }
};

// Two numbers, one for each of two vertices. GCC does not vectorize the loop by itself.
using Lanes = double __attribute__((vector_size(16)));
using LaneCounts = decltype(Lanes{} < Lanes{});

// The values of a line at vertices. Returns the number of vertices inside.
size_t evaluate(const Line& line, const Vector4* vertices, size_t count, double* values) {
    const Line l = line;
    LaneCounts inside{};
    size_t i = 0;
    for (; i + 2 <= count; i += 2) {
        const Lanes x = {vertices[i].x, vertices[i + 1].x}, y = {vertices[i].y, vertices[i + 1].y};
        const Lanes value = l.a * x + l.b * y + l.c;
        std::memcpy(values + i, &value, sizeof value);
        inside -= value < Lanes{kInsideLimit, kInsideLimit};
    }
    auto total = static_cast<size_t>(inside[0] + inside[1]);
    if (i < count) {
        values[i] = l.evaluate(vertices[i]);
        total += values[i] < kInsideLimit ? 1 : 0;
    }
    return total;
}

// Where the segment from s to p crosses a line. atS and atP are the line's values at the ends; z and w are interpolated
// by them. When the lines are nearly parallel, x and y are not divided by the near-zero denominator.
Vector4 intersection(const Line& line, const Vector4& s, double atS, const Vector4& p, double atP) {
    const double dx = p.x - s.x;
    const double dy = p.y - s.y;
    const double a = -dy;
    const double b = dx;
    const double c = dy * s.x - dx * s.y;
    const double x = c * line.b - b * line.c;
    const double y = c * line.a - a * line.c;
    const double d = a * line.b - b * line.a;
    const double t = atS / (atS - atP);
    const double z = s.z + t * (p.z - s.z);
    const double w = s.w + t * (p.w - s.w);
    if (zan::nearZero(d)) return {x, y, z, w};
    const double r = 1 / d;
    return {-(x * r), y * r, z, w};
}

// Polygons of up to so many vertices are clipped in buffers on the stack.
constexpr size_t kInlineVertices = 48;

// A polygon under clipping. It is copied only when a line cuts something off.
class ClippedPolygon {
public:
    explicit ClippedPolygon(const Polygon& polygon) : vertices_(polygon.data()), size_(polygon.size()) {}

    // Clips by each edge of the polygon [vertex, end), beginning with the edge from the last vertex to the first.
    template <class Iterator>
    void clipAll(Iterator vertex, Iterator end) {
        for (Iterator previous = end - 1; vertex != end; previous = vertex++) clip(Line(*previous, *vertex));
    }

    // Leaves the result as it is when an allocation fails.
    void copyTo(Polygon& result) const {
        if (vertices_ == result.data() && size_ == result.size()) return;
        if (size_ > result.capacity()) {
            result = Polygon(vertices_, vertices_ + size_);
        } else {
            // Clear first: assigning over old elements branches on both sizes, and mispredicts.
            result.clear();
            result.assign(vertices_, vertices_ + size_);
        }
    }

private:
    void clip(const Line& line) {
        if (size_ <= 2) size_ = 0;
        double* values = values_.get(size_);
        if (evaluate(line, vertices_, size_, values) == size_) return;
        // A run of outside vertices is replaced by two intersections, so it adds at most one vertex. There are at most
        // size_ / 2 such runs.
        Vector4* const clipped = buffers_[next_].get(size_ + size_ / 2);
        next_ = 1 - next_;
        const auto isInside = [&](size_t i) { return values[i] < kInsideLimit; };
        const auto intersectionBefore = [&](size_t i) {
            const size_t s = (i == 0 ? size_ : i) - 1;
            return intersection(line, vertices_[s], values[s], vertices_[i], values[i]);
        };
        // Runs of vertices inside are copied and runs outside skipped, with an intersection between one and the next.
        Vector4* end = clipped;
        size_t i = 0;
        if (isInside(0) != isInside(size_ - 1)) *end++ = intersectionBefore(0);
        while (true) {
            for (; i < size_ && isInside(i); ++i) *end++ = vertices_[i];
            if (i == size_) break;
            if (i > 0) *end++ = intersectionBefore(i);
            while (i < size_ && !isInside(i)) ++i;
            if (i == size_) break;
            *end++ = intersectionBefore(i);
        }
        vertices_ = clipped;
        size_ = static_cast<size_t>(end - clipped);
    }

    const Vector4* vertices_;
    size_t size_;
    zan::SmallBuffer<Vector4, kInlineVertices> buffers_[2];  // used in turn: vertices_ points into the other one
    zan::SmallBuffer<double, kInlineVertices> values_;
    int next_ = 0;
};

// Whether a convex polygon runs clockwise (y upward), so that its inside is to the right of every edge. Decided by the
// mean of its vertices, which is inside, and the first edge.
bool isClockwise(const Polygon& polygon) {
    double x = 0;
    double y = 0;
    for (const Vector4& p : polygon) {
        x += p.x;
        y += p.y;
    }
    const auto count = static_cast<double>(polygon.size());
    const Vector4 &from = polygon[0], &to = polygon[1];
    return (to.x - from.x) * (y / count - from.y) - (to.y - from.y) * (x / count - from.x) < kInsideLimit;
}

}  // namespace

void Zan_PolyPolyClip2D(const Polygon* clipPolygon, const Polygon* subject, Polygon* result) {
    const Polygon& edges = *clipPolygon;
    if (edges.size() <= 2) {
        result->clear();
        return;
    }
    ClippedPolygon clipped(*subject);
    // Two calls, so that the order is a branch, which is predicted; selecting each vertex by the order would wait for
    // the mean of the vertices.
    if (isClockwise(edges)) {
        clipped.clipAll(edges.begin(), edges.end());
    } else {
        clipped.clipAll(edges.rbegin(), edges.rend());
    }
    clipped.copyTo(*result);
}

// One polygon clipped by the edges of another, which is convex. Nothing is written to the result until all is done.
#include "matrix/point_rules.h"
#include "zan/poly.h"

#include <iterator>
#include <memory>

namespace {

using zan::Vector4;
using Polygon = std::vector<Vector4>;

constexpr double kSide = -1e-6;

// The line of an edge. At a point it gives the cross product of the edge with the way from its start to the point.
struct Line {
    double a, b, c;

    Line(const Vector4& from, const Vector4& to)
        : a(-(to.y - from.y)), b(to.x - from.x), c(from.x * (to.y - from.y) - from.y * (to.x - from.x)) {}
    double at(const Vector4& p) const { return a * p.x + b * p.y + c; }
};

// Where the segment from s to p crosses a line; z and w at the same parameter, from what the line gives at the two
// ends.
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

// Memory for some objects, on the stack for a few. What it held is lost when it grows.
template <class T>
class Room {
public:
    T* of(size_t count) {
        if (count <= std::size(few_)) return few_;
        if (capacity_ < count) {
            many_ = std::make_unique_for_overwrite<T[]>(count);
            capacity_ = count;
        }
        return many_.get();
    }

private:
    T few_[48];
    size_t capacity_ = 0;
    std::unique_ptr<T[]> many_;
};

// A polygon that is cut again and again. Where nothing is cut off it stays where it is.
class Remainder {
public:
    explicit Remainder(const Polygon& polygon) : vertices_(polygon.data()), size_(polygon.size()) {}

    // By the edges between the vertices of a range, the one that closes it first.
    template <class Iterator>
    void clipAll(Iterator vertex, Iterator end) {
        for (Iterator before = end - 1; vertex != end; before = vertex++) clip(Line(*before, *vertex));
    }

    // Nothing is written before all memory is there.
    void copyTo(Polygon& result) const {
        if (vertices_ == result.data() && size_ == result.size()) return;
        if (size_ > result.capacity()) {
            result = Polygon(vertices_, vertices_ + size_);
        } else {
            // Over vertices that are there still would be a branch that nobody can predict.
            result.clear();
            result.assign(vertices_, vertices_ + size_);
        }
    }

private:
    void clip(const Line& line) {
        if (size_ <= 2) size_ = 0;
        double* at = at_.of(size_);
        size_t inside = 0;
        for (size_t i = 0; i < size_; ++i) {
            at[i] = line.at(vertices_[i]);
            inside += at[i] < kSide ? 1 : 0;
        }
        if (inside == size_) return;
        // Each run of vertices outside adds two cuts, and there are as many runs inside.
        Vector4* const to = steps_[next_].of(size_ + size_ / 2);
        next_ = 1 - next_;
        size_t kept = 0;
        for (size_t i = 0, s = size_ - 1; i < size_; s = i++) {
            const bool isInside = at[i] < kSide;
            if (isInside != (at[s] < kSide)) to[kept++] = intersection(line, vertices_[s], at[s], vertices_[i], at[i]);
            if (isInside) to[kept++] = vertices_[i];
        }
        vertices_ = to;
        size_ = kept;
    }

    const Vector4* vertices_;
    size_t size_;
    Room<Vector4> steps_[2];
    Room<double> at_;
    int next_ = 0;
};

// Whether the middle of the vertices is on the negative side of the first edge: then the inside is, of every edge.
bool insideIsNegative(const Polygon& polygon) {
    double x = 0;
    double y = 0;
    for (const Vector4& p : polygon) {
        x += p.x;
        y += p.y;
    }
    const auto count = static_cast<double>(polygon.size());
    const Vector4 &from = polygon[0], &to = polygon[1];
    return (to.x - from.x) * (y / count - from.y) - (to.y - from.y) * (x / count - from.x) < kSide;
}

}  // namespace

void Zan_PolyPolyClip2D(const Polygon* clipPolygon, const Polygon* subject, Polygon* result) {
    const Polygon& edges = *clipPolygon;
    if (edges.size() <= 2) {
        result->clear();
        return;
    }
    Remainder remainder(*subject);
    // A branch for the two orders, which is predicted: to choose each vertex would wait for the middle.
    if (insideIsNegative(edges)) {
        remainder.clipAll(edges.begin(), edges.end());
    } else {
        remainder.clipAll(edges.rbegin(), edges.rend());
    }
    remainder.copyTo(*result);
}

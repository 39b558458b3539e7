// One polygon clipped by the edges of another, which is convex. Nothing is written to the result until all is done.
#include "matrix/point_rules.h"
#include "zan/poly.h"

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

void clip(const Line& line, const Polygon& from, Polygon& to) {
    to.clear();
    if (from.size() <= 2) return;
    const Vector4* s = &from.back();
    double atS = line.at(*s);
    for (const Vector4& p : from) {
        const double atP = line.at(p);
        if ((atP < kSide) != (atS < kSide)) to.push_back(intersection(line, *s, atS, p, atP));
        if (atP < kSide) to.push_back(p);
        s = &p;
        atS = atP;
    }
}

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
    Polygon steps[2];
    if (edges.size() > 2) {
        // Enough for a convex subject; any other grows them.
        for (Polygon& step : steps) step.reserve(subject->size() + edges.size());
        const bool asGiven = insideIsNegative(edges);
        const auto vertex = [&](size_t k) -> const Vector4& { return edges[asGiven ? k : edges.size() - 1 - k]; };
        const Vector4* before = &vertex(edges.size() - 1);
        const Polygon* kept = subject;
        for (size_t k = 0; k < edges.size(); ++k) {
            clip(Line(*before, vertex(k)), *kept, steps[k % 2]);
            kept = &steps[k % 2];
            before = &vertex(k);
        }
    }
    *result = std::move(steps[(edges.size() + 1) % 2]);
}

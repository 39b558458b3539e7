// Clipped polygons agree with their plain form, and by winding numbers: around a point inside the clip polygon, the
// result winds as often as the subject; around a point outside it, not at all.

#include "property.h"
#include "tests/support/plain_forms.h"
#include "tests/support/vectors.h"
#include "zan/poly.h"

namespace {

using Polygon = std::vector<Vector4>;

// z and w are linear in x and y, so linear interpolation along an edge gives the same values again.
Vector4 vertexAt(double x, double y) { return {x, y, 2 * x + 3 * y + 1, 5 - x}; }

// The winding number of a polygon around p. Lowers `clearance` to the least |cross product| of an edge and the vector
// from its start to p: a small one means that p is too near an edge's line for the answer to be certain.
int windingNumber(const Polygon& polygon, const Vector4& p, double& clearance) {
    int winding = 0;
    for (size_t i = 0; i < polygon.size(); ++i) {
        const Vector4& a = polygon[i];
        const Vector4& b = polygon[(i + 1) % polygon.size()];
        const double cross = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
        if (!sameDoubles(a, b)) clearance = std::fmin(clearance, std::fabs(cross));
        if ((a.y > p.y) == (b.y > p.y)) continue;
        if (cross > 0 && b.y > a.y) ++winding;
        if (!(cross > 0) && b.y < a.y) --winding;
    }
    return winding;
}

enum class Shape { kConvex, kStar };

// Vertices around a centre, on a circle or at random radii.
Polygon ring(Choices& c, double density, Shape shape) {
    Polygon polygon;
    const double x = c.plain(-3, 3), y = c.plain(-3, 3), size = c.plain(1, 6);
    for (double angle = 0; angle < 6.28; angle += c.plain(0.5, 3) / density) {
        const double radius = shape == Shape::kStar ? size * c.plain(0.5, 1) : size;
        polygon.push_back(vertexAt(x + radius * std::cos(angle), y + radius * std::sin(angle)));
    }
    return polygon;
}

bool clip(Choices& c) {
    const double density = c.below(100) == 99 ? 20 : 1;  // 20 gives more vertices than the inline buffers hold
    const auto lattice = [&] { return c.below(9) - 4.0; };
    Polygon clip, subject;
    if (c.below(2) == 0) {
        clip = ring(c, density, Shape::kConvex);
    } else {
        const double x = lattice(), y = lattice(), ux = lattice(), uy = lattice(), vx = lattice(), vy = lattice();
        clip = {vertexAt(x, y), vertexAt(x + ux, y + uy), vertexAt(x + ux + vx, y + uy + vy), vertexAt(x + vx, y + vy)};
    }
    if (c.below(2) == 0) std::reverse(clip.begin(), clip.end());
    if (c.below(2) == 0) {
        subject = ring(c, density, Shape::kStar);
    } else {
        for (int32_t n = c.below(9); n >= 0; --n) {
            const double x = lattice();
            subject.push_back(vertexAt(x, lattice()));
        }
    }
    Polygon result, onSubject = subject, onClip = clip;
    Zan_PolyPolyClip2D(&clip, &subject, &result);
    Zan_PolyPolyClip2D(&clip, &onSubject, &onSubject);
    Zan_PolyPolyClip2D(&onClip, &subject, &onClip);
    Polygon plain;
    if (clip.size() > 2) plain_forms::clip(clip, subject, plain);
    must(std::equal(result.begin(), result.end(), plain.begin(), plain.end(), sameDoubles<Vector4>));
    must(std::equal(result.begin(), result.end(), onSubject.begin(), onSubject.end(), sameDoubles<Vector4>));
    must(std::equal(result.begin(), result.end(), onClip.begin(), onClip.end(), sameDoubles<Vector4>));
    for (const Vector4& p : result) {
        const Vector4 expected = vertexAt(p.x, p.y);
        must(std::abs(p.z - expected.z) + std::abs(p.w - expected.w) < 1e-6);
    }
    bool overlap = false;
    for (int sample = 0; sample < 8; ++sample) {
        const Vector4 &u = clip[c.bits() % clip.size()], &v = clip[c.bits() % clip.size()], &w = clip.front();
        const double s = c.plain(-0.2, 0.8), t = c.plain(-0.2, 0.8);
        const Vector4 p = vertexAt(w.x + s * (u.x - w.x) + t * (v.x - w.x), w.y + s * (u.y - w.y) + t * (v.y - w.y));
        double clearance = 1, ignored = 1;
        const bool inClip = windingNumber(clip, p, clearance) != 0;
        const int inSubject = windingNumber(subject, p, clearance);
        if (clearance < 1e-4) continue;
        must(windingNumber(result, p, ignored) == (inClip ? inSubject : 0));
        overlap |= inClip && inSubject != 0;
    }
    return overlap;
}

const Property kProperty("poly_clip", 20000, clip);

}  // namespace

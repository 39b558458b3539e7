// Clipped polygons: how often they wind around a point is as often as the subject does inside the clip polygon, and
// not at all outside.

#include "property.h"
#include "zan/poly.h"

namespace {

using Point = Zan_Vector4T<double>;
using Polygon = std::vector<Point>;

// z and w are linear in x and y, so that whatever is interpolated correctly stays so.
Point at(double x, double y) { return {x, y, 2 * x + 3 * y + 1, 5 - x}; }

// The times a polygon winds around a point; beside says how far that is from the nearest of the lines of its edges.
int winding(const Polygon& polygon, const Point& p, double& beside) {
    int times = 0;
    for (size_t i = 0; i < polygon.size(); ++i) {
        const Point &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
        const double cross = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
        if (!sameDoubles(a, b)) beside = std::fmin(beside, std::fabs(cross));
        if ((a.y > p.y) != (b.y > p.y)) times += cross > 0 ? b.y > a.y : -(b.y < a.y);
    }
    return times;
}

Polygon ring(Choices& c, double finer, bool teeth) {
    Polygon polygon;
    const double x = c.plain(-3, 3), y = c.plain(-3, 3), size = c.plain(1, 6);
    for (double angle = 0; angle < 6.28; angle += c.plain(0.5, 3) / finer) {
        const double radius = teeth ? size * c.plain(0.5, 1) : size;
        polygon.push_back(at(x + radius * std::cos(angle), y + radius * std::sin(angle)));
    }
    return polygon;
}

bool clip(Choices& c) {
    const double finer = c.below(100) == 99 ? 20 : 1;  // more vertices than the stack has room for
    const auto lattice = [&] { return c.below(9) - 4.0; };
    Polygon clip, subject;
    if (c.below(2) == 0) {
        clip = ring(c, finer, false);
    } else {
        const double x = lattice(), y = lattice(), ux = lattice(), uy = lattice(), vx = lattice(), vy = lattice();
        clip = {at(x, y), at(x + ux, y + uy), at(x + ux + vx, y + uy + vy), at(x + vx, y + vy)};
    }
    if (c.below(2) == 0) std::reverse(clip.begin(), clip.end());
    if (c.below(2) == 0) {
        subject = ring(c, finer, true);
    } else {
        for (int32_t n = c.below(9); n >= 0; --n) {
            const double x = lattice();
            subject.push_back(at(x, lattice()));
        }
    }
    Polygon result, onSubject = subject, onClip = clip;
    Zan_PolyPolyClip2D(&clip, &subject, &result);
    Zan_PolyPolyClip2D(&clip, &onSubject, &onSubject);
    Zan_PolyPolyClip2D(&onClip, &subject, &onClip);
    must(std::equal(result.begin(), result.end(), onSubject.begin(), onSubject.end(), sameDoubles<Point>));
    must(std::equal(result.begin(), result.end(), onClip.begin(), onClip.end(), sameDoubles<Point>));
    bool hit = false;
    for (const Point& p : result) {
        const Point q = at(p.x, p.y);
        must(std::abs(p.z - q.z) + std::abs(p.w - q.w) < 1e-6);
    }
    for (int sample = 0; sample < 8; ++sample) {
        const Point &u = clip[c.bits() % clip.size()], &v = clip[c.bits() % clip.size()], &w = clip.front();
        const double s = c.plain(-0.2, 0.8), t = c.plain(-0.2, 0.8);
        const Point p = at(w.x + s * (u.x - w.x) + t * (v.x - w.x), w.y + s * (u.y - w.y) + t * (v.y - w.y));
        double beside = 1, ignored = 1;
        const bool in = winding(clip, p, beside) != 0;
        const int expected = winding(subject, p, beside);
        if (beside < 1e-4) continue;
        must(winding(result, p, ignored) == (in ? expected : 0));
        hit |= in && expected != 0;
    }
    return hit;
}

const Property kProperty("poly_clip", 20000, clip);

}  // namespace

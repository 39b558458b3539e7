// Points in polygons, by the rule in its plainest words.

#include "property.h"
#include "tests/support/plain_forms.h"
#include "zan/poly.h"
#include "zan/space.h"

namespace {

template <class T>
using Points = std::vector<Zan_Vector2T<T>>;

// A tolerance that is the distance to an edge's line or end, or a step beside it.
template <class T>
double closeTolerance(Choices& c, const Zan_Vector2T<T>& q, const Points<T>& outline) {
    const size_t i = c.bits() % outline.size();
    const auto &from = outline[i], &to = outline[(i + 1) % outline.size()];
    const Zan_Vector2T<double> p(q.x, q.y), a(from.x, from.y), b(to.x, to.y);
    double distance = std::sqrt(p.DistanceSquared(a));
    if (c.below(2) == 0) Zan_PerpDistTo2DLine(&p, &a, &b, nullptr, &distance);
    return c.below(3) == 0 ? distance : std::nextafter(distance, c.below(2) == 0 ? 0.0 : 1e300);
}

template <class T>
bool hitTest(Choices& c) {
    const bool lattice = c.below(3) != 0, nasty = c.below(8) == 0;
    const double scale = std::ldexp(1.0, c.below(3) == 0 ? c.below(44) : 0);
    const auto coordinate = [&] {
        return static_cast<T>(nasty ? c.nasty() : (lattice ? c.below(7) : c.plain(0, 7)) * scale);
    };
    Points<T> vertices;
    // Long outlines are rings with teeth, so that not everything is on them.
    const int32_t count = 1 + c.below(c.below(10) == 0 ? 300 : 9);
    for (int32_t n = 0; n < count; ++n) {
        const double angle = 6.28 * n / count, radius = count > 9 ? c.plain(1.5, 3.5) : 0;
        const auto ring = [&](double x) { return static_cast<T>((3 + radius * x) * scale); };
        const T x = count > 9 ? ring(std::cos(angle)) : coordinate();
        vertices.emplace_back(x, count > 9 ? ring(std::sin(angle)) : coordinate());
        if (c.below(6) == 0) vertices.push_back(vertices.back());
    }
    const T x = c.below(8) == 0 ? vertices.back().x : coordinate();
    Zan_Vector2T<T> p(x, coordinate());
    const double tolerances[] = {0, 0.5, 3, 1e-7, 1e20, 1e160, std::numeric_limits<double>::quiet_NaN()};
    double tolerance = c.among(tolerances) * (c.below(2) ? scale : -1);
    if (c.below(8) == 0) tolerance = closeTolerance(c, p, vertices);
    if (c.below(4) == 0) {  // on an edge, or about as far beside it as what is nearly equal
        const auto &a = vertices[0], &b = vertices[vertices.size() / 2];
        const double y = (double(p.x) - b.x) / (double(a.x) - b.x) * (double(a.y) - b.y) + b.y;
        p.y = static_cast<T>(y + (std::fabs(y) + 1) * 1e-12 * c.plain(-2, 2));
    }

    const auto size = static_cast<int32_t>(vertices.size());
    const bool expected = plain_forms::hit(p, vertices.data(), vertices.size(), tolerance);
    unsigned char inside = 9;
    must(Zan_IsFloatPointInConcavePoly(&p, vertices.data(), size, tolerance, &inside) == 0 && inside == expected);
    if constexpr (std::is_same_v<T, double>) {
        inside = expected;
        if (size == 4 && tolerance == 0) must(Zan_IsFloatPointInQuad(&p, vertices.data(), &inside) == 0);
        must(inside == expected);
    }
    return expected;
}

const Property kProperty("poly_hit_test", 100000,
                         [](Choices& c) { return c.below(2) == 0 ? hitTest<double>(c) : hitTest<float>(c); });

}  // namespace

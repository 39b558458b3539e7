// Hit tests agree with their plain form.

#include "property.h"
#include "tests/support/plain_forms.h"
#include "tests/support/vectors.h"
#include "zan/poly.h"
#include "zan/space.h"

namespace {

template <class T>
using Points = std::vector<Zan_Vector2T<T>>;

// A tolerance that equals the distance from the point to an edge's line or start, or is one step beside it.
template <class T>
double toleranceAtDistance(Choices& c, const Zan_Vector2T<T>& point, const Points<T>& outline) {
    const size_t i = c.bits() % outline.size();
    const auto& from = outline[i];
    const auto& to = outline[(i + 1) % outline.size()];
    const Vector2 p(point.x, point.y), a(from.x, from.y), b(to.x, to.y);
    double distance = std::sqrt(p.DistanceSquared(a));
    if (c.below(2) == 0) Zan_PerpDistTo2DLine(&p, &a, &b, nullptr, &distance);
    return c.below(3) == 0 ? distance : std::nextafter(distance, c.below(2) == 0 ? 0.0 : 1e300);
}

template <class T>
bool hitTest(Choices& c) {
    const bool lattice = c.below(3) != 0;
    const bool nasty = c.below(8) == 0;
    const double scale = std::ldexp(1.0, c.below(3) == 0 ? c.below(44) : 0);
    const auto coordinate = [&] {
        return static_cast<T>(nasty ? c.nasty() : (lattice ? c.below(7) : c.plain(0, 7)) * scale);
    };
    // Long outlines are rings with random radii: with random vertices nearly every point would be on an edge.
    Points<T> vertices;
    const int32_t count = 1 + c.below(c.below(10) == 0 ? 300 : 9);
    for (int32_t n = 0; n < count; ++n) {
        const double angle = 6.28 * n / count;
        const double radius = count > 9 ? c.plain(1.5, 3.5) : 0;
        const auto onRing = [&](double unit) { return static_cast<T>((3 + radius * unit) * scale); };
        const T x = count > 9 ? onRing(std::cos(angle)) : coordinate();
        vertices.emplace_back(x, count > 9 ? onRing(std::sin(angle)) : coordinate());
        if (c.below(6) == 0) vertices.push_back(vertices.back());
    }
    const T x = c.below(8) == 0 ? vertices.back().x : coordinate();
    Zan_Vector2T<T> p(x, coordinate());
    const double tolerances[] = {0, 0.5, 3, 1e-7, 1e20, 1e160, std::numeric_limits<double>::quiet_NaN()};
    double tolerance = c.among(tolerances) * (c.below(2) ? scale : -1);
    if (c.below(8) == 0) tolerance = toleranceAtDistance(c, p, vertices);
    if (c.below(4) == 0) {  // on the line through two vertices, or up to twice the tolerance of nearlyEqual beside it
        const auto& a = vertices[0];
        const auto& b = vertices[vertices.size() / 2];
        const double y = (double(p.x) - b.x) / (double(a.x) - b.x) * (double(a.y) - b.y) + b.y;
        p.y = static_cast<T>(y + (std::fabs(y) + 1) * 1e-12 * c.plain(-2, 2));
    }

    const auto size = static_cast<int32_t>(vertices.size());
    const bool expected = plain_forms::hit(p, vertices.data(), vertices.size(), tolerance);
    unsigned char inside = 9;
    must(Zan_IsFloatPointInConcavePoly(&p, vertices.data(), size, tolerance, &inside) == 0);
    must(inside == expected);
    if constexpr (std::is_same_v<T, double>) {
        if (size == 4 && tolerance == 0) {
            inside = 9;
            must(Zan_IsFloatPointInQuad(&p, vertices.data(), &inside) == 0);
            must(inside == expected);
        }
    }
    return expected;
}

const Property kProperty("poly_hit_test", 100000,
                         [](Choices& c) { return c.below(2) == 0 ? hitTest<double>(c) : hitTest<float>(c); });

}  // namespace

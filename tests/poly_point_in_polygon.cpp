// Points in polygons, against answers worked by hand and against the plain walk with both of its lists; signed areas.
#include <vector>

#include "values.h"
#include "zan/poly.h"
#include "zan/space.h"

namespace {

template <class T>
using Points = std::vector<Zan_Vector2T<T>>;

// The slow form: vertices without repetitions, edges, distances and crossings one after the other.
template <class T>
bool plainInside(const Zan_Vector2T<T>& q, const Points<T>& vertices, double tolerance) {
    const double tol2 = tolerance * tolerance;
    Points<T> list{vertices[0]};
    for (const auto& v : vertices) {
        if (std::memcmp(&v, &list.back(), sizeof v) != 0) list.push_back(v);
    }
    const T dx = q.x - list[0].x, dy = q.y - list[0].y;
    if (list.size() == 1) return tol2 > 0 ? tol2 >= dx * dx + dy * dy : q.x == list[0].x && q.y == list[0].y;
    const Zan_Vector2T<double> p(q.x, q.y);
    const auto squared = [&](const auto& v) { return (p.x - v.x) * (p.x - v.x) + (p.y - v.y) * (p.y - v.y); };
    int crossings = 0;
    for (size_t i = 0; i < list.size(); ++i) {
        const auto& next = list[(i + 1) % list.size()];
        const Zan_Vector2T<double> a(list[i].x, list[i].y), b(next.x, next.y);
        bool within = false;
        double distance = 0;
        Zan_PerpDistTo2DLine(&p, &a, &b, &within, &distance);
        if (tol2 > 0 && ((within && tol2 >= distance * distance) || tol2 >= squared(a) || tol2 >= squared(b)))
            return true;
        if (!(a.x < p.x && p.x <= b.x) && !(b.x < p.x && p.x <= a.x)) continue;
        const double y = (p.x - b.x) / (a.x - b.x) * (a.y - b.y) + b.y;
        double lo = y < p.y ? y : p.y, hi = y < p.y ? p.y : y;
        if (hi < 0) lo = -std::exchange(hi, -lo);
        if ((hi * 1e-12 > 0x1.198p-40 ? hi * 1e-12 : 0x1.198p-40) > hi - lo) return true;
        crossings += y > p.y;
    }
    return crossings % 2 != 0;
}

// A tolerance that is the distance to an edge's line or end, or a step beside it.
template <class T>
double closeTolerance(Random& random, const Zan_Vector2T<T>& q, const Points<T>& outline) {
    const size_t i = random.bits() % outline.size();
    const auto &from = outline[i], &to = outline[(i + 1) % outline.size()];
    const Zan_Vector2T<double> p(q.x, q.y), a(from.x, from.y), b(to.x, to.y);
    double distance = std::sqrt(p.DistanceSquared(a));
    if (random.below(2) == 0) Zan_PerpDistTo2DLine(&p, &a, &b, nullptr, &distance);
    return random.below(3) == 0 ? distance : std::nextafter(distance, random.below(2) == 0 ? 0.0 : 1e300);
}

template <class T>
bool isInside(const Zan_Vector2T<T>& p, const Points<T>& vertices, double tolerance) {
    unsigned char inside = 9;
    CHECK(Zan_IsFloatPointInConcavePoly(&p, vertices.data(), int32_t(vertices.size()), tolerance, &inside) == 0);
    if constexpr (std::is_same_v<T, double>) {
        unsigned char inQuad = inside;
        if (vertices.size() == 4 && tolerance == 0) CHECK(Zan_IsFloatPointInQuad(&p, vertices.data(), &inQuad) == 0);
        CHECK(inQuad == inside);
    }
    return inside == 1;
}

template <class T>
void compareWithPlain(uint32_t seed) {
    Random random(seed);
    const double tolerances[] = {0, 0.5, 3, 1e-7, 1e20, 1e160, std::numeric_limits<double>::quiet_NaN()};
    int32_t insideCount = 0;
    for (int round = 0; round < 60000; ++round) {
        const bool lattice = random.below(3) != 0, nasty = random.below(8) == 0;
        const double scale = std::ldexp(1.0, random.below(3) == 0 ? random.below(44) : 0);
        const auto coordinate = [&] {
            return static_cast<T>(nasty ? random.nasty() : (lattice ? random.below(7) : random.plain(0, 7)) * scale);
        };
        Points<T> vertices;
        // Long outlines are rings with teeth, so that not everything is on them.
        const int32_t count = 1 + random.below(round % 10 == 0 ? 300 : 9);
        for (int32_t n = 0; n < count; ++n) {
            const double angle = 6.28 * n / count, radius = random.plain(1.5, 3.5);
            const auto ring = [&](double x) { return static_cast<T>((3 + radius * x) * scale); };
            vertices.emplace_back(count > 9 ? ring(std::cos(angle)) : coordinate(),
                                  count > 9 ? ring(std::sin(angle)) : coordinate());
            if (random.below(6) == 0) vertices.push_back(vertices.back());
        }
        const Zan_Vector2T<T> p(random.below(8) == 0 ? vertices.back().x : coordinate(), coordinate());
        double tolerance = tolerances[random.bits() % std::size(tolerances)] * (random.below(2) ? scale : -1);
        if (random.below(8) == 0) tolerance = closeTolerance(random, p, vertices);
        const bool inside = isInside(p, vertices, tolerance);
        CHECK(inside == plainInside(p, vertices, tolerance));
        insideCount += inside;
    }
    CHECK((insideCount > 20000 && insideCount < 50000));
}

}  // namespace

TEST_CASE("points in polygons") {
    compareWithPlain<double>(63);
    compareWithPlain<float>(64);
    // What lies on the right and on the level edges is inside, on the left ones outside.
    const Points<double> square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const Points<double> notched = {{0, 0}, {3, 0}, {3, 8}, {7, 8}, {7, 0}, {10, 0}, {10, 10}, {0, 10}};
    for (const Zan_Vector2T<double>& p : {square[1], square[2], {5, 5}, {10, 5}, {5, 0}}) CHECK(isInside(p, square, 0));
    for (const Zan_Vector2T<double>& p : {square[0], square[3], {15, 5}, {0, 5}}) CHECK(!isInside(p, square, 0));
    CHECK((isInside<double>({8, 4}, notched, 0) && isInside<double>({5, 8}, notched, 0)));
    CHECK((!isInside<double>({5, 4}, notched, 0) && !isInside<double>({0, 0}, {}, 1)));
}

TEST_CASE("signed areas") {
    Random random(65);
    for (int32_t n = 0; n < 40; ++n) {
        Points<double> v;
        for (int32_t i = 0; i < n; ++i) v.emplace_back(random.plain(-9, 9), random.plain(-9, 9));
        double twice = 0;  // triangles from the first vertex
        for (size_t i = 2; i < v.size(); ++i) {
            twice += (v[i - 1].x - v[0].x) * (v[i].y - v[0].y) - (v[i].x - v[0].x) * (v[i - 1].y - v[0].y);
        }
        CHECK(Zan_SignedPolygonArea2D(v.data(), n) == Approx(twice / 2).margin(1e-9));
    }
}

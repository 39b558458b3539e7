// Points in polygons, against answers worked by hand and against the plain walk with both of its lists; signed areas.
#include <vector>

#include "host_reports.h"
#include "values.h"
#include "zan/poly.h"
#include "zan/space.h"

namespace {

template <class T>
using Points = std::vector<Zan_Vector2T<T>>;

// The slow form: vertices without repetitions, edges, distances and crossings one after the other.
template <class T>
unsigned char plainInside(const Zan_Vector2T<T>& q, const Points<T>& vertices, double tolerance) {
    if (vertices.empty()) return 0;
    const double tol2 = tolerance * tolerance;
    Points<T> list{vertices[0]};
    for (const auto& v : vertices) {
        if (std::memcmp(&v, &list.back(), sizeof v) != 0) list.push_back(v);
    }
    if (list.size() == 1) {
        const T dx = q.x - list[0].x, dy = q.y - list[0].y;
        return tol2 > 0 ? tol2 >= dx * dx + dy * dy : q.x == list[0].x && q.y == list[0].y;
    }
    const Zan_Vector2T<double> p(q.x, q.y);
    int crossings = 0;
    for (size_t i = 0; i < list.size(); ++i) {
        const auto& next = list[(i + 1) % list.size()];
        const Zan_Vector2T<double> a(list[i].x, list[i].y), b(next.x, next.y);
        if (tol2 > 0) {
            bool within = false;
            double distance = 0;
            Zan_PerpDistTo2DLine(&p, &a, &b, &within, &distance);
            if (within && tol2 >= distance * distance) return 1;
            if (tol2 >= (p.x - a.x) * (p.x - a.x) + (p.y - a.y) * (p.y - a.y)) return 1;
            if (tol2 >= (p.x - b.x) * (p.x - b.x) + (p.y - b.y) * (p.y - b.y)) return 1;
        }
        if (!(a.x < p.x && p.x <= b.x) && !(b.x < p.x && p.x <= a.x)) continue;
        const double y = (p.x - b.x) / (a.x - b.x) * (a.y - b.y) + b.y;
        double lo = y < p.y ? y : p.y, hi = y < p.y ? p.y : y;
        if (hi < 0) lo = -std::exchange(hi, -lo);
        if ((hi * 1e-12 > 0x1.198p-40 ? hi * 1e-12 : 0x1.198p-40) > hi - lo) return 1;
        crossings += y > p.y;
    }
    return crossings % 2 != 0;
}

const Points<double> kSquare = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
const Points<double> kNotched = {{0, 0}, {3, 0}, {3, 8}, {7, 8}, {7, 0}, {10, 0}, {10, 10}, {0, 10}};
const Points<double> kRepeated = {{0, 0}, {0, 0}, {10, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 10}, {0, 0}};
const Points<double> kPoint = {{3, 4}, {3, 4}, {3, 4}};

struct InsideRow {
    const Points<double>& vertices;
    double tolerance;
    Points<double> inside, outside;
};
const InsideRow kInside[] = {
    {kSquare, 0, {{5, 5}, {10, 5}, {5, 0}, {5, 10}, {10, 0}, {10, 10}}, {{15, 5}, {0, 5}, {0, 0}, {0, 10}, {5, -1}}},
    {kSquare, 0.5, {{0, 5}, {-0.5, 5}, {5, 10.5}, {10.3, 10.3}, {0, 0}}, {{-0.6, 5}, {10.4, 10.4}, {5, -0.6}}},
    {kSquare, -0.5, {{-0.5, 5}}, {{-0.6, 5}}},
    {kSquare, 1e-200, {{5, 5}}, {{0, 5}}},  // squared it is 0
    {kNotched, 0, {{1, 4}, {8, 4}, {5, 9}, {5, 8}}, {{5, 4}, {7, 0}}},
    {kNotched, 1, {{4, 4}, {5, 7}}, {{5, 4}, {5, -0.5}}},
    {kRepeated, 0, {{5, 5}, {10, 5}, {5, 0}, {10, 0}, {10, 10}}, {{15, 5}, {0, 5}, {0, 0}, {0, 10}}},
    {kRepeated, 0.5, {{0, 5}, {-0.5, 5}}, {{-0.6, 5}}},
    {kPoint, 0, {{3, 4}}, {{3, 4.0000001}}},
    {kPoint, 2, {{3, 4}, {5, 4}, {3, 2}}, {{5, 4.01}}},
};

template <class T>
void compareWithPlain(uint32_t seed) {
    Random random(seed);
    const double tolerances[] = {0, 0.5, 3, 1e-7, 1e20, 1e160, std::numeric_limits<double>::quiet_NaN()};
    int32_t wrong = 0, insideCount = 0;
    for (int round = 0; round < 60000; ++round) {
        const bool lattice = random.below(3) != 0, nasty = random.below(8) == 0;
        const double scale = std::ldexp(1.0, random.below(3) == 0 ? random.below(44) : 0);
        const auto coordinate = [&] {
            if (nasty) return static_cast<T>(random.nasty());
            return static_cast<T>((lattice ? random.below(7) : random.plain(0, 7)) * scale);
        };
        Points<T> vertices;
        for (int32_t n = 1 + random.below(9); n > 0; --n) {
            vertices.emplace_back(coordinate(), coordinate());
            if (random.below(6) == 0) vertices.push_back(vertices.back());
        }
        const Zan_Vector2T<T> p(coordinate(), coordinate());
        const double tolerance = tolerances[random.bits() % std::size(tolerances)] * (random.below(2) ? scale : -1);
        unsigned char inside = 9;
        const int32_t result = Zan_IsFloatPointInConcavePoly(&p, vertices.data(), static_cast<int32_t>(vertices.size()),
                                                             tolerance, &inside);
        wrong += result != 0 || inside != plainInside(p, vertices, tolerance);
        insideCount += inside;
    }
    CHECK(wrong == 0);
    CHECK((insideCount > 20000 && insideCount < 50000));
}

}  // namespace

TEST_CASE("points in polygons") {
    unsigned char inside = 9;
    for (const InsideRow& r : kInside) {
        const auto count = static_cast<int32_t>(r.vertices.size());
        for (const auto* points : {&r.inside, &r.outside}) {
            for (const Zan_Vector2T<double>& p : *points) {
                CAPTURE(count, r.tolerance, p.x, p.y);
                const unsigned char expected = points == &r.inside;
                CHECK(Zan_IsFloatPointInConcavePoly(&p, r.vertices.data(), count, r.tolerance, &inside) == 0);
                CHECK(inside == expected);
                if (count != 4 || r.tolerance != 0) continue;
                CHECK(Zan_IsFloatPointInQuad(&p, r.vertices.data(), &inside) == 0);
                CHECK(inside == expected);
            }
        }
    }
    for (const int32_t count : {0, -1}) {
        inside = 9;
        CHECK(Zan_IsFloatPointInConcavePoly<Zan_Vector2T<float>>(nullptr, nullptr, count, 1, &inside) == 0);
        CHECK(inside == 0);
    }
}

TEST_CASE("points in polygons, as the plain walk answers") {
    compareWithPlain<double>(63);
    compareWithPlain<float>(64);
}

TEST_CASE("signed areas") {
    Random random(65);
    for (int32_t n = 0; n < 40; ++n) {
        Points<double> v;
        for (int32_t i = 0; i < n; ++i) v.emplace_back(random.plain(-9, 9), random.plain(-9, 9));
        // The stated sum: one term for two vertices, and for an odd count a triangle at the end.
        double fan = 0, shoelace = 0;
        for (size_t i = 2; i < v.size(); i += 2) {
            const auto &a = v[i - 1], &b = i + 1 < v.size() ? v[i] : a, &c = v[std::min(i + 1, v.size() - 1)];
            fan += (c.y - a.y) * (b.x - v[0].x) - (b.y - v[0].y) * (c.x - a.x);
        }
        for (size_t i = 0; n > 2 && i < v.size(); ++i) {
            shoelace += v[i].x * v[(i + 1) % v.size()].y - v[(i + 1) % v.size()].x * v[i].y;
        }
        CHECK(Zan_SignedPolygonArea2D(v.data(), n) == fan * 0.5);
        CHECK(fan == Approx(shoelace).margin(1e-9));
    }
}

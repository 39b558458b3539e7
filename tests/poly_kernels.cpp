// Every form of the loops over polygons gives the bits of the plain one, and convexity the answer of the rule in its
// plainest words.
#include <vector>

#include "kernels.h"
#include "poly/kernels/edges.h"
#include "poly/kernels/turns.h"
#include "values.h"
#include "zan/poly.h"

namespace {

template <class T>
using Points = std::vector<Zan_Vector2T<T>>;
template <class T>
constexpr bool kFloats = sizeof(T) == sizeof(float);

// One in four a number of the list, or one of a few, so that vertices repeat and coordinates are equal.
double coordinate(Random& random, bool nasty) {
    if (nasty && random.below(4) == 0) return random.nasty();
    return random.below(3) == 0 ? random.below(5) : random.plain(0, 4);
}

double stepped(double x, int32_t steps) {
    for (; steps > 0; --steps) x = std::nextafter(x, 1e308);
    for (; steps < 0; ++steps) x = std::nextafter(x, -1e308);
    return x;
}

// Each edge count, from each place in memory that a record can have; the last vertex is the end of its array.
template <class T>
void checkEdges(const zan::EdgeKernel& kernel, Random& random) {
    for (int32_t edges = kernel.fewest; edges <= zan::kEdgesAtOnce; ++edges) {
        for (int32_t round = 0; round < 24; ++round) {
            const bool nasty = round % 2 != 0;
            const double margins[] = {0.01, 1, random.plain(0, 2), std::numeric_limits<double>::infinity()};
            const zan::HitTarget target = {coordinate(random, nasty), coordinate(random, nasty), margins[round % 4]};
            std::vector<T> numbers;
            for (int32_t i = 0; i < 2 * (edges + 1) + round % 8; ++i) {
                // Also a step beside the margin, to both sides.
                const double at = i % 2 != round % 2 ? target.y : target.x;
                const double edge = stepped(at + (i % 3 - 1) * target.margin, random.below(3) - 1);
                numbers.push_back(static_cast<T>(random.below(4) == 0 ? edge : coordinate(random, nasty)));
            }
            for (const int question : {zan::kSpanningDoubles, zan::kNearDoubles}) {
                const int scan = question + (kFloats<T> ? zan::kSpanningFloats : zan::kSpanningDoubles);
                const T* vertices = numbers.data() + round % 8;
                const zan::EdgeBits plain = zan::kPlainEdgeKernel.scans[scan](vertices, edges, target);
                const zan::EdgeBits bits = kernel.scans[scan](vertices, edges, target);
                CAPTURE(kernel.name, scan, edges, round);
                CHECK((bits.spanning == plain.spanning && bits.near == plain.near));
                CHECK((plain.spanning | plain.near) >> (edges - 1) <= 1);
            }
        }
    }
}

// The turn at every vertex, each with its rounding error, in the order of the rule.
bool plainConvex(const Points<double>& v) {
    constexpr double e = 0x1p-52;
    const size_t n = v.size();
    int orientation = 0;
    for (size_t i = 0; n > 2 && i < n; ++i) {
        const auto &a = v[(i + n - 2) % n], &b = v[(i + n - 1) % n], &c = v[i];
        const double dx1 = b.x - a.x, dy1 = b.y - a.y, dx2 = c.x - b.x, dy2 = c.y - b.y;
        const double cross = dx1 * dy2 - dx2 * dy1;
        const double x1 = std::fabs(dx1), y1 = std::fabs(dy1), x2 = std::fabs(dx2), y2 = std::fabs(dy2);
        const double error = (y1 * (x2 * e) + x2 * (y1 * e) + (x2 * e) * (y1 * e)) +
                             (y2 * (x1 * e) + x1 * (y2 * e) + (y2 * e) * (x1 * e));
        if (!(std::fabs(cross) > error)) continue;
        const int sign = cross > 0 ? 1 : -1;
        if (orientation != 0 && sign != orientation) return false;
        orientation = sign;
    }
    return true;
}

// Rings, most of them convex but for steps of the last bits, of any size, with nasty numbers and repeated vertices.
Points<double> nearlyConvex(Random& random, int32_t count) {
    Points<double> ring;
    const double scale = std::ldexp(1.0, random.below(3) == 0 ? random.below(2060) - 1050 : 0);
    const int32_t kind = random.below(6);
    for (int32_t i = 0; i < count; ++i) {
        const double t = double(i) / count, angle = 6.283185307179586 * t;
        double x = kind < 4 ? std::cos(angle) : t, y = kind < 4 ? std::sin(angle) : t * (kind == 4 ? 3 : t * 0x1p-40);
        if (kind == 1 && random.below(30) == 0) x = random.nasty();
        if (kind == 2 && random.below(30) == 0) x *= 1 - std::ldexp(1.0, -random.below(60));
        ring.emplace_back(x * scale, stepped(y * scale, kind == 5 ? random.below(9) - 4 : 0));
        if (random.below(40) == 0) ring.push_back(ring.back());
    }
    return ring;
}

void checkTurns(const zan::TurnKernel& kernel, Random& random) {
    for (int32_t round = 0; round < 4000; ++round) {
        const Points<double> ring = nearlyConvex(random, 3 + round % 80);
        const auto turns = int64_t(ring.size()) - 2;
        const int32_t components = 2 + round % 3;
        std::vector<double> numbers;  // ends with its last vertex
        std::vector<Zan_Vector4T<double>> four;
        for (const auto& p : ring) {
            numbers.insert(numbers.end(), {p.x, p.y});
            numbers.insert(numbers.end(), size_t(components) - 2, 7.0);
            four.emplace_back(p.x, p.y, 3.0, 1.0);
        }
        zan::Turns plain{}, seen{}, alone{};
        zan::lookAtTurns(zan::kPlainTurnKernel, numbers.data(), components, turns, plain);
        zan::lookAtTurns(kernel, numbers.data(), components, turns, seen);
        const int64_t done = kernel.scan(numbers.data(), components, turns, alone);
        CAPTURE(kernel.name, round, turns, components);
        CHECK((seen.left == plain.left && seen.right == plain.right));
        CHECK((alone.left <= plain.left && alone.right <= plain.right && done <= turns));
        const bool convex = plainConvex(ring);
        CHECK(Zan_IsConvex(ring.cbegin(), ring.cend()) == convex);
        CHECK(Zan_IsConvex(four.cbegin(), four.cend()) == convex);
    }
}

}  // namespace

TEST_CASE("edges, by every kernel") {
    Random random(71);
    eachKernel(zan::kEdgeKernels, zan::kPlainEdgeKernel, [&](const zan::EdgeKernel& kernel) {
        checkEdges<double>(kernel, random);
        checkEdges<float>(kernel, random);
    });
}

TEST_CASE("turns, by every kernel and by the rule") {
    Random random(73);
    eachKernel(zan::kTurnKernels, zan::kPlainTurnKernel,
               [&](const zan::TurnKernel& kernel) { checkTurns(kernel, random); });
}

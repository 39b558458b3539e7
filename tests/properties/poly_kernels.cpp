// Every form of the loops over polygons gives the bits of the plain one, and convexity the answer of the rule in its
// plainest words.

#include "poly/kernels/edges.h"
#include "poly/kernels/turns.h"
#include "property.h"
#include "tests/support/plain_forms.h"
#include "zan/poly.h"

namespace {

using Points = std::vector<Zan_Vector2T<double>>;

// One in four a number of the list, or one of a few, so that vertices repeat and coordinates are equal.
double coordinate(Choices& c, bool nasty) {
    if (nasty && c.below(4) == 0) return c.nasty();
    return c.below(3) == 0 ? c.below(5) : c.plain(0, 4);
}

double stepped(double x, int32_t steps) {
    for (; steps > 0; --steps) x = std::nextafter(x, 1e308);
    for (; steps < 0; ++steps) x = std::nextafter(x, -1e308);
    return x;
}

// From each place in memory that a record can have; the last vertex is the end of its array.
template <class T>
bool edges(Choices& c) {
    const bool nasty = c.below(2) == 0;
    const int32_t edges = 1 + c.below(zan::kEdgesAtOnce), before = c.below(8), turn = c.below(2);
    zan::HitTarget target = {coordinate(c, nasty), 0, 0, 0};
    target.y = coordinate(c, nasty);
    target.ySize = (std::fabs(target.y) + 1) * 0x1p-39;
    const double margins[] = {0.01, 1, c.plain(0, 2), std::numeric_limits<double>::infinity()};
    target.margin = c.among(margins);
    std::vector<T> numbers;
    for (int32_t i = 0; i < 2 * (edges + 1) + before; ++i) {
        // Also a step beside the margin, to both sides.
        const double at = i % 2 != turn ? target.y : target.x;
        const bool close = c.below(4) == 0;
        numbers.push_back(static_cast<T>(close ? stepped(at + (c.below(3) - 1) * target.margin, c.below(3) - 1)
                                               : coordinate(c, nasty)));
    }
    zan::EdgeBits plain{};
    for (const int question : {zan::kSpanningDoubles, zan::kNearDoubles}) {
        const int scan = question + (sizeof(T) == sizeof(float) ? zan::kSpanningFloats : zan::kSpanningDoubles);
        plain = zan::kPlainEdgeKernel.scans[scan](numbers.data() + before, edges, target);
        must((plain.spanning | plain.near) >> (edges - 1) <= 1);
        eachKernel(zan::kEdgeKernels, zan::kPlainEdgeKernel, [&](const zan::EdgeKernel& kernel) {
            const int32_t count = 1 + edges % std::min(edges + 1, zan::kFewVertices);
            const zan::FewEdges plainFew = zan::kPlainEdgeKernel.few[scan](numbers.data() + before, count, target);
            const zan::FewEdges few = kernel.few[scan](numbers.data() + before, count, target);
            must(few.above == plainFew.above && few.close == plainFew.close);
            if (edges < kernel.fewest) return;
            const zan::EdgeBits bits = kernel.scans[scan](numbers.data() + before, edges, target);
            must(bits.spanning == plain.spanning && bits.near == plain.near);
        });
    }
    return (plain.near & 1) != 0;
}

// Rings, most of them convex but for steps of the last bits, of any size, with nasty numbers and repeated vertices.
Points nearlyConvex(Choices& c) {
    Points ring;
    const int32_t count = 3 + c.below(80), kind = c.below(6);
    const double scale = std::ldexp(1.0, c.below(3) == 0 ? c.below(2060) - 1050 : 0);
    for (int32_t i = 0; i < count; ++i) {
        const double t = double(i) / count, angle = 6.283185307179586 * t;
        double x = kind < 4 ? std::cos(angle) : t, y = kind < 4 ? std::sin(angle) : t * (kind == 4 ? 3 : t * 0x1p-40);
        if (kind == 1 && c.below(30) == 0) x = c.nasty();
        if (kind == 2 && c.below(30) == 0) x *= 1 - std::ldexp(1.0, -c.below(60));
        ring.emplace_back(x * scale, stepped(y * scale, kind == 5 ? c.below(9) - 4 : 0));
        if (c.below(40) == 0) ring.push_back(ring.back());
    }
    return ring;
}

bool turns(Choices& c) {
    const Points ring = nearlyConvex(c);
    const auto turns = int64_t(ring.size()) - 2;
    const int32_t components = 2 + c.below(3);
    std::vector<double> numbers;  // ends with its last vertex
    std::vector<Zan_Vector4T<double>> four;
    for (const auto& p : ring) {
        numbers.insert(numbers.end(), {p.x, p.y});
        numbers.insert(numbers.end(), size_t(components) - 2, 7.0);
        four.emplace_back(p.x, p.y, 3.0, 1.0);
    }
    zan::Turns plain{};
    zan::lookAtTurns(zan::kPlainTurnKernel, numbers.data(), components, turns, plain);
    eachKernel(zan::kTurnKernels, zan::kPlainTurnKernel, [&](const zan::TurnKernel& kernel) {
        zan::Turns seen{}, alone{};
        zan::lookAtTurns(kernel, numbers.data(), components, turns, seen);
        const int64_t done = kernel.scan(numbers.data(), components, turns, alone);
        must(seen.left == plain.left && seen.right == plain.right);
        must(alone.left <= plain.left && alone.right <= plain.right && done <= turns);
    });
    const bool convex = plain_forms::convex(ring);
    must(Zan_IsConvex(ring.cbegin(), ring.cend()) == convex);
    must(Zan_IsConvex(four.cbegin(), four.cend()) == convex);
    return convex;
}

const Property kEdges("poly_edges", 10000,
                      [](Choices& c) { return c.below(2) == 0 ? edges<double>(c) : edges<float>(c); });
const Property kTurns("poly_turns", 8000, turns);

}  // namespace

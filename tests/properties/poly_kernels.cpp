// Kernels of the hit test and of the convexity test give the bits of the plain kernel; convexity agrees with its plain
// form.

#include "poly/kernels/edges.h"
#include "poly/kernels/turns.h"
#include "property.h"
#include "tests/support/plain_forms.h"
#include "tests/support/vectors.h"
#include "zan/poly.h"

namespace {

// A third of the coordinates that are not nasty are small integers, so that vertices repeat and coordinates coincide.
double coordinate(Choices& c, bool nasty) {
    if (nasty && c.below(4) == 0) return c.nasty();
    return c.below(3) == 0 ? c.below(5) : c.plain(0, 4);
}

// The double that is so many doubles above x, or below it.
double stepped(double x, int32_t steps) {
    for (; steps > 0; --steps) x = std::nextafter(x, 1e308);
    for (; steps < 0; ++steps) x = std::nextafter(x, -1e308);
    return x;
}

// The vertices start at any alignment and end where their array ends, so that the address sanitizer sees a read beyond.
template <class T>
bool edges(Choices& c) {
    const bool nasty = c.below(2) == 0;
    const int32_t edges = 1 + c.below(zan::kEdgesPerScan);
    const int32_t before = c.below(8);
    const int32_t xParity = c.below(2);
    zan::HitQuery query = {coordinate(c, nasty), 0, 0, 0};
    query.y = coordinate(c, nasty);
    query.yTolerance = (std::fabs(query.y) + 1) * 0x1p-39;
    const double margins[] = {0.01, 1, c.plain(0, 2), std::numeric_limits<double>::infinity()};
    query.margin = c.among(margins);
    std::vector<T> numbers;
    numbers.reserve(size_t(2 * (edges + 1) + before));
    for (int32_t i = 0; i < 2 * (edges + 1) + before; ++i) {
        // One in four is at the point, at the margin, or one step beside them.
        const double center = i % 2 == xParity ? query.x : query.y;
        const bool atLimit = c.below(4) == 0;
        numbers.push_back(static_cast<T>(atLimit ? stepped(center + (c.below(3) - 1) * query.margin, c.below(3) - 1)
                                                 : coordinate(c, nasty)));
    }
    const T* vertices = numbers.data() + before;
    const int32_t count = 1 + edges % std::min(edges + 1, zan::kSmallOutlineVertices);
    zan::EdgeBits plain{};
    const bool floats = sizeof(T) == sizeof(float);
    for (const zan::HitTestVariant variant :
         {floats ? zan::kFloats : zan::kDoubles, floats ? zan::kTolerantFloats : zan::kTolerantDoubles}) {
        plain = zan::kPlainEdgeKernel.scans[variant](vertices, edges, query);
        must((plain.spanning | plain.maybeNear) >> (edges - 1) <= 1);
        const zan::EdgeClasses plainSmall = zan::kPlainEdgeKernel.smallOutlineScans[variant](vertices, count, query);
        eachKernel(zan::kEdgeKernels, zan::kLanesEdgeKernel, [&](const zan::EdgeKernel& kernel) {
            const zan::EdgeClasses small = kernel.smallOutlineScans[variant](vertices, count, query);
            must(small.above == plainSmall.above);
            must(small.uncertain == plainSmall.uncertain);
            if (edges < kernel.minEdges) return;
            const zan::EdgeBits bits = kernel.scans[variant](vertices, edges, query);
            must(bits.spanning == plain.spanning);
            must(bits.maybeNear == plain.maybeNear);
        });
    }
    return (plain.maybeNear & 1) != 0;
}

// Nearly collinear points are off by a few doubles. A dent is one vertex moved toward the y axis: a little, down to the
// last bit, or all the way.
enum PolygonKind { kCircle, kNastyCircle, kDented, kDeeplyDented, kCollinear, kNearlyCollinear, kPolygonKinds };

std::vector<Vector2> nearlyConvex(Choices& c) {
    std::vector<Vector2> ring;
    const int32_t count = 3 + c.below(c.below(2) == 0 ? 12 : 80);
    const int32_t kind = c.below(kPolygonKinds), dent = c.below(count);
    const double scale = std::ldexp(1.0, c.below(3) == 0 ? c.below(2060) - 1050 : 0);
    for (int32_t i = 0; i < count; ++i) {
        const double t = double(i) / count;
        const double angle = 6.283185307179586 * t;
        double x = kind < kCollinear ? std::cos(angle) : t;
        const double y = kind < kCollinear ? std::sin(angle) : t * (kind == kCollinear ? 3 : t * 0x1p-40);
        if (kind == kNastyCircle && c.below(30) == 0) x = c.nasty();
        if (kind == kDented && i == dent) x *= 1 - std::ldexp(1.0, -c.below(60));
        if (kind == kDeeplyDented && i == dent) x = 0;
        ring.emplace_back(x * scale, stepped(y * scale, kind == kNearlyCollinear ? c.below(9) - 4 : 0));
        if (c.below(40) == 0) ring.push_back(ring.back());
    }
    return ring;
}

bool turns(Choices& c) {
    const std::vector<Vector2> ring = nearlyConvex(c);
    const auto turns = int64_t(ring.size()) - 2;
    const int32_t components = 2 + c.below(3);
    std::vector<double> numbers;
    numbers.reserve(ring.size() * size_t(components));  // ends with the last vertex
    std::vector<Vector3> ring3;
    std::vector<Vector4> ring4;
    for (const Vector2& p : ring) {
        numbers.insert(numbers.end(), {p.x, p.y});
        numbers.insert(numbers.end(), size_t(components) - 2, 7.0);
        ring3.emplace_back(p.x, p.y, 3.0);
        ring4.emplace_back(p.x, p.y, 3.0, 1.0);
    }
    zan::Turns plain{};
    zan::findTurns(zan::kPlainTurnKernel, numbers.data(), components, turns, plain);
    eachKernel(zan::kTurnKernels, zan::kLanesTurnKernel, [&](const zan::TurnKernel& kernel) {
        zan::Turns completed{};
        zan::findTurns(kernel, numbers.data(), components, turns, completed);
        must(completed.left == plain.left);
        must(completed.right == plain.right);
        zan::Turns alone{};
        must(kernel.scan(numbers.data(), components, turns, alone) <= turns);
        must(alone.left <= plain.left);
        must(alone.right <= plain.right);
    });
    const bool convex = plain_forms::convex(ring);
    must(Zan_IsConvex(ring.cbegin(), ring.cend()) == convex);
    must(Zan_IsConvex(ring3.cbegin(), ring3.cend()) == convex);
    must(Zan_IsConvex(ring4.cbegin(), ring4.cend()) == convex);
    return convex;
}

const Property kEdges("poly_edges", 10000,
                      [](Choices& c) { return c.below(2) == 0 ? edges<double>(c) : edges<float>(c); });
const Property kTurns("poly_turns", 8000, turns);

}  // namespace

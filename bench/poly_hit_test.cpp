// Hit tests beside PNPOLY, distances by hand and Boost.Geometry.
#include "peers_boost.h"
#include "poly_outlines.h"
#include "tests/support/plain_forms.h"

namespace zan_bench {
namespace {

std::vector<Vector2> queryPoints(size_t count, uint32_t seed) {
    return inputs(count, seed, [](Random& random) {
        const double x = random.real(-110, 110);
        return Vector2(x, random.real(-110, 110));
    });
}

/// zan's answer.
bool hit(const Vector2& p, const Outline& outline, double tolerance) {
    unsigned char inside = 0;
    static_cast<void>(
        Zan_IsFloatPointInConcavePoly(&p, outline.data(), static_cast<int32_t>(outline.size()), tolerance, &inside));
    return inside != 0;
}

/// Query i tests point i against outline i, modulo the number of outlines.
template <size_t kVertices>
void addHitTests(size_t count, uint32_t seed) {
    static const auto outlines = inputs(
        count, seed, [](Random& random) { return kVertices == 4 ? ellipse(random, 4) : star(random, kVertices); });
    static const auto rings = boostRings<BoostRing>(outlines);
    // Fewer queries for large outlines: their vertices alone are more than a branch predictor can learn.
    const size_t queries = kVertices > 1000 ? 256 : std::max(count, kInputs);
    static const auto points = queryPoints(queries, seed + 1);
    const std::string name = nameWithCount("hit test, ", kVertices, " vertices");
    static const auto outline = [](size_t i) -> const Outline& { return outlines[i % outlines.size()]; };
    static const auto boostPoint = [](size_t i) { return BoostPoint(points[i].x, points[i].y); };

    Entry(name, queries, [](size_t i) { return hit(points[i], outline(i), 0); })
        .plain([](size_t i) { return plain_forms::hit(points[i], outline(i).data(), kVertices, 0); })
        .peer("PNPOLY", [](size_t i) { return pnpoly(outline(i).data(), kVertices, points[i].x, points[i].y); })
        .peer("Boost.Geometry", [](size_t i) { return bg::covered_by(boostPoint(i), rings[i % rings.size()]); });
    Entry(std::string(name).append(", tolerance 2"), queries, [](size_t i) { return hit(points[i], outline(i), 2); })
        .plain([](size_t i) { return plain_forms::hit(points[i], outline(i).data(), kVertices, 2); })
        .peer("distances and PNPOLY", [](size_t i) { return hitByHand(outline(i).data(), kVertices, points[i], 2); })
        .peer("Boost.Geometry", [](size_t i) { return bg::distance(boostPoint(i), rings[i % rings.size()]) <= 2; });
}

}  // namespace

void addPolyHitTests() {
    addHitTests<4>(kManyInputs, 81);
    addHitTests<16>(kInputs, 82);
    addHitTests<256>(64, 83);
    addHitTests<4096>(8, 85);
}

}  // namespace zan_bench

// Polygons and point arrays of all sizes give the answers of the plain forms with each instruction set. Sizes from 4 to
// 199 are drawn one by one, larger ones beside powers of two: so each size from which an algorithm, a kernel, a block
// or a buffer changes is drawn, and the sizes just below and above it.

#include "property.h"
#include "tests/support/instruction_sets.h"
#include "tests/support/plain_forms.h"
#include "tests/support/vectors.h"
#include "zan/matrix.h"
#include "zan/poly.h"

namespace {

// A circle is convex, and all its vertices are on its hull. A line can cut through every edge of a comb, which gives
// the greatest number of clipped vertices.
enum Shape { kCircle, kComb, kCloud, kShapes };

int32_t drawSize(Choices& c) {
    return std::max(4, c.below(8) == 0 ? (1 << c.below(14)) + c.below(3) - 1 : c.below(200));
}

std::vector<Vector2> drawPolygon(Choices& c, int32_t shape, int32_t size) {
    std::vector<Vector2> polygon;
    Choices cloud(c.bits());  // random also where the fuzzer's bytes have ended
    for (int32_t i = 0; i < size; ++i) {
        const double part = double(i) / size, angle = 6.283185307179586 * part;
        if (shape == kCircle) polygon.emplace_back(std::cos(angle), std::sin(angle));
        if (shape == kComb) polygon.emplace_back(2 * part - 1, i % 2 == 0 ? 1 : -1);
        if (shape == kCloud) {
            const double x = cloud.plain(-1, 1);
            polygon.emplace_back(x, cloud.plain(-1, 1));
        }
    }
    return polygon;
}

template <class To>
std::vector<To> convert(const std::vector<Vector2>& polygon) {
    std::vector<To> converted(polygon.size());
    for (size_t i = 0; i < polygon.size(); ++i) {
        converted[i].x = static_cast<decltype(To::x)>(polygon[i].x);
        converted[i].y = static_cast<decltype(To::y)>(polygon[i].y);
    }
    return converted;
}

template <class P>
bool same(const std::vector<P>& a, const std::vector<P>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameDoubles<P>);
}

template <class T>
bool checkHit(const Vector2& at, const std::vector<Vector2>& vertices, double tolerance) {
    using Vertex = Zan_Vector2T<T>;
    const auto polygon = convert<Vertex>(vertices);
    const Vertex point(static_cast<T>(at.x), static_cast<T>(at.y));
    const bool expected = plain_forms::hit(point, polygon.data(), polygon.size(), tolerance);
    eachInstructionSet([&](int) {
        unsigned char inside = 9;
        const auto count = static_cast<int32_t>(polygon.size());
        must(Zan_IsFloatPointInConcavePoly(&point, polygon.data(), count, tolerance, &inside) == 0);
        must(inside == expected);
    });
    return expected;
}

void checkConvexityAndHull(const std::vector<Vector2>& polygon) {
    const bool convex = plain_forms::convex(polygon);
    std::vector<Vector2> expected;
    plain_forms::hull(polygon, expected);
    eachInstructionSet([&](int) {
        must(Zan_IsConvex(polygon.cbegin(), polygon.cend()) == convex);
        std::vector<Vector2> hull;
        Zan_ComputeConvexHull(polygon.cbegin(), polygon.cend(), hull);
        must(same(hull, expected));
    });
}

void checkClip(const std::vector<Vector4>& clip, const std::vector<Vector4>& subject) {
    std::vector<Vector4> expected, clipped;
    plain_forms::clip(clip, subject, expected);
    Zan_PolyPolyClip2D(&clip, &subject, &clipped);
    must(same(clipped, expected));
}

void checkTransform(const std::vector<Vector2>& points) {
    Zan_Matrix3 m(true);
    m.Rotate(30);
    m.Translate(11, 13);
    std::vector<Vector2> expected = points;
    for (Vector2& point : expected) must(Zan_TransformFloatPoints(&m, 1, &point) == 0);
    eachInstructionSet([&](int) {
        std::vector<Vector2> transformed = points;
        must(Zan_TransformFloatPoints(&m, static_cast<int32_t>(points.size()), transformed.data()) == 0);
        must(same(transformed, expected));
    });
}

bool sizes(Choices& c) {
    const int32_t size = drawSize(c), shape = c.below(kShapes);
    const std::vector<Vector2> polygon = drawPolygon(c, shape, size);
    const double x = c.plain(-1.2, 1.2);
    const Vector2 point(x, c.plain(-1.2, 1.2));
    const double tolerances[] = {0, 0.01};
    const double tolerance = c.among(tolerances);
    const double level = c.below(2) == 0 ? 0 : c.plain(-1, 1);
    const auto box = convert<Vector4>({{-2, level}, {2, level}, {2, 2}, {-2, 2}});
    checkConvexityAndHull(polygon);
    checkTransform(polygon);
    checkClip(box, convert<Vector4>(polygon));
    if (shape == kCircle) checkClip(convert<Vector4>(polygon), box);
    const bool hitWithFloats = checkHit<float>(point, polygon, tolerance);
    return checkHit<double>(point, polygon, tolerance) || hitWithFloats;
}

const Property kProperty("poly_sizes", 3000, sizes);

}  // namespace

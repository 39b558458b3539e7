// Polygons clipped by convex ones.
#include <algorithm>
#include <vector>

#include "values.h"
#include "zan/poly.h"

namespace {

using Point = Zan_Vector4T<double>;
using Polygon = std::vector<Point>;

// z and w are linear in x and y, so that whatever is interpolated correctly stays so.
Point at(double x, double y) { return {x, y, 2 * x + 3 * y + 1, 5 - x}; }
bool nearly(const Point& a, const Point& b) {
    return std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.z - b.z) + std::abs(a.w - b.w) < 1e-9;
}
Polygon clipped(const Polygon& clip, const Polygon& subject) {
    Polygon result{at(9, 9)};
    Zan_PolyPolyClip2D(&clip, &subject, &result);
    return result;
}
std::vector<Zan_Vector2T<double>> flat(const Polygon& polygon) {
    std::vector<Zan_Vector2T<double>> points;
    for (const Point& p : polygon) points.emplace_back(p.x, p.y);
    return points;
}
double area(const Polygon& polygon) {
    return Zan_SignedPolygonArea2D(flat(polygon).data(), static_cast<int32_t>(polygon.size()));
}

}  // namespace

TEST_CASE("polygons clipped by a square") {
    const Polygon square = {at(0, 0), at(10, 0), at(10, 10), at(0, 10)}, reversed(square.rbegin(), square.rend());
    const Polygon corner = {at(5, 5), at(15, 5), at(15, 15), at(5, 15)}, inner = {at(1, 1), at(9, 2), at(2, 9)};
    const struct {
        const char* what;
        Polygon clip, subject, result;
    } rows[] = {
        {"a corner", square, corner, {at(10, 10), at(5, 10), at(5, 5), at(10, 5)}},
        {"inside", square, inner, inner},
        {"on an edge is outside", square, {at(0, 2), at(5, 5), at(0, 8)}, {at(0, 2), at(5, 5), at(0, 8)}},
        {"touching along an edge", square, {at(10, 2), at(15, 5), at(10, 8)}, {}},
        {"outside", square, {at(20, 20), at(30, 20), at(30, 30)}, {}},
        {"two vertices", square, {at(1, 1), at(2, 2)}, {}},
        {"two clip vertices", {at(-1e9, 3), at(1e9, 5)}, inner, {}},
        {"one", {at(0, 0)}, inner, {}},
        {"none", {}, inner, {}},
    };
    for (const auto& r : rows) {
        CAPTURE(r.what);
        const Polygon result = clipped(r.clip, r.subject);
        CHECK(std::equal(result.begin(), result.end(), r.result.begin(), r.result.end(), nearly));
        const Polygon other = clipped(r.clip.size() == 4 ? reversed : r.clip, r.subject);
        CHECK((other.size() == r.result.size() &&
               std::is_permutation(other.begin(), other.end(), r.result.begin(), nearly)));
        Polygon both = r.subject;
        Zan_PolyPolyClip2D(&r.clip, &both, &both);
        CHECK(std::equal(result.begin(), result.end(), both.begin(), both.end(), nearly));
    }
    CHECK((sameDoubles(clipped(square, corner)[2], corner[0]) && sameDoubles(clipped(square, inner)[1], inner[1])));
}

TEST_CASE("what is left lies inside both") {
    Random random(62);
    for (int round = 0; round < 2000; ++round) {
        Polygon polygons[2];
        for (Polygon& polygon : polygons) {
            const double x = random.plain(-3, 3), y = random.plain(-3, 3), size = random.plain(1, 6);
            const int count = 3 + random.below(6);
            for (int i = 0; i < count; ++i) {
                const double angle = (i + random.plain(0, 0.8)) * 6.283185307179586 / count;
                polygon.push_back(at(x + size * std::cos(angle), y + size * std::sin(angle)));
            }
        }
        const Polygon result = clipped(polygons[0], polygons[1]);
        CHECK(area(result) == Approx(area(clipped(polygons[1], polygons[0]))).margin(1e-4));
        for (const Point& p : result) {
            CHECK(nearly(p, at(p.x, p.y)));
            for (const Polygon& polygon : polygons) {
                const Zan_Vector2T<double> q(p.x, p.y);
                unsigned char inside = 0;
                CHECK(Zan_IsFloatPointInConcavePoly(&q, flat(polygon).data(), static_cast<int32_t>(polygon.size()),
                                                    1e-5, &inside) == 0);
                CHECK(inside == 1);
            }
        }
    }
}

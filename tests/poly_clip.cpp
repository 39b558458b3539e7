// Polygons clipped by convex ones, answers worked by hand.
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
Polygon clipped(const Polygon& clip, Polygon subject) {
    Zan_PolyPolyClip2D(&clip, &subject, &subject);
    return subject;
}

}  // namespace

TEST_CASE("polygons clipped by a square") {
    const auto check = [](const Polygon& clip, const Polygon& subject, const Polygon& expected) {
        CAPTURE(clip.size(), subject.size(), expected.size());
        const Polygon result = clipped(clip, subject), turned(clip.rbegin(), clip.rend());
        CHECK(std::equal(result.begin(), result.end(), expected.begin(), expected.end(), nearly));
        const Polygon other = clipped(turned, subject);  // starts at another vertex
        CHECK(std::is_permutation(other.begin(), other.end(), expected.begin(), expected.end(), nearly));
    };
    const Polygon square = {at(0, 0), at(10, 0), at(10, 10), at(0, 10)}, inner = {at(1, 1), at(9, 2), at(2, 9)};
    const Polygon corner = {at(5, 5), at(15, 5), at(15, 15), at(5, 15)};
    check(square, corner, {at(10, 10), at(5, 10), at(5, 5), at(10, 5)}), check(square, inner, inner);
    CHECK((sameDoubles(clipped(square, corner)[2], corner[0]) && sameDoubles(clipped(square, inner)[1], inner[1])));
    // On an edge, or nearly, is outside: a vertex is inside by more than 1e-6 times the edge's length.
    check(square, {at(5e-8, 2), at(5, 5), at(0, 8)}, {at(0, 2 - 3e-8), at(5, 5), at(0, 8)});
    const Polygon unit = {at(0, 0), at(1, 0), at(1, 1), at(0, 1)};
    for (const double y : {1e-6, 0x1.0c6f7a0b5ed8ep-20}) {
        CHECK(clipped(unit, {at(0.5, y), at(0.9, 0.9), at(0.1, 0.9)}).size() == (y > 1e-6 ? 3 : 4));
    }
    check(square, {at(10, 2), at(15, 5), at(10, 8)}, {}), check(square, {at(1, 1), at(2, 2)}, {});
    for (const Polygon& clip : {Polygon{at(-1e9, 3), at(1e9, 5)}, {}}) check(clip, inner, {});
}

// Polygons clipped to a convex polygon, with results worked out by hand.
#include "tests/support/doubles.h"
#include "tests/support/vectors.h"
#include "zan/poly.h"

namespace {

using Polygon = std::vector<Vector4>;

Vector4 vertexAt(double x, double y) { return {x, y, 0, 1}; }

const Polygon kUnitSquare = {vertexAt(0, 0), vertexAt(1, 0), vertexAt(1, 1), vertexAt(0, 1)};

Polygon clipped(const Polygon& clip, Polygon polygon) {
    Zan_PolyPolyClip2D(&clip, &polygon, &polygon);
    return polygon;
}

}  // namespace

TEST_CASE("how many vertices a clip leaves") {
    struct Row {
        const char* what;
        Polygon clip, subject;
        size_t vertices;
    };
    const double kBelow = -1e-6 * 0x1p21;
    const Row rows[] = {
        {"a vertex at 1e-6 from an edge of length 1 is outside",
         kUnitSquare,
         {vertexAt(0.9, 0.9), vertexAt(0.1, 0.9), vertexAt(0.5, 1e-6)},
         4},
        {"a vertex one step farther inside is inside",
         kUnitSquare,
         {vertexAt(0.9, 0.9), vertexAt(0.1, 0.9), vertexAt(0.5, 0x1.0c6f7a0b5ed8ep-20)},
         3},
        {"outside, with one edge on a side: only touching",
         kUnitSquare,
         {vertexAt(1, 0.2), vertexAt(1.5, 0.5), vertexAt(1, 0.8)},
         0},
        {"a subject of two vertices", kUnitSquare, {vertexAt(0.1, 0.1), vertexAt(0.2, 0.2)}, 0},
        {"a clip polygon of two vertices whose line crosses the subject",
         {vertexAt(-7e9, 3), vertexAt(9e9, -2)},
         kUnitSquare,
         0},
        {"an empty clip polygon", {}, kUnitSquare, 0},
        {"cross(first clip edge, mean of the clip vertices) is exactly -1e-6: the polygon counts as counterclockwise",
         {vertexAt(0, 0), vertexAt(0x1p-20, 0), vertexAt(10, kBelow), vertexAt(-10, kBelow)},
         {vertexAt(0, -1.5), vertexAt(0.1, -1.6), vertexAt(-0.1, -1.6)},
         0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK(clipped(row.clip, row.subject).size() == row.vertices);
        Polygon onClip = row.clip;
        Zan_PolyPolyClip2D(&onClip, &row.subject, &onClip);
        CHECK(onClip.size() == row.vertices);
    }
}

TEST_CASE("x and y of an intersection with a nearly parallel line are not divided by the determinant") {
    // Two vertices on both sides of the limit y = 1e-6; their y differ by only 1e-13.
    const Polygon subject = {{0.25, 1e-6, 0, 1}, {0.75, 1e-6 + 1e-13, 2, 3}, {0.5, 0.5, 0, 1}};
    const Polygon result = clipped(kUnitSquare, subject);
    REQUIRE(result.size() == 4);
    CHECK(result[1].x == Approx(5e-7));
    CHECK(result[1].y == 0);
}

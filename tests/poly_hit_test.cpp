// Hit tests of single points, and areas, with answers worked out by hand.
#include "tests/support/vectors.h"
#include "zan/poly.h"

#include <catch2/catch.hpp>

namespace {

using Points = std::vector<Vector2>;

const Points kSquare = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
const Points kNotched = {{0, 0}, {3, 0}, {3, 8}, {7, 8}, {7, 0}, {10, 0}, {10, 10}, {0, 10}};

}  // namespace

TEST_CASE("a point in a polygon") {
    struct Row {
        const char* what;
        Points vertices;
        Vector2 point;
        bool inside;
    };
    const Row rows[] = {
        {"the middle of a square", kSquare, {5, 5}, true},
        {"on the right side", kSquare, {10, 5}, true},
        {"on the bottom side", kSquare, {5, 0}, true},
        {"the right end of the bottom side", kSquare, {10, 0}, true},
        {"the right end of the top side", kSquare, {10, 10}, true},
        {"on the left side: no edge spans x = 0", kSquare, {0, 5}, false},
        {"the left end of the bottom side", kSquare, {0, 0}, false},
        {"the left end of the top side", kSquare, {0, 10}, false},
        {"to the right", kSquare, {15, 5}, false},
        {"in an arm of a concave outline", kNotched, {8, 4}, true},
        {"in its notch", kNotched, {5, 4}, false},
        {"on the edge that closes the notch", kNotched, {5, 8}, true},
        {"no vertices", {}, {0, 0}, false},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        const auto count = static_cast<int32_t>(row.vertices.size());
        unsigned char inside = 9;
        CHECK(Zan_IsFloatPointInConcavePoly(&row.point, row.vertices.data(), count, 0, &inside) == 0);
        CHECK(inside == (row.inside ? 1 : 0));
    }
}

TEST_CASE("signed areas of the first vertices of an outline") {
    const double areas[] = {0, 0, 0, 12, -4, -32, -32, 18, 68};
    for (int32_t count = 0; count < 9; ++count) {
        CAPTURE(count);
        CHECK(Zan_SignedPolygonArea2D(kNotched.data(), count) == areas[count]);
    }
}

// Segments: clipped at the near plane, clipped to a rectangle, and the distance from a point to their line.
#include "tests/support/doubles.h"
#include "tests/support/random.h"
#include "tests/support/vectors.h"
#include "zan/space.h"

TEST_CASE("a segment clipped at the near plane") {
    struct Row {
        const char* what;
        Vector3 a, b;
        bool aBehind, bBehind;
        Vector3 clipPoint;
    };
    constexpr double kBefore = 0x1.9999999999999p-4;  // the double before 0.1
    const Row rows[] = {
        {"b is behind; z of the clip point is rounded", {0, 0, 1}, {0, 10, -1}, false, true, {0, 4.5, -1 + 1.1}},
        {"a is behind", {8, 10, -0.15}, {0, 0, 0.35}, true, false, {4, 5, 0.1}},
        {"an end on the plane is in front", {1, 2, 0.1}, {3, 4, 5}, false, false, {0, 0, 0}},
        {"both ends are behind, one by one step", {1, 2, kBefore}, {3, 4, -5}, true, true, {0, 0, 0}},
        {"one end is on the plane, the other one step behind", {1, 2, kBefore}, {3, 4, 0.1}, true, false, {3, 4, 0.1}},
        {"z of b is NaN: a counts as behind", {1, 2, 3}, {3, 4, NAN}, true, false, {NAN, NAN, NAN}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        bool aBehind = !row.aBehind;
        bool bBehind = !row.bBehind;
        Vector3 clipPoint = row.a;  // the clip point may overwrite an end
        CHECK(Zan_Clip3DLine(&clipPoint, &row.b, &aBehind, &bBehind, &clipPoint) == 0);
        CHECK(aBehind == row.aBehind);
        CHECK(bBehind == row.bBehind);
        CHECK(doubles(clipPoint) == doubles(row.clipPoint));
        bool anyBehind = false;  // one flag for both ends
        Zan_Clip3DLine(&row.a, &row.b, &anyBehind, &anyBehind, &clipPoint);
        CHECK(anyBehind == (row.aBehind || row.bBehind));
    }
}

TEST_CASE("the distance to a line has the bits of its definition, which takes a square root for every length") {
    Random random(51);
    // Lengths on both sides of each limit, one step apart: too short, just long enough; just short enough, too long.
    const double limits[] = {1e-12, 0x1.19799812dea12p-40, 1e12, 0x1.d1a94a2000001p+39};
    enum Kind { kNasty, kLattice, kPlain, kLengthAtLimit, kKinds };
    for (int round = 0; round < 20000; ++round) {
        const int kind = random.below(kKinds);
        const auto draw = [&] {
            if (kind == kNasty) return random.nasty();
            return kind == kLattice ? random.below(7) : random.plain(-1, 1) / 3;
        };
        const Vector2 a = kind == kLengthAtLimit ? Vector2(0, 0) : Vector2(draw(), draw());
        const Vector2 b = kind == kLengthAtLimit ? Vector2(limits[round % 4], 0) : Vector2(draw(), draw());
        const Vector2 d(b.x - a.x, b.y - a.y);
        // Half of the points are as far from a as b is, but for rounding.
        const Vector2 p = random.below(2) == 0 ? Vector2(a.x + d.y, a.y + d.x) : Vector2(draw(), draw());
        const Vector2 v(p.x - a.x, p.y - a.y);
        const double length = std::sqrt(d.x * d.x + d.y * d.y);
        const double fromA = std::sqrt(v.x * v.x + v.y * v.y);
        const Vector2 u(d.x * (1 / length), d.y * (1 / length));
        const double t = u.x * v.x + u.y * v.y;
        const Vector2 fromFoot(v.x - t * u.x, v.y - t * u.y);
        const bool hasLine = length > 1e-12 && length <= 1e12;
        const bool expectedWithin = hasLine && !(t < 0) && !(fromA > length);
        const double expected = hasLine ? std::sqrt(fromFoot.x * fromFoot.x + fromFoot.y * fromFoot.y) : fromA;
        CAPTURE(p.x, p.y, a.x, a.y, b.x, b.y);
        double distance = -1;
        bool within = !expectedWithin;
        CHECK(Zan_PerpDistTo2DLine(&p, &a, &b, &within, &distance) == 0);
        CHECK(within == expectedWithin);
        CHECK(doubles(distance) == doubles(expected));
    }
}

TEST_CASE("a segment clipped to a rectangle") {
    struct Row {
        const char* what;
        Vector2 a, b;
        bool visible;
        Vector2 clippedA, clippedB;
        Zan_FloatRect rect = {0, 0, 10, 10};
    };
    constexpr double kBefore10 = 0x1.3ffffffffffffp+3;
    const Row rows[] = {
        {"an end beyond a corner: to the left side first, then up", {-2, 16}, {6, 0}, true, {1, 10}, {6, 0}},
        {"horizontal, across the rectangle: not visible, since its bounding box has no area",
         {-5, 5},
         {15, 5},
         false,
         {-5, 5},
         {15, 5}},
        {"along a side, both ends inside", {0, 0}, {10, 0}, true, {0, 0}, {10, 0}},
        {"the first end is moved exactly above the second", {-20, -1e17}, {40, 1}, false, {40, 0}, {40, 1}},
        {"touches the right side from outside", {10, 5}, {15, 6}, false, {10, 5}, {15, 6}},
        {"touches the bottom from outside", {5, 10}, {6, 15}, false, {5, 10}, {6, 15}},
        {"b is inside, a becomes NaN: one end inside is enough", {INFINITY, 6}, {5, 5}, true, {10, NAN}, {5, 5}},
        {"a is inside, b becomes NaN", {5, 5}, {INFINITY, 6}, true, {5, 5}, {10, NAN}},
        {"a NaN end is outside", {5, 5}, {NAN, 5}, false, {5, 5}, {NAN, 5}},
        {"vertical, with a NaN side", {5, -5}, {5, 20}, false, {5, -5}, {5, 20}, {NAN, 0, 10, 10}},
        {"horizontal, with a NaN side", {-5, 5}, {20, 5}, false, {-5, 5}, {20, 5}, {0, NAN, 10, 10}},
        {"passes a corner outside: partly clipped", {-4, 8}, {4, 16}, false, {-2, 10}, {-2, 10}},
        {"rounding moves an end exactly below the other", {9, 1e17}, {-2, kBefore10}, false, {-2, 10}, {-2, kBefore10}},
        {"rounding moves an end exactly beside the other",
         {1e17, 9},
         {kBefore10, -2},
         false,
         {10, -2},
         {kBefore10, -2}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        Vector2 a = row.a;
        Vector2 b = row.b;
        bool visible = !row.visible;
        CHECK(Zan_ClipLine2Rect(&row.rect, &a, &b, &visible) == 0);
        CHECK(visible == row.visible);
        CHECK(doubles(a) == doubles(row.clippedA));
        CHECK(doubles(b) == doubles(row.clippedB));
    }
}

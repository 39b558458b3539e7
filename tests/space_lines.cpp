// Segments against the near plane and against rectangles, and their distance from a point.
#include "tests/support/matrices.h"
#include "zan/space.h"

TEST_CASE("a segment and the near plane") {
    const auto check = [](const V3& a, const V3& b, bool aIsBehind, bool bIsBehind, const V3& expected) {
        CAPTURE(a.z, b.z);
        bool aBehind = !aIsBehind, bBehind = !bIsBehind;
        V3 clip = a;
        CHECK(Zan_Clip3DLine(&clip, &b, &aBehind, &bBehind, &clip) == 0);
        CHECK((aBehind == aIsBehind && bBehind == bIsBehind && sameDoubles(clip, expected)));
    };
    constexpr double kBefore = 0x1.9999999999999p-4;                 // the double before 0.1
    check({0, 0, 1}, {0, 10, -1}, false, true, {0, 4.5, -1 + 1.1});  // z is rounded
    check({8, 10, -0.15}, {0, 0, 0.35}, true, false, {4, 5, 0.1});
    check({1, 2, 0.1}, {3, 4, 5}, false, false, {0, 0, 0}), check({1, 2, kBefore}, {3, 4, -5}, true, true, {0, 0, 0});
    check({1, 2, kBefore}, {3, 4, 0.1}, true, false, {3, 4, 0.1});
    check({1, 2, 3}, {3, 4, kNaN}, true, false, {kNaN, kNaN, kNaN});
}

TEST_CASE("the distance from a point to a line") {
    Random random(51);
    const double lengths[] = {1e-12, 0x1.19799812dea12p-40, 1e12, 0x1.d1a94a2000001p+39};  // the ends of what is a line
    for (int round = 0; round < 20000; ++round) {  // with roots, where the library compares squares
        const int kind = random.below(4);
        const auto draw = [&] {
            return kind == 0 ? random.nasty() : kind == 1 ? random.below(7) : random.plain(-1, 1) / 3;
        };
        const V2 a = kind == 3 ? V2(0, 0) : V2(draw(), draw());
        const V2 b = kind == 3 ? V2(lengths[round % 4], 0) : V2(draw(), draw()), d(b.x - a.x, b.y - a.y);
        // Every other point is as far from a as b is, but for rounding.
        const V2 p = random.below(2) == 0 ? V2(a.x + d.y, a.y + d.x) : V2(draw(), draw()), v(p.x - a.x, p.y - a.y);
        const double size = std::sqrt(d.x * d.x + d.y * d.y), fromA = std::sqrt(v.x * v.x + v.y * v.y);
        const V2 u(d.x * (1 / size), d.y * (1 / size));
        const double t = u.x * v.x + u.y * v.y, x = v.x - t * u.x, y = v.y - t * u.y;
        const bool line = size > 1e-12 && size <= 1e12, expected = line && !(t < 0) && !(fromA > size);
        CAPTURE(p.x, p.y, a.x, a.y, b.x, b.y);
        bool within = !expected;
        double distance = -1;
        CHECK(Zan_PerpDistTo2DLine(&p, &a, &b, round % 8 == 0 ? nullptr : &within, &distance) == 0);
        CHECK((within == expected) != (round % 8 == 0));
        CHECK(sameBits(distance, line ? std::sqrt(x * x + y * y) : fromA));
    }
}

TEST_CASE("a segment and a rectangle") {
    const auto check = [](V2 a, V2 b, bool expected, const V2& clippedA, const V2& clippedB,
                          const Zan_FloatRect& rect = {0, 0, 10, 10}) {
        CAPTURE(clippedA.x, clippedA.y, clippedB.x, clippedB.y);
        bool visible = !expected;
        CHECK(Zan_ClipLine2Rect(&rect, &a, &b, &visible) == 0);
        CHECK((visible == expected && sameDoubles(a, clippedA) && sameDoubles(b, clippedB)));
    };
    check({-5, 5}, {15, 6}, true, {0, 5.25}, {10, 5.75}), check({6, 15}, {5, -5}, true, {5.75, 10}, {5.25, 0});
    check({-2, 16}, {6, 0}, true, {1, 10}, {6, 0});  // sideways, then up
    check({-5, -5}, {-1, 20}, false, {-5, -5}, {-1, 20}), check({-5, 5}, {15, 5}, false, {-5, 5}, {15, 5});
    check({0, 0}, {10, 0}, true, {0, 0}, {10, 0});
    check({-20, -1e17}, {40, 1}, false, {40, 0}, {40, 1});  // the first end is moved right above the second
    check({10, 5}, {15, 6}, false, {10, 5}, {15, 6}), check({5, 10}, {6, 15}, false, {5, 10}, {6, 15});
    // One end inside is enough.
    check({INFINITY, 6}, {5, 5}, true, {10, kNaN}, {5, 5}), check({5, 5}, {INFINITY, 6}, true, {5, 5}, {10, kNaN});
    check({5, 5}, {kNaN, 5}, false, {5, 5}, {kNaN, 5});
    // Upright and level segments stay as they are even where a side is NaN.
    check({5, -5}, {5, 20}, false, {5, -5}, {5, 20}, {kNaN, 0, 10, 10});
    check({-5, 5}, {20, 5}, false, {-5, 5}, {20, 5}, {0, kNaN, 10, 10});
    check({-4, 8}, {4, 16}, false, {-2, 10}, {-2, 10});  // past a corner: partly clipped
    // 1e17 swallows the difference: an end lands exactly beside or below the other, outside.
    constexpr double kBefore10 = 0x1.3ffffffffffffp+3;
    check({9, 1e17}, {-2, kBefore10}, false, {-2, 10}, {-2, kBefore10});
    check({1e17, 9}, {kBefore10, -2}, false, {10, -2}, {kBefore10, -2});
}

// Segments against the near plane and against rectangles, and their distance from a point.
#include "values.h"
#include "zan/space.h"

using Point2 = Zan_Vector2T<double>;
using Point3 = Zan_Vector3T<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST_CASE("a segment and the near plane") {
    constexpr double kBefore = 0x1.9999999999999p-4;  // the double before 0.1
    const struct {
        Point3 a, b;
        bool aBehind, bBehind;
        Point3 clip;
    } rows[] = {
        {{0, 0, 1}, {0, 10, -1}, false, true, {0, 4.5, -1 + 1.1}},  // z is rounded
        {{8, 10, -0.15}, {0, 0, 0.35}, true, false, {4, 5, 0.1}},
        {{1, 2, 0.1}, {3, 4, 5}, false, false, {0, 0, 0}},
        {{1, 2, kBefore}, {3, 4, -5}, true, true, {0, 0, 0}},
        {{1, 2, kBefore}, {3, 4, 0.1}, true, false, {3, 4, 0.1}},
        {{1, 2, 3}, {3, 4, kNaN}, true, false, {kNaN, kNaN, kNaN}},  // where an end is unknown, a counts as behind
    };
    for (const auto& r : rows) {
        CAPTURE(r.a.z, r.b.z);
        bool aBehind = !r.aBehind, bBehind = !r.bBehind;
        Point3 clip = r.a;
        CHECK(Zan_Clip3DLine(&clip, &r.b, &aBehind, &bBehind, &clip) == 0);
        CHECK((aBehind == r.aBehind && bBehind == r.bBehind && sameDoubles(clip, r.clip)));
    }
}

TEST_CASE("the distance from a point to a line") {
    const struct {
        Point2 p, b;  // a is the origin
        bool within;
        double distance;
    } rows[] = {
        {{5, 3}, {10, 0}, true, 3},
        {{9, 5}, {10, 0}, false, 5},  // beside b, but farther from a than b is
        {{-1, 1}, {10, 0}, false, 1},
        {{0, 10}, {10, 0}, true, 10},
        {{7, 1}, {6, 8}, true, 5},
        {{3, 4}, {0, 0}, false, 5},
        {{3, 4}, {1e-12, 0}, false, 5},  // too short
        {{-1, 4}, {1.1e-12, 0}, false, 4},
        {{3, 4}, {1e12, 0}, true, 4},
        {{3, 4}, {0x1.d1a94a2000001p+39, 0}, false, 5},  // too long
        {{kNaN, 4}, {10, 0}, true, kNaN},
    };
    for (const auto& r : rows) {
        CAPTURE(r.p.x, r.p.y, r.b.x);
        const Point2 a(0, 0);
        bool within = !r.within;
        double distance = -1;
        CHECK(Zan_PerpDistTo2DLine(&r.p, &a, &r.b, nullptr, &distance) == 0);
        CHECK(Zan_PerpDistTo2DLine(&r.p, &a, &r.b, &within, &distance) == 0);
        CHECK((within == r.within && sameBits(distance, r.distance)));
    }
}

TEST_CASE("a segment and a rectangle") {
    constexpr Zan_FloatRect kRect = {0, 0, 10, 10};
    constexpr double kBefore10 = 0x1.3ffffffffffffp+3;
    const struct {
        const char* what;
        Point2 a, b;
        bool visible;
        Point2 clippedA, clippedB;
    } rows[] = {
        {"through", {-5, 5}, {15, 6}, true, {0, 5.25}, {10, 5.75}},
        {"horizontal", {-5, 5}, {15, 5}, false, {-5, 5}, {15, 5}},
        {"inside up to the sides", {0, 5}, {10, 5}, true, {0, 5}, {10, 5}},
        {"to the left", {-5, -5}, {-1, 20}, false, {-5, -5}, {-1, 20}},
        {"sideways, then up", {-2, 16}, {6, 0}, true, {1, 10}, {6, 0}},
        {"past a corner: partly clipped", {-4, 8}, {4, 16}, false, {-2, 10}, {-2, 10}},
        // 1e17 swallows the difference: an end lands exactly beside or below the other, outside.
        {"no width left", {9, 1e17}, {-2, kBefore10}, false, {-2, 10}, {-2, kBefore10}},
        {"no height left", {1e17, 9}, {kBefore10, -2}, false, {10, -2}, {kBefore10, -2}},
        {"boxes that touch", {10, 5}, {15, 6}, false, {10, 5}, {15, 6}},
        {"an unknown end", {5, 5}, {kNaN, 5}, false, {5, 5}, {kNaN, 5}},
    };
    for (const auto& r : rows) {
        CAPTURE(r.what);
        Point2 a = r.a, b = r.b;
        bool visible = !r.visible;
        CHECK(Zan_ClipLine2Rect(&kRect, &a, &b, &visible) == 0);
        CHECK((visible == r.visible && sameDoubles(a, r.clippedA) && sameDoubles(b, r.clippedB)));
    }
    Random random(52);
    for (int round = 0; round < 5000; ++round) {  // what is left is the part between the sides
        const Point2 from(random.plain(-10, 20), random.plain(-10, 20));
        const Point2 d(random.plain(-20, 20), random.plain(-20, 20));
        double first = 0, last = 1;
        for (const auto& [start, step] : {std::pair(from.x, d.x), std::pair(from.y, d.y)}) {
            first = std::max(first, std::min(-start / step, (10 - start) / step));
            last = std::min(last, std::max(-start / step, (10 - start) / step));
        }
        Point2 a = from, b(from.x + d.x, from.y + d.y);
        bool visible = false;
        CHECK(Zan_ClipLine2Rect(&kRect, &a, &b, &visible) == 0);
        CHECK((visible == (first < last) || std::abs(last - first) < 1e-9));
        if (!visible) continue;
        CHECK((a.x == Approx(from.x + first * d.x).margin(1e-9) && a.y == Approx(from.y + first * d.y).margin(1e-9)));
        CHECK((b.x == Approx(from.x + last * d.x).margin(1e-9) && b.y == Approx(from.y + last * d.y).margin(1e-9)));
    }
}

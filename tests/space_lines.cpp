// Segments against the near plane and against rectangles, and their distance from a point.
#include "values.h"
#include "zan/space.h"

namespace {

using Point2 = Zan_Vector2T<double>;
using Point3 = Zan_Vector3T<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kBeforeNear = 0x1.9999999999999p-4;  // the double before 0.1

struct NearRow {
    const char* what;
    Point3 a, b;
    bool aBehind, bBehind;
    Point3 clip;
};
const NearRow kNear[] = {
    {"b behind; z is rounded", {0, 0, 1}, {0, 10, -1}, false, true, {0, 4.5, -1 + 1.1}},
    {"a behind", {8, 10, -0.15}, {0, 0, 0.35}, true, false, {4, 5, 0.1}},
    {"both in front", {1, 2, 0.1}, {3, 4, 5}, false, false, {0, 0, 0}},
    {"both behind", {1, 2, kBeforeNear}, {3, 4, -5}, true, true, {0, 0, 0}},
    {"a hair behind", {1, 2, kBeforeNear}, {3, 4, 0.1}, true, false, {3, 4, 0.1}},
    {"where an end is unknown, a counts as behind", {1, 2, 3}, {3, 4, kNaN}, true, false, {kNaN, kNaN, kNaN}},
};

struct DistanceRow {
    const char* what;
    Point2 p, a, b;
    bool within;
    double distance;
};
const DistanceRow kDistances[] = {
    {"beside", {5, 3}, {0, 0}, {10, 0}, true, 3},
    {"beside b but farther from a than b is", {9, 5}, {0, 0}, {10, 0}, false, 5},
    {"before a", {-1, 1}, {0, 0}, {10, 0}, false, 1},
    {"as far from a as b", {0, 10}, {0, 0}, {10, 0}, true, 10},
    {"sloping", {7, 1}, {0, 0}, {6, 8}, true, 5},
    {"no length", {3, 4}, {0, 0}, {0, 0}, false, 5},
    {"1e-12 is no length", {3, 4}, {0, 0}, {1e-12, 0}, false, 5},
    {"a little more is", {-1, 4}, {0, 0}, {1.1e-12, 0}, false, 4},
    {"1e12 is not too long", {3, 4}, {0, 0}, {1e12, 0}, true, 4},
    {"the next double is", {3, 4}, {0, 0}, {0x1.d1a94a2000001p+39, 0}, false, 5},
    {"an unknown point is within", {kNaN, 4}, {0, 0}, {10, 0}, true, kNaN},
};

struct ClipRow {
    const char* what;
    Point2 a, b;
    bool visible;
    Point2 clippedA, clippedB;
};
constexpr double kBefore10 = 0x1.3ffffffffffffp+3;
constexpr Zan_FloatRect kRect = {0, 0, 10, 10};
const ClipRow kClips[] = {
    {"through", {-5, 5}, {15, 6}, true, {0, 5.25}, {10, 5.75}},
    {"horizontal", {-5, 5}, {15, 5}, false, {-5, 5}, {15, 5}},
    {"inside up to the sides", {0, 5}, {10, 5}, true, {0, 5}, {10, 5}},
    {"to the left", {-5, -5}, {-1, 20}, false, {-5, -5}, {-1, 20}},
    {"down through the corners", {-5, -5}, {15, 15}, true, {0, 0}, {10, 10}},
    {"sideways, then up", {-2, 16}, {6, 0}, true, {1, 10}, {6, 0}},
    {"one end in", {5, 5}, {15, 25}, true, {5, 5}, {7.5, 10}},
    {"top", {4, 4}, {8, -4}, true, {4, 4}, {6, 0}},
    {"past a corner: partly clipped", {-4, 8}, {4, 16}, false, {-2, 10}, {-2, 10}},
    // 1e17 swallows the difference: an end lands exactly beside or below the other, outside.
    {"no width left", {9, 1e17}, {-2, kBefore10}, false, {-2, 10}, {-2, kBefore10}},
    {"no height left", {1e17, 9}, {kBefore10, -2}, false, {10, -2}, {kBefore10, -2}},
    {"boxes that touch", {10, 5}, {15, 6}, false, {10, 5}, {15, 6}},
    {"an unknown end", {5, 5}, {kNaN, 5}, false, {5, 5}, {kNaN, 5}},
};

}  // namespace

TEST_CASE("a segment and the near plane") {
    for (const NearRow& r : kNear) {
        CAPTURE(r.what);
        bool aBehind = !r.aBehind, bBehind = !r.bBehind;
        Point3 a = r.a, clip(9, 9, 9);
        CHECK(Zan_Clip3DLine(&a, &r.b, &aBehind, &bBehind, &clip) == 0);
        CHECK((aBehind == r.aBehind && bBehind == r.bBehind));
        CHECK(sameDoubles(clip, r.clip));
        CHECK(Zan_Clip3DLine(&a, &r.b, &aBehind, &bBehind, &a) == 0);
        CHECK(sameDoubles(a, r.clip));
    }
}

TEST_CASE("the distance from a point to a line") {
    for (const DistanceRow& r : kDistances) {
        CAPTURE(r.what);
        bool within = !r.within;
        double distance = -1;
        CHECK(Zan_PerpDistTo2DLine(&r.p, &r.a, &r.b, &within, &distance) == 0);
        CHECK(within == r.within);
        CHECK(sameBits(distance, r.distance));
        CHECK(Zan_PerpDistTo2DLine(&r.p, &r.a, &r.b, nullptr, &distance) == 0);
    }
}

TEST_CASE("a segment and a rectangle") {
    for (const ClipRow& r : kClips) {
        CAPTURE(r.what);
        Point2 a = r.a, b = r.b;
        bool visible = !r.visible;
        CHECK(Zan_ClipLine2Rect(&kRect, &a, &b, &visible) == 0);
        CHECK(visible == r.visible);
        CHECK((sameDoubles(a, r.clippedA) && sameDoubles(b, r.clippedB)));
    }
}

TEST_CASE("what is left of a clipped segment is its part between the sides") {
    Random random(52);
    for (int round = 0; round < 5000; ++round) {
        const Point2 from(random.plain(-10, 20), random.plain(-10, 20));
        const Point2 d(random.plain(-20, 20), random.plain(-20, 20));
        double first = 0, last = 1;
        for (const auto& [start, step] : {std::pair(from.x, d.x), std::pair(from.y, d.y)}) {
            first = std::max(first, std::min(-start / step, (10 - start) / step));
            last = std::min(last, std::max(-start / step, (10 - start) / step));
        }
        Point2 a = from, b(from.x + d.x, from.y + d.y);
        bool visible = false;
        Zan_ClipLine2Rect(&kRect, &a, &b, &visible);
        if (std::abs(last - first) > 1e-9) CHECK(visible == (first < last));
        if (!visible) continue;
        CHECK((a.x == Approx(from.x + first * d.x).margin(1e-9) && a.y == Approx(from.y + first * d.y).margin(1e-9)));
        CHECK((b.x == Approx(from.x + last * d.x).margin(1e-9) && b.y == Approx(from.y + last * d.y).margin(1e-9)));
    }
}

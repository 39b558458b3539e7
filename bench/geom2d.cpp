// Rectangles and angles beside what a host would write by hand, which the compiler inlines.
#include "zan/geom2d.h"

#include "entries.h"
#include "tests/support/vectors.h"

namespace zan_bench {
namespace {

template <class Rect>
struct RectPair {
    Rect a, b;
};
using ShortPair = RectPair<Zan_Rect>;
using LongPair = RectPair<Zan_LRect>;
using FloatPair = RectPair<Zan_FloatRect>;

/// A rectangle whose left and top lie within 3000 of 0 and whose width and height are at most 3000, so that two of them
/// often overlap. A few are empty.
template <class Rect, class Number>
Rect rectOf(Random& random) {
    const int32_t left = random.integer(-3000, 3000), top = random.integer(-3000, 3000);
    const int32_t smallest = random.integer(0, 7) == 0 ? -50 : 1;
    Rect rect;
    rect.left = static_cast<Number>(left);
    rect.top = static_cast<Number>(top);
    rect.right = static_cast<Number>(left + random.integer(smallest, 3000));
    rect.bottom = static_cast<Number>(top + random.integer(smallest, 3000));
    return rect;
}
template <class Rect, class Number>
RectPair<Rect> pairOf(Random& random) {
    const Rect a = rectOf<Rect, Number>(random);
    return {a, rectOf<Rect, Number>(random)};
}

/// Compares the fields by name: records differ in their order of storage.
struct SameRect {
    template <class Rect>
    bool operator()(const Rect& a, const Rect& b) const {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    }
};

template <class Rect>
bool emptyByHand(const Rect& r) {
    return r.right <= r.left || r.bottom <= r.top;
}
template <class Rect>
Rect intersectionByHand(const Rect& a, const Rect& b) {
    Rect r;
    r.left = std::max(a.left, b.left);
    r.top = std::max(a.top, b.top);
    r.right = std::min(a.right, b.right);
    r.bottom = std::min(a.bottom, b.bottom);
    if (emptyByHand(a) || emptyByHand(b) || emptyByHand(r)) return Rect{};
    return r;
}
template <class Rect>
Rect unionByHand(const Rect& a, const Rect& b) {
    if (emptyByHand(b)) return a;
    if (emptyByHand(a)) return b;
    Rect r;
    r.left = std::min(a.left, b.left);
    r.top = std::min(a.top, b.top);
    r.right = std::max(a.right, b.right);
    r.bottom = std::max(a.bottom, b.bottom);
    return r;
}
template <class Rect>
bool enclosesByHand(const Rect& a, const Rect& b) {
    return a.left <= b.left && a.right >= b.right && a.top <= b.top && a.bottom >= b.bottom;
}

void addSets() {
    static const auto shorts = inputs(kInputs, 61, pairOf<Zan_Rect, int16_t>);
    static const auto longs = inputs(kInputs, 62, pairOf<Zan_LRect, int32_t>);
    static const auto floats = inputs(kInputs, 63, pairOf<Zan_FloatRect, double>);
    const ShortPair* s = shorts.data();
    const LongPair* l = longs.data();
    const FloatPair* f = floats.data();

    Entry("intersection, 16-bit", kInputs,
          [=](size_t i) {
              Zan_Rect r;
              static_cast<void>(Zan_SectRect(&s[i].a, &s[i].b, &r));
              return r;
          })
        .peer(
            "by hand", [=](size_t i) { return intersectionByHand(s[i].a, s[i].b); }, SameRect());
    Entry("intersection, 32-bit", kInputs,
          [=](size_t i) {
              Zan_LRect r;
              static_cast<void>(Zan_SectLRect(&l[i].a, &l[i].b, &r));
              return r;
          })
        .peer(
            "by hand", [=](size_t i) { return intersectionByHand(l[i].a, l[i].b); }, SameRect());
    Entry("intersection, double", kInputs,
          [=](size_t i) {
              Zan_FloatRect r;
              static_cast<void>(Zan_SectFloatRect(&f[i].a, &f[i].b, &r));
              return r;
          })
        .peer(
            "by hand", [=](size_t i) { return intersectionByHand(f[i].a, f[i].b); }, SameRect());
    Entry("union, 16-bit", kInputs,
          [=](size_t i) {
              Zan_Rect r;
              Zan_UnionRect(&s[i].a, &s[i].b, &r);
              return r;
          })
        .peer(
            "by hand", [=](size_t i) { return unionByHand(s[i].a, s[i].b); }, SameRect());
    Entry("union, 32-bit", kInputs,
          [=](size_t i) {
              Zan_LRect r;
              Zan_UnionLRect(&l[i].a, &l[i].b, &r);
              return r;
          })
        .peer(
            "by hand", [=](size_t i) { return unionByHand(l[i].a, l[i].b); }, SameRect());
    Entry("one rectangle encloses the other, 32-bit", kInputs, [=](size_t i) {
        return Zan_LRectCompare(Zan_RectRelation_Encloses, &l[i].a, &l[i].b);
    }).peer("by hand", [=](size_t i) { return enclosesByHand(l[i].a, l[i].b); });
}

struct PointAndRect {
    Zan_Point point;
    Zan_Rect rect;
};

void addPoints() {
    static const auto cases = inputs(kInputs, 64, [](Random& random) {
        return PointAndRect{
            {static_cast<int16_t>(random.integer(-4000, 4000)), static_cast<int16_t>(random.integer(-4000, 4000))},
            rectOf<Zan_Rect, int16_t>(random)};
    });
    static const auto fixed = inputs(kInputs, 65, [](Random& random) {
        Zan_FixedRect rect = rectOf<Zan_FixedRect, int32_t>(random);
        for (int32_t* side : {&rect.left, &rect.top, &rect.right, &rect.bottom}) *side = *side * 5000;
        return rect;
    });
    const PointAndRect* c = cases.data();
    const Zan_FixedRect* x = fixed.data();

    Entry("point in a rectangle, 16-bit", kInputs, [=](size_t i) {
        return Zan_PtInRect(&c[i].point, &c[i].rect);
    }).peer("by hand", [=](size_t i) {
        const auto& [p, r] = c[i];
        return r.left <= p.h && p.h < r.right && r.top <= p.v && p.v < r.bottom;
    });
    Entry("fixed rectangle to 32-bit, outwards", kInputs,
          [=](size_t i) {
              Zan_LRect r;
              Zan_FixedRect2LRectOut(&x[i], &r);
              return r;
          })
        .peer(
            "std::floor, std::ceil",
            [=](size_t i) {
                const auto down = [](int32_t v) { return static_cast<int32_t>(std::floor(v / 65536.0)); };
                const auto up = [](int32_t v) { return static_cast<int32_t>(std::ceil(v / 65536.0)); };
                return Zan_LRect{down(x[i].left), down(x[i].top), up(x[i].right), up(x[i].bottom)};
            },
            SameRect())
        .peer(
            "shifts by hand",
            [=](size_t i) {
                return Zan_LRect{x[i].left >> 16, x[i].top >> 16, (x[i].right + 0xFFFF) >> 16,
                                 (x[i].bottom + 0xFFFF) >> 16};
            },
            SameRect());
    Entry("centre a rectangle, 16-bit", kInputs,
          [=](size_t i) {
              const Zan_Rect frame = {-2000, -1000, 2000, 1000};
              Zan_Rect r = c[i].rect;
              Zan_CenterRect(&frame, &r);
              return r;
          })
        .peer(
            "by hand",
            [=](size_t i) {
                const Zan_Rect& r = c[i].rect;
                const int width = r.right - r.left, height = r.bottom - r.top;
                const int left = -1000 + (2000 - width) / 2, top = -2000 + (4000 - height) / 2;
                return Zan_Rect{static_cast<int16_t>(top), static_cast<int16_t>(left),
                                static_cast<int16_t>(top + height), static_cast<int16_t>(left + width)};
            },
            SameRect());
}

/// Degrees clockwise from straight up, in (0, 360]. y points down.
double compassByHand(double x, double y) {
    const double degrees = std::atan2(x, -y) * (180.0 / 3.141592653589793);
    return degrees > 0 ? degrees : degrees + 360.0;
}

void addAngles() {
    static const auto directions = inputs(kManyInputs, 66, [](Random& random) {
        const double x = random.real(-100, 100);
        return Vector2(x, random.real(-100, 100));
    });
    static const auto rects = inputs(kManyInputs, 67, [](Random& random) {
        const double left = random.real(-100, 100), top = random.real(-100, 100);
        return Zan_FloatRect{left, top, left + random.real(0, 50), top + random.real(0, 50)};
    });
    const Vector2* d = directions.data();
    const Zan_FloatRect* r = rects.data();

    Entry("compass angle of a direction", kManyInputs, [=](size_t i) { return Zan_VecToAngle(d[i]); })
        .peer(
            "std::atan2", [=](size_t i) { return compassByHand(d[i].x, d[i].y); }, Near());
    Entry("compass angle of a point about a rectangle", kManyInputs,
          [=](size_t i) {
              Vector2 point = d[i];
              double angle = 0;
              Zan_Pt2Angle(&r[i], &point, &angle);
              return angle;
          })
        .peer(
            "std::atan2",
            [=](size_t i) {
                return compassByHand(d[i].x - (r[i].right + r[i].left) * 0.5, d[i].y - (r[i].bottom + r[i].top) * 0.5);
            },
            Near());
}

}  // namespace

void addGeom2dEntries() {
    addSets();
    addPoints();
    addAngles();
}

}  // namespace zan_bench

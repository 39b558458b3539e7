// Intersection, union and relations of rectangles, against sets of cells; angles of points and directions.
#include <catch2/catch.hpp>

#include "values.h"
#include "zan/geom2d.h"

namespace {

template <class R, class N>
R make(N left, N top, N right, N bottom) {
    using T = decltype(R::left);
    R r;
    r.left = T(left), r.top = T(top), r.right = T(right), r.bottom = T(bottom);
    return r;
}
template <class R>
bool same(const R& a, const R& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
// What a rectangle covers of an 8 by 8 board, a bit a cell.
template <class R>
uint64_t cells(const R& r) {
    uint64_t set = 0;
    for (int i = 0, h = 0, v = 0; i < 64; ++i, h = i % 8, v = i / 8) {
        set |= uint64_t{r.left <= h && h < r.right && r.top <= v && v < r.bottom} << i;
    }
    return set;
}

template <class R>
void checkSets(bool (*sect)(const R*, const R*, R*), int32_t (*unite)(const R*, const R*, R*),
               bool (*compare)(int16_t, const R*, const R*)) {
    Random random(51);
    const auto any = [&] { return make<R>(random.below(8), random.below(8), random.below(9), random.below(9)); };
    for (int i = 0; i < 5000; ++i) {
        const R a = any(), b = any();
        const uint64_t inA = cells(a), inB = cells(b), both = inA & inB;
        R apart = make<R>(1, 2, 3, 4), first = a, second = b;
        CAPTURE(sizeof(R), inA, inB);
        REQUIRE((sect(&a, &b, nullptr) == (both != 0) && sect(&a, &b, &apart) == (both != 0)));
        REQUIRE((sect(&first, &b, &first) == (both != 0) && sect(&a, &second, &second) == (both != 0)));
        REQUIRE((same(first, apart) && same(second, apart) && (both == 0 ? same(apart, R{}) : cells(apart) == both)));
        if (unite == nullptr) continue;

        first = a, second = b;
        REQUIRE((unite(&a, &b, &apart) | unite(&first, &b, &first) | unite(&a, &second, &second)) == 0);
        const R box = make<R>(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                              std::max(a.bottom, b.bottom));
        const bool joined = inA != 0 && inB != 0;
        REQUIRE((same(apart, joined ? box : inB != 0 ? b : a) && same(first, apart)));
        REQUIRE(same(second, joined ? box : inA != 0 ? a : b));

        const auto is = [&](int selector, const R& x, const R& y) { return compare(int16_t(selector), &x, &y); };
        REQUIRE((is(0, a, a) && is(0, a, b) == same(a, b) && is(7, a, b) == (both != 0)));
        REQUIRE((is(6, a, a) && !is(5, a, a) && !is(9, a, a) && !is(-1, a, a)));
        const auto dw = (a.right - a.left) - (b.right - b.left), dh = (a.bottom - a.top) - (b.bottom - b.top);
        REQUIRE((is(1, a, b) == (dw > 0 && dh > 0) && is(2, a, b) == (dw >= 0 && dh >= 0)));
        REQUIRE((is(3, a, b) == (dw < 0 && dh < 0) && is(4, a, b) == (dw <= 0 && dh <= 0)));
        if (!joined) continue;
        const auto grown = [](R r, int low, int high) {
            return make<R>(r.left + low, r.top + low, r.right + high, r.bottom + high);
        };
        REQUIRE((is(6, a, b) == (both == inB) && is(5, a, b) == is(6, grown(a, 1, -1), b)));
        REQUIRE(is(8, a, b) == is(7, grown(a, 0, 1), grown(b, 0, 1)));
    }
}

}  // namespace

TEST_CASE("intersection, union and relations agree with cells") {
    checkSets(Zan_SectRect, Zan_UnionRect, Zan_RectCompare);
    checkSets(Zan_SectLRect, Zan_UnionLRect, Zan_LRectCompare);
    checkSets(Zan_SectFixedRect, Zan_UnionFixedRect, Zan_FixedRectCompare);
    checkSets<Zan_FloatRect>(Zan_SectFloatRect, nullptr, nullptr);
}

TEST_CASE("a NaN loses to the value that is tested against it, a width wraps in 32 bits") {
    const Zan_FloatRect a = {NAN, 0, 10, NAN}, b = {5, 5, 15, 15};
    Zan_FloatRect first = a, second = b;
    CHECK((Zan_SectFloatRect(&first, &b, &first) && same(first, {5, 5, 10, 15})));
    CHECK((Zan_SectFloatRect(&a, &second, &second) && std::isnan(second.left) && std::isnan(second.bottom)));
    CHECK(!Zan_SectFloatRect(&b, &a, nullptr));
    const Zan_LRect wide = {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, unit = {0, 0, 1, 1};
    const Zan_Rect wide16 = {-32768, -32768, 32767, 32767}, unit16 = {0, 0, 1, 1};
    CHECK((Zan_LRectCompare(4, &wide, &unit) && !Zan_LRectCompare(2, &wide, &unit)));
    CHECK(Zan_RectCompare(2, &wide16, &unit16));
}

TEST_CASE("angles are clockwise from straight up") {
    // clang-format off
    const Zan_Rect rect = {0, 0, 10, 10}, thin = {0, 0, 0, 1};
    const struct { Zan_Rect r; Zan_Point p; int angle; } points[] = {
        {rect, {0, 10}, 45}, {rect, {10, 0}, 224}, {rect, {5, 0}, 269}, {rect, {0, 5}, 360}, {rect, {5, 10}, 90},
        {rect, {10, 5}, 180}, {rect, {5, 5}, 90}, {thin, {-32768, 1}, 0}, {thin, {-32768, 0}, 359}};
    const struct { double x, y, angle; } vectors[] = {
        {0, -1, 360}, {1, 0, 90}, {0, 1, 180}, {-1, 0, 270}, {1, 1, 135}, {-1, 1, 225}, {-1, -1, 315}, {1, -1, 45},
        {0, 0, 90}, {-0.0, -5e-324, 360}, {-1, -0.0, 270}, {1, -0.0, 90}, {NAN, 0, NAN}};
    // clang-format on
    for (const auto& [r, p, expected] : points) {
        int16_t angle = -1;
        CAPTURE(p.h, p.v);
        CHECK((Zan_PtToAngle(&r, p, &angle) == 0 && angle == expected));
    }
    const Zan_FloatRect frame = {-3, 2, 5, 8};
    for (const auto& [x, y, expected] : vectors) {
        double angle = -1;
        Zan_Vector2T<double> point(x + 1, y + 5);
        CAPTURE(x, y);
        CHECK(sameBits(Zan_VecToAngle({x, y}), expected));
        CHECK((Zan_Pt2Angle(&frame, &point, &angle) == 0 && sameBits(angle, y == -5e-324 ? 90.0 : expected)));
    }
}

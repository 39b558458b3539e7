// Intersection, union and relations of rectangles, against sets of cells; angles of points and directions.
#include <bitset>
#include <catch2/catch.hpp>

#include "values.h"
#include "zan/geom2d.h"

namespace {

using Cells = std::bitset<64>;  // of an 8 by 8 board

// One face for the four records. There is no union and no comparison of the float ones.
template <class Rect, auto sectRects, auto uniteRects = 0, auto compareRects = 0>
struct Family {
    using R = Rect;
    static constexpr auto sect = sectRects;
    static constexpr auto unite = uniteRects;
    static constexpr auto compare = compareRects;
};
using Short = Family<Zan_Rect, Zan_SectRect, Zan_UnionRect, Zan_RectCompare>;
using Wide = Family<Zan_LRect, Zan_SectLRect, Zan_UnionLRect, Zan_LRectCompare>;
using Fixed = Family<Zan_FixedRect, Zan_SectFixedRect, Zan_UnionFixedRect, Zan_FixedRectCompare>;
using Float = Family<Zan_FloatRect, Zan_SectFloatRect>;

template <class R>
R make(int left, int top, int right, int bottom) {
    using T = decltype(R::left);
    R r;
    r.left = static_cast<T>(left), r.top = static_cast<T>(top);
    r.right = static_cast<T>(right), r.bottom = static_cast<T>(bottom);
    return r;
}
template <class R>
R randomRect(Random& random) {
    return make<R>(random.below(8), random.below(8), random.below(9), random.below(9));
}
template <class R>
Cells cells(const R& r) {
    Cells set;
    for (unsigned i = 0; i < 64; ++i) {
        const int h = i % 8, v = i / 8;
        set[i] = r.left <= h && h < r.right && r.top <= v && v < r.bottom;
    }
    return set;
}
template <class R>
bool same(const R& a, const R& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

}  // namespace

TEMPLATE_TEST_CASE("the intersection holds the cells of both", "", Short, Wide, Fixed, Float) {
    using R = typename TestType::R;
    Random random(51);
    for (int i = 0; i < 5000; ++i) {
        const R a = randomRect<R>(random), b = randomRect<R>(random);
        const Cells both = cells(a) & cells(b);
        R apart = make<R>(1, 2, 3, 4), first = a, second = b;
        CAPTURE(cells(a), cells(b));
        REQUIRE(TestType::sect(&a, &b, nullptr) == both.any());
        REQUIRE(TestType::sect(&a, &b, &apart) == both.any());
        REQUIRE((both.any() ? cells(apart) == both : same(apart, make<R>(0, 0, 0, 0))));
        REQUIRE((TestType::sect(&first, &b, &first) == both.any() && same(first, apart)));
        REQUIRE((TestType::sect(&a, &second, &second) == both.any() && same(second, apart)));
    }
}

TEMPLATE_TEST_CASE("the union holds the cells of both, and relations agree with cells", "", Short, Wide, Fixed) {
    using R = typename TestType::R;
    Random random(52);
    for (int i = 0; i < 5000; ++i) {
        const R a = randomRect<R>(random), b = randomRect<R>(random);
        const Cells inA = cells(a), inB = cells(b);
        R apart, first = a, second = b;
        CAPTURE(inA, inB);
        REQUIRE((TestType::unite(&a, &b, &apart) | TestType::unite(&first, &b, &first)) == 0);
        REQUIRE(TestType::unite(&a, &second, &second) == 0);
        const R box = make<R>(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                              std::max(a.bottom, b.bottom));
        const bool joined = inA.any() && inB.any();
        REQUIRE((same(apart, joined ? box : inB.any() ? b : a) && same(first, apart)));
        REQUIRE(same(second, joined ? box : inA.any() ? a : b));

        const auto related = [](int selector, const R& x, const R& y) {
            return TestType::compare(static_cast<int16_t>(selector), &x, &y);
        };
        REQUIRE((related(0, a, b) == same(a, b) && related(7, a, b) == (inA & inB).any()));
        REQUIRE((related(0, a, a) && related(6, a, a) && !related(5, a, a) && !related(9, a, a) && !related(-1, a, a)));
        if (!joined) continue;
        REQUIRE(related(6, a, b) == ((inA & inB) == inB));
        REQUIRE(related(5, a, b) == related(6, make<R>(a.left + 1, a.top + 1, a.right - 1, a.bottom - 1), b));
        REQUIRE(related(8, a, b) == related(7, make<R>(a.left, a.top, a.right + 1, a.bottom + 1),
                                            make<R>(b.left, b.top, b.right + 1, b.bottom + 1)));
        const int dw = (a.right - a.left) - (b.right - b.left), dh = (a.bottom - a.top) - (b.bottom - b.top);
        REQUIRE((related(1, a, b) == (dw > 0 && dh > 0) && related(2, a, b) == (dw >= 0 && dh >= 0)));
        REQUIRE((related(3, a, b) == (dw < 0 && dh < 0) && related(4, a, b) == (dw <= 0 && dh <= 0)));
    }
}

TEST_CASE("a NaN loses to the value that is tested against it, a width wraps") {
    const Zan_FloatRect a = {NAN, 0, 10, NAN}, b = {5, 5, 15, 15};
    Zan_FloatRect first = a, second = b;
    CHECK((Zan_SectFloatRect(&first, &b, &first) && same(first, {5, 5, 10, 15})));
    CHECK((Zan_SectFloatRect(&a, &second, &second) && std::isnan(second.left) && std::isnan(second.bottom)));
    CHECK(!Zan_SectFloatRect(&b, &a, nullptr));
    const Zan_LRect whole = {INT32_MIN, 0, INT32_MAX, 1}, unit = {0, 0, 1, 1};
    CHECK((Zan_LRectCompare(4, &whole, &unit) && !Zan_LRectCompare(2, &whole, &unit)));
    const Zan_Rect whole16 = {0, -32768, 1, 32767}, unit16 = {0, 0, 1, 1};
    CHECK(Zan_RectCompare(2, &whole16, &unit16));
}

TEST_CASE("angles are clockwise from straight up") {
    const Zan_Rect rect = {0, 0, 10, 10}, thin = {0, 0, 0, 1};
    // clang-format off
    const struct { Zan_Rect r; Zan_Point p; int16_t angle; } points[] = {
        {rect, {0, 10}, 45}, {rect, {10, 0}, 224}, {rect, {5, 0}, 269}, {rect, {0, 5}, 360}, {rect, {5, 10}, 90},
        {rect, {10, 5}, 180}, {rect, {5, 5}, 90}, {thin, {-32768, 1}, 0}, {thin, {-32768, 0}, 359}};
    const struct { double x, y, angle; } vectors[] = {
        {0, -1, 360}, {1, 0, 90}, {0, 1, 180}, {-1, 0, 270}, {1, 1, 135}, {-1, 1, 225}, {-1, -1, 315}, {1, -1, 45},
        {0, 0, 90}, {-0.0, -5e-324, 360}, {-1, -0.0, 270}, {1, -0.0, 90}, {NAN, 0, NAN}};
    // clang-format on
    for (const auto& row : points) {
        int16_t angle = -1;
        CAPTURE(row.p.h, row.p.v);
        CHECK((Zan_PtToAngle(&row.r, row.p, &angle) == 0 && angle == row.angle));
    }
    const Zan_FloatRect frame = {-3, 2, 5, 8};
    for (const auto& [x, y, expected] : vectors) {
        double angle = -1;
        Zan_Vector2T<double> point(x + 1, y + 5);
        CAPTURE(x, y);
        CHECK(sameBits(Zan_VecToAngle({x, y}), expected));
        const bool kept = y == 0 || std::fabs(y) == 1;
        CHECK((Zan_Pt2Angle(&frame, &point, &angle) == 0 && sameBits(angle, kept ? expected : 90.0)));
    }
}

// Points and rectangles, one test for the three integer coordinate types; conversions between them; corner views.
#include <catch2/catch.hpp>

#include "values.h"
#include "zan/geom2d.h"

namespace {

// clang-format off
#define FAMILY(name, prefix, coordinate)                                                                               \
    struct name {                                                                                                      \
        using T = coordinate; using Point = Zan_##prefix##Point; using Rect = Zan_##prefix##Rect;                      \
        static constexpr auto setPt = Zan_Set##prefix##Pt; static constexpr auto copyPt = Zan_Copy##prefix##Pt;        \
        static constexpr auto equalPt = Zan_Equal##prefix##Pt; static constexpr auto inRect = Zan_##prefix##PtInRect;  \
        static constexpr auto span = Zan_##prefix##Pt2Rect; static constexpr auto set = Zan_Set##prefix##Rect;         \
        static constexpr auto copy = Zan_Copy##prefix##Rect; static constexpr auto equal = Zan_Equal##prefix##Rect;    \
        static constexpr auto inset = Zan_Inset##prefix##Rect; static constexpr auto move = Zan_Offset##prefix##Rect;  \
        static constexpr auto empty = Zan_Empty##prefix##Rect; static constexpr auto center = Zan_Center##prefix##Rect; \
    }
// clang-format on
FAMILY(Short, , int16_t);
FAMILY(Wide, L, int32_t);
FAMILY(Fixed, Fixed, Zan_Fixed);

template <class R>
bool holds(const R& r, int64_t left, int64_t top, int64_t right, int64_t bottom) {
    using T = decltype(R::left);  // expectations are computed in 64 bits and wrap in the field
    return r.left == static_cast<T>(left) && r.top == static_cast<T>(top) && r.right == static_cast<T>(right) &&
           r.bottom == static_cast<T>(bottom);
}

// What a host may write; the optimizer must not take the two records for separate ones.
[[gnu::noinline]] int writeBoth(Zan_Rect& rect, Zan_Point& topLeft, Zan_Point& bottomRight) {
    rect.top = 1;
    bottomRight.h = 2;
    topLeft.v = 4;
    rect.right = 7;
    return rect.top * 10 + bottomRight.h;
}

}  // namespace

TEMPLATE_TEST_CASE("points and rectangles of one width", "", Short, Wide, Fixed) {
    using T = typename TestType::T;
    using F = TestType;
    Random random(41);
    const auto any = [&] { return static_cast<T>(random.below(2) ? random.nastyInt() : random.below(5)); };
    for (int i = 0; i < 5000; ++i) {
        typename F::Rect a, b, c;
        typename F::Point p, q;
        const T l = any(), t = any(), r = any(), w = any(), h = any(), v = any();
        CAPTURE(l, t, r, w, h, v);
        REQUIRE((F::set(&a, l, t, r, w) | F::copy(&a, &b) | F::copy(&b, &b) | F::setPt(&p, h, v)) == 0);
        REQUIRE((holds(a, l, t, r, w) && holds(b, l, t, r, w) && p.h == h && p.v == v));
        const bool empty = r <= l || w <= t;
        REQUIRE(F::empty(&a) == empty);
        REQUIRE(F::inRect(&p, &a) ==
                (!empty && std::clamp(h, l, r) == h && std::clamp(v, t, w) == v && h != r && v != w));

        REQUIRE((F::inset(&b, h, v) | F::copy(&a, &c) | F::move(&c, h, v)) == 0);
        REQUIRE(holds(b, int64_t{l} + h, int64_t{t} + v, int64_t{r} - h, int64_t{w} - v));
        REQUIRE(holds(c, int64_t{l} + h, int64_t{t} + v, int64_t{r} + h, int64_t{w} + v));

        REQUIRE((F::setPt(&q, l, t) | F::span(&p, &q, &b)) == 0);
        REQUIRE(holds(b, std::min(l, h), std::min(t, v), std::max(l, h), std::max(t, v)));
        REQUIRE(F::equalPt(&p, &q) == (h == l && v == t));
        REQUIRE((F::copyPt(&p, &q) == 0 && F::equalPt(&p, &q)));

        const bool emptyB = h == l || v == t;
        REQUIRE(F::equal(&a, &b) == ((empty && emptyB) || holds(a, b.left, b.top, b.right, b.bottom)));

        REQUIRE(F::center(&b, &a) == 0);
        const T roomH = static_cast<T>(int64_t{b.right} - b.left), sizeH = static_cast<T>(int64_t{r} - l);
        const T roomV = static_cast<T>(int64_t{b.bottom} - b.top), sizeV = static_cast<T>(int64_t{w} - t);
        const int64_t left = b.left + static_cast<int32_t>(int64_t{roomH} - sizeH) / 2;
        const int64_t top = b.top + static_cast<int32_t>(int64_t{roomV} - sizeV) / 2;
        REQUIRE(holds(a, left, top, left + sizeH, top + sizeV));
    }
    typename F::Rect rect, frame;
    REQUIRE((F::set(&frame, 0, 0, 9, 2) | F::set(&rect, 3, 3, 7, 8) | F::center(&frame, &rect)) == 0);
    CHECK(holds(rect, 2, -1, 6, 4));  // 9 - 4 = 5 gives 2, 2 - 5 = -3 gives -1
    REQUIRE((F::set(&frame, 5, 5, 9, 5) | F::set(&rect, 0, 0, 0, 0)) == 0);
    CHECK(F::equal(&frame, &rect));  // both empty
}

TEST_CASE("conversions between rectangles") {
    Random random(42);
    for (int i = 0; i < 5000; ++i) {
        const Zan_FixedRect fixed = {random.nastyInt(), random.nastyInt(), random.nastyInt(), random.nastyInt()};
        const auto nearest = [](double x) { return std::floor(x + 0.5); };
        const auto up = [](double x) { return std::ceil(x); };
        const auto down = [](double x) { return std::floor(x); };
        const auto all = [&](auto low, auto high, auto toShort, auto toWide) {
            const auto rounded = [](auto round, Zan_Fixed x) {
                return static_cast<int16_t>(std::lround(round(x / 65536.0)));
            };
            const auto l = rounded(low, fixed.left), t = rounded(low, fixed.top);
            const auto r = rounded(high, fixed.right), b = rounded(high, fixed.bottom);
            Zan_Rect s;
            Zan_LRect w;
            return (toShort(&fixed, &s) | toWide(&fixed, &w)) == 0 && holds(s, l, t, r, b) && holds(w, l, t, r, b);
        };
        CAPTURE(fixed.left, fixed.top, fixed.right, fixed.bottom);
        REQUIRE(all(nearest, nearest, Zan_FixedRect2Rect, Zan_FixedRect2LRect));
        REQUIRE(all(up, down, Zan_FixedRect2RectIn, Zan_FixedRect2LRectIn));
        REQUIRE(all(down, up, Zan_FixedRect2RectOut, Zan_FixedRect2LRectOut));

        const Zan_LRect wide = {fixed.left, fixed.top, fixed.right, fixed.bottom};
        const bool passes = wide.left >= -32768 && wide.top >= -32768 && wide.right <= 32767 && wide.bottom <= 32767;
        Zan_Rect narrow = {11, 22, 33, 44};
        REQUIRE(Zan_LRect2Rect(&wide, &narrow) == (passes ? 0 : Zan_Result_OutOfRange));
        REQUIRE((passes ? holds(narrow, wide.left, wide.top, wide.right, wide.bottom) : holds(narrow, 22, 11, 44, 33)));
        Zan_FixedRect fromWide, fromNarrow;
        REQUIRE((Zan_LRect2FixedRect(&wide, &fromWide) | Zan_Rect2FixedRect(&narrow, &fromNarrow)) == 0);
        REQUIRE(holds(fromWide, wide.left * 65536LL, wide.top * 65536LL, wide.right * 65536LL, wide.bottom * 65536LL));
        REQUIRE(
            holds(fromNarrow, narrow.left * 65536, narrow.top * 65536, narrow.right * 65536, narrow.bottom * 65536));
    }
}

TEST_CASE("sums, differences and corner views of 16-bit points, and the host's own rectangle") {
    Zan_Point p = {32767, 0};
    CHECK((Zan_AddPt({1, 2}, &p) == 0 && p.v == -32768 && p.h == 2));
    CHECK(Zan_DeltaPoint({1, 0}, {0, 1}) == 0x0001FFFF);
    CHECK(Zan_DeltaPoint({-32768, 5}, {1, 7}) == 0x7FFFFFFE);
    Zan_Rect rect = {};
    CHECK(writeBoth(rect, Zan_TopLeft(rect), Zan_BottomRight(rect)) == 47);
    Zan_TopLeft(rect).h = 5;
    Zan_BottomRight(rect).v = 6;
    CHECK(holds(rect, 5, 4, 7, 6));
    Zan_WHRect a, b;
    CHECK((Zan_SetWHRect(&a, 1, 2, 3, 4) | Zan_CopyWHRect(&a, &b)) == 0);
    CHECK((b.a == 1 && b.b == 2 && b.c == 3 && b.d == 4 && Zan_EqualWHRect(&a, &b)));
    for (int16_t Zan_WHRect::*field : {&Zan_WHRect::a, &Zan_WHRect::b, &Zan_WHRect::c, &Zan_WHRect::d}) {
        b = a, ++(b.*field);
        CHECK(!Zan_EqualWHRect(&a, &b));
    }
}

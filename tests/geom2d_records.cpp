// Points and rectangles, one test for the three integer coordinate types; conversions between them; corner views.
#include "tests/support/random.h"
#include "zan/geom2d.h"

namespace {

// clang-format off
#define OP(own, call) static constexpr auto own = call;
#define RECT(own, X, verb) static constexpr auto own = Zan_##verb##X##Rect;
#define FAMILY(name, X) struct name {                                                                                  \
    using Point = Zan_##X##Point; using Rect = Zan_##X##Rect; using T = decltype(Rect::left);                          \
    OP(setPt, Zan_Set##X##Pt) OP(copyPt, Zan_Copy##X##Pt) OP(equalPt, Zan_Equal##X##Pt) OP(span, Zan_##X##Pt2Rect)     \
    OP(inRect, Zan_##X##PtInRect) RECT(set, X, Set) RECT(copy, X, Copy) RECT(equal, X, Equal) RECT(empty, X, Empty)    \
    RECT(inset, X, Inset) RECT(move, X, Offset) RECT(center, X, Center) };
FAMILY(Short, ) FAMILY(Wide, L) FAMILY(Fixed, Fixed)
    // clang-format on

    template <class R>
    bool holds(const R& r, int64_t left, int64_t top, int64_t right, int64_t bottom) {
    const auto same = [](auto x, int64_t wide) { return x == static_cast<decltype(x)>(wide); };  // wrapped to the field
    return same(r.left, left) && same(r.top, top) && same(r.right, right) && same(r.bottom, bottom);
}

// What a host may write; the optimizer must not take the two records for separate ones.
[[gnu::noinline]] int writeBoth(Zan_Rect& rect, Zan_Point& topLeft, Zan_Point& bottomRight) {
    rect.top = 1, rect.left = 5, bottomRight.h = 2, bottomRight.v = 6;
    topLeft.v = 4, rect.right = 7;
    return rect.top * 1000 + topLeft.h * 100 + bottomRight.h * 10 + rect.bottom;
}

}  // namespace

TEMPLATE_TEST_CASE("points and rectangles of one width", "", Short, Wide, Fixed) {
    using F = TestType;
    using T = typename F::T;
    Random random(41);
    const auto any = [&] { return static_cast<T>(random.below(2) ? random.nastyInt() : random.below(5)); };
    typename F::Rect a, b, c;
    typename F::Point p, q;
    for (int i = 0; i < 5000; ++i) {
        const T l = any(), t = any(), r = any(), w = any(), h = any(), v = any();
        CAPTURE(l, t, r, w, h, v);
        REQUIRE((F::set(&a, l, t, r, w) | F::copy(&a, &b) | F::setPt(&p, h, v) | F::setPt(&q, l, t)) == 0);
        REQUIRE((holds(a, l, t, r, w) && holds(b, l, t, r, w) && p.h == h && p.v == v));
        const bool empty = r <= l || w <= t;
        REQUIRE((F::empty(&a) == empty && F::inRect(&p, &a) == (l <= h && h < r && t <= v && v < w)));
        REQUIRE((F::copy(&a, &c) | F::inset(&b, h, v) | F::move(&c, h, v)) == 0);
        REQUIRE(holds(b, int64_t{l} + h, int64_t{t} + v, int64_t{r} - h, int64_t{w} - v));
        REQUIRE(holds(c, int64_t{l} + h, int64_t{t} + v, int64_t{r} + h, int64_t{w} + v));
        REQUIRE(F::span(&p, &q, &b) == 0);
        REQUIRE(holds(b, std::min(l, h), std::min(t, v), std::max(l, h), std::max(t, v)));
        REQUIRE(F::equal(&a, &b) == ((empty && (h == l || v == t)) || holds(a, b.left, b.top, b.right, b.bottom)));
        REQUIRE((F::equalPt(&p, &q) == (h == l && v == t) && F::copyPt(&p, &q) == 0 && F::equalPt(&p, &q)));
    }
    constexpr T kMin = std::numeric_limits<T>::min(), kMax = std::numeric_limits<T>::max();
    REQUIRE((F::set(&b, 0, 0, 9, 2) | F::set(&a, 3, 3, 7, 8) | F::center(&b, &a)) == 0);
    CHECK(holds(a, 2, -1, 6, 4));  // 9 - 4 = 5 gives 2, 2 - 5 = -3 gives -1
    // A width that wraps to -1; a room of 65535 for 16-bit ones, which wraps to -1 for others.
    REQUIRE((F::set(&b, kMin, 0, kMax, kMax) | F::set(&a, 3, 0, 7, kMin) | F::center(&b, &a)) == 0);
    CHECK(holds(a, kMin - 2LL, sizeof(T) == 2 ? kMax : 0, kMin + 2LL, sizeof(T) == 2 ? -1 : kMin));
}

TEST_CASE("conversions between rectangles") {
    using Round = double (*)(double);
    const Round nearest = [](double x) { return ::floor(x + 0.5); }, up = ::ceil, down = ::floor;
    // clang-format off
    struct Way { Round low, high; decltype(&Zan_FixedRect2Rect) narrow; decltype(&Zan_FixedRect2LRect) wide; };
    const Way ways[] = {{nearest, nearest, Zan_FixedRect2Rect, Zan_FixedRect2LRect},
                        {up, down, Zan_FixedRect2RectIn, Zan_FixedRect2LRectIn},
                        {down, up, Zan_FixedRect2RectOut, Zan_FixedRect2LRectOut}};
    // clang-format on
    Random random(42);
    for (int i = 0; i < 5000; ++i) {
        const Zan_FixedRect fixed = {random.nastyInt(), random.nastyInt(), random.nastyInt(), random.nastyInt()};
        const int32_t l = fixed.left, t = fixed.top, r = fixed.right, b = fixed.bottom;
        Zan_LRect wide = {l, t, r, b};
        Zan_Rect narrow = {11, 22, 33, 44};
        Zan_FixedRect back;
        const auto shifted = [&] { return holds(back, l * 65536LL, t * 65536LL, r * 65536LL, b * 65536LL); };
        CAPTURE(l, t, r, b);
        const bool passes = l >= -32768 && t >= -32768 && r <= 32767 && b <= 32767;
        REQUIRE(Zan_LRect2Rect(&wide, &narrow) == (passes ? 0 : Zan_Result_OutOfRange));
        REQUIRE((passes ? holds(narrow, l, t, r, b) : holds(narrow, 22, 11, 44, 33)));
        REQUIRE((Zan_Rect2FixedRect(&narrow, &back) == 0 && (!passes || shifted())));
        REQUIRE((Zan_LRect2FixedRect(&wide, &back) == 0 && shifted()));
        for (const auto& way : ways) {
            const auto to = [](Round round, Zan_Fixed x) { return int16_t(std::lround(round(x / 65536.0))); };
            REQUIRE((way.narrow(&fixed, &narrow) | way.wide(&fixed, &wide)) == 0);
            REQUIRE(holds(wide, to(way.low, l), to(way.low, t), to(way.high, r), to(way.high, b)));
            REQUIRE(holds(narrow, wide.left, wide.top, wide.right, wide.bottom));
        }
    }
}

TEST_CASE("sums, differences and corner views of 16-bit points, and the host's own rectangle") {
    Zan_Point p = {32767, 0};
    CHECK((Zan_AddPt({1, 2}, &p) == 0 && p.v == -32768 && p.h == 2));
    CHECK((Zan_DeltaPoint({1, 0}, {0, 1}) == 0x0001FFFF && Zan_DeltaPoint({-32768, 5}, {1, 7}) == 0x7FFFFFFE));
    Zan_Rect rect;
    CHECK(writeBoth(rect, Zan_TopLeft(rect), Zan_BottomRight(rect)) == 4576);
    Zan_WHRect a, b;
    CHECK((Zan_SetWHRect(&a, 1, 2, 3, 4) == 0 && a.a == 1 && a.b == 2 && a.c == 3 && a.d == 4));
    for (int16_t Zan_WHRect::*field : {&Zan_WHRect::a, &Zan_WHRect::b, &Zan_WHRect::c, &Zan_WHRect::d}) {
        CHECK((Zan_CopyWHRect(&a, &b) == 0 && Zan_EqualWHRect(&a, &b) && ++(b.*field) && !Zan_EqualWHRect(&a, &b)));
    }
}

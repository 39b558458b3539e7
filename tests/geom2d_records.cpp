// Points and rectangles, each operation by one test for all integer coordinate types; the points that alias a
// rectangle's corners; sums of 16-bit points; Zan_WHRect.
#include "tests/support/random.h"
#include "zan/geom2d.h"

#include <array>
#include <limits>

namespace {

// The operations for the records whose names have the infix X.
#define ZAN_OPERATIONS(name, X)                               \
    struct name {                                             \
        using Point = Zan_##X##Point;                         \
        using Rect = Zan_##X##Rect;                           \
        static constexpr auto setPoint = Zan_Set##X##Pt;      \
        static constexpr auto copyPoint = Zan_Copy##X##Pt;    \
        static constexpr auto equalPoints = Zan_Equal##X##Pt; \
        static constexpr auto set = Zan_Set##X##Rect;         \
        static constexpr auto copy = Zan_Copy##X##Rect;       \
        static constexpr auto equal = Zan_Equal##X##Rect;     \
        static constexpr auto empty = Zan_Empty##X##Rect;     \
        static constexpr auto contains = Zan_##X##PtInRect;   \
        static constexpr auto span = Zan_##X##Pt2Rect;        \
        static constexpr auto inset = Zan_Inset##X##Rect;     \
        static constexpr auto offset = Zan_Offset##X##Rect;   \
        static constexpr auto center = Zan_Center##X##Rect;   \
    };
ZAN_OPERATIONS(Int16, )
ZAN_OPERATIONS(Int32, L)
ZAN_OPERATIONS(Fixed, Fixed)
#undef ZAN_OPERATIONS

// Left, top, right, bottom.
using Edges = std::array<int64_t, 4>;
template <class Rect>
Edges edges(const Rect& r) {
    return {r.left, r.top, r.right, r.bottom};
}
// Each edge wrapped to the coordinate type.
template <class Rect>
Edges wrapped(Edges e) {
    for (int64_t& edge : e) edge = static_cast<decltype(Rect::left)>(edge);
    return e;
}

template <class F>
struct Case {
    using T = decltype(F::Rect::left);

    // Small numbers every other time, so that edges and points coincide.
    explicit Case(Random& random) {
        for (T* x : {&left, &top, &right, &bottom, &h, &v}) {
            *x = static_cast<T>(random.below(2) != 0 ? random.nastyInt() : random.below(5));
        }
        REQUIRE(F::set(&rect, left, top, right, bottom) == 0);
        REQUIRE(F::setPoint(&point, h, v) == 0);
        REQUIRE(F::setPoint(&topLeft, left, top) == 0);
    }

    T left, top, right, bottom, h, v;
    typename F::Rect rect;
    typename F::Point point, topLeft;
};

constexpr int kRounds = 5000;

}  // namespace

TEMPLATE_TEST_CASE("points: set, copy, equal", "", Int16, Int32, Fixed) {
    using F = TestType;
    Random random(41);
    for (int i = 0; i < kRounds; ++i) {
        const Case<F> c(random);
        CAPTURE(c.h, c.v, c.left, c.top);
        REQUIRE(c.point.h == c.h);
        REQUIRE(c.point.v == c.v);
        REQUIRE(F::equalPoints(&c.point, &c.topLeft) == (c.h == c.left && c.v == c.top));
        typename F::Point copy;
        REQUIRE(F::copyPoint(&c.point, &copy) == 0);
        REQUIRE(F::equalPoints(&copy, &c.point));
    }
}

TEMPLATE_TEST_CASE("rectangles: set, copy, equal, empty, point inside, two points spanned", "", Int16, Int32, Fixed) {
    using F = TestType;
    using Rect = typename F::Rect;
    Random random(42);
    for (int i = 0; i < kRounds; ++i) {
        const Case<F> c(random);
        CAPTURE(c.left, c.top, c.right, c.bottom, c.h, c.v);
        const Edges set = {c.left, c.top, c.right, c.bottom};
        REQUIRE(edges(c.rect) == set);
        Rect copy;
        REQUIRE(F::copy(&c.rect, &copy) == 0);
        REQUIRE(edges(copy) == set);

        const bool empty = c.right <= c.left || c.bottom <= c.top;
        REQUIRE(F::empty(&c.rect) == empty);
        const bool inside = c.left <= c.h && c.h < c.right && c.top <= c.v && c.v < c.bottom;
        REQUIRE(F::contains(&c.point, &c.rect) == inside);

        Rect span;
        REQUIRE(F::span(&c.point, &c.topLeft, &span) == 0);
        REQUIRE(edges(span) ==
                Edges{std::min(c.left, c.h), std::min(c.top, c.v), std::max(c.left, c.h), std::max(c.top, c.v)});
        const bool bothEmpty = empty && (c.h == c.left || c.v == c.top);
        REQUIRE(F::equal(&c.rect, &span) == (bothEmpty || edges(span) == set));
    }
}

TEMPLATE_TEST_CASE("inset and offset wrap in the width of the field", "", Int16, Int32, Fixed) {
    using F = TestType;
    using Rect = typename F::Rect;
    Random random(43);
    for (int i = 0; i < kRounds; ++i) {
        const Case<F> c(random);
        CAPTURE(c.left, c.top, c.right, c.bottom, c.h, c.v);
        const int64_t left = c.left, top = c.top, right = c.right, bottom = c.bottom;
        Rect inset = c.rect;
        REQUIRE(F::inset(&inset, c.h, c.v) == 0);
        REQUIRE(edges(inset) == wrapped<Rect>({left + c.h, top + c.v, right - c.h, bottom - c.v}));
        Rect offset = c.rect;
        REQUIRE(F::offset(&offset, c.h, c.v) == 0);
        REQUIRE(edges(offset) == wrapped<Rect>({left + c.h, top + c.v, right + c.h, bottom + c.v}));
    }
}

TEMPLATE_TEST_CASE("centring divides by 2 toward zero, and wraps", "", Int16, Int32, Fixed) {
    using F = TestType;
    using T = decltype(F::Rect::left);
    constexpr T kMin = std::numeric_limits<T>::min();
    constexpr T kMax = std::numeric_limits<T>::max();
    constexpr bool is16Bit = sizeof(T) == 2;
    struct Row {
        const char* what;
        typename F::Rect frame, rect;
        Edges centred;
    };
    const auto rect = [](T left, T top, T right, T bottom) {
        typename F::Rect r;
        F::set(&r, left, top, right, bottom);
        return r;
    };
    const Row rows[] = {
        {"(9 - 4) / 2 is 2, (2 - 5) / 2 is -1", rect(0, 0, 9, 2), rect(3, 3, 7, 8), {2, -1, 6, 4}},
        {"a frame that is inverted by one", rect(1, 0, 0, 9), rect(0, 0, 4, 9), {-1, 0, 3, 9}},
        {"the width of the frame wraps to -1, and -5 / 2 is -2",
         rect(kMin, 0, kMax, 4),
         rect(3, 0, 7, 4),
         {kMin - 2LL, 0, kMin + 2LL, 4}},
        {"a rectangle of the least height: in 16 bits the heights differ by 65535, which does not wrap; "
         "in 32 bits by -1, since the difference wraps",
         rect(0, 0, 4, kMax),
         rect(0, 0, 4, kMin),
         {0, is16Bit ? kMax : 0, 4, is16Bit ? -1 : kMin}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        typename F::Rect r = row.rect;
        CHECK(F::center(&row.frame, &r) == 0);
        CHECK(edges(r) == wrapped<typename F::Rect>(row.centred));
    }
}

TEST_CASE("16-bit points: sum and difference wrap") {
    Zan_Point p = {32767, 0};
    CHECK(Zan_AddPt({1, 2}, &p) == 0);
    CHECK(p.v == -32768);
    CHECK(p.h == 2);
    CHECK(Zan_DeltaPoint({1, 0}, {0, 1}) == 0x0001FFFF);
    CHECK(Zan_DeltaPoint({-32768, 5}, {1, 7}) == 0x7FFFFFFE);
}

namespace {

// Writes and reads the same memory as rectangle and as points. Not inlined, so that the optimizer cannot see that the
// three references overlap and must rely on the types alone.
[[gnu::noinline]] int writeAlternately(Zan_Rect& rect, Zan_Point& topLeft, Zan_Point& bottomRight) {
    rect.top = 1;
    rect.left = 5;
    bottomRight.h = 2;
    bottomRight.v = 6;
    topLeft.v = 4;
    rect.right = 7;
    return rect.top * 1000 + topLeft.h * 100 + bottomRight.h * 10 + rect.bottom;
}

}  // namespace

TEST_CASE("corners of a rectangle alias its fields") {
    Zan_Rect rect;
    CHECK(writeAlternately(rect, Zan_TopLeft(rect), Zan_BottomRight(rect)) == 4576);
}

TEST_CASE("Zan_WHRect: set, copy, equal") {
    Zan_WHRect a;
    CHECK(Zan_SetWHRect(&a, 1, 2, 3, 4) == 0);
    CHECK(a.a == 1);
    CHECK(a.b == 2);
    CHECK(a.c == 3);
    CHECK(a.d == 4);
    for (int16_t Zan_WHRect::*field : {&Zan_WHRect::a, &Zan_WHRect::b, &Zan_WHRect::c, &Zan_WHRect::d}) {
        Zan_WHRect b;
        CHECK(Zan_CopyWHRect(&a, &b) == 0);
        CHECK(Zan_EqualWHRect(&a, &b));
        ++(b.*field);
        CHECK(!Zan_EqualWHRect(&a, &b));
    }
}

// Intersection, union and relations of rectangles against sets of cells.

#include "property.h"
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
bool sets(Choices& c, bool (*sect)(const R*, const R*, R*), int32_t (*unite)(const R*, const R*, R*) = nullptr,
          bool (*compare)(int16_t, const R*, const R*) = nullptr) {
    R rects[2];
    for (R& r : rects) {
        int32_t edges[4];
        for (int32_t& edge : edges) edge = c.below(9);
        if (c.below(4) != 0) std::sort(edges, edges + 2), std::sort(edges + 2, edges + 4);
        r = make<R>(edges[0], edges[2], edges[1], edges[3]);
    }
    const auto& [a, b] = rects;
    const uint64_t inA = cells(a), inB = cells(b), both = inA & inB;
    R apart = make<R>(1, 2, 3, 4), first = a, second = b;
    must(sect(&a, &b, nullptr) == (both != 0) && sect(&a, &b, &apart) == (both != 0));
    must(sect(&first, &b, &first) == (both != 0) && sect(&a, &second, &second) == (both != 0));
    must(same(first, apart) && same(second, apart) && (both == 0 ? same(apart, R{}) : cells(apart) == both));
    if (unite == nullptr) return both != 0;

    first = a, second = b;
    must((unite(&a, &b, &apart) | unite(&first, &b, &first) | unite(&a, &second, &second)) == 0);
    const R box = make<R>(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                          std::max(a.bottom, b.bottom));
    const bool joined = inA != 0 && inB != 0;
    must(same(apart, joined ? box : inB != 0 ? b : a) && same(first, apart));
    must(same(second, joined ? box : inA != 0 ? a : b));

    const auto is = [&](int selector, const R& x, const R& y) { return compare(int16_t(selector), &x, &y); };
    must(is(0, a, a) && is(0, a, b) == same(a, b) && is(7, a, b) == (both != 0));
    must(is(6, a, a) && !is(5, a, a) && !is(9, a, a) && !is(-1, a, a));
    const auto dw = (a.right - a.left) - (b.right - b.left), dh = (a.bottom - a.top) - (b.bottom - b.top);
    must(is(1, a, b) == (dw > 0 && dh > 0) && is(2, a, b) == (dw >= 0 && dh >= 0));
    must(is(3, a, b) == (dw < 0 && dh < 0) && is(4, a, b) == (dw <= 0 && dh <= 0));
    if (!joined) return false;
    const auto grown = [](R r, int low, int high) {
        return make<R>(r.left + low, r.top + low, r.right + high, r.bottom + high);
    };
    must(is(6, a, b) == (both == inB) && is(5, a, b) == is(6, grown(a, 1, -1), b));
    must(is(8, a, b) == is(7, grown(a, 0, 1), grown(b, 0, 1)));
    return both != 0;
}

const Property kProperty("geom2d_rectangles", 20000, [](Choices& c) {
    switch (c.below(4)) {
        case 0:
            return sets(c, Zan_SectRect, Zan_UnionRect, Zan_RectCompare);
        case 1:
            return sets(c, Zan_SectLRect, Zan_UnionLRect, Zan_LRectCompare);
        case 2:
            return sets(c, Zan_SectFixedRect, Zan_UnionFixedRect, Zan_FixedRectCompare);
        default:
            return sets<Zan_FloatRect>(c, Zan_SectFloatRect);
    }
});

}  // namespace

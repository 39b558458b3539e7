// Intersection, union and relations of rectangles, compared with sets of unit cells.
#include "property.h"
#include "zan/geom2d.h"

namespace {

template <class R, class N>
R make(N left, N top, N right, N bottom) {
    using T = decltype(R::left);
    R r;
    r.left = T(left);
    r.top = T(top);
    r.right = T(right);
    r.bottom = T(bottom);
    return r;
}
template <class R>
bool same(const R& a, const R& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// The cells of an 8 by 8 board that the rectangle covers, one bit per cell.
template <class R>
uint64_t cells(const R& r) {
    uint64_t set = 0;
    for (int i = 0; i < 64; ++i) {
        const int h = i % 8, v = i / 8;
        set |= uint64_t{r.left <= h && h < r.right && r.top <= v && v < r.bottom} << i;
    }
    return set;
}

// A rectangle within the board; one in four may have its edges in reverse order.
template <class R>
R rectangle(Choices& c) {
    int32_t edges[4];
    for (int32_t& edge : edges) edge = c.below(9);
    if (c.below(4) != 0) {
        std::sort(edges, edges + 2);
        std::sort(edges + 2, edges + 4);
    }
    return make<R>(edges[0], edges[2], edges[1], edges[3]);
}

template <class R>
using Sect = bool (*)(const R*, const R*, R*);
template <class R>
using Union = int32_t (*)(const R*, const R*, R*);
template <class R>
using Compare = bool (*)(int16_t, const R*, const R*);

template <class R>
void checkIntersection(const R& a, const R& b, Sect<R> sect) {
    const uint64_t both = cells(a) & cells(b);
    R apart = make<R>(1, 2, 3, 4), first = a, second = b;
    must(sect(&a, &b, nullptr) == (both != 0));
    must(sect(&a, &b, &apart) == (both != 0));
    must(sect(&first, &b, &first) == (both != 0));
    must(sect(&a, &second, &second) == (both != 0));
    must(same(first, apart));
    must(same(second, apart));
    must(both == 0 ? same(apart, R{}) : cells(apart) == both);
}

template <class R>
void checkUnion(const R& a, const R& b, Union<R> unite) {
    const bool emptyA = cells(a) == 0, emptyB = cells(b) == 0;
    R apart = make<R>(1, 2, 3, 4), first = a, second = b;
    must(unite(&a, &b, &apart) == 0);
    must(unite(&first, &b, &first) == 0);
    must(unite(&a, &second, &second) == 0);
    const R box = make<R>(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                          std::max(a.bottom, b.bottom));
    // When both are empty the result is a, or b if b is the destination.
    must(same(apart, !emptyA && !emptyB ? box : emptyB ? a : b));
    must(same(first, apart));
    must(same(second, !emptyA && !emptyB ? box : emptyA ? b : a));
}

template <class R>
void checkRelations(const R& a, const R& b, Compare<R> compare) {
    const uint64_t inA = cells(a), inB = cells(b), both = inA & inB;
    must(compare(Zan_RectRelation_Equal, &a, &a));
    must(compare(Zan_RectRelation_Equal, &a, &b) == same(a, b));
    must(compare(Zan_RectRelation_Overlaps, &a, &b) == (both != 0));
    must(compare(Zan_RectRelation_Encloses, &a, &a));
    must(!compare(Zan_RectRelation_StrictlyEncloses, &a, &a));
    must(!compare(Zan_RectRelation_OverlapsOrTouches + 1, &a, &a));
    must(!compare(Zan_RectRelation_Equal - 1, &a, &a));

    const auto wider = (a.right - a.left) - (b.right - b.left), taller = (a.bottom - a.top) - (b.bottom - b.top);
    must(compare(Zan_RectRelation_Larger, &a, &b) == (wider > 0 && taller > 0));
    must(compare(Zan_RectRelation_AtLeastAsLarge, &a, &b) == (wider >= 0 && taller >= 0));
    must(compare(Zan_RectRelation_Smaller, &a, &b) == (wider < 0 && taller < 0));
    must(compare(Zan_RectRelation_AtMostAsLarge, &a, &b) == (wider <= 0 && taller <= 0));

    if (inA == 0 || inB == 0) return;
    const auto moved = [](const R& r, int topLeft, int bottomRight) {
        return make<R>(r.left + topLeft, r.top + topLeft, r.right + bottomRight, r.bottom + bottomRight);
    };
    const R shrunk = moved(a, 1, -1), extendedA = moved(a, 0, 1), extendedB = moved(b, 0, 1);
    must(compare(Zan_RectRelation_Encloses, &a, &b) == (both == inB));
    must(compare(Zan_RectRelation_StrictlyEncloses, &a, &b) == compare(Zan_RectRelation_Encloses, &shrunk, &b));
    must(compare(Zan_RectRelation_OverlapsOrTouches, &a, &b) ==
         compare(Zan_RectRelation_Overlaps, &extendedA, &extendedB));
}

template <class R>
bool rectangles(Choices& c, Sect<R> sect, Union<R> unite, Compare<R> compare) {
    const R a = rectangle<R>(c);
    const R b = rectangle<R>(c);
    checkIntersection(a, b, sect);
    if (unite != nullptr) checkUnion(a, b, unite);
    if (compare != nullptr) checkRelations(a, b, compare);
    return (cells(a) & cells(b)) != 0;
}

const Property kProperty("geom2d_rectangles", 20000, [](Choices& c) {
    switch (c.below(4)) {
        case 0:
            return rectangles<Zan_Rect>(c, Zan_SectRect, Zan_UnionRect, Zan_RectCompare);
        case 1:
            return rectangles<Zan_LRect>(c, Zan_SectLRect, Zan_UnionLRect, Zan_LRectCompare);
        case 2:
            return rectangles<Zan_FixedRect>(c, Zan_SectFixedRect, Zan_UnionFixedRect, Zan_FixedRectCompare);
        default:
            return rectangles<Zan_FloatRect>(c, Zan_SectFloatRect, nullptr, nullptr);
    }
});

}  // namespace

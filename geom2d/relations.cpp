// Tests of a relation between two rectangles, chosen by a selector.
#include "geom2d/records.h"
#include "scalar/integers.h"
#include "zan/geom2d.h"

namespace {

template <class R>
bool compareRects(int16_t selector, const R& a, const R& b) {
    const auto width = [](const R& r) { return zan::wrapSubtract<int32_t>(r.right, r.left); };
    const auto height = [](const R& r) { return zan::wrapSubtract<int32_t>(r.bottom, r.top); };
    // Enclosure combines its comparisons with &: the outcome of each is unpredictable, and && would branch on it.
    switch (selector) {
        case Zan_RectRelation_Equal:
            return zan::sameFields(a, b);
        case Zan_RectRelation_Larger:
            return width(a) > width(b) && height(a) > height(b);
        case Zan_RectRelation_AtLeastAsLarge:
            return width(a) >= width(b) && height(a) >= height(b);
        case Zan_RectRelation_Smaller:
            return width(b) > width(a) && height(b) > height(a);
        case Zan_RectRelation_AtMostAsLarge:
            return width(b) >= width(a) && height(b) >= height(a);
        case Zan_RectRelation_StrictlyEncloses:
            return (a.left < b.left) & (a.right > b.right) & (a.top < b.top) & (a.bottom > b.bottom);
        case Zan_RectRelation_Encloses:
            return (a.left <= b.left) & (a.right >= b.right) & (a.top <= b.top) & (a.bottom >= b.bottom);
        case Zan_RectRelation_Overlaps:
            return zan::intersecting(a, b);
        case Zan_RectRelation_OverlapsOrTouches:
            return ((b.top <= a.top && a.top <= b.bottom) || (a.top <= b.top && b.top <= a.bottom)) &&
                   ((b.left <= a.left && a.left <= b.right) || (a.left <= b.left && b.left <= a.right));
        default:
            return false;
    }
}

}  // namespace

bool Zan_RectCompare(int16_t selector, const Zan_Rect* a, const Zan_Rect* b) { return compareRects(selector, *a, *b); }
bool Zan_LRectCompare(int16_t selector, const Zan_LRect* a, const Zan_LRect* b) {
    return compareRects(selector, *a, *b);
}
bool Zan_FixedRectCompare(int16_t selector, const Zan_FixedRect* a, const Zan_FixedRect* b) {
    return compareRects(selector, *a, *b);
}

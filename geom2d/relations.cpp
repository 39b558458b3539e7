// The relation of two rectangles that a selector names.
#include "geom2d/records.h"
#include "scalar/integers.h"
#include "zan/geom2d.h"

namespace {

template <class R>
bool compareRects(int16_t selector, const R& a, const R& b) {
    const auto width = [](const R& r) { return zan::wrapSubtract<int32_t>(r.right, r.left); };
    const auto height = [](const R& r) { return zan::wrapSubtract<int32_t>(r.bottom, r.top); };
    switch (selector) {
        case 0:
            return zan::sameFields(a, b);
        case 1:
            return width(a) > width(b) && height(a) > height(b);
        case 2:
            return width(a) >= width(b) && height(a) >= height(b);
        case 3:
            return width(b) > width(a) && height(b) > height(a);
        case 4:
            return width(b) >= width(a) && height(b) >= height(a);
        case 5:
            return (a.left < b.left) & (a.right > b.right) & (a.top < b.top) & (a.bottom > b.bottom);
        case 6:
            return (a.left <= b.left) & (a.right >= b.right) & (a.top <= b.top) & (a.bottom >= b.bottom);
        case 7:
            return zan::intersecting(a, b);
        case 8:
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

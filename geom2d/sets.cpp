// Intersection and union of rectangles. Half-open edges; vertical coordinates grow downward. Nothing rounds or wraps.
#include "geom2d/records.h"
#include "zan/geom2d.h"

namespace {

using zan::larger;
using zan::smaller;

template <class R>
bool sect(const R* a, const R* b, R* destination) {
    const bool hit = zan::intersecting(*a, *b);
    if (destination == nullptr) return hit;
    // The record that is the destination comes first; the order decides only NaNs and the sign of zeros. Both are
    // copied, since the destination may be either.
    const R p = destination == b ? *b : *a;
    const R q = destination == b ? *a : *b;
    R common;
    common.left = larger(p.left, q.left);
    common.top = larger(p.top, q.top);
    common.right = smaller(p.right, q.right);
    common.bottom = smaller(p.bottom, q.bottom);
    *destination = hit ? common : R{};
    return hit;
}

// target := the union of source and target.
template <class R>
void merge(const R& source, R* target) {
    if (zan::emptyRect(source)) return;
    if (zan::emptyRect(*target)) {
        *target = source;
        return;
    }
    target->left = smaller(target->left, source.left);
    target->right = larger(target->right, source.right);
    target->top = smaller(target->top, source.top);
    target->bottom = larger(target->bottom, source.bottom);
}

template <class R>
void unite(const R* a, const R* b, R* destination) {
    if (destination == b) {
        merge(*a, destination);
        return;
    }
    if (destination != a) *destination = *a;
    merge(*b, destination);
}

}  // namespace

bool Zan_SectRect(const Zan_Rect* a, const Zan_Rect* b, Zan_Rect* destination) { return sect(a, b, destination); }
bool Zan_SectLRect(const Zan_LRect* a, const Zan_LRect* b, Zan_LRect* destination) { return sect(a, b, destination); }
bool Zan_SectFixedRect(const Zan_FixedRect* a, const Zan_FixedRect* b, Zan_FixedRect* destination) {
    return sect(a, b, destination);
}
bool Zan_SectFloatRect(const Zan_FloatRect* a, const Zan_FloatRect* b, Zan_FloatRect* destination) {
    return sect(a, b, destination);
}

int32_t Zan_UnionRect(const Zan_Rect* a, const Zan_Rect* b, Zan_Rect* destination) {
    unite(a, b, destination);
    return 0;
}
int32_t Zan_UnionLRect(const Zan_LRect* a, const Zan_LRect* b, Zan_LRect* destination) {
    unite(a, b, destination);
    return 0;
}
int32_t Zan_UnionFixedRect(const Zan_FixedRect* a, const Zan_FixedRect* b, Zan_FixedRect* destination) {
    unite(a, b, destination);
    return 0;
}

// Rectangles: setting, copying, comparing, emptiness, points in them and spanning them, moving and centring.
// Half-open edges; vertical coordinates grow downward; sums wrap in the width of the field.
#include "geom2d/records.h"
#include "scalar/integers.h"
#include "zan/geom2d.h"

namespace {

using zan::Coordinate;
using zan::wrapAdd;
using zan::wrapSubtract;

template <class R, class T = Coordinate<R>>
int32_t setRect(R* rect, T left, T top, T right, T bottom) {
    rect->left = left;
    rect->top = top;
    rect->right = right;
    rect->bottom = bottom;
    return 0;
}

template <class R>
int32_t copyRect(const R* source, R* destination) {
    *destination = *source;
    return 0;
}

template <class R>
bool equalRects(const R& a, const R& b) {
    return (zan::emptyRect(a) && zan::emptyRect(b)) || zan::sameFields(a, b);
}

template <class P, class R>
bool pointInRect(const P& p, const R& r) {
    return (r.left <= p.h) & (p.h < r.right) & (r.top <= p.v) & (p.v < r.bottom);
}

template <class P, class R>
int32_t spanPoints(const P* first, const P* second, R* rect) {
    const P a = *first;
    const P b = *second;
    const bool aIsLeft = a.h < b.h;
    const bool aIsTop = a.v < b.v;
    rect->left = aIsLeft ? a.h : b.h;
    rect->right = aIsLeft ? b.h : a.h;
    rect->top = aIsTop ? a.v : b.v;
    rect->bottom = aIsTop ? b.v : a.v;
    return 0;
}

template <class R, class T = Coordinate<R>>
int32_t insetRect(R* rect, T dh, T dv) {
    rect->left = wrapAdd(rect->left, dh);
    rect->right = wrapSubtract(rect->right, dh);
    rect->top = wrapAdd(rect->top, dv);
    rect->bottom = wrapSubtract(rect->bottom, dv);
    return 0;
}

template <class R, class T = Coordinate<R>>
int32_t offsetRect(R* rect, T dh, T dv) {
    rect->left = wrapAdd(rect->left, dh);
    rect->right = wrapAdd(rect->right, dh);
    rect->top = wrapAdd(rect->top, dv);
    rect->bottom = wrapAdd(rect->bottom, dv);
    return 0;
}

// Both sizes wrap in the width of the field; what is left of the frame is halved in 32 bits, toward zero.
template <class T>
void centerSpan(T frameLow, T frameHigh, T* low, T* high) {
    const T size = wrapSubtract(*high, *low);
    const int32_t room = wrapSubtract<int32_t>(wrapSubtract(frameHigh, frameLow), size);
    *low = wrapAdd(frameLow, static_cast<T>(room / 2));
    *high = wrapAdd(*low, size);
}

template <class R>
int32_t centerRect(const R* frame, R* rect) {
    centerSpan(frame->left, frame->right, &rect->left, &rect->right);
    centerSpan(frame->top, frame->bottom, &rect->top, &rect->bottom);
    return 0;
}

}  // namespace

int32_t Zan_SetRect(Zan_Rect* rect, int16_t left, int16_t top, int16_t right, int16_t bottom) {
    return setRect(rect, left, top, right, bottom);
}
int32_t Zan_SetLRect(Zan_LRect* rect, int32_t left, int32_t top, int32_t right, int32_t bottom) {
    return setRect(rect, left, top, right, bottom);
}
int32_t Zan_SetFixedRect(Zan_FixedRect* rect, Zan_Fixed left, Zan_Fixed top, Zan_Fixed right, Zan_Fixed bottom) {
    return setRect(rect, left, top, right, bottom);
}
int32_t Zan_SetWHRect(Zan_WHRect* rect, int16_t a, int16_t b, int16_t c, int16_t d) {
    *rect = {a, b, c, d};
    return 0;
}

int32_t Zan_CopyRect(const Zan_Rect* source, Zan_Rect* destination) { return copyRect(source, destination); }
int32_t Zan_CopyLRect(const Zan_LRect* source, Zan_LRect* destination) { return copyRect(source, destination); }
int32_t Zan_CopyFixedRect(const Zan_FixedRect* source, Zan_FixedRect* destination) {
    return copyRect(source, destination);
}
int32_t Zan_CopyWHRect(const Zan_WHRect* source, Zan_WHRect* destination) { return copyRect(source, destination); }

bool Zan_EqualRect(const Zan_Rect* a, const Zan_Rect* b) { return equalRects(*a, *b); }
bool Zan_EqualLRect(const Zan_LRect* a, const Zan_LRect* b) { return equalRects(*a, *b); }
bool Zan_EqualFixedRect(const Zan_FixedRect* a, const Zan_FixedRect* b) { return equalRects(*a, *b); }
bool Zan_EqualWHRect(const Zan_WHRect* a, const Zan_WHRect* b) {
    return a->a == b->a && a->b == b->b && a->c == b->c && a->d == b->d;
}

bool Zan_PtInRect(const Zan_Point* point, const Zan_Rect* rect) { return pointInRect(*point, *rect); }
bool Zan_LPtInRect(const Zan_LPoint* point, const Zan_LRect* rect) { return pointInRect(*point, *rect); }
bool Zan_FixedPtInRect(const Zan_FixedPoint* point, const Zan_FixedRect* rect) { return pointInRect(*point, *rect); }

int32_t Zan_Pt2Rect(const Zan_Point* a, const Zan_Point* b, Zan_Rect* rect) { return spanPoints(a, b, rect); }
int32_t Zan_LPt2Rect(const Zan_LPoint* a, const Zan_LPoint* b, Zan_LRect* rect) { return spanPoints(a, b, rect); }
int32_t Zan_FixedPt2Rect(const Zan_FixedPoint* a, const Zan_FixedPoint* b, Zan_FixedRect* rect) {
    return spanPoints(a, b, rect);
}

int32_t Zan_InsetRect(Zan_Rect* rect, int16_t dh, int16_t dv) { return insetRect(rect, dh, dv); }
int32_t Zan_InsetLRect(Zan_LRect* rect, int32_t dh, int32_t dv) { return insetRect(rect, dh, dv); }
int32_t Zan_InsetFixedRect(Zan_FixedRect* rect, Zan_Fixed dh, Zan_Fixed dv) { return insetRect(rect, dh, dv); }

int32_t Zan_OffsetRect(Zan_Rect* rect, int16_t dh, int16_t dv) { return offsetRect(rect, dh, dv); }
int32_t Zan_OffsetLRect(Zan_LRect* rect, int32_t dh, int32_t dv) { return offsetRect(rect, dh, dv); }
int32_t Zan_OffsetFixedRect(Zan_FixedRect* rect, Zan_Fixed dh, Zan_Fixed dv) { return offsetRect(rect, dh, dv); }

bool Zan_EmptyRect(const Zan_Rect* rect) { return zan::emptyRect(*rect); }
bool Zan_EmptyLRect(const Zan_LRect* rect) { return zan::emptyRect(*rect); }
bool Zan_EmptyFixedRect(const Zan_FixedRect* rect) { return zan::emptyRect(*rect); }

int32_t Zan_CenterRect(const Zan_Rect* frame, Zan_Rect* rect) { return centerRect(frame, rect); }
int32_t Zan_CenterLRect(const Zan_LRect* frame, Zan_LRect* rect) { return centerRect(frame, rect); }
int32_t Zan_CenterFixedRect(const Zan_FixedRect* frame, Zan_FixedRect* rect) { return centerRect(frame, rect); }

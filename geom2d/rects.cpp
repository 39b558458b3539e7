// Rectangles: setting, copying, comparing, emptiness, point inside, spanning two points, inset, offset, centring.
// Half-open edges; vertical coordinates grow downward; sums wrap in the width of the field.
#include "geom2d/records.h"
#include "scalar/integers.h"
#include "zan/geom2d.h"

namespace {

using zan::Coordinate;
using zan::wrapAdd;
using zan::wrapSubtract;

template <class R, class T = Coordinate<R>>
void setRect(R* rect, T left, T top, T right, T bottom) {
    rect->left = left;
    rect->top = top;
    rect->right = right;
    rect->bottom = bottom;
}

template <class R>
void copyRect(const R* source, R* destination) {
    *destination = *source;
}

template <class R>
bool equalRects(const R& a, const R& b) {
    return (zan::emptyRect(a) && zan::emptyRect(b)) || zan::sameFields(a, b);
}

// Combined with & because each comparison is unpredictable: && would branch on it and mispredict.
template <class P, class R>
bool pointInRect(const P& p, const R& r) {
    return (r.left <= p.h) & (p.h < r.right) & (r.top <= p.v) & (p.v < r.bottom);
}

template <class P, class R>
void spanPoints(const P* first, const P* second, R* rect) {
    const P a = *first;
    const P b = *second;
    const bool aIsLeft = a.h < b.h;
    const bool aIsTop = a.v < b.v;
    rect->left = aIsLeft ? a.h : b.h;
    rect->right = aIsLeft ? b.h : a.h;
    rect->top = aIsTop ? a.v : b.v;
    rect->bottom = aIsTop ? b.v : a.v;
}

template <class R, class T = Coordinate<R>>
void insetRect(R* rect, T dh, T dv) {
    rect->left = wrapAdd(rect->left, dh);
    rect->right = wrapSubtract(rect->right, dh);
    rect->top = wrapAdd(rect->top, dv);
    rect->bottom = wrapSubtract(rect->bottom, dv);
}

template <class R, class T = Coordinate<R>>
void offsetRect(R* rect, T dh, T dv) {
    rect->left = wrapAdd(rect->left, dh);
    rect->right = wrapAdd(rect->right, dh);
    rect->top = wrapAdd(rect->top, dv);
    rect->bottom = wrapAdd(rect->bottom, dv);
}

// Both sizes wrap in the width of the field; their difference is halved in 32 bits, toward zero.
template <class T>
void centerSpan(T frameLow, T frameHigh, T* low, T* high) {
    const T size = wrapSubtract(*high, *low);
    const int32_t surplus = wrapSubtract<int32_t>(wrapSubtract(frameHigh, frameLow), size);
    *low = wrapAdd(frameLow, static_cast<T>(surplus / 2));
    *high = wrapAdd(*low, size);
}

template <class R>
void centerRect(const R* frame, R* rect) {
    centerSpan(frame->left, frame->right, &rect->left, &rect->right);
    centerSpan(frame->top, frame->bottom, &rect->top, &rect->bottom);
}

}  // namespace

int32_t Zan_SetRect(Zan_Rect* rect, int16_t left, int16_t top, int16_t right, int16_t bottom) {
    setRect(rect, left, top, right, bottom);
    return 0;
}
int32_t Zan_SetLRect(Zan_LRect* rect, int32_t left, int32_t top, int32_t right, int32_t bottom) {
    setRect(rect, left, top, right, bottom);
    return 0;
}
int32_t Zan_SetFixedRect(Zan_FixedRect* rect, Zan_Fixed left, Zan_Fixed top, Zan_Fixed right, Zan_Fixed bottom) {
    setRect(rect, left, top, right, bottom);
    return 0;
}
int32_t Zan_SetWHRect(Zan_WHRect* rect, int16_t a, int16_t b, int16_t c, int16_t d) {
    *rect = {a, b, c, d};
    return 0;
}

int32_t Zan_CopyRect(const Zan_Rect* source, Zan_Rect* destination) {
    copyRect(source, destination);
    return 0;
}
int32_t Zan_CopyLRect(const Zan_LRect* source, Zan_LRect* destination) {
    copyRect(source, destination);
    return 0;
}
int32_t Zan_CopyFixedRect(const Zan_FixedRect* source, Zan_FixedRect* destination) {
    copyRect(source, destination);
    return 0;
}
int32_t Zan_CopyWHRect(const Zan_WHRect* source, Zan_WHRect* destination) {
    copyRect(source, destination);
    return 0;
}

bool Zan_EqualRect(const Zan_Rect* a, const Zan_Rect* b) { return equalRects(*a, *b); }
bool Zan_EqualLRect(const Zan_LRect* a, const Zan_LRect* b) { return equalRects(*a, *b); }
bool Zan_EqualFixedRect(const Zan_FixedRect* a, const Zan_FixedRect* b) { return equalRects(*a, *b); }
bool Zan_EqualWHRect(const Zan_WHRect* a, const Zan_WHRect* b) {
    return a->a == b->a && a->b == b->b && a->c == b->c && a->d == b->d;
}

bool Zan_PtInRect(const Zan_Point* point, const Zan_Rect* rect) { return pointInRect(*point, *rect); }
bool Zan_LPtInRect(const Zan_LPoint* point, const Zan_LRect* rect) { return pointInRect(*point, *rect); }
bool Zan_FixedPtInRect(const Zan_FixedPoint* point, const Zan_FixedRect* rect) { return pointInRect(*point, *rect); }

int32_t Zan_Pt2Rect(const Zan_Point* a, const Zan_Point* b, Zan_Rect* rect) {
    spanPoints(a, b, rect);
    return 0;
}
int32_t Zan_LPt2Rect(const Zan_LPoint* a, const Zan_LPoint* b, Zan_LRect* rect) {
    spanPoints(a, b, rect);
    return 0;
}
int32_t Zan_FixedPt2Rect(const Zan_FixedPoint* a, const Zan_FixedPoint* b, Zan_FixedRect* rect) {
    spanPoints(a, b, rect);
    return 0;
}

int32_t Zan_InsetRect(Zan_Rect* rect, int16_t dh, int16_t dv) {
    insetRect(rect, dh, dv);
    return 0;
}
int32_t Zan_InsetLRect(Zan_LRect* rect, int32_t dh, int32_t dv) {
    insetRect(rect, dh, dv);
    return 0;
}
int32_t Zan_InsetFixedRect(Zan_FixedRect* rect, Zan_Fixed dh, Zan_Fixed dv) {
    insetRect(rect, dh, dv);
    return 0;
}

int32_t Zan_OffsetRect(Zan_Rect* rect, int16_t dh, int16_t dv) {
    offsetRect(rect, dh, dv);
    return 0;
}
int32_t Zan_OffsetLRect(Zan_LRect* rect, int32_t dh, int32_t dv) {
    offsetRect(rect, dh, dv);
    return 0;
}
int32_t Zan_OffsetFixedRect(Zan_FixedRect* rect, Zan_Fixed dh, Zan_Fixed dv) {
    offsetRect(rect, dh, dv);
    return 0;
}

bool Zan_EmptyRect(const Zan_Rect* rect) { return zan::emptyRect(*rect); }
bool Zan_EmptyLRect(const Zan_LRect* rect) { return zan::emptyRect(*rect); }
bool Zan_EmptyFixedRect(const Zan_FixedRect* rect) { return zan::emptyRect(*rect); }

int32_t Zan_CenterRect(const Zan_Rect* frame, Zan_Rect* rect) {
    centerRect(frame, rect);
    return 0;
}
int32_t Zan_CenterLRect(const Zan_LRect* frame, Zan_LRect* rect) {
    centerRect(frame, rect);
    return 0;
}
int32_t Zan_CenterFixedRect(const Zan_FixedRect* frame, Zan_FixedRect* rect) {
    centerRect(frame, rect);
    return 0;
}

// Points: setting, copying, comparing, sums and differences; the corners of a Zan_Rect as points.
#include "scalar/integers.h"
#include "zan/geom2d.h"

namespace {

template <class P, class T>
void setPoint(P* point, T h, T v) {
    point->h = h;
    point->v = v;
}

template <class P>
void copyPoint(const P* source, P* destination) {
    *destination = *source;
}

template <class P>
bool equalPoints(const P& a, const P& b) {
    return a.v == b.v && a.h == b.h;
}

}  // namespace

int32_t Zan_SetPt(Zan_Point* point, int16_t h, int16_t v) {
    setPoint(point, h, v);
    return 0;
}
int32_t Zan_SetLPt(Zan_LPoint* point, int32_t h, int32_t v) {
    setPoint(point, h, v);
    return 0;
}
int32_t Zan_SetFixedPt(Zan_FixedPoint* point, Zan_Fixed h, Zan_Fixed v) {
    setPoint(point, h, v);
    return 0;
}

int32_t Zan_CopyPt(const Zan_Point* source, Zan_Point* destination) {
    copyPoint(source, destination);
    return 0;
}
int32_t Zan_CopyLPt(const Zan_LPoint* source, Zan_LPoint* destination) {
    copyPoint(source, destination);
    return 0;
}
int32_t Zan_CopyFixedPt(const Zan_FixedPoint* source, Zan_FixedPoint* destination) {
    copyPoint(source, destination);
    return 0;
}

bool Zan_EqualPt(const Zan_Point* a, const Zan_Point* b) { return equalPoints(*a, *b); }
bool Zan_EqualLPt(const Zan_LPoint* a, const Zan_LPoint* b) { return equalPoints(*a, *b); }
bool Zan_EqualFixedPt(const Zan_FixedPoint* a, const Zan_FixedPoint* b) { return equalPoints(*a, *b); }

int32_t Zan_AddPt(Zan_Point delta, Zan_Point* target) {
    target->v = zan::wrapAdd(target->v, delta.v);
    target->h = zan::wrapAdd(target->h, delta.h);
    return 0;
}

int32_t Zan_DeltaPoint(const Zan_Point& a, const Zan_Point& b) {
    const auto v = static_cast<uint16_t>(zan::wrapSubtract(a.v, b.v));
    const auto h = static_cast<uint16_t>(zan::wrapSubtract(a.h, b.h));
    return static_cast<int32_t>(uint32_t{v} << 16 | h);
}

// A Zan_Rect has the layout of two points, and Zan_Point is marked ZAN_MAY_ALIAS.
Zan_Point& Zan_TopLeft(Zan_Rect& rect) { return reinterpret_cast<Zan_Point&>(rect.top); }
Zan_Point& Zan_BottomRight(Zan_Rect& rect) { return reinterpret_cast<Zan_Point&>(rect.bottom); }

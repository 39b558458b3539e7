// Points: setting, copying, comparing, sums and differences, and the corners of a 16-bit rectangle as points.
#include "scalar/integers.h"
#include "zan/geom2d.h"

namespace {

template <class P, class T>
int32_t setPoint(P* point, T h, T v) {
    point->h = h;
    point->v = v;
    return 0;
}

template <class P>
int32_t copyPoint(const P* source, P* destination) {
    *destination = *source;
    return 0;
}

template <class P>
bool equalPoints(const P& a, const P& b) {
    return a.v == b.v && a.h == b.h;
}

}  // namespace

int32_t Zan_SetPt(Zan_Point* point, int16_t h, int16_t v) { return setPoint(point, h, v); }
int32_t Zan_SetLPt(Zan_LPoint* point, int32_t h, int32_t v) { return setPoint(point, h, v); }
int32_t Zan_SetFixedPt(Zan_FixedPoint* point, Zan_Fixed h, Zan_Fixed v) { return setPoint(point, h, v); }

int32_t Zan_CopyPt(const Zan_Point* source, Zan_Point* destination) { return copyPoint(source, destination); }
int32_t Zan_CopyLPt(const Zan_LPoint* source, Zan_LPoint* destination) { return copyPoint(source, destination); }
int32_t Zan_CopyFixedPt(const Zan_FixedPoint* source, Zan_FixedPoint* destination) {
    return copyPoint(source, destination);
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

// A rectangle is two points end to end, and a point may alias what it views.
Zan_Point& Zan_TopLeft(Zan_Rect& rect) { return reinterpret_cast<Zan_Point&>(rect.top); }
Zan_Point& Zan_BottomRight(Zan_Rect& rect) { return reinterpret_cast<Zan_Point&>(rect.bottom); }

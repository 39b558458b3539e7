// Operations on points and rectangles.
//
// Nothing here allocates or reports. Vertical coordinates grow downward. Integer and fixed rectangles are half-open:
// they contain the points with left <= h < right and top <= v < bottom. A rectangle with right <= left or bottom <= top
// is empty. Sums and differences wrap in the width of the field. The variants for 16-bit, 32-bit and 16.16 records
// behave the same; the fixed ones treat their values as 32-bit integers. Arguments give the horizontal value first,
// whatever the order of fields in the record. Pointers must be valid, and records of different types must not overlap.
#ifndef ZAN_GEOM2D_H
#define ZAN_GEOM2D_H

#include "zan/types.h"

/// @defgroup geom2d Points and rectangles
/// @{

/// @defgroup rectrelations Relations of two rectangles a and b
/// The selectors of Zan_RectCompare, Zan_LRectCompare and Zan_FixedRectCompare.
/// @{

/// One of the relations.
using Zan_RectRelation = int16_t;
inline constexpr Zan_RectRelation Zan_RectRelation_Equal = 0;           ///< all four fields are equal, also when empty
inline constexpr Zan_RectRelation Zan_RectRelation_Larger = 1;          ///< a is wider and taller than b
inline constexpr Zan_RectRelation Zan_RectRelation_AtLeastAsLarge = 2;  ///< a is at least as wide and as tall as b
inline constexpr Zan_RectRelation Zan_RectRelation_Smaller = 3;         ///< a is narrower and shorter than b
inline constexpr Zan_RectRelation Zan_RectRelation_AtMostAsLarge = 4;   ///< a is at most as wide and as tall as b
inline constexpr Zan_RectRelation Zan_RectRelation_StrictlyEncloses = 5;  ///< a encloses b and no edges coincide
inline constexpr Zan_RectRelation Zan_RectRelation_Encloses = 6;          ///< a encloses b; edges may coincide
inline constexpr Zan_RectRelation Zan_RectRelation_Overlaps = 7;          ///< Zan_SectRect(a, b) is true
/// a and b overlap, or share an edge or a corner. Emptiness is not tested; meant for rectangles that are not inverted.
inline constexpr Zan_RectRelation Zan_RectRelation_OverlapsOrTouches = 8;
/// @}

extern "C" {

/// @defgroup points Points
/// @{

/// Sets a point.
/// @param point  receives both values
/// @param h, v   the horizontal value, then the vertical one
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_SetPt(Zan_Point* point, int16_t h, int16_t v);
/// @copydoc Zan_SetPt
ZAN_API int32_t Zan_SetLPt(Zan_LPoint* point, int32_t h, int32_t v);
/// @copydoc Zan_SetPt
ZAN_API int32_t Zan_SetFixedPt(Zan_FixedPoint* point, Zan_Fixed h, Zan_Fixed v);

/// Copies a point. Source and destination may be the same record.
/// @param source       the point
/// @param destination  receives it
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_CopyPt(const Zan_Point* source, Zan_Point* destination);
/// @copydoc Zan_CopyPt
ZAN_API int32_t Zan_CopyLPt(const Zan_LPoint* source, Zan_LPoint* destination);
/// @copydoc Zan_CopyPt
ZAN_API int32_t Zan_CopyFixedPt(const Zan_FixedPoint* source, Zan_FixedPoint* destination);

/// True when both fields are equal.
/// @threads  any
[[nodiscard]] ZAN_API bool Zan_EqualPt(const Zan_Point* a, const Zan_Point* b);
/// @copydoc Zan_EqualPt
[[nodiscard]] ZAN_API bool Zan_EqualLPt(const Zan_LPoint* a, const Zan_LPoint* b);
/// @copydoc Zan_EqualPt
[[nodiscard]] ZAN_API bool Zan_EqualFixedPt(const Zan_FixedPoint* a, const Zan_FixedPoint* b);

/// Moves a point: target.v += delta.v and target.h += delta.h, modulo 2^16.
/// @param delta   the displacement
/// @param target  the point, changed in place
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_AddPt(Zan_Point delta, Zan_Point* target);
/// @}

/// @defgroup rects Rectangles: set, compare, move
/// @{

/// Sets a rectangle, which may be empty or inverted.
/// @param rect                      receives the four values
/// @param left, top, right, bottom  the edges, in this order whatever the order of fields in the record
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_SetRect(Zan_Rect* rect, int16_t left, int16_t top, int16_t right, int16_t bottom);
/// @copydoc Zan_SetRect
ZAN_API int32_t Zan_SetLRect(Zan_LRect* rect, int32_t left, int32_t top, int32_t right, int32_t bottom);
/// @copydoc Zan_SetRect
ZAN_API int32_t Zan_SetFixedRect(Zan_FixedRect* rect, Zan_Fixed left, Zan_Fixed top, Zan_Fixed right, Zan_Fixed bottom);
/// Sets the four fields of a record whose meaning the host defines.
/// @param rect        receives the values
/// @param a, b, c, d  in the order of the fields
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_SetWHRect(Zan_WHRect* rect, int16_t a, int16_t b, int16_t c, int16_t d);

/// Copies a rectangle. Source and destination may be the same record.
/// @param source       the rectangle
/// @param destination  receives it
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_CopyRect(const Zan_Rect* source, Zan_Rect* destination);
/// @copydoc Zan_CopyRect
ZAN_API int32_t Zan_CopyLRect(const Zan_LRect* source, Zan_LRect* destination);
/// @copydoc Zan_CopyRect
ZAN_API int32_t Zan_CopyFixedRect(const Zan_FixedRect* source, Zan_FixedRect* destination);
/// @copydoc Zan_CopyRect
ZAN_API int32_t Zan_CopyWHRect(const Zan_WHRect* source, Zan_WHRect* destination);

/// True when both rectangles are empty, or all four fields are equal.
/// @threads  any
[[nodiscard]] ZAN_API bool Zan_EqualRect(const Zan_Rect* a, const Zan_Rect* b);
/// @copydoc Zan_EqualRect
[[nodiscard]] ZAN_API bool Zan_EqualLRect(const Zan_LRect* a, const Zan_LRect* b);
/// @copydoc Zan_EqualRect
[[nodiscard]] ZAN_API bool Zan_EqualFixedRect(const Zan_FixedRect* a, const Zan_FixedRect* b);
/// True when all four fields are equal.
/// @threads  any
[[nodiscard]] ZAN_API bool Zan_EqualWHRect(const Zan_WHRect* a, const Zan_WHRect* b);

/// True when right <= left or bottom <= top.
/// @threads  any
[[nodiscard]] ZAN_API bool Zan_EmptyRect(const Zan_Rect* rect);
/// @copydoc Zan_EmptyRect
[[nodiscard]] ZAN_API bool Zan_EmptyLRect(const Zan_LRect* rect);
/// @copydoc Zan_EmptyRect
[[nodiscard]] ZAN_API bool Zan_EmptyFixedRect(const Zan_FixedRect* rect);

/// True when left <= h < right and top <= v < bottom: points on the left and top edges are inside, those on the right
/// and bottom edges are not.
/// @threads  any
[[nodiscard]] ZAN_API bool Zan_PtInRect(const Zan_Point* point, const Zan_Rect* rect);
/// @copydoc Zan_PtInRect
[[nodiscard]] ZAN_API bool Zan_LPtInRect(const Zan_LPoint* point, const Zan_LRect* rect);
/// @copydoc Zan_PtInRect
[[nodiscard]] ZAN_API bool Zan_FixedPtInRect(const Zan_FixedPoint* point, const Zan_FixedRect* rect);

/// The rectangle that two points span. It is empty when the points have the same h or the same v.
/// @param a, b  two opposite corners, in any order
/// @param rect  receives the smaller h and v as left and top, the larger ones as right and bottom
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_Pt2Rect(const Zan_Point* a, const Zan_Point* b, Zan_Rect* rect);
/// @copydoc Zan_Pt2Rect
ZAN_API int32_t Zan_LPt2Rect(const Zan_LPoint* a, const Zan_LPoint* b, Zan_LRect* rect);
/// @copydoc Zan_Pt2Rect
ZAN_API int32_t Zan_FixedPt2Rect(const Zan_FixedPoint* a, const Zan_FixedPoint* b, Zan_FixedRect* rect);

/// Moves every edge inward. An inset of more than half the size gives an inverted rectangle.
/// @param rect    the rectangle, changed in place
/// @param dh, dv  added to left and top, subtracted from right and bottom; negative values enlarge the rectangle
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_InsetRect(Zan_Rect* rect, int16_t dh, int16_t dv);
/// @copydoc Zan_InsetRect
ZAN_API int32_t Zan_InsetLRect(Zan_LRect* rect, int32_t dh, int32_t dv);
/// @copydoc Zan_InsetRect
ZAN_API int32_t Zan_InsetFixedRect(Zan_FixedRect* rect, Zan_Fixed dh, Zan_Fixed dv);

/// Moves a rectangle.
/// @param rect    the rectangle, changed in place
/// @param dh, dv  added to both horizontal fields and to both vertical fields
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_OffsetRect(Zan_Rect* rect, int16_t dh, int16_t dv);
/// @copydoc Zan_OffsetRect
ZAN_API int32_t Zan_OffsetLRect(Zan_LRect* rect, int32_t dh, int32_t dv);
/// @copydoc Zan_OffsetRect
ZAN_API int32_t Zan_OffsetFixedRect(Zan_FixedRect* rect, Zan_Fixed dh, Zan_Fixed dv);

/// Centres a rectangle in a frame and keeps its size: left becomes frame.left + (frame width - width) / 2 with the
/// division truncated toward zero, and top likewise. A rectangle larger than the frame extends beyond it on both sides,
/// equally to within one unit. Widths and heights wrap in the width of the field; their difference is formed in 32
/// bits.
/// @param frame  the frame, which may be the rectangle itself
/// @param rect   the rectangle, moved in place
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_CenterRect(const Zan_Rect* frame, Zan_Rect* rect);
/// @copydoc Zan_CenterRect
ZAN_API int32_t Zan_CenterLRect(const Zan_LRect* frame, Zan_LRect* rect);
/// @copydoc Zan_CenterRect
ZAN_API int32_t Zan_CenterFixedRect(const Zan_FixedRect* frame, Zan_FixedRect* rect);
/// @}

/// @defgroup rectconversions Conversions between rectangles
/// @{

/// Rounds a fixed rectangle to the nearest integers, halves toward plus infinity: 0.5 gives 1, -0.5 gives 0.
/// @param source       16.16
/// @param destination  -32768 to 32767; 32767.5 and above wraps to -32768
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_FixedRect2Rect(const Zan_FixedRect* source, Zan_Rect* destination);
/// @copydoc Zan_FixedRect2Rect
ZAN_API int32_t Zan_FixedRect2LRect(const Zan_FixedRect* source, Zan_LRect* destination);

/// The largest integer rectangle inside a fixed one: left and top rounded up, right and bottom down.
/// @param source       16.16
/// @param destination  -32768 to 32767; a left or top above 32767 wraps to -32768
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_FixedRect2RectIn(const Zan_FixedRect* source, Zan_Rect* destination);
/// @copydoc Zan_FixedRect2RectIn
ZAN_API int32_t Zan_FixedRect2LRectIn(const Zan_FixedRect* source, Zan_LRect* destination);

/// The smallest integer rectangle that contains a fixed one: left and top rounded down, right and bottom up.
/// @param source       16.16
/// @param destination  -32768 to 32767; a right or bottom above 32767 wraps to -32768
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_FixedRect2RectOut(const Zan_FixedRect* source, Zan_Rect* destination);
/// @copydoc Zan_FixedRect2RectOut
ZAN_API int32_t Zan_FixedRect2LRectOut(const Zan_FixedRect* source, Zan_LRect* destination);

/// Converts an integer rectangle to 16.16.
/// @param source       any values
/// @param destination  each coordinate times 65536, modulo 2^32: only the coordinate's low 16 bits count
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_Rect2FixedRect(const Zan_Rect* source, Zan_FixedRect* destination);
/// @copydoc Zan_Rect2FixedRect
ZAN_API int32_t Zan_LRect2FixedRect(const Zan_LRect* source, Zan_FixedRect* destination);

/// Converts a 32-bit rectangle to 16 bits.
/// @param source       left and top at least -32768, right and bottom at most 32767; no other bound is checked, so that
///                     an edge of an inverted rectangle can be truncated to its low 16 bits
/// @param destination  receives the rectangle; unchanged on failure
/// @return   0; Zan_Result_OutOfRange (10) when the rectangle does not fit, which is not reported
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_LRect2Rect(const Zan_LRect* source, Zan_Rect* destination);
/// @}

/// @defgroup rectsets Sets and relations of rectangles
/// @{

/// Intersects two rectangles. They overlap when neither is empty and they share more than an edge or a corner.
/// Without NaN: (1) the order of a and b matters only for the sign of zeros (2) a overlaps itself unless it is empty
/// (3) the intersection lies in both.
///
/// With a NaN, or with zeros of different sign, the order of operands matters: of two values the larger is
/// p > q ? p : q and the smaller is q > p ? p : q. The test for overlap takes p from a and q from b. So does the
/// intersection, unless the destination is b: then it takes p from b and q from a.
/// @param a, b         the rectangles
/// @param destination  receives the intersection, or zeros when there is none; may be null, or a or b itself
/// @return   whether they overlap
/// @threads  any
ZAN_API bool Zan_SectRect(const Zan_Rect* a, const Zan_Rect* b, Zan_Rect* destination);
/// @copydoc Zan_SectRect
ZAN_API bool Zan_SectLRect(const Zan_LRect* a, const Zan_LRect* b, Zan_LRect* destination);
/// @copydoc Zan_SectRect
ZAN_API bool Zan_SectFixedRect(const Zan_FixedRect* a, const Zan_FixedRect* b, Zan_FixedRect* destination);
/// @copydoc Zan_SectRect
ZAN_API bool Zan_SectFloatRect(const Zan_FloatRect* a, const Zan_FloatRect* b, Zan_FloatRect* destination);

/// The smallest rectangle that contains a and b. An empty rectangle is ignored.
/// @param a, b         the rectangles
/// @param destination  receives the union; may be the same record as a or b. When both are empty, a is copied to the
///                     destination; but if the destination is b, it stays unchanged
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_UnionRect(const Zan_Rect* a, const Zan_Rect* b, Zan_Rect* destination);
/// @copydoc Zan_UnionRect
ZAN_API int32_t Zan_UnionLRect(const Zan_LRect* a, const Zan_LRect* b, Zan_LRect* destination);
/// @copydoc Zan_UnionRect
ZAN_API int32_t Zan_UnionFixedRect(const Zan_FixedRect* a, const Zan_FixedRect* b, Zan_FixedRect* destination);

/// Tests a relation between two rectangles. Widths and heights are formed in 32 bits that wrap.
/// @param selector  the relation, one of Zan_RectRelation_Equal (0) to Zan_RectRelation_OverlapsOrTouches (8)
/// @param a, b      the rectangles
/// @return   whether a has the relation to b; false for any other selector
/// @threads  any
[[nodiscard]] ZAN_API bool Zan_RectCompare(int16_t selector, const Zan_Rect* a, const Zan_Rect* b);
/// @copydoc Zan_RectCompare
[[nodiscard]] ZAN_API bool Zan_LRectCompare(int16_t selector, const Zan_LRect* a, const Zan_LRect* b);
/// @copydoc Zan_RectCompare
[[nodiscard]] ZAN_API bool Zan_FixedRectCompare(int16_t selector, const Zan_FixedRect* a, const Zan_FixedRect* b);
/// @}

/// @defgroup angles Compass angles
/// Degrees clockwise from the upward direction, on a screen whose vertical axis points down: up 360, right 90, down
/// 180, left 270.
/// @{

/// The direction from the centre of a rectangle to a point, in whole degrees. The computation uses 3.1416 for pi and
/// 1.5708 for pi/2 and truncates the result, so that a point exactly to the left of the centre gives 269.
/// @param rect   the rectangle
/// @param point  the point
/// @param angle  receives 0 to 360: 360 for a point exactly above the centre, 0 for a point that lies clockwise of that
///               by less than a degree, 90 for the centre itself
/// @return   0
/// @threads  any
/// @libm     atan2
ZAN_API int32_t Zan_PtToAngle(const Zan_Rect* rect, Zan_Point point, int16_t* angle);
/// @}

}  // extern "C"

/// @addtogroup points
/// @{

/// The difference of two points, packed into 32 bits.
/// @return   a.v - b.v in the high 16 bits, a.h - b.h in the low 16 bits, each modulo 2^16
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_DeltaPoint(const Zan_Point& a, const Zan_Point& b);

/// The top left corner of a rectangle as a point. The reference aliases the rectangle's top and left.
/// @threads  any
[[nodiscard]] ZAN_API Zan_Point& Zan_TopLeft(Zan_Rect& rect);
/// The bottom right corner of a rectangle as a point. The reference aliases the rectangle's bottom and right.
/// @threads  any
[[nodiscard]] ZAN_API Zan_Point& Zan_BottomRight(Zan_Rect& rect);
/// @}

/// @addtogroup angles
/// @{

/// The direction from the centre of a rectangle to a point, in degrees, not rounded.
/// @param rect   the rectangle
/// @param point  the point; not changed
/// @param angle  receives a value above 0 and up to 360; 90 when the point is the centre
/// @return   0
/// @threads  any
/// @libm     atan2
ZAN_API int32_t Zan_Pt2Angle(const Zan_FloatRect* rect, Zan_Vector2T<double>* point, double* angle);

/// The compass angle of a direction, not rounded.
/// @param direction  a vector of any length, y pointing down
/// @return   a value above 0 and up to 360 degrees; 90 for the zero vector
/// @threads  any
/// @libm     atan2
[[nodiscard]] ZAN_API double Zan_VecToAngle(const Zan_Vector2T<double>& direction);
/// @}

/// @}

#endif  // ZAN_GEOM2D_H

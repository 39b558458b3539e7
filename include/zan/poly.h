// Layer outlines, hit tests, hulls and clipping.
//
// A polygon is a list of vertices in order, the last joined to the first. The function templates have no body here: the
// library holds the instantiations that are declared, and no others.
#ifndef ZAN_POLY_H
#define ZAN_POLY_H

#include "zan/types.h"

/// @defgroup hittests Points in polygons
/// Whether a point is inside an outline that may be concave; a self-crossing one follows the even-odd rule. A ray from
/// the point toward increasing y counts the edges that it crosses. An edge takes part when it spans the point's x, its
/// smaller x left out and its larger x included: a vertex above or below the point counts once where the outline passes
/// and not or twice where it only touches. A point on an edge that takes part (within about 1e-12, relatively) is
/// inside. Of the square from (0, 0) to (10, 10) so everything is inside but the side x = 0, its corners included.
/// @{

/// Whether a point is inside an outline, or within a tolerance of it. Calculated in double precision for both types,
/// except that a polygon whose vertices are all the same compares the point with it in its own type.
/// @param point      the point
/// @param vertices   the outline; vertices repeated one after the other count as one
/// @param count      how many; below 1 nothing is inside
/// @param tolerance  a point this far from an edge that it is beside (see Zan_PerpDistTo2DLine), or from a vertex, is
///                   inside. A tolerance whose square is 0 or NaN is none
/// @param inside     receives 1 or 0
/// @return   0, or the platform's code for an exception
/// @reports  the platform reports that working memory could not be had; inside is then 0
/// @threads  any
template <class Vector>
[[nodiscard]] int32_t Zan_IsFloatPointInConcavePoly(const Vector* point, const Vector* vertices, int32_t count,
                                                    double tolerance, unsigned char* inside);

/// @cond
extern template ZAN_API int32_t Zan_IsFloatPointInConcavePoly<Zan_Vector2T<double>>(const Zan_Vector2T<double>*,
                                                                                    const Zan_Vector2T<double>*,
                                                                                    int32_t, double, unsigned char*);
extern template ZAN_API int32_t Zan_IsFloatPointInConcavePoly<Zan_Vector2T<float>>(const Zan_Vector2T<float>*,
                                                                                   const Zan_Vector2T<float>*, int32_t,
                                                                                   double, unsigned char*);
/// @endcond

extern "C" {

/// Zan_IsFloatPointInConcavePoly for four vertices and no tolerance.
/// @param point     the point
/// @param vertices  four
/// @param inside    receives 1 or 0
/// @return   0, or the platform's code for an exception
/// @reports  as Zan_IsFloatPointInConcavePoly
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_IsFloatPointInQuad(const Zan_Vector2T<double>* point,
                                                     const Zan_Vector2T<double>* vertices, unsigned char* inside);

}  // extern "C"

/// The area of a simple polygon, positive when its vertices run counterclockwise with y upward (clockwise on a screen).
/// @param vertices  the outline
/// @param count     how many; below 3 the area is 0
/// @threads any
[[nodiscard]] ZAN_API double Zan_SignedPolygonArea2D(const Zan_Vector2T<double>* vertices, int32_t count);

/// @}

#endif  // ZAN_POLY_H

// The hit test as the layer outlines call it.
#ifndef ZAN_POLY_POINT_IN_POLYGON_H
#define ZAN_POLY_POINT_IN_POLYGON_H

#include "matrix/vectors.h"

namespace zan {

/// Zan_IsFloatPointInConcavePoly for an outline of 1 vertex or more.
bool isPointInside(const Vector2& p, const Vector2* outline, int32_t count, double tolerance);

}  // namespace zan

#endif  // ZAN_POLY_POINT_IN_POLYGON_H

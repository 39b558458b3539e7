// A layer's outline on the screen and its hit test by Zan's plain functions: what Zan_TransformPoly3D gives to C++.
#ifndef C_HOST_LAYER_H
#define C_HOST_LAYER_H

#include "zan/zan_c.h"

// The part of a layer in front of the near plane, on the screen: no point when the whole layer is behind, else 3 to 5
// (6 if the corners are not those of a convex layer).
typedef struct LayerOutline {
    int32_t count;
    Zan_Vector2d points[6];
} LayerOutline;

#ifdef __cplusplus
extern "C" {
#endif

// The outline of a layer, from its corners in layer coordinates, in order around it.
void layerOutline(const Zan_Vector2d corners[4], const Zan_Matrix4* layerToEye, const Zan_Matrix4* eyeToScreen,
                  LayerOutline* outline);

// Whether a point of the screen is inside the outline, or within the tolerance of it. The outline must be convex; that
// of a rectangular layer is.
bool layerIsHit(const LayerOutline* outline, Zan_Vector2d point, double tolerance);

#ifdef __cplusplus
}
#endif

#endif  // C_HOST_LAYER_H

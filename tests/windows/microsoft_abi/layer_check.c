// The host's part in C: an outline and hit tests by plain functions, with the code of examples/c_host.
#include "layer.h"

// Checks the outline and hits of a square whose left edge is behind the near plane. Returns 0, or the number of the
// first check that fails.
int failedLayerCheck(void) {
    const Zan_Vector2d corners[4] = {{-1.0, -1.0}, {1.0, -1.0}, {1.0, 1.0}, {-1.0, 1.0}};
    Zan_Matrix4 toEye;
    Zan_IdentityMatrix4(&toEye);
    toEye.m02 = 1.0;  // z = x + 0.6, so that the near plane is at x = -0.5
    toEye.m32 = 0.6;
    Zan_Matrix4 toScreen;
    Zan_IdentityMatrix4(&toScreen);
    LayerOutline outline;
    layerOutline(corners, &toEye, &toScreen, &outline);
    const Zan_Vector2d inside = {-0.25, 0.5};
    const Zan_Vector2d nextToClipEdge = {-0.625, 0.5};
    if (outline.count != 4) return 1;
    if (outline.points[0].x != -0.5 || outline.points[0].y != -1.0) return 2;
    if (outline.points[2].x != 1.0 || outline.points[2].y != 1.0) return 3;
    if (!layerIsHit(&outline, inside, 0.0)) return 4;
    if (layerIsHit(&outline, nextToClipEdge, 0.0)) return 5;
    if (!layerIsHit(&outline, nextToClipEdge, 0.25)) return 6;
    return 0;
}

// Matrices of layers and cameras.
//
// A layer is centred on the origin, then scaled, rotated and translated. A camera applies the inverse of its step's
// translation and rotation; the eye is `distance` in front of the step's plane and looks along +z. Row vectors.
#ifndef ZAN_SCENE_MAPPING_H
#define ZAN_SCENE_MAPPING_H

#include "deck.h"

#include <zan/zan.h>

namespace scene {

/// From centred layer coordinates to the deck's space.
Zan_Matrix4 layerPlacement(const Layer& layer);

/// The matrices of one camera.
struct View {
    Zan_Matrix4 spaceToStep;  ///< to the coordinates of the camera's step, without its scale
    Zan_Matrix4 spaceToEye;
    Zan_Matrix4 eyeToScreen;
    double distance;          ///< from the eye to the camera's step
    double zoom;              ///< window pixels per unit of the deck at that distance
    double centreX, centreY;  ///< of the window
};

/// The smaller of window width / deck width and window height / deck height, clamped to the deck's bounds.
double windowScale(const Deck& deck, Size window);

/// @throws Stop when the zoom is below kSmallestScale
View cameraView(const Deck& deck, const Layer& camera, Size window);

/// The ray from the eye through a point of the window. Its parameter is the depth: the point at t has eye z = t.
Zan_Ray rayThrough(const View& view, double x, double y);

}  // namespace scene

#endif  // ZAN_SCENE_MAPPING_H

// From a deck's numbers to zan's matrices: where a layer stands, what a camera sees.
//
// A layer is centred on the origin, scaled, turned and moved to its place. A camera undoes its own step's move and
// turn; its eye stands `distance` in front of the step's plane and looks along +z. Row vectors throughout.
#ifndef ZAN_SCENE_MAPPING_H
#define ZAN_SCENE_MAPPING_H

#include "deck.h"

#include <zan/zan.h>

namespace scene {

/// Layer coordinates, centred, to the deck's space.
Zan_Matrix4 placeLayer(const Layer& layer);

/// One camera's way from the deck's space to the window.
struct View {
    Zan_Matrix4 spaceToStep;  ///< the camera step's own coordinates, its scale left alone
    Zan_Matrix4 spaceToEye;
    Zan_Matrix4 eyeToScreen;
    double distance;          ///< from the eye to the camera's own step
    double zoom;              ///< window pixels to one unit of the deck at that distance
    double centreX, centreY;  ///< of the window
};

/// The factor by which a deck fills a window: the smaller of the two quotients, within the deck's bounds.
double windowScale(const Deck& deck, Size window);

/// @throws Stop when the camera's scale leaves nothing to be seen
View lookThrough(const Deck& deck, const Layer& camera, Size window);

/// The ray from the eye through a window point. Its parameter is the depth: the point at t has the eye z of t.
Zan_Ray rayThrough(const View& view, double x, double y);

}  // namespace scene

#endif  // ZAN_SCENE_MAPPING_H

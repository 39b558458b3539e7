// The answers as pictures: one SVG a camera, and a page that shows them side by side.
#ifndef ZAN_SCENE_PICTURE_H
#define ZAN_SCENE_PICTURE_H

#include "look.h"

#include <string>
#include <vector>

namespace scene {

/// The window as SVG: layers back to front and named, those hit filled, edges that the near plane cuts in red, the hit
/// points marked with their tolerance.
/// @param visible  also the hull around all that the window shows, and with each name the layer's share of it
std::string toSvg(const Deck& deck, Size window, const CameraAnswer& answer, bool visible);

/// A file name for a camera's picture, safe on any file system and different for every camera: "03-overview.svg".
std::string pictureName(const Deck& deck, size_t camera);

/// The page beside the pictures.
std::string toPage(const Deck& deck, Size window, const std::vector<size_t>& cameras);

}  // namespace scene

#endif  // ZAN_SCENE_PICTURE_H

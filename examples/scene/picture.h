// The answers as pictures: one SVG per camera, and a page that shows them side by side.
#ifndef ZAN_SCENE_PICTURE_H
#define ZAN_SCENE_PICTURE_H

#include "project.h"

#include <string>
#include <vector>

namespace scene {

/// The window as SVG: layers back to front with labels, those hit filled, edges cut by the near plane in red, the hit
/// points with their tolerance.
/// @param visible  draws the hull of everything that the window shows, and adds to each label the layer's share on
/// screen
std::string toSvg(const Deck& deck, Size window, const CameraAnswer& answer, bool visible, const Ticker& tick = {});

/// The file name of a camera's picture: valid on any file system and unique in its folder, "03-overview.svg".
std::string pictureName(const Deck& deck, size_t camera);

/// The page that shows the pictures.
std::string toPage(const Deck& deck, Size window, const std::vector<size_t>& cameras);

}  // namespace scene

#endif  // ZAN_SCENE_PICTURE_H

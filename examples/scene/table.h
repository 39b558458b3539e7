// The answers as a table to read.
#ifndef ZAN_SCENE_TABLE_H
#define ZAN_SCENE_TABLE_H

#include "look.h"

#include <ostream>
#include <string>
#include <vector>

namespace scene {

/// What all cameras have in common: deck, window, layer size and where that comes from.
void writeHead(std::ostream& out, const Deck& deck, Size window, Size layerSize, bool layerSizeFromDeck);

/// One camera: a row a layer, then a line a hit point.
/// @param everyLayer  false leaves out the layers that are not in the window, and counts them
void writeCamera(std::ostream& out, const Deck& deck, Size window, const CameraAnswer& answer, bool everyLayer);

}  // namespace scene

#endif  // ZAN_SCENE_TABLE_H

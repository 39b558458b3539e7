// The answers as a table.
#ifndef ZAN_SCENE_TABLE_H
#define ZAN_SCENE_TABLE_H

#include "project.h"

#include <ostream>
#include <string>
#include <vector>

namespace scene {

/// Two lines about the run: deck, window, layer size and where it comes from.
void writeHead(std::ostream& out, const Deck& deck, Size window, Size layerSize, bool layerSizeFromDeck);

/// One camera: one row per layer, then one line per hit point.
/// @param everyLayer  false lists the layers in the window and counts the others
void writeCamera(std::ostream& out, const Deck& deck, Size window, const CameraAnswer& answer, bool everyLayer);

}  // namespace scene

#endif  // ZAN_SCENE_TABLE_H

// A deck in the impress.js format: the placement of its layers.
#ifndef ZAN_SCENE_DECK_H
#define ZAN_SCENE_DECK_H

#include "messages.h"
#include "progress.h"

#include <string>
#include <string_view>
#include <vector>

namespace scene {

struct Size {
    double width, height;
};

/// One step: a flat rectangle in space, and a camera that faces it.
struct Layer {
    std::string id;
    double x, y, z;                    ///< the centre
    double rotateX, rotateY, rotateZ;  ///< degrees
    std::string order;                 ///< of the rotations; "xyz" by default
    double scale;                      ///< at least kSmallestScale
};

struct Deck {
    std::string path;
    Size size{1024, 768};
    double perspective = 1000;
    double minScale = 0;  ///< 0: no bound
    double maxScale = 1;  ///< 0: no bound
    std::vector<Layer> layers;
};

/// Reads a deck from a file and writes messages about it to `lines`.
/// @throws Stop after an error message
Deck readDeck(const std::string& path, std::ostream& lines, Progress& progress);

}  // namespace scene

#endif  // ZAN_SCENE_DECK_H

// A deck in the impress.js format, as far as it says where its layers stand.
#ifndef ZAN_SCENE_DECK_H
#define ZAN_SCENE_DECK_H

#include "messages.h"

#include <string>
#include <string_view>
#include <vector>

namespace scene {

struct Size {
    double width, height;
};

/// One step: a flat rectangle in space, and a camera that looks at it squarely.
struct Layer {
    std::string id;
    double x, y, z;                    ///< of its centre
    double rotateX, rotateY, rotateZ;  ///< degrees
    std::string order;                 ///< of the rotations, "xyz" unless the deck says otherwise
    double scale;                      ///< kSmallestScale and above
};

struct Deck {
    std::string path;
    Size size{1024, 768};
    double perspective = 1000;
    double minScale = 0;  ///< 0: no bound
    double maxScale = 1;  ///< 0: no bound
    std::vector<Layer> layers;
};

/// A layer whose sides shrink by more than this is a point to the library.
inline constexpr double kSmallestScale = 1e-5;

/// Reads a deck from a page's text. The lines go to `messages`; with one that refuses, the deck is not to be used.
/// @param path  for the messages and the answers only
Deck parseDeck(std::string_view path, std::string_view page, Messages& messages);

/// Reads a deck from a file; a message line for every matter goes to `lines`.
/// @throws Stop when it cannot be used (after its lines)
Deck readDeck(const std::string& path, std::ostream& lines);

}  // namespace scene

#endif  // ZAN_SCENE_DECK_H

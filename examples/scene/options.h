// What the command line asks for.
#ifndef ZAN_SCENE_OPTIONS_H
#define ZAN_SCENE_OPTIONS_H

#include "deck.h"
#include "look.h"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace scene {

struct Options {
    std::string deck;
    std::optional<std::string> camera;  ///< nothing: the deck's first
    bool allCameras = false;
    Size window{1280, 800};
    std::optional<Size> layer;  ///< nothing: the deck's size
    std::vector<HitPoint> hits;
    std::optional<std::string> svg;
    bool drawVisible = false;         ///< the hull and the shares, in the pictures
    std::optional<std::string> json;  ///< "-": standard output, in place of the table
};

/// @return nothing when only help was asked for; it has been written to `out`
/// @throws Stop for a wrong command line
std::optional<Options> readOptions(int argc, const char* const* argv, std::ostream& out);

}  // namespace scene

#endif  // ZAN_SCENE_OPTIONS_H

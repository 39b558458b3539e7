// The command line.
#ifndef ZAN_SCENE_OPTIONS_H
#define ZAN_SCENE_OPTIONS_H

#include "deck.h"
#include "project.h"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace scene {

struct Options {
    std::string deck;
    std::optional<std::string> camera;  ///< none: the deck's first step
    bool allCameras = false;
    Size window{1280, 800};
    std::optional<Size> layer;  ///< none: the deck's size
    std::vector<HitPoint> hits;
    std::optional<std::string> svg;
    bool drawVisible = false;         ///< pictures show the hull and the shares
    std::optional<std::string> json;  ///< "-": standard output, in place of the table
};

/// @return none for --help, whose text has been written to `out`
/// @throws Stop for a wrong command line
std::optional<Options> readOptions(int argc, const char* const* argv, std::ostream& out);

}  // namespace scene

#endif  // ZAN_SCENE_OPTIONS_H

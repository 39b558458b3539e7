// The command line, read with CLI11.
#include "options.h"

#include "messages.h"
#include "numbers.h"

#include <CLI/CLI.hpp>

namespace scene {
namespace {

Size readSize(const char* option, const std::string& text) {
    const auto numbers = parseNumbers(text, 'x');
    if (!numbers || numbers->size() != 2 || (*numbers)[0] < kSmallestSize || (*numbers)[1] < kSmallestSize) {
        throw Stop(kBadInput, quoted(option, text) + ": two numbers from 0.001 to 1e9 are needed, as in 1280x800");
    }
    return {(*numbers)[0], (*numbers)[1]};
}

HitPoint readHit(const std::string& text) {
    const auto numbers = parseNumbers(text, ',');
    if (!numbers || numbers->size() < 2 || numbers->size() > 3) {
        throw Stop(kBadInput, quoted("--hit", text) +
                                  ": two or three numbers from -1e9 to 1e9 are needed, as in 640,400 or 640,400,5");
    }
    const double tolerance = numbers->size() == 3 ? (*numbers)[2] : 0;
    if (tolerance < 0) throw Stop(kBadInput, quoted("--hit", text) + ": the tolerance must not be below 0");
    return {(*numbers)[0], (*numbers)[1], tolerance};
}

void needPath(const char* option, const std::string& path) {
    if (path.empty()) throw Stop(kBadInput, quoted(option, path) + ": a path is needed");
}

/// CLI11 takes "--json=" as if it were not there.
void refuseEmptyValues(int argc, const char* const* argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument.rfind("--", 0) == 0 && argument.find('=') == argument.size() - 1) {
            throw Stop(kBadInput, oneLine(argument) + ": a value is needed");
        }
    }
}

}  // namespace

std::optional<Options> readOptions(int argc, const char* const* argv, std::ostream& out) {
    Options options;
    std::string window = "1280x800";
    std::string layer;
    std::vector<std::string> hits;
    // Plain strings: for a std::optional, CLI11 treats an empty value as if the option were not given.
    std::string camera;
    std::string svg;
    std::string json;
    CLI::App app(
        "Projects a deck of flat layers to the screen, seen by one of its steps or by each, and finds the layers\n"
        "under points of the screen. The deck is a page in the impress.js format.",
        "zan-scene");
    app.add_option("DECK", options.deck, "The page")->required();
    CLI::Option* cameraOption =
        app.add_option("--camera", camera, "The step that is the camera; the first by default")->option_text("ID");
    app.add_flag("--all", options.allCameras, "Use every step as the camera in turn")->excludes(cameraOption);
    app.add_option("--window", window, "Size of the window; 1280x800 by default")->option_text("WxH");
    const CLI::Option* layerOption =
        app.add_option("--layer", layer, "Size of every layer before its scale; the deck's size by default")
            ->option_text("WxH");
    app.add_option("--hit", hits, "Find the layers at a point, or within a distance of it; may be repeated")
        ->option_text("X,Y[,TOLERANCE]")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    const CLI::Option* svgOption =
        app.add_option("--svg", svg, "Draw the window into a file; with --all, one picture per camera into a folder")
            ->option_text("PATH");
    app.add_flag("--visible", options.drawVisible,
                 "In pictures, draw the hull of everything visible and each layer's share on screen");
    const CLI::Option* jsonOption =
        app.add_option("--json", json,
                       "Write the answers as JSON; - writes them to standard output in place of the table")
            ->option_text("FILE");
    refuseEmptyValues(argc, argv);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw Stop(kBadInput, oneLine(error.what(), 300) + " (see --help)");
    }
    if (cameraOption->count() > 0) options.camera = camera;
    if (svgOption->count() > 0) options.svg = svg;
    if (jsonOption->count() > 0) options.json = json;
    needPath("DECK", options.deck);
    if (options.svg) needPath("--svg", svg);
    if (options.json) needPath("--json", json);
    options.window = readSize("--window", window);
    if (layerOption->count() > 0) options.layer = readSize("--layer", layer);
    for (const std::string& hit : hits) options.hits.push_back(readHit(hit));
    return options;
}

}  // namespace scene

// What the command line asks for; CLI11 takes it apart.
#include "options.h"

#include "messages.h"
#include "numbers.h"

#include <CLI/CLI.hpp>

namespace scene {
namespace {

Size readSize(const char* option, const std::string& text) {
    const auto numbers = parseNumbers(text, 'x');
    if (!numbers || numbers->size() != 2 || !((*numbers)[0] > 0 && (*numbers)[1] > 0)) {
        throw Stop(kBadInput, quoted(option, text) + ": two numbers above 0 are needed, as in 1280x800");
    }
    return {(*numbers)[0], (*numbers)[1]};
}

HitPoint readHit(const std::string& text) {
    const auto numbers = parseNumbers(text, ',');
    if (!numbers || numbers->size() < 2 || numbers->size() > 3) {
        throw Stop(kBadInput, quoted("--hit", text) + ": two or three numbers are needed, as in 640,400 or 640,400,5");
    }
    const double tolerance = numbers->size() == 3 ? (*numbers)[2] : 0;
    if (tolerance < 0) throw Stop(kBadInput, quoted("--hit", text) + ": the tolerance must not be below 0");
    return {(*numbers)[0], (*numbers)[1], tolerance};
}

}  // namespace

std::optional<Options> readOptions(int argc, const char* const* argv, std::ostream& out) {
    Options options;
    std::string window = "1280x800";
    std::string layer;
    std::vector<std::string> hits;
    CLI::App app(
        "Carries a deck of flat layers to the screen, seen by one of its steps or by each, and tells which\n"
        "layers a point of the screen hits. The deck is a page in the impress.js format.",
        "zan-scene");
    app.add_option("DECK", options.deck, "The page")->required();
    CLI::Option* camera =
        app.add_option("--camera", options.camera, "The step to look from; the first unless given")->option_text("ID");
    app.add_flag("--all", options.allCameras, "Look from every step in turn")->excludes(camera);
    app.add_option("--window", window, "Size of the window, 1280x800 unless given")->option_text("WxH");
    const CLI::Option* layerOption =
        app.add_option("--layer", layer, "Size of every layer before its scale; the deck's size unless given")
            ->option_text("WxH");
    app.add_option("--hit", hits, "Tell which layers lie at or within a distance of a point; may be repeated")
        ->option_text("X,Y[,TOLERANCE]")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--svg", options.svg, "Draw the window into a file; with --all, a picture a camera into a folder")
        ->option_text("PATH");
    app.add_flag("--visible", options.drawVisible,
                 "In pictures, draw the hull of all that is visible, and tell each layer's share on screen");
    app.add_option("--json", options.json, "Write the answers as JSON; - writes them in place of the table")
        ->option_text("FILE");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw Stop(kBadInput, oneLine(error.what(), 300) + " (--help tells what there is)");
    }
    options.window = readSize("--window", window);
    if (layerOption->count() > 0) options.layer = readSize("--layer", layer);
    for (const std::string& hit : hits) options.hits.push_back(readHit(hit));
    return options;
}

}  // namespace scene

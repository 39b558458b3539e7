// The run from the command line to the files.
#include "program.h"

#include "answer.h"
#include "files.h"
#include "messages.h"
#include "options.h"
#include "picture.h"
#include "platform/bel.h"
#include "progress.h"
#include "table.h"

#include <zan/zan.h>

#include <algorithm>
#include <new>
#include <sstream>

namespace scene {
namespace {

/// The number under which zan reports that this program was built for another version of it.
constexpr int32_t kVersionReport = 0x5CE4E;

/// zan, started; its reports go to `err` as they come.
class Library {
public:
    explicit Library(std::ostream& err) {
        Bel_SetReportHandler(show, &err);
        if (Zan_CheckVersions(kVersionReport, Zan_kInterfaceVersion) != 0 ||
            Zan_Birth(Zan_Service_Basic, nullptr) != 0) {
            Bel_SetReportHandler(nullptr, nullptr);
            throw Stop(kFailed, "the library does not start");
        }
    }
    ~Library() {
        Zan_Death();
        Bel_SetReportHandler(nullptr, nullptr);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

private:
    static void show(void* err, const Bel_Report* report) {
        char number[16];
        std::snprintf(number, sizeof number, "0x%X", report->errorNumber);
        std::ostream& lines = *static_cast<std::ostream*>(err);
        lines << "zan-scene: report " << number << ", severity " << report->severity;
        if (report->fromPlatform) lines << ", platform code " << report->platformCode;
        lines << ": " << report->text << '\n';
    }
};

std::vector<size_t> chooseCameras(const Deck& deck, const Options& options) {
    std::vector<size_t> cameras;
    for (size_t i = 0; i < deck.layers.size(); ++i) {
        const bool wanted = options.camera ? deck.layers[i].id == *options.camera : true;
        if (wanted) cameras.push_back(i);
        if (wanted && !options.allCameras) return cameras;
    }
    if (cameras.empty()) {
        std::string known;
        for (size_t i = 0; i < std::min<size_t>(deck.layers.size(), 8); ++i) {
            known += (i > 0 ? ", " : "") + oneLine(deck.layers[i].id);
        }
        throw Stop(kBadInput, quoted("--camera", *options.camera) + ": no step of " + oneLine(deck.path, 1000) +
                                  " has this name; there are " + known + (deck.layers.size() > 8 ? ", ..." : ""));
    }
    return cameras;
}

void answer(const Options& options, std::ostream& out, std::ostream& err) {
    const Deck deck = readDeck(options.deck, err);
    const Size layerSize = options.layer.value_or(deck.size);
    const std::vector<size_t> cameras = chooseCameras(deck, options);
    const std::filesystem::path pictures = options.svg.value_or("");

    const Library library(err);
    Progress progress(err, cameras.size());
    Files files;
    JsonAnswer json(deck, options.window, layerSize);
    std::ostringstream table;
    writeHead(table, deck, options.window, layerSize, !options.layer);
    if (options.svg && options.allCameras) {
        files.folder(pictures);
        files.add(pictures / "index.html", toPage(deck, options.window, cameras));
    }
    size_t done = 0;
    for (const size_t camera : cameras) {
        const CameraAnswer one = lookAt(deck, camera, options.window, layerSize, options.hits);
        if (options.svg) {
            files.add(options.allCameras ? pictures / pictureName(deck, camera) : pictures,
                      toSvg(deck, options.window, one, options.drawVisible));
        }
        if (options.json) json.add(one);
        writeCamera(table, deck, options.window, one, !options.allCameras);
        progress.done(++done);
    }

    const bool jsonToOut = options.json == "-";
    if (options.json && !jsonToOut) files.add(*options.json, json.take());
    files.commit();
    out << (jsonToOut ? json.take() : table.str());
    if (!out.flush()) throw Stop(kFailed, "standard output cannot be written");
}

}  // namespace

int run(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    try {
        if (const std::optional<Options> options = readOptions(argc, argv, out)) answer(*options, out, err);
        return kDone;
    } catch (const Stop& stop) {
        // A deck's own lines have been written already.
        if (*stop.what() != '\0') err << "zan-scene: error: " << stop.what() << '\n';
        return stop.code();
    } catch (const std::bad_alloc&) {
        err << "zan-scene: error: not enough memory\n";
    } catch (const std::exception& exception) {
        err << "zan-scene: error: " << oneLine(exception.what(), 300) << '\n';
    } catch (long code) {
        err << "zan-scene: error: the library gave up with code " << code << '\n';
    }
    return kFailed;
}

}  // namespace scene

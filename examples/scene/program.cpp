// A run, from the command line to the files.
#include "program.h"

#include "files.h"
#include "json.h"
#include "messages.h"
#include "options.h"
#include "picture.h"
#include "progress.h"
#include "table.h"
#include "zan/platform/bel.h"

#include <unistd.h>
#include <zan/zan.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>
#include <new>
#include <sstream>

namespace scene {
namespace {

/// Error number for a report that this program was built for another version of zan.
constexpr int32_t kVersionReport = 0x5CE4E;

/// zan between its start and its end. Reports are written as lines.
class Library {
public:
    Library(std::ostream& err, Progress& progress) : err_(err), progress_(progress) {
        Bel_SetReportHandler(write, this);
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
    static void write(void* library, const Bel_Report* report) {
        const auto& self = *static_cast<Library*>(library);
        self.progress_.clear();
        std::array<char, 16> number{};
        std::snprintf(number.data(), number.size(), "0x%X", report->errorNumber);
        self.err_ << "zan-scene: report " << number.data() << ", severity " << report->severity;
        if (report->fromPlatform) self.err_ << ", platform code " << report->platformCode;
        self.err_ << ": " << report->text << '\n';
    }

    std::ostream& err_;
    Progress& progress_;
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
        throw Stop(kBadInput, quoted("--camera", *options.camera) + ": " + oneLine(deck.path, 1000) +
                                  " has no such step; it has " + known + (deck.layers.size() > 8 ? ", ..." : ""));
    }
    return cameras;
}

/// The outputs that a run was asked for.
class Outputs {
public:
    Outputs(const Options& options, const Deck& deck, const std::vector<size_t>& cameras, Size layerSize,
            std::ostream& out)
        : options_(options), deck_(deck) {
        files_.protect(options.deck, "the deck");
        if (&out == &std::cout) files_.protectStandardOutput();
        const bool jsonToOut = options.json == "-";
        if (options.json) {
            json_.emplace(jsonToOut ? files_.open(out) : files_.open(*options.json), deck, options.window, layerSize);
        }
        if (!jsonToOut) {
            table_ = &files_.open(out);
            std::ostringstream head;
            writeHead(head, deck, options.window, layerSize, !options.layer);
            table_->write(head.str());
        }
        if (options.svg && options.allCameras) {
            files_.folder(*options.svg);
            files_.add(pictures() / "index.html", toPage(deck, options.window, cameras));
        } else if (options.svg) {
            picture_ = &files_.open(*options.svg);
        }
    }

    void add(const CameraAnswer& answer, const Ticker& tick) {
        if (json_) json_->add(answer);
        if (table_ != nullptr) {
            std::ostringstream text;
            writeCamera(text, deck_, options_.window, answer, !options_.allCameras);
            table_->write(text.str());
        }
        if (!options_.svg) return;
        const std::string svg = toSvg(deck_, options_.window, answer, options_.drawVisible, tick);
        if (picture_ != nullptr) {
            picture_->write(svg);
        } else {
            files_.add(pictures() / pictureName(deck_, answer.camera), svg);
        }
    }

    /// @return how many files
    size_t commit(Progress& progress) {
        if (json_) json_->finish();
        const size_t count = files_.count();
        files_.commit(progress);
        return count;
    }

private:
    [[nodiscard]] std::filesystem::path pictures() const { return *options_.svg; }

    const Options& options_;
    const Deck& deck_;
    Files files_;
    std::optional<JsonWriter> json_;
    Output* table_ = nullptr;    ///< none when JSON goes to standard output
    Output* picture_ = nullptr;  ///< none with --all
};

void answer(const Options& options, std::ostream& out, std::ostream& err) {
    const bool terminal = &err == &std::cerr && isatty(STDERR_FILENO) == 1;
    Progress progress(err, terminal);
    const Deck deck = readDeck(options.deck, err, progress);
    const Size layerSize = options.layer.value_or(deck.size);
    const std::vector<size_t> cameras = chooseCameras(deck, options);

    const Library library(err, progress);
    Outputs outputs(options, deck, cameras, layerSize, out);
    // A camera counts for 1000, half of it for its picture.
    const double layersShare = options.svg ? 0.5 : 1;
    for (size_t i = 0; i < cameras.size(); ++i) {
        const auto at = [&](double done) {
            progress.at("cameras", i * 1000 + static_cast<size_t>(done * 1000), cameras.size() * 1000);
        };
        outputs.add(projectDeck(deck, cameras[i], options.window, layerSize, options.hits,
                                [&](double done) { at(done * layersShare); }),
                    [&](double done) { at(layersShare + done * (1 - layersShare)); });
    }
    const size_t files = outputs.commit(progress);
    const std::string total = std::to_string(cameras.size());
    progress.close(total + " of " + total + " cameras, " + std::to_string(files) + " files");
}

}  // namespace

int run(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    try {
        if (const std::optional<Options> options = readOptions(argc, argv, out)) answer(*options, out, err);
        return kDone;
    } catch (const Stop& stop) {
        // Without a text, the messages about the deck have been written already.
        if (*stop.what() != '\0') err << "zan-scene: error: " << stop.what() << '\n';
        return stop.code();
    } catch (const std::bad_alloc&) {
        err << "zan-scene: error: not enough memory\n";
    } catch (const std::exception& exception) {
        err << "zan-scene: error: " << oneLine(exception.what(), 300) << '\n';
    } catch (long code) {
        err << "zan-scene: error: the library failed with code " << code << '\n';
    }
    return kFailed;
}

}  // namespace scene

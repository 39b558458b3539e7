// zan-scene on any page: all files that it was asked for, and whole, or none, and a line that says why.
#include "program.h"
#include "property.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;

struct Folder {
    const fs::path path = fs::temp_directory_path() / ("zan_properties_" + std::to_string(std::random_device()()));
    Folder() { fs::create_directory(path); }
    ~Folder() { fs::remove_all(path); }
};

bool decks(Choices& c) {
    // clang-format off
    static constexpr const char* kPieces[] = {
        " ", "<p class=step>", "<div class='a step b' id=", " data-x=", " data-y=", " data-z=", " data-rotate=",
        " data-rotate-x=", " data-rotate-y=", " data-rotate-order=zyx", " data-scale=", "<div id=impress ",
        " data-width=", " data-height=", " data-perspective=", " data-min-scale=", " data-max-scale=", " data-rel-x=",
        ">", "\n", "<template>", "</div>", "é&amp;<!--", "'", "\"", "-->", "0", "1", "-1000", "90", "45.5", "1e-5",
        "1e9", "1e308", "12px", "nan"};
    // clang-format on
    std::string page = c.below(4) != 0 ? "<div id=impress><p class=step" : "";
    for (int32_t n = c.below(c.below(2) == 0 ? 8 : 40); n > 0; --n) {
        page += c.below(16) == 15 ? std::string(1, static_cast<char>(c.below(256))) : c.among(kPieces);
    }
    static constexpr const char* kHits[] = {"640,400", "640,400,5", "-1e300,0,1e300", "1,2,-1", "0"};
    static constexpr const char* kSizes[] = {"1280x800", "1x1e9", "0.001x3", "0x1"};
    static constexpr const char* kAnswers[] = {"answer", "answer", "answer", "missing/answer", "deck/answer"};
    const Folder folder;
    const auto in = [&](const char* name) { return (folder.path / name).string(); };
    const bool all = c.below(2) != 0;
    std::vector<std::string> arguments{"zan-scene",    in("deck"), "--svg",
                                       in("pictures"), "--json",   in(c.among(kAnswers))};
    if (all) arguments.emplace_back("--all");
    if (c.below(2) != 0) arguments.emplace_back("--visible");
    if (c.below(2) != 0) arguments.insert(arguments.end(), {"--hit", c.among(kHits)});
    if (c.below(4) == 3) arguments.insert(arguments.end(), {"--window", c.among(kSizes), "--layer", c.among(kSizes)});
    std::vector<const char*> argv;
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    std::ofstream(in("deck"), std::ios::binary) << page;

    std::ostringstream out, err;
    const int code = scene::run(static_cast<int>(argv.size()), argv.data(), out, err);
    must(code >= 0 && code <= 2 && out.str().empty() == (code != 0));
    must((code == 0) == (err.str().find("error: ") == std::string::npos));
    std::string files;
    std::set<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder.path)) found.insert(entry.path());
    for (const fs::path& path : found) {
        const std::string name = path.extension() == ".svg" ? "S" : path.filename().string();
        if (name != "S" || files.back() != 'S') files += name;
        std::ostringstream content;
        content << std::ifstream(path, std::ios::binary).rdbuf();
        const std::string text = content.str();
        const auto ends = [&](const std::string& end) {
            return text.size() > 9 && text.substr(text.size() - end.size()) == end;
        };
        must(name != "answer" || (text[0] == '{' && ends("}\n")));
        must((name != "S" && (name != "pictures" || all)) || ends("\n</svg>\n"));
    }
    must(files == (code != 0 ? "deck" : all ? "answerdeckpicturesSindex.html" : "answerdeckpictures"));
    return code == 0;
}

const Property kProperty("scene_decks", 800, decks);

}  // namespace

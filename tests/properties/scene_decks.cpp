// zan-scene on arbitrary pages and options: it writes all files that it was asked for, complete and well-formed, or
// none and a line that says why, in little memory.
#include "program.h"
#include "property.h"

#include <nlohmann/json.hpp>
#include <sys/resource.h>

#include <cstdlib>
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

// What the program accepts comes first: half of the cases draw from that part alone.
constexpr const char* kNumbers[] = {"0",  "1",    "-1000", "90",    "45.5",   "0.1",  "1e9", "-1e9",
                                    "+5", "1e-5", "1e10",  "1e308", "1e-300", "12px", "nan", "0x10"};
constexpr const char* kSizes[] = {"1280", "800", "16", "17", "1e9", "0.001", "1e70", "0", "x"};

const char* number(Choices& c, bool tame) { return kNumbers[c.below(tame ? 10 : 16)]; }
const char* size(Choices& c, bool tame) { return kSizes[c.below(tame ? 5 : 9)]; }

std::string randomPage(Choices& c, bool tame) {
    // clang-format off
    static constexpr const char* kPieces[] = {
        " ", "<p class=step>", "<div class='a step b' id=", "<div id=impress ", "<template>", "</div>", ">", "\n", "'",
        "\"", "<!--", "-->", "é&amp;", "\xEF\xBF\xBE", "\xFF", "&#1;", "<b a=", "<i>", "</b>", "<p>", "<a>", "<table>",
        "<tr><td>", "</table>", "<svg>", "<script>", "</script>", "<html b=", "<select><option>", "<frameset>"};
    static constexpr const char* kAttributes[] = {
        "x", "y", "z", "rotate", "rotate-x", "rotate-y", "autoplay", "scale", "width", "height", "perspective",
        "min-scale", "max-scale", "rel-x"};
    // clang-format on
    std::string page = c.below(4) != 0 ? "<div id=impress><p class=step" : "";
    for (int32_t n = c.below(c.below(2) == 0 ? 8 : 40); n > 0; --n) {
        const int32_t kind = c.below(16);
        if (kind == 15) {
            page += static_cast<char>(c.below(256));
        } else if (kind == 14 && !tame) {
            // Enough to exceed each limit of the parser.
            const std::string piece = c.among(kPieces);
            for (int32_t times = 1 << c.below(13); times > 0; --times) page += piece;
        } else if (kind >= 7) {
            page += std::string(" data-") + kAttributes[c.below(tame ? 7 : 14)] + "=" + number(c, tame);
        } else {
            page += c.among(kPieces);
        }
    }
    return page;
}

struct Arguments {
    std::vector<std::string> list;
    bool all;

    Arguments(Choices& c, const Folder& folder, bool tame) : all(c.below(2) != 0) {
        static constexpr const char* kDecks[] = {"deck", "deck", "deck\xFF<&\n"};
        static constexpr const char* kAnswers[] = {"answer",         "answer",      "answer", "answer",
                                                   "missing/answer", "deck/answer", "deck",   "pictures"};
        const auto in = [&](const char* name) { return (folder.path / name).string(); };
        list = {
            "zan-scene", in(c.among(kDecks)), "--svg", in("pictures"), "--json", in(kAnswers[c.below(tame ? 4 : 8)])};
        if (all) list.emplace_back("--all");
        if (c.below(2) != 0) list.emplace_back("--visible");
        for (int32_t n = c.below(3); n > 0; --n) {
            std::string hit = std::string("--hit=") + number(c, tame) + "," + number(c, tame);
            if (c.below(2) != 0) hit += std::string(",") + (tame ? "5" : number(c, tame));
            list.push_back(hit);
        }
        for (const char* option : {"--window=", "--layer="}) {
            if (c.below(4) == 3) list.push_back(std::string(option) + size(c, tame) + "x" + size(c, tame));
        }
        if (!tame && c.below(8) == 7) list.emplace_back(c.below(2) != 0 ? "--camera=step-1" : "--json=");
    }
};

std::string read(const fs::path& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool isPicture(const fs::path& path, bool all) {
    return path.extension() == ".svg" || (!all && path.filename() == "pictures");
}

long maxResidentKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

bool decks(Choices& c) {
    const Folder folder;
    const bool tame = c.below(2) == 0;
    const Arguments arguments(c, folder, tame);
    const fs::path deck = arguments.list[1];
    std::ofstream(deck, std::ios::binary) << randomPage(c, tame);
    std::vector<const char*> argv;
    for (const std::string& argument : arguments.list) argv.push_back(argument.c_str());

    std::ostringstream out;
    std::ostringstream err;
    const int code = scene::run(static_cast<int>(argv.size()), argv.data(), out, err);
    must(code >= 0);
    must(code <= 2);
    must(out.str().empty() == (code != 0));
    must((code == 0) == (err.str().find("error: ") == std::string::npos));
    // Under the address sanitizer freed memory stays resident for a while.
    must(maxResidentKilobytes() < 1'500'000);

    std::set<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder.path)) files.insert(entry.path());
    must(files.erase(deck) == 1);
    if (code != 0) {
        must(files.empty());
        return false;
    }
    const fs::path answer = arguments.list[5];
    must(files.erase(answer) == 1);
    must(nlohmann::json::accept(read(answer)));
    size_t pictures = 0;
    for (const fs::path& path : files) {
        if (!isPicture(path, arguments.all)) continue;
        ++pictures;
        must(endsWith(read(path), "\n</svg>\n"));
        // A sample: to start a program takes longer than a case.
        if (pictures == 1 && c.below(16) == 0)
            must(std::system(("xmllint --noout '" + path.string() + "'").c_str()) == 0);
    }
    must(pictures > 0);
    if (arguments.all) must(files.erase(folder.path / "pictures" / "index.html") == 1);
    must(files.size() == pictures + (arguments.all ? 1 : 0));
    return true;
}

const Property kProperty("scene_decks", 800, decks);

}  // namespace

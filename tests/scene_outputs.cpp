// The outputs of random decks, with names and numbers at the extremes, read by other programs' parsers: every picture
// is XML to xmllint, every answer is JSON in which no number has become null.
#include "program.h"
#include "tests/support/random.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;

constexpr const char* kNames[] = {
    "a",
    "two words &lt;&amp;&quot;>",
    "\xC3\xA9\xE6\xBC\xA2\xF0\x9F\x98\x80",
    "not UTF-8: \xFF \xC0\x80 \xE2\x82 \xED\xA0\x80 \xF4\x90\x80\x80",
    "not XML: \xEF\xBF\xBE\xEF\xBF\xBF &#1; &#xFFFE; \x0B",
    "]]>--",
    "0123456789012345678901234567890123456789012345678901234567890123456789",
};
constexpr const char* kPositions[] = {"0", "0", "1", "-300", "1e9", "-1e9", "999.9", "1000", "1e-300", "5e5"};
constexpr const char* kAngles[] = {"0", "0", "90", "-90", "45", "180", "1e9", "89.9999999999"};
constexpr const char* kScales[] = {"1", "1", "2", "1e-5", "1e9", "0.3"};
constexpr const char* kSizes[] = {"1280", "800", "16", "17", "0.001", "1", "1e9"};
constexpr const char* kTolerances[] = {"0", "5", "1e9", "1e-300"};

class RandomRun {
public:
    RandomRun(Random& random, const fs::path& folder, int number) : random_(random) {
        const std::string name = std::to_string(number);
        json_ = folder / (name + ".json");
        const bool all = random.below(3) == 0;
        const fs::path deck = folder / ("deck\xFF&<" + name);
        std::ofstream(deck, std::ios::binary) << page();
        arguments_ = {"zan-scene", deck, "--svg", folder / (all ? name : name + ".svg"), "--json", json_};
        if (all) arguments_.emplace_back("--all");
        if (random.below(2) == 0) arguments_.emplace_back("--visible");
        if (random.below(2) == 0) add("--window=", {pick(kSizes), "x", pick(kSizes)});
        if (random.below(2) == 0) add("--layer=", {pick(kSizes), "x", pick(kSizes)});
        for (int32_t i = random.below(3); i > 0; --i) {
            add("--hit=", {pick(kPositions), ",", pick(kPositions), ",", pick(kTolerances)});
        }
    }

    int run(std::string& messages) const {
        std::vector<const char*> argv;
        for (const std::string& argument : arguments_) argv.push_back(argument.c_str());
        std::ostringstream out;
        std::ostringstream err;
        const int code = scene::run(static_cast<int>(argv.size()), argv.data(), out, err);
        messages = err.str();
        return code;
    }
    [[nodiscard]] const fs::path& json() const { return json_; }

private:
    template <size_t n>
    const char* pick(const char* const (&list)[n]) {
        return list[random_.below(n)];
    }
    void add(std::string argument, std::initializer_list<const char*> parts) {
        for (const char* part : parts) argument += part;
        arguments_.push_back(argument);
    }
    std::string page() {
        std::string page = "<div id=impress";
        for (const char* name : {"width", "height", "perspective"}) {
            if (random_.below(3) == 0) page += std::string(" data-") + name + "=" + pick(kSizes);
        }
        page += ">";
        for (int32_t i = 1 + random_.below(6); i > 0; --i) {
            page += std::string("<p class=step id='") + pick(kNames) + "'";
            for (const char* name : {"x", "y", "z"}) page += std::string(" data-") + name + "=" + pick(kPositions);
            for (const char* name : {"x", "y", "z"}) page += std::string(" data-rotate-") + name + "=" + pick(kAngles);
            page += std::string(" data-scale=") + pick(kScales) + ">";
        }
        return page;
    }

    Random& random_;
    fs::path json_;
    std::vector<std::string> arguments_;
};

/// Null stands nowhere but where it is documented.
void checkNulls(const nlohmann::json& json, const std::string& key) {
    static const std::set<std::string> kMayBeNull = {"bounds", "onScreen", "nearest"};
    CAPTURE(key);
    if (json.is_null()) CHECK(kMayBeNull.count(key) == 1);
    if (json.is_object()) {
        for (const auto& [name, value] : json.items()) checkNulls(value, name);
    } else if (json.is_array()) {
        for (const auto& value : json) checkNulls(value, key);
    }
}

}  // namespace

TEST_CASE("scene: outputs of random decks are well-formed") {
    Random random(14);
    const fs::path folder = fs::temp_directory_path() / ("zan_scene_outputs_" + std::to_string(std::random_device()()));
    fs::create_directory(folder);
    int done = 0;
    for (int i = 0; i < 300; ++i) {
        CAPTURE(i);
        const RandomRun one(random, folder, i);
        std::string messages;
        const int code = one.run(messages);
        CAPTURE(messages);
        // A camera may be too large for the window; nothing else ends a run with numbers within bounds.
        if (code != 0) CHECK(messages.find("its scale is too large for the window") != std::string::npos);
        if (code != 0) continue;
        ++done;
        nlohmann::json json;
        REQUIRE_NOTHROW(json = nlohmann::json::parse(std::ifstream(one.json())));
        checkNulls(json, "");
    }
    CHECK(done >= 100);

    const std::string pictures = "find '" + folder.string() + "' -name '*.svg'";
    CHECK(std::system((pictures + " -print0 | xargs -0 xmllint --noout").c_str()) == 0);
    // No coordinate is infinite or not a number: "nan" and "inf" are in no name.
    CHECK(std::system((pictures + " -print0 | xargs -0 grep -lE '=\"[^\"]*(nan|inf)'").c_str()) != 0);
    fs::remove_all(folder);
}

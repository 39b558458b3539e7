// The files that zan-scene writes, whole or not at all; its table, pictures, reports and progress.
#include <catch2/catch.hpp>
#include <regex>

#include "platform/bel.h"
#include "progress.h"
#include "scene_run.h"
#include "zan/frame.h"

namespace {

constexpr const char* kDeck =
    "<div id=impress><p class=step id='one &amp; \"two\" &lt;'><p class=step id=floor data-y=300 data-rotate-x=90 "
    "data-scale=3><p class=step id=behind data-z=2000><p class=step id=far data-x=9000 data-z=0></div>";

size_t count(const std::string& text, const std::string& part) {
    size_t n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

const struct {
    std::vector<std::string> arguments;
    uint64_t failing;  // the tracked allocation from which on none succeeds; 0 for none
    const char* line;
} kFails[] = {
    {{"--svg=none/a", "--json=a"}, 0, "none/a cannot be written: No such file or directory"},
    {{"--svg=folder", "--json=a"}, 0, "folder cannot be written: it is a folder"},
    {{"--all", "--svg=old/b/c"}, 0, "old/b/c cannot be written: old is no folder"},
    {{"--all", "--svg=new/deep", "--json=none/a"}, 0, "none/a cannot be written: No such file or directory"},
    {{"--svg=old", "--json=old/a"}, 0, "old/a cannot be written: Not a directory"},
    {{"--all", "--svg=new", "--json=a"}, 9, "not enough memory"},
};

}  // namespace

TEST_CASE("scene: a failure leaves everything as it was") {
    const InFolder folder;
    writeFile("deck", kDeck);
    writeFile("old", "old");
    std::filesystem::create_directory("folder");
    for (auto [arguments, failing, line] : kFails) {
        arguments.push_back("deck");
        Bel_SetAllocationFailure(kBel_TrackedAllocations, failing, true);
        const SceneRun run = runScene(arguments);
        Bel_SetAllocationFailure(0, 0, false);
        CHECK(run.err == std::string("zan-scene: error: ") + line + "\n");
        CHECK((run.code == 1 && run.out.empty() && folder.list() == "deck folder old " && readFile("old") == "old"));
    }
    REQUIRE(Zan_Birth(0, nullptr) == 0);
    const SceneRun run = runScene({"deck", "--json", "a"});
    CHECK((Zan_Death() == 0 && run.code == 1 && folder.list() == "deck folder old "));
    CHECK(run.err ==
          "zan-scene: report 0x110014, severity 8, platform code 12: the library has already been started.\n"
          "zan-scene: error: the library does not start\n");
    std::ostringstream closed, err;
    closed.setstate(std::ios::badbit);
    const char* const argv[] = {"zan-scene", "deck"};
    CHECK((scene::run(2, argv, closed, err) == 1 &&
           err.str() == "zan-scene: error: standard output cannot be written\n"));
}

TEST_CASE("scene: files are replaced, links stay links, devices are written to") {
    const InFolder folder;
    writeFile("deck", kDeck);
    writeFile("real", "old");
    std::filesystem::create_symlink("real", "link");
    CHECK(runScene({"deck", "--json=link", "--svg=/dev/null"}).code == 0);
    CHECK((std::filesystem::is_symlink("link") && std::filesystem::is_character_file("/dev/null")));
    CHECK(readFile("real") == runScene({"deck", "--json=-"}).out);
    CHECK(folder.list() == "deck link real ");
}

TEST_CASE("scene: pictures") {
    const InFolder folder;
    writeFile("deck", kDeck);
    CHECK(runScene({"deck", "--all", "--svg=p/q"}).code == 0);
    CHECK(count(readFile("p/q/2-floor.svg"), "class=\"hull\"") == 0);
    CHECK(runScene({"deck", "--all", "--svg=p/q/", "--visible", "--hit=640,390", "--hit=10,10,4"}).code == 0);
    CHECK(folder.list() ==
          "deck p p/q p/q/1-one____two___.svg p/q/2-floor.svg p/q/3-behind.svg p/q/4-far.svg p/q/index.html ");
    const std::string page = readFile("p/q/index.html"), svg = readFile("p/q/1-one____two___.svg");
    CHECK((count(page, "<img ") == 4 && count(page, "src=\"2-floor.svg\"") == 1));
    // One layer is behind; of the floor two sides and where they end are cut; what is far has a title alone.
    const std::pair<const char*, size_t> parts[] = {{"<g class=\"layer", 3},
                                                    {"class=\"layer hit\"", 1},
                                                    {"<line class=\"cut\"", 3},
                                                    {"class=\"point\"", 2},
                                                    {"class=\"tolerance\"", 1},
                                                    {"class=\"hull\"", 1},
                                                    {">one &amp; &quot;two&quot; &lt; 100%</text>", 1},
                                                    {">floor &lt;1%</text>", 1},
                                                    {">far", 1}};
    for (const auto& [part, times] : parts) {
        CAPTURE(part);
        CHECK(count(svg, part) == times);
    }
    // Nothing is further out than the window's size around the window, however close it comes to the near plane.
    const std::regex pair("[ \"]([-0-9.]+),([-0-9.]+)");
    for (std::sregex_iterator p(svg.begin(), svg.end(), pair), end; p != end; ++p) {
        const double x = std::stod(p->str(1)), y = std::stod(p->str(2));
        CHECK((x >= -1280 && x <= 2560 && y >= -800 && y <= 1600));
    }
}

TEST_CASE("scene: the table") {
    const InFolder folder;
    writeFile("deck", kDeck);
    CHECK(runScene({"deck", "--hit", "640,390,2", "--hit", "0,0"}).out ==
          R"(deck: 4 layers of 1024 x 768 (the deck's size), perspective 1000
window 1280 x 800, window scale 1

camera one & "two" <
  layer          where          points        left     top      right     bottom  on screen  corners behind  edge-on
  one & "two" <  in the window       4      128.00   16.00    1152.00     784.00     100.0%               -        -
  floor          in the window       4  -1.536e+07  539.41  1.536e+07  3.000e+06       0.0%              23        -
  behind         behind              0                                                 0.0%            0123        -
  far            outside             4     9128.00  316.00   10152.00    1084.00       0.0%               -        -
  hit 1 at 640, 390 (within 2): one & "two" <; nearest outline: floor, 149.41 away
  hit 2 at 0, 0: no layer; nearest outline: one & "two" <, 129.00 away
)");
    const std::string all = runScene({"deck", "--all", "--layer", "100x50"}).out;
    CHECK((count(all, "layers of 100 x 50 (--layer)") == 1 && count(all, "\ncamera ") == 4));
    CHECK(count(all, "outside the window: 1, behind the near plane: 1\n") == 1);
}

TEST_CASE("scene: a long run tells how far it is, a short one says nothing") {
    std::ostringstream out;
    std::chrono::steady_clock::time_point now{};
    const auto clock = [&now] { return now; };
    scene::Progress(out, 9, clock).done(9);
    CHECK(out.str() == "");
    {
        scene::Progress progress(out, 9, clock);
        for (size_t i = 1; i <= 5; ++i) {
            now += std::chrono::milliseconds(600);
            progress.done(i);
        }
    }
    CHECK(out.str() == "\rzan-scene: 2 of 9 cameras\rzan-scene: 4 of 9 cameras\n");
}

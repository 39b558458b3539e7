// What zan-scene says about a deck or a command line, and what it then does.
#include <catch2/catch.hpp>

#include "numbers.h"
#include "scene_run.h"

namespace {

struct DeckRow {
    const char* page;
    const char* lines;  // one that is an error ends the run
};
constexpr DeckRow kDecks[] = {
    {"<div id=impress><a class=step data-x=' -1.5e2 ' data-y=+3>", ""},
    {"<p class='a\tstep b'>",
     "deck: warning: no element has the id \"impress\"; the whole page is taken for the deck\n"},
    {"<div id=impress><p class=steps><template><p class=step></template></div><p class=step>",
     "deck: error: no step: no element of the deck has the class \"step\"\n"},
    // All that is wrong is said at once, each on its line.
    {"<ul id=impress data-width=0 data-height=-1 data-perspective=0 data-min-scale=-1 data-max-scale=x>\n"
     "<p class=step data-x=12px\n data-rotate='' data-scale=1e999><p class=step id=a data-scale=0>\n"
     "<p class=step data-scale=0.00001 data-rel-x=1000 data-rel-y=5 data-y=1 data-rel-to=a>"
     "<p class=step data-rotate-order=xy><p class=step data-rotate-order=xxyz>"
     "<div class=step id=a><p><b class=step id=b>",
     R"(deck:1: error: <ul id="impress"> data-width="0": must be above 0
deck:1: error: <ul id="impress"> data-height="-1": must be above 0
deck:1: error: <ul id="impress"> data-perspective="0": must be above 0: a deck without perspective is not handled
deck:1: error: <ul id="impress"> data-min-scale="-1": must not be below 0
deck:1: error: <ul id="impress"> data-max-scale="x": not a finite number
deck:2: error: <p class="step"> data-x="12px": not a finite number
deck:3: error: <p class="step"> data-rotate="": not a finite number
deck:3: error: <p class="step"> data-scale="1e999": not a finite number
deck:3: error: <p id="a"> data-scale="0": a scale must be 0.00001 or more
deck:4: error: <p class="step"> data-rel-x="1000": relative placing is not handled
deck:4: warning: <p class="step"> data-rel-y="5": data-y is taken
deck:4: error: <p class="step"> data-rel-to="a": relative placing is not handled
deck:4: error: <p class="step"> data-rotate-order="xy": not the letters x, y and z, each once
deck:4: error: <p class="step"> data-rotate-order="xxyz": not the letters x, y and z, each once
deck:4: warning: <div id="a"> id="a": another step has the name "a" already; --camera takes the first
deck:4: error: <b id="b">: a step inside a step is not handled
)"},
    // What is ignored is named once; the same turn twice is no matter.
    {"<div id=impress data-autoplay=5>\n<my-card class=step data-slow=3 data-rotate=5 data-rotate-z=5></my-card>"
     "<p class=step id=\"a\nb\" data-slow=4 data-rotate=5 data-rotate-z=7><p class=step id=step-4><p class=step>",
     R"(deck:1: warning: <div id="impress"> data-autoplay="5": places no layer; ignored, here and wherever else it stands
deck:2: warning: <my-card class="step"> data-slow="3": places no layer; ignored, here and wherever else it stands
deck:3: warning: <p id="a b"> data-rotate="5": data-rotate-z is taken
deck:3: warning: <p class="step">: another step has the name "step-4" already; --camera takes the first
)"},
    {"<div id=impress><p class=step data-scale=1e6>",
     "zan-scene: error: camera \"step-1\": its scale shrinks the deck to a point\n"},
    {"<div id=impress><p class=step><p class=step data-x=1e308 data-scale=1e306>",
     "zan-scene: error: layer \"step-2\" seen by camera \"step-1\" leaves the range of numbers\n"},
};

using Arguments = std::vector<std::string>;
const struct {
    Arguments arguments;
    const char* lines;
} kOptions[] = {
    {{"none"}, "none: error: no such file\n"},
    {{"."}, ".: error: a folder; name the page in it, as a rule index.html\n"},
    {{"deck", "--camera", "step-1"}, ""},
    {{"deck", "--camera", "c\n"},
     "zan-scene: error: --camera=\"c \": no step of deck has this name; there are step-1, b\n"},
    {{"deck", "--window", "10"}, "zan-scene: error: --window=\"10\": two numbers above 0 are needed, as in 1280x800\n"},
    {{"deck", "--layer=10x0"}, "zan-scene: error: --layer=\"10x0\": two numbers above 0 are needed, as in 1280x800\n"},
    {{"deck", "--hit", "10,5,"},
     "zan-scene: error: --hit=\"10,5,\": two or three numbers are needed, as in 640,400 or 640,400,5\n"},
    {{"deck", "--hit", "-10,5,-1"}, "zan-scene: error: --hit=\"-10,5,-1\": the tolerance must not be below 0\n"},
    {{"--hit", "-1,2", "--hit", "3,4,5", "deck"}, ""},
};

int codeFor(const std::string& lines) { return lines.find(": error: ") == std::string::npos ? 0 : 2; }

}  // namespace

TEST_CASE("scene: what is wrong with a deck") {
    const InFolder folder;
    for (const DeckRow& r : kDecks) {
        writeFile("deck", r.page);
        const SceneRun run = runScene({"deck", "--json", "answer", "--svg", "picture"});
        CHECK(run.err == r.lines);
        CHECK((run.code == codeFor(r.lines) && run.out.empty() == (run.code != 0)));
        CHECK(folder.list() == (run.code == 0 ? "answer deck picture " : "deck "));
        for (const char* written : {"answer", "picture"}) std::filesystem::remove(written);
    }
}

TEST_CASE("scene: what is wrong with a command line") {
    const InFolder folder;
    writeFile("deck", "<div id=impress><p class=step><p class=step id=b>");
    for (const auto& [arguments, lines] : kOptions) {
        const SceneRun run = runScene(arguments);
        CHECK(run.err == lines);
        CHECK(run.code == codeFor(lines));
    }
    for (const Arguments& wrong :
         {Arguments{}, {"deck", "--all", "--camera", "b"}, {"deck", "--al"}, {"deck", "deck"}}) {
        const SceneRun run = runScene(wrong);
        CHECK((run.code == 2 && std::count(run.err.begin(), run.err.end(), '\n') == 1));
    }
    CHECK(runScene({"--help"}).code == 0);
    for (const char* good : {"1", " +1 ", "1.", "1e0", "\t01.0\n"}) CHECK(scene::parseNumber(good) == 1.0);
    for (const char* bad : {"", "+", "++1", "+-1", "1e", "1,5", "1 2", "0x1p3", "infinity", "NaN", "e5"}) {
        CAPTURE(bad);
        CHECK(!scene::parseNumber(bad));
    }
}

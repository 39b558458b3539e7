// What zan-scene says about a deck or a command line, and what it then does.
#include <catch2/catch.hpp>

#include "numbers.h"
#include "scene_run.h"

namespace {

struct DeckRow {
    const char* what;
    const char* page;
    const char* lines;  // one that is an error ends the run
};
constexpr DeckRow kDecks[] = {
    {"nothing to say", "<div id=impress><a class=step data-x=' -1.5e2 ' data-y=+3>", ""},
    {"no deck, but steps", "<p class='a\tstep b'>",
     "deck: warning: no element has the id \"impress\"; the whole page is taken for the deck\n"},
    {"no step: another class, a template, outside of the deck",
     "<div id=impress><p class=steps><template><p class=step></template></div><p class=step>",
     "deck: error: no step: no element of the deck has the class \"step\"\n"},
    {"numbers that are none, each on its line",
     "<div id=impress>\n<p class=step data-x=12px\n data-y='' data-z=1 data-rotate=inf data-rotate-z=1e999 "
     "data-scale=x>",
     R"(deck:2: error: <p class="step"> data-x="12px": not a finite number
deck:3: error: <p class="step"> data-y="": not a finite number
deck:3: error: <p class="step"> data-rotate="inf": not a finite number
deck:3: error: <p class="step"> data-rotate-z="1e999": not a finite number
deck:3: error: <p class="step"> data-scale="x": not a finite number
)"},
    {"scales",
     "<div id=impress><i class=step id=a data-scale=0></i><b class=step data-scale=0.00001></b><p class=step "
     "data-scale=-1>",
     R"(deck:1: error: <i id="a"> data-scale="0": a scale must be 0.00001 or more
deck:1: error: <p class="step"> data-scale="-1": a scale must be 0.00001 or more
)"},
    {"the deck's own numbers",
     "<ul id=impress data-width=0 data-height=1 data-perspective=0 data-min-scale=-1 data-max-scale=x><li class=step>",
     R"(deck:1: error: <ul id="impress"> data-width="0": must be above 0
deck:1: error: <ul id="impress"> data-perspective="0": must be above 0: a deck without perspective is not handled
deck:1: error: <ul id="impress"> data-min-scale="-1": must not be below 0
deck:1: error: <ul id="impress"> data-max-scale="x": not a finite number
)"},
    {"relative placing, of use or not",
     "<div id=impress><p class=step data-rel-x=1000 data-rel-y=5 data-y=1 data-rel-to=a data-rel-rotate-z=3>",
     R"(deck:1: error: <p class="step"> data-rel-x="1000": relative placing is not handled
deck:1: warning: <p class="step"> data-rel-y="5": data-y is taken
deck:1: error: <p class="step"> data-rel-to="a": relative placing is not handled
deck:1: error: <p class="step"> data-rel-rotate-z="3": relative placing is not handled
)"},
    {"orders of turns", "<div id=impress><p class=step data-rotate-order=xy><p class=step data-rotate-order=xxyz>",
     R"(deck:1: error: <p class="step"> data-rotate-order="xy": not the letters x, y and z, each once
deck:1: error: <p class="step"> data-rotate-order="xxyz": not the letters x, y and z, each once
)"},
    {"steps in steps", "<div id=impress><div class=step id=a><p><b class=step id=b>",
     "deck:1: error: <b id=\"b\">: a step inside a step is not handled\n"},
    {"what is ignored is named once; the same turn twice is no matter",
     "<div id=impress data-autoplay=5>\n<my-card class=step data-slow=3 data-rotate=5 data-rotate-z=5></my-card>"
     "<p class=step id=\"a\nb\" data-slow=4 data-rotate=5 data-rotate-z=7>",
     R"(deck:1: warning: <div id="impress"> data-autoplay="5": places no layer; ignored, here and wherever else it stands
deck:2: warning: <my-card class="step"> data-slow="3": places no layer; ignored, here and wherever else it stands
deck:3: warning: <p id="a b"> data-rotate="5": data-rotate-z is taken
)"},
    {"two of a name", "<div id=impress><p class=step id=step-2><p class=step><p class=step id=step-2>",
     R"(deck:1: warning: <p class="step">: another step has the name "step-2" already; --camera takes the first
deck:1: warning: <p id="step-2"> id="step-2": another step has the name "step-2" already; --camera takes the first
)"},
    {"a deck that shrinks to a point", "<div id=impress><p class=step data-scale=1e6>",
     "zan-scene: error: camera \"step-1\": its scale shrinks the deck to a point\n"},
    {"numbers beyond all numbers", "<div id=impress><p class=step><p class=step data-x=1e308 data-scale=1e306>",
     "zan-scene: error: layer \"step-2\" seen by camera \"step-1\" leaves the range of numbers\n"},
};

struct OptionRow {
    std::vector<std::string> arguments;
    const char* lines;
};
const OptionRow kOptions[] = {
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
        CAPTURE(r.what);
        writeFile("deck", r.page);
        const SceneRun run = runScene({"deck", "--json", "answer", "--svg", "picture"});
        CHECK(run.err == r.lines);
        CHECK(run.code == codeFor(r.lines));
        CHECK(run.out.empty() == (run.code != 0));
        CHECK(folder.list() == (run.code == 0 ? "answer deck picture " : "deck "));
        std::filesystem::remove("answer");
        std::filesystem::remove("picture");
    }
}

TEST_CASE("scene: what is wrong with a command line") {
    const InFolder folder;
    writeFile("deck", "<div id=impress><p class=step><p class=step id=b>");
    for (const OptionRow& r : kOptions) {
        const SceneRun run = runScene(r.arguments);
        CHECK(run.err == r.lines);
        CHECK(run.code == codeFor(r.lines));
    }
    using Arguments = std::vector<std::string>;
    for (const Arguments& wrong :
         {Arguments{}, {"deck", "--all", "--camera", "b"}, {"deck", "--al"}, {"deck", "deck"}}) {
        const SceneRun run = runScene(wrong);
        CHECK(run.code == 2);
        CHECK(std::count(run.err.begin(), run.err.end(), '\n') == 1);
    }
    CHECK(runScene({"--help"}).code == 0);
}

TEST_CASE("scene: numbers are taken whole or not at all") {
    for (const char* good : {"1", " +1 ", "1.", "1e0", "\t01.0\n"}) CHECK(scene::parseNumber(good) == 1.0);
    CHECK(scene::parseNumber("-269.10000000000036") == -269.10000000000036);
    for (const char* bad :
         {"", " ", "+", "++1", "+-1", "1e", "1,5", "1 2", "0x1p3", "infinity", "NaN", "1e999", "e5"}) {
        CAPTURE(bad);
        CHECK(!scene::parseNumber(bad));
    }
}

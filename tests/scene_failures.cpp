// What a command line cannot bring about: no memory, a library that runs already, hours of work.
#include "platform/bel.h"
#include "program.h"
#include "progress.h"
#include "zan/frame.h"

#include <catch2/catch.hpp>

#include <filesystem>
#include <sstream>

TEST_CASE("scene: without memory, or a library to start, nothing is written") {
    const char* const argv[] = {"zan-scene", ZAN_SCENE_DECKS "/zoom.html", "--all", "--svg=unwritten", "--json=answer"};
    std::ostringstream out, err;
    Bel_SetAllocationFailure(kBel_TrackedAllocations, 9, true);
    CHECK(scene::run(5, argv, out, err) == 1);
    Bel_SetAllocationFailure(0, 0, false);
    REQUIRE(Zan_Birth(0, nullptr) == 0);
    CHECK(scene::run(5, argv, out, err) == 1);
    CHECK((Zan_Death() == 0 && out.str().empty()));
    CHECK(err.str() ==
          "zan-scene: error: not enough memory\n"
          "zan-scene: report 0x110014, severity 8, platform code 12: the library has already been started.\n"
          "zan-scene: error: the library does not start\n");
    CHECK((!std::filesystem::exists("unwritten") && !std::filesystem::exists("answer")));
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

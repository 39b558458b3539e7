// Failures and waiting times that a command line cannot bring about: no memory, a library that has been started
// already, a temporary file that cannot be renamed after others have been, a run of a minute and a half.
#include "files.h"
#include "program.h"
#include "progress.h"
#include "zan/frame.h"
#include "zan/platform/bel.h"

#include <catch2/catch.hpp>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace {

namespace fs = std::filesystem;

struct Folder {
    const fs::path path = fs::temp_directory_path() / ("zan_scene_tests_" + std::to_string(std::random_device()()));
    Folder() { fs::create_directory(path); }
    ~Folder() { fs::remove_all(path); }

    [[nodiscard]] std::string read(const char* name) const {
        std::ostringstream text;
        text << std::ifstream(path / name, std::ios::binary).rdbuf();
        return text.str();
    }
    [[nodiscard]] size_t entries() const {
        return static_cast<size_t>(std::distance(fs::directory_iterator(path), fs::directory_iterator()));
    }
};

struct FakeClock {
    std::chrono::steady_clock::time_point now{};
    scene::Progress::Clock read = [this] { return now; };
};

}  // namespace

TEST_CASE("scene: without memory, or when the library does not start, nothing is written") {
    const Folder folder;
    const std::string svg = "--svg=" + (folder.path / "pictures").string();
    const std::string json = "--json=" + (folder.path / "answer").string();
    const char* const argv[] = {"zan-scene", ZAN_SCENE_DECKS "/zoom.html", "--all", svg.c_str(), json.c_str()};
    std::ostringstream out;
    std::ostringstream err;

    Bel_SetAllocationFailure(kBel_TrackedAllocations, 9, true);
    CHECK(scene::run(5, argv, out, err) == 1);
    Bel_SetAllocationFailure(0, 0, false);
    CHECK(err.str() == "zan-scene: error: not enough memory\n");

    err.str("");
    REQUIRE(Zan_Birth(0, nullptr) == 0);
    CHECK(scene::run(5, argv, out, err) == 1);
    CHECK(Zan_Death() == 0);
    CHECK(err.str() ==
          "zan-scene: report 0x110014, severity 8, platform code 12: the library has already been started.\n"
          "zan-scene: error: the library does not start\n");

    CHECK(out.str() == "");
    CHECK(folder.entries() == 0);
}

TEST_CASE("scene: a temporary file that cannot be renamed undoes the renames before it") {
    const Folder folder;
    std::ofstream(folder.path / "replaced") << "former";
    std::ostringstream quiet;
    scene::Progress progress(quiet, false);
    {
        scene::Files files;
        files.add(folder.path / "created", "new");
        files.add(folder.path / "replaced", "new");
        files.add(folder.path / "refused", "new");
        fs::create_directories(folder.path / "refused");  // by another program, meanwhile
        CHECK_THROWS_WITH(files.commit(progress), Catch::Contains("refused cannot be written: Is a directory"));
    }
    CHECK(folder.read("replaced") == "former");
    CHECK(folder.entries() == 2);
}

TEST_CASE("scene: output of any length, to a stream or to a file, is held back until the commit") {
    const Folder folder;
    std::ostringstream stream;
    std::ostringstream quiet;
    scene::Progress progress(quiet, false);
    std::string expected;
    scene::Files files;
    scene::Output& toStream = files.open(stream);
    scene::Output& toFile = files.open(folder.path / "file");
    for (int i = 0; i < 40; ++i) {
        const std::string piece(100'000, static_cast<char>('a' + i % 26));
        toStream.write(piece);
        toFile.write(piece);
        expected += piece;
    }
    CHECK(stream.str().empty());
    CHECK_FALSE(fs::exists(folder.path / "file"));
    files.commit(progress);
    CHECK((stream.str() == expected));  // in brackets: a failure need not print 4 MB
    CHECK((folder.read("file") == expected));
    CHECK(folder.entries() == 1);
}

TEST_CASE("scene: on a terminal a run of a second or more shows its progress, which a closing line replaces") {
    FakeClock clock;
    std::ostringstream out;
    scene::Progress progress(out, true, clock.read);
    progress.at("reading", 1, 2);
    CHECK(out.str() == "");
    clock.now += std::chrono::milliseconds(1000);
    progress.at("parsing", 1, 3);
    CHECK(out.str() == "zan-scene: parsing: 33%");

    out.str("");
    clock.now += std::chrono::milliseconds(99);
    progress.at("parsing", 2, 3);
    CHECK(out.str() == "");
    clock.now += std::chrono::milliseconds(1);
    progress.at("cameras", 0, 1);
    CHECK(out.str() == "\r" + std::string(23, ' ') + "\rzan-scene: cameras: 0%");

    out.str("");
    progress.close("1 of 1 cameras");
    CHECK(out.str() == "\r" + std::string(22, ' ') + "\rzan-scene: 1 of 1 cameras, in 1 s\n");
}

TEST_CASE("scene: where standard error is no terminal there is a closing line at most") {
    FakeClock clock;
    std::ostringstream out;
    scene::Progress progress(out, false, clock.read);
    progress.close("1 of 1 cameras");
    CHECK(out.str() == "");
    clock.now += std::chrono::seconds(90);
    progress.at("cameras", 1, 2);
    CHECK(out.str() == "");
    progress.close("1 of 1 cameras");
    CHECK(out.str() == "zan-scene: 1 of 1 cameras, in 90 s\n");
}

// Runs zan-scene inside the test, in a folder of its own.
#ifndef ZAN_TESTS_SCENE_RUN_H
#define ZAN_TESTS_SCENE_RUN_H

#include <algorithm>
#include <catch2/catch.hpp>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "program.h"

struct SceneRun {
    int code;
    std::string out, err;
};

inline SceneRun runScene(const std::vector<std::string>& arguments) {
    std::vector<const char*> argv{"zan-scene"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    std::ostringstream out, err;
    const int code = scene::run(static_cast<int>(argv.size()), argv.data(), out, err);
    return {code, out.str(), err.str()};
}

inline std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    REQUIRE(file.is_open());
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// An empty folder that is the current one while the object lives.
class InFolder {
public:
    InFolder()
        : before_(std::filesystem::current_path()),
          path_(before_ / ("scene_" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directory(path_);
        std::filesystem::current_path(path_);
    }
    ~InFolder() {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(path_);
    }
    InFolder(const InFolder&) = delete;
    InFolder& operator=(const InFolder&) = delete;

    void write(const std::string& name, const std::string& content) const {
        std::ofstream(name, std::ios::binary) << content;
    }
    /// Every file and folder, sorted, with a space between them.
    std::string list() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path_)) {
            names.push_back(entry.path().lexically_relative(path_).string());
        }
        std::sort(names.begin(), names.end());
        std::string joined;
        for (const std::string& name : names) joined += (joined.empty() ? "" : " ") + name;
        return joined;
    }

private:
    std::filesystem::path before_, path_;
};

#endif  // ZAN_TESTS_SCENE_RUN_H

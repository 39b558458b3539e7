// Runs zan-scene inside the test, in a folder of its own.
#ifndef ZAN_TESTS_SCENE_RUN_H
#define ZAN_TESTS_SCENE_RUN_H

#include <algorithm>
#include <catch2/catch.hpp>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
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

inline std::string readFile(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}
inline void writeFile(const std::string& path, const std::string& content) { std::ofstream(path) << content; }

/// An empty folder that is the current one while the object lives.
struct InFolder {
    const std::filesystem::path before = std::filesystem::current_path();
    const std::filesystem::path path = before / ("scene_" + std::to_string(std::random_device()()));

    InFolder() {
        std::filesystem::create_directory(path);
        std::filesystem::current_path(path);
    }
    ~InFolder() {
        std::filesystem::current_path(before);
        std::filesystem::remove_all(path);
    }
    /// Every file and folder, sorted, with a space after each.
    std::string list() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(".")) {
            names.insert(entry.path().string().substr(2) + " ");
        }
        std::string joined;
        for (const std::string& name : names) joined += name;
        return joined;
    }
};

#endif  // ZAN_TESTS_SCENE_RUN_H

// Runs zan-scene inside the test.
#ifndef ZAN_TESTS_SCENE_RUN_H
#define ZAN_TESTS_SCENE_RUN_H

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

#endif  // ZAN_TESTS_SCENE_RUN_H

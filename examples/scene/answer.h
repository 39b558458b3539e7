// The answers as JSON.
#ifndef ZAN_SCENE_ANSWER_H
#define ZAN_SCENE_ANSWER_H

#include <string>
#include <vector>

#include "look.h"

namespace scene {

/// One line of JSON, its shape as the README tells it. Each number has the digits that give the same double back.
std::string toJson(const Deck& deck, Size window, Size layerSize, const std::vector<CameraAnswer>& answers);

}  // namespace scene

#endif  // ZAN_SCENE_ANSWER_H

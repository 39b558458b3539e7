// The answers as JSON.
#ifndef ZAN_SCENE_ANSWER_H
#define ZAN_SCENE_ANSWER_H

#include "look.h"

#include <string>

namespace scene {

/// One line of JSON, its shape as the README tells it, put together camera by camera. Each number has the digits that
/// give the same double back.
class JsonAnswer {
public:
    JsonAnswer(const Deck& deck, Size window, Size layerSize);
    void add(const CameraAnswer& answer);
    /// Ends the line and gives it away.
    std::string take();

private:
    const Deck& deck_;
    std::string text_;
    bool first_ = true;
};

}  // namespace scene

#endif  // ZAN_SCENE_ANSWER_H

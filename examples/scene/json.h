// The answers as JSON.
#ifndef ZAN_SCENE_JSON_H
#define ZAN_SCENE_JSON_H

#include "files.h"
#include "project.h"

#include <string>
#include <vector>

namespace scene {

/// Writes one line of JSON, as the README describes it, camera by camera. It goes to its output as it grows, so that
/// memory does not depend on the number of cameras.
class JsonWriter {
public:
    JsonWriter(Output& out, const Deck& deck, Size window, Size layerSize);
    void add(const CameraAnswer& answer);
    void finish();

private:
    void addLayer(size_t layer, const Appearance& seen);
    void addHit(const HitAnswer& hit);

    Output& out_;
    std::vector<std::string> ids_;  ///< of the layers, as JSON
    bool first_ = true;
};

}  // namespace scene

#endif  // ZAN_SCENE_JSON_H

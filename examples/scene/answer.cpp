// The answers as JSON.
#include "answer.h"

#include <nlohmann/json.hpp>

namespace scene {
namespace {

using Json = nlohmann::ordered_json;

Json toJson(const Layer& layer, const Appearance& seen) {
    Json outline = Json::array();
    for (const Zan_Vector2T<double>& p : seen.outline) outline.push_back({p.x, p.y});
    Json bounds;
    if (seen.bounds) bounds = {seen.bounds->left, seen.bounds->top, seen.bounds->right, seen.bounds->bottom};
    return {
        {"id", layer.id}, {"outline", outline}, {"bounds", bounds}, {"behind", seen.behind}, {"edgeOn", seen.edgeOn}};
}

Json toJson(const Deck& deck, const HitAnswer& hit) {
    Json layers = Json::array();
    for (const size_t i : hit.layers) layers.push_back(deck.layers[i].id);
    Json nearest;
    if (hit.nearest) nearest = {{"id", deck.layers[hit.nearest->layer].id}, {"distance", hit.nearest->distance}};
    return {{"point", {hit.point.x, hit.point.y}},
            {"tolerance", hit.point.tolerance},
            {"layers", layers},
            {"nearest", nearest}};
}

}  // namespace

std::string toJson(const Deck& deck, Size window, Size layerSize, const std::vector<CameraAnswer>& answers) {
    Json cameras = Json::array();
    for (const CameraAnswer& answer : answers) {
        Json layers = Json::array();
        for (size_t i = 0; i < answer.layers.size(); ++i) layers.push_back(toJson(deck.layers[i], answer.layers[i]));
        Json hits = Json::array();
        for (const HitAnswer& hit : answer.hits) hits.push_back(toJson(deck, hit));
        cameras.push_back({{"id", deck.layers[answer.camera].id}, {"layers", layers}, {"hits", hits}});
    }
    const Json all = {{"deck", deck.path},
                      {"window", {window.width, window.height}},
                      {"layer", {layerSize.width, layerSize.height}},
                      {"cameras", cameras}};
    return all.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace scene

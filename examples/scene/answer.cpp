// The answers as JSON.
#include "answer.h"

#include <nlohmann/json.hpp>

namespace scene {
namespace {

using Json = nlohmann::ordered_json;

Json toJson(const Outline& outline) {
    Json points = Json::array();
    for (const Zan_Vector2T<double>& p : outline) points.push_back({p.x, p.y});
    return points;
}

Json toJson(const Zan_Matrix4Decomp& parts) {
    return {{"translation", {parts.tx, parts.ty, parts.tz}},
            {"scale", {parts.sx, parts.sy, parts.sz}},
            {"shear", {parts.shearXY, parts.shearXZ, parts.shearYZ}},
            {"rotation", {parts.rx, parts.ry, parts.rz}}};
}

Json toJson(const Layer& layer, const Appearance& seen) {
    Json bounds;
    if (seen.bounds) bounds = {seen.bounds->left, seen.bounds->top, seen.bounds->right, seen.bounds->bottom};
    Json share;
    if (seen.share) share = *seen.share;
    return {{"id", layer.id},
            {"outline", toJson(seen.outline)},
            {"bounds", bounds},
            {"behind", seen.behind},
            {"edgeOn", seen.edgeOn},
            {"onScreen", share},
            {"decomposition", toJson(seen.asStepSees)}};
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

/// A name that is no UTF-8 must not end the run.
std::string dump(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace

JsonAnswer::JsonAnswer(const Deck& deck, Size window, Size layerSize) : deck_(deck) {
    const Json head = {
        {"deck", deck.path}, {"window", {window.width, window.height}}, {"layer", {layerSize.width, layerSize.height}}};
    text_ = dump(head);
    text_.back() = ',';
    text_ += "\"cameras\":[";
}

void JsonAnswer::add(const CameraAnswer& answer) {
    Json layers = Json::array();
    for (size_t i = 0; i < answer.layers.size(); ++i) layers.push_back(toJson(deck_.layers[i], answer.layers[i]));
    Json hits = Json::array();
    for (const HitAnswer& hit : answer.hits) hits.push_back(toJson(deck_, hit));
    const Json camera = {
        {"id", deck_.layers[answer.camera].id}, {"layers", layers}, {"hull", toJson(answer.hull)}, {"hits", hits}};
    if (!first_) text_ += ',';
    first_ = false;
    text_ += dump(camera);
}

std::string JsonAnswer::take() { return std::move(text_) + "]}\n"; }

}  // namespace scene

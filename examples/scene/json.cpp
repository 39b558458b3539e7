// The answers as JSON. The brackets are written by hand, since nlohmann-json cannot write a document in parts; it
// escapes the strings.
#include "json.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <string_view>

namespace scene {
namespace {

/// Bytes that are not UTF-8 become U+FFFD.
std::string toJson(std::string_view text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

/// The fewest digits that give the same double back. ".0" marks a whole number as a double.
void append(std::string& json, double value) {
    // The bounds on the numbers of decks and options see to this.
    assert(std::isfinite(value));
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    const std::string_view digits(text.data(), static_cast<size_t>(end - text.data()));
    json += digits;
    if (digits.find_first_of(".e") == std::string_view::npos) json += ".0";
}

void append(std::string& json, std::initializer_list<double> values) {
    json += '[';
    for (const double& value : values) {
        if (&value != values.begin()) json += ',';
        append(json, value);
    }
    json += ']';
}

void append(std::string& json, const Outline& outline) {
    json += '[';
    for (size_t i = 0; i < outline.size(); ++i) {
        if (i > 0) json += ',';
        append(json, {outline[i].x, outline[i].y});
    }
    json += ']';
}

const char* toJson(bool value) { return value ? "true" : "false"; }

}  // namespace

JsonWriter::JsonWriter(Output& out, const Deck& deck, Size window, Size layerSize) : out_(out) {
    for (const Layer& layer : deck.layers) ids_.push_back(toJson(layer.id));
    std::string json = "{\"deck\":" + toJson(deck.path) + ",\"window\":";
    append(json, {window.width, window.height});
    json += ",\"layer\":";
    append(json, {layerSize.width, layerSize.height});
    out_.write(json + ",\"cameras\":[");
}

void JsonWriter::add(const CameraAnswer& answer) {
    out_.write((first_ ? "{\"id\":" : ",{\"id\":") + ids_[answer.camera] + ",\"layers\":[");
    first_ = false;
    for (size_t i = 0; i < answer.layers.size(); ++i) {
        if (i > 0) out_.write(",");
        addLayer(i, answer.layers[i]);
    }
    std::string hull;
    append(hull, answer.hull);
    out_.write("],\"hull\":" + hull + ",\"hits\":[");
    for (size_t i = 0; i < answer.hits.size(); ++i) {
        if (i > 0) out_.write(",");
        addHit(answer.hits[i]);
    }
    out_.write("]}");
}

void JsonWriter::finish() { out_.write("]}\n"); }

void JsonWriter::addLayer(size_t layer, const Appearance& seen) {
    std::string json = "{\"id\":" + ids_[layer] + ",\"outline\":";
    append(json, seen.outline);
    json += ",\"bounds\":";
    if (seen.bounds) {
        append(json, {seen.bounds->left, seen.bounds->top, seen.bounds->right, seen.bounds->bottom});
    } else {
        json += "null";
    }
    json += ",\"behind\":[";
    for (size_t i = 0; i < seen.behind.size(); ++i) (json += i > 0 ? "," : "") += toJson(seen.behind[i]);
    (json += "],\"edgeOn\":") += toJson(seen.edgeOn);
    json += ",\"onScreen\":";
    if (seen.share) {
        append(json, *seen.share);
    } else {
        json += "null";
    }
    const Zan_Matrix4Decomp& parts = seen.inCameraStep;
    json += ",\"decomposition\":{\"translation\":";
    append(json, {parts.tx, parts.ty, parts.tz});
    json += ",\"scale\":";
    append(json, {parts.sx, parts.sy, parts.sz});
    json += ",\"shear\":";
    append(json, {parts.shearXY, parts.shearXZ, parts.shearYZ});
    json += ",\"rotation\":";
    append(json, {parts.rx, parts.ry, parts.rz});
    out_.write(json + "}}");
}

void JsonWriter::addHit(const HitAnswer& hit) {
    std::string json = "{\"point\":";
    append(json, {hit.point.x, hit.point.y});
    json += ",\"tolerance\":";
    append(json, hit.point.tolerance);
    json += ",\"layers\":[";
    for (size_t i = 0; i < hit.layers.size(); ++i) (json += i > 0 ? "," : "") += ids_[hit.layers[i]];
    json += "],\"nearest\":";
    if (hit.nearest) {
        json += "{\"id\":" + ids_[hit.nearest->layer] + ",\"distance\":";
        append(json, hit.nearest->distance);
        json += "}}";
    } else {
        json += "null}";
    }
    out_.write(json);
}

}  // namespace scene

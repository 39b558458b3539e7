// Text from outside, made fit for messages, tables and XML.
#include "text.h"

#include <algorithm>

namespace scene {
namespace {

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

struct CodePoint {
    char32_t value;  ///< kInvalid for a byte that is not part of UTF-8
    size_t bytes;
};
constexpr char32_t kInvalid = 0xFFFFFFFF;

/// The first code point of a text that is not empty.
CodePoint decode(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80) return {first, 1};
    const size_t bytes = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < bytes) return {kInvalid, 1};
    char32_t value = first & (0xFFU >> (bytes + 1));
    for (size_t i = 1; i < bytes; ++i) {
        if (!isContinuation(text[i])) return {kInvalid, 1};
        value = value << 6U | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < kSmallest[bytes] || value > 0x10FFFF || surrogate) return {kInvalid, 1};
    return {value, bytes};
}

}  // namespace

std::string cleanText(std::string_view text) {
    std::string clean;
    clean.reserve(text.size());
    while (!text.empty()) {
        const CodePoint point = decode(text);
        const bool control = point.value < 0x20 || (point.value >= 0x7F && point.value < 0xA0);
        if (control) {
            clean += ' ';
        } else if (point.value == kInvalid || point.value == 0xFFFE || point.value == 0xFFFF) {
            clean += "\xEF\xBF\xBD";
        } else {
            clean += text.substr(0, point.bytes);
        }
        text.remove_prefix(point.bytes);
    }
    return clean;
}

std::string oneLine(std::string_view text, size_t maxCharacters) {
    // A character has four bytes at most: nothing beyond them is needed.
    std::string line = cleanText(text.substr(0, 4 * maxCharacters + 4));
    size_t characters = 0;
    for (size_t i = 0; i < line.size(); ++i) {
        if (!isContinuation(line[i]) && characters++ == maxCharacters) return line.substr(0, i) + "...";
    }
    return line;
}

std::string quoted(std::string_view name, std::string_view value) {
    return std::string(name) + "=\"" + oneLine(value) + "\"";
}

size_t characterCount(std::string_view text) {
    return text.size() - static_cast<size_t>(std::count_if(text.begin(), text.end(), isContinuation));
}

}  // namespace scene

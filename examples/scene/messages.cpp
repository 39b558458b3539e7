// The form of a message line.
#include "messages.h"

namespace scene {

std::string oneLine(std::string_view text, size_t longest) {
    std::string line;
    for (const char c : text) {
        // A cut must not split a UTF-8 sequence: its later bytes are 10xxxxxx.
        if (line.size() >= longest && (static_cast<unsigned char>(c) & 0xC0U) != 0x80) {
            return line + "...";
        }
        const bool control = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
        line += control ? ' ' : c;
    }
    return line;
}

std::string quoted(std::string_view name, std::string_view value) {
    return std::string(name) + "=\"" + oneLine(value) + "\"";
}

void Messages::write(const Place& place, std::string_view kind, std::string_view text) {
    lines_ << file_;
    if (place.line != 0) lines_ << ':' << place.line;
    lines_ << ": " << kind << ": ";
    if (!place.element.empty()) lines_ << place.element << (place.attribute.empty() ? ": " : " ");
    if (!place.attribute.empty()) lines_ << place.attribute << ": ";
    lines_ << text << '\n';
}

}  // namespace scene

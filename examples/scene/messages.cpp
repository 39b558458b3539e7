// The form of a message line.
#include "messages.h"

namespace scene {

void Messages::write(const Place& place, std::string_view severity, std::string_view text) {
    lines_ << file_;
    if (place.line != 0) lines_ << ':' << place.line;
    lines_ << ": " << severity << ": ";
    if (!place.element.empty()) lines_ << place.element << (place.attribute.empty() ? ": " : " ");
    if (!place.attribute.empty()) lines_ << place.attribute << ": ";
    lines_ << text << '\n';
}

}  // namespace scene

// Text from outside, made fit for messages, tables and XML.
#ifndef ZAN_SCENE_TEXT_H
#define ZAN_SCENE_TEXT_H

#include <string>
#include <string_view>

namespace scene {

/// Well-formed UTF-8 that stands on one line: a control character becomes a space, a byte that is not part of UTF-8 and
/// a code point that XML does not permit become U+FFFD.
std::string cleanText(std::string_view text);

/// cleanText, shortened to a number of characters and "..." when it is longer.
std::string oneLine(std::string_view text, size_t maxCharacters = 60);

/// `name="value"`, fit for one line.
std::string quoted(std::string_view name, std::string_view value);

/// The number of characters of well-formed UTF-8.
size_t characterCount(std::string_view text);

}  // namespace scene

#endif  // ZAN_SCENE_TEXT_H

// Numbers in decks and options.
#include "numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace scene {

std::optional<double> parseNumber(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\n\f\r";
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return std::nullopt;
    text = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    // Written so that a NaN fails, too.
    if (!(std::fabs(value) <= kLargestNumber)) return std::nullopt;
    return value;
}

std::optional<std::vector<double>> parseNumbers(std::string_view text, char separator) {
    std::vector<double> numbers;
    for (size_t begin = 0; begin <= text.size();) {
        const size_t end = std::min(text.find(separator, begin), text.size());
        const std::optional<double> number = parseNumber(text.substr(begin, end - begin));
        if (!number) return std::nullopt;
        numbers.push_back(*number);
        begin = end + 1;
    }
    return numbers;
}

}  // namespace scene

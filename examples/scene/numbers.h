// Numbers from text, whole or not at all.
#ifndef ZAN_SCENE_NUMBERS_H
#define ZAN_SCENE_NUMBERS_H

#include <optional>
#include <string_view>
#include <vector>

namespace scene {

/// A finite decimal number and nothing else beside it but blanks: "12", "-0.5", "+1e3". Nothing for "", "12px", "0x10",
/// "inf", "nan", "1e999".
std::optional<double> parseNumber(std::string_view text);

/// Numbers with a separator between them: "640,400,5". Nothing when one of them is none.
std::optional<std::vector<double>> parseNumbers(std::string_view text, char separator);

}  // namespace scene

#endif  // ZAN_SCENE_NUMBERS_H

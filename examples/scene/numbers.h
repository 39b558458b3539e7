// Numbers in decks and options.
#ifndef ZAN_SCENE_NUMBERS_H
#define ZAN_SCENE_NUMBERS_H

#include <optional>
#include <string_view>
#include <vector>

namespace scene {

/// Bounds on every number of a deck and of an option. Within them no coordinate overflows.
inline constexpr double kLargestNumber = 1e9;   ///< in magnitude
inline constexpr double kSmallestSize = 1e-3;   ///< of a window, a layer, a deck, and the smallest perspective
inline constexpr double kSmallestScale = 1e-5;  ///< of a layer and of a zoom; the library takes 1e-6 as degenerate

/// A decimal number with nothing but blanks around it, at most kLargestNumber in magnitude: "12", "-0.5", "+1e3".
/// Nothing for "", "12px", "0x10", "inf", "nan", "1e10".
std::optional<double> parseNumber(std::string_view text);

/// Numbers with a separator between them: "640,400,5". Nothing when one of them is not a number.
std::optional<std::vector<double>> parseNumbers(std::string_view text, char separator);

}  // namespace scene

#endif  // ZAN_SCENE_NUMBERS_H

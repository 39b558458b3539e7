// Messages about the input, one line each: "FILE:LINE: error: <div id="a"> data-scale="0": why".
#ifndef ZAN_SCENE_MESSAGES_H
#define ZAN_SCENE_MESSAGES_H

#include "text.h"

#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace scene {

enum ExitCode {
    kDone = 0,      ///< also with warnings
    kFailed = 1,    ///< a file could not be written, memory ran out, the library reported an error
    kBadInput = 2,  ///< the deck or an option is wrong
};

/// Ends the run with an exit code. The text becomes the line "zan-scene: error: TEXT"; an empty text writes no line.
class Stop : public std::runtime_error {
public:
    Stop(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
    [[nodiscard]] ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

/// A place in a deck. Empty fields and a line of 0 are left out of the message.
struct Place {
    unsigned line = 0;
    std::string element;    ///< `<div id="a">`
    std::string attribute;  ///< `data-scale="0"`
};

/// Writes the messages about one deck and remembers whether one of them was an error.
class Messages {
public:
    Messages(std::ostream& lines, std::string_view file) : lines_(lines), file_(oneLine(file, 1000)) {}

    /// The run continues; `assumed` says with what.
    void warning(const Place& place, std::string_view assumed) { write(place, "warning", assumed); }
    /// The run ends once the rest of the deck has been checked.
    void error(const Place& place, std::string_view why) {
        write(place, "error", why);
        failed_ = true;
    }
    [[nodiscard]] bool failed() const { return failed_; }

private:
    void write(const Place& place, std::string_view severity, std::string_view text);

    std::ostream& lines_;
    std::string file_;
    bool failed_ = false;
};

}  // namespace scene

#endif  // ZAN_SCENE_MESSAGES_H

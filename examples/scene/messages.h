// What the program says about its input: one line a matter, "FILE:LINE: error: <div id="a"> data-scale="0": why".
#ifndef ZAN_SCENE_MESSAGES_H
#define ZAN_SCENE_MESSAGES_H

#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace scene {

enum ExitCode {
    kDone = 0,      ///< also with warnings
    kFailed = 1,    ///< a file could not be written, memory ran out, the library refused
    kBadInput = 2,  ///< the deck or an option is wrong
};

/// Ends the run: the text becomes the line "zan-scene: error: TEXT" (a line that begins with its own place stays as it
/// is) and the code the exit code.
class Stop : public std::runtime_error {
public:
    Stop(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
    [[nodiscard]] ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

/// Text from outside made fit for one line: control characters become spaces, and what is too long ends in dots.
std::string oneLine(std::string_view text, size_t longest = 60);

/// `name="value"`, fit for one line.
std::string quoted(std::string_view name, std::string_view value);

/// Where in a deck something stands. Empty fields and a line of 0 are left out of the message.
struct Place {
    unsigned line = 0;
    std::string element;    ///< `<div id="a">`
    std::string attribute;  ///< `data-scale="0"`
};

/// Collects the matters of one deck: writes each as a line at once and remembers whether one of them stops the run.
class Messages {
public:
    Messages(std::ostream& lines, std::string_view file) : lines_(lines), file_(oneLine(file, 1000)) {}

    /// The run goes on; `assumed` tells with what.
    void warn(const Place& place, std::string_view assumed) { write(place, "warning", assumed); }
    /// The run does not go on, but the rest of the deck is still looked at.
    void refuse(const Place& place, std::string_view why) {
        write(place, "error", why);
        refused_ = true;
    }
    [[nodiscard]] bool refused() const { return refused_; }

private:
    void write(const Place& place, std::string_view kind, std::string_view text);

    std::ostream& lines_;
    std::string file_;
    bool refused_ = false;
};

}  // namespace scene

#endif  // ZAN_SCENE_MESSAGES_H

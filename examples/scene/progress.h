// The progress line of a long run.
#ifndef ZAN_SCENE_PROGRESS_H
#define ZAN_SCENE_PROGRESS_H

#include <chrono>
#include <functional>
#include <ostream>
#include <string>

namespace scene {

/// Silent for the first second. Then, on a terminal, one line that rewrites itself ten times a second at most:
/// "zan-scene: parsing: 34%". On anything else nothing but the closing line.
class Progress {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    Progress(std::ostream& out, bool terminal, Clock now = std::chrono::steady_clock::now)
        : out_(out), terminal_(terminal), now_(std::move(now)), start_(now_()), shown_(start_) {}
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Says how much of an activity is done. May be called as often as is convenient.
    void at(const char* activity, size_t done, size_t total) noexcept;
    /// Removes the line, so that another text can be written.
    void clear() noexcept;
    /// Ends a run that took longer than a second: "zan-scene: TEXT, in 12 s".
    void close(const std::string& text);

private:
    std::ostream& out_;
    bool terminal_;
    Clock now_;
    std::chrono::steady_clock::time_point start_, shown_;
    size_t width_ = 0;  ///< of the line that stands on the terminal
};

}  // namespace scene

#endif  // ZAN_SCENE_PROGRESS_H

// A line that tells how far a long run has come.
#ifndef ZAN_SCENE_PROGRESS_H
#define ZAN_SCENE_PROGRESS_H

#include <chrono>
#include <functional>
#include <ostream>

namespace scene {

/// Silent for the first second; then one line that rewrites itself at most once a second.
class Progress {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    Progress(std::ostream& out, size_t total, Clock now = std::chrono::steady_clock::now)
        : out_(out), total_(total), now_(std::move(now)), shown_(now_()) {}
    ~Progress() {
        if (begun_) out_ << '\n';
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void done(size_t count) {
        const auto now = now_();
        if (now - shown_ <= std::chrono::seconds(1)) return;
        shown_ = now;
        begun_ = true;
        out_ << "\rzan-scene: " << count << " of " << total_ << " cameras" << std::flush;
    }

private:
    std::ostream& out_;
    size_t total_;
    Clock now_;
    std::chrono::steady_clock::time_point shown_;
    bool begun_ = false;
};

}  // namespace scene

#endif  // ZAN_SCENE_PROGRESS_H

// The progress line of a long run.
#include "progress.h"

#include <array>
#include <cstdio>

namespace scene {

void Progress::at(const char* activity, size_t done, size_t total) noexcept {
    if (!terminal_) return;
    try {
        const auto now = now_();
        const bool shown = width_ > 0;
        if (now - start_ < std::chrono::seconds(1) || (shown && now - shown_ < std::chrono::milliseconds(100))) return;
        shown_ = now;
        const double percent = total == 0 ? 100 : 100 * static_cast<double>(done) / static_cast<double>(total);
        std::array<char, 80> line{};
        const int length = std::snprintf(line.data(), line.size(), "zan-scene: %.40s: %.0f%%", activity, percent);
        clear();
        out_ << line.data() << std::flush;
        width_ = static_cast<size_t>(length);
    } catch (...) {
        terminal_ = false;  // the run goes on without its progress line
    }
}

void Progress::clear() noexcept {
    if (width_ == 0) return;
    try {
        out_ << '\r';
        for (; width_ > 0; --width_) out_ << ' ';
        out_ << '\r' << std::flush;
    } catch (...) {
        width_ = 0;
    }
}

void Progress::close(const std::string& text) {
    clear();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now_() - start_).count();
    if (seconds >= 1) out_ << "zan-scene: " << text << ", in " << seconds << " s\n";
}

}  // namespace scene

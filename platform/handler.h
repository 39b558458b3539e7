// A callback with its context. One thread may replace it while another calls it: get() copies both under the lock, and
// the caller calls the copy without the lock, so the callback may report, log or replace itself.
#ifndef ZAN_PLATFORM_HANDLER_H
#define ZAN_PLATFORM_HANDLER_H

#include <mutex>

namespace zan_platform {

template <class Function>
class Handler {
public:
    struct Installed {
        Function function;
        void* context;
    };

    void set(Function function, void* context) {
        const std::lock_guard<std::mutex> lock(mutex_);
        installed_ = {function, context};
    }
    Installed get() {
        const std::lock_guard<std::mutex> lock(mutex_);
        return installed_;
    }

private:
    std::mutex mutex_;
    Installed installed_{nullptr, nullptr};
};

}  // namespace zan_platform

#endif  // ZAN_PLATFORM_HANDLER_H

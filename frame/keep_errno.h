// Saves and restores errno around calls of the C library's math functions. They set it on domain and range errors, but
// errno belongs to the host.
#ifndef ZAN_FRAME_KEEP_ERRNO_H
#define ZAN_FRAME_KEEP_ERRNO_H

#include <cerrno>

namespace zan {

class KeepErrno {
public:
    KeepErrno() : saved_(errno) {}
    ~KeepErrno() { errno = saved_; }
    KeepErrno(const KeepErrno&) = delete;
    KeepErrno& operator=(const KeepErrno&) = delete;

private:
    int saved_;
};

}  // namespace zan

#endif  // ZAN_FRAME_KEEP_ERRNO_H

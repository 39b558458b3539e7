// The C library's functions tell domain and range errors by errno, which is the host's: whoever calls one leaves errno
// as it was.
#ifndef ZAN_FRAME_KEEP_ERRNO_H
#define ZAN_FRAME_KEEP_ERRNO_H

#include <cerrno>

namespace zan {

class KeepErrno {
public:
    KeepErrno() : kept_(errno) {}
    ~KeepErrno() { errno = kept_; }
    KeepErrno(const KeepErrno&) = delete;
    KeepErrno& operator=(const KeepErrno&) = delete;

private:
    int kept_;
};

}  // namespace zan

#endif  // ZAN_FRAME_KEEP_ERRNO_H

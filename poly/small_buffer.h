// Working memory of the polygon operations.
#ifndef ZAN_POLY_SMALL_BUFFER_H
#define ZAN_POLY_SMALL_BUFFER_H

#include <cstddef>
#include <memory>

namespace zan {

/// An uninitialised array, on the stack up to kInline elements.
template <class T, size_t kInline>
class SmallBuffer {
public:
    /// An array of at least `count` elements. Growing discards the contents.
    T* get(size_t count) {
        if (count <= kInline) return inline_;
        if (capacity_ < count) {
            heap_ = std::make_unique_for_overwrite<T[]>(count);
            capacity_ = count;
        }
        return heap_.get();
    }

private:
    T inline_[kInline];
    size_t capacity_ = 0;
    std::unique_ptr<T[]> heap_;
};

}  // namespace zan

#endif  // ZAN_POLY_SMALL_BUFFER_H

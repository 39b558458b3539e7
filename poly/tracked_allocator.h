// The members of the outlines' allocator. Only the library defines them, so that the public header does not include the
// platform's.
#ifndef ZAN_POLY_TRACKED_ALLOCATOR_H
#define ZAN_POLY_TRACKED_ALLOCATOR_H

#include "zan/platform/bel.h"
#include "zan/poly.h"

#include <new>

template <class T>
T* Zan_TrackedAllocator<T>::allocate(size_t count) {
    if (count > SIZE_MAX / sizeof(T)) throw std::bad_array_new_length();
    return static_cast<T*>(Bel_MemTrackedObject::TrackedNew(count * sizeof(T), false));
}

template <class T>
void Zan_TrackedAllocator<T>::deallocate(T* objects, size_t /*count*/) noexcept {
    Bel_MemTrackedObject::TrackedDelete(objects);
}

#endif  // ZAN_POLY_TRACKED_ALLOCATOR_H

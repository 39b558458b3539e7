// C++20 library features that emscripten's libc++ 13 lacks; the compiler's command line includes this file first.
#ifndef ZAN_WEB_LIBCXX13_H
#define ZAN_WEB_LIBCXX13_H

#include <bit>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>

#if !defined(__cpp_lib_bit_cast) || !defined(__cpp_lib_smart_ptr_for_overwrite)
namespace std {

#ifndef __cpp_lib_bit_cast
template <class To, class From>
constexpr To bit_cast(const From& from) noexcept {
    return __builtin_bit_cast(To, from);
}
#endif

#ifndef __cpp_lib_smart_ptr_for_overwrite
template <class T>
unique_ptr<T> make_unique_for_overwrite(size_t count) {
    return unique_ptr<T>(new remove_extent_t<T>[count]);
}
#endif

}  // namespace std
#endif

#endif  // ZAN_WEB_LIBCXX13_H

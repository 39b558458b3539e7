// What the operations on points and rectangles share: one rule for all coordinate types, told apart by field names.
#ifndef ZAN_GEOM2D_RECORDS_H
#define ZAN_GEOM2D_RECORDS_H

#include "zan/types.h"

namespace zan {

/// The type of a rectangle's coordinates.
template <class R>
using Coordinate = decltype(R::left);

template <class R>
constexpr bool emptyRect(const R& r) {
    return r.right <= r.left || r.bottom <= r.top;
}

/// All four fields are equal; empty rectangles are not treated specially.
template <class R>
constexpr bool sameFields(const R& a, const R& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

/// The larger and the smaller of two values. A NaN in p gives q; a NaN in q gives q.
template <class T>
constexpr T larger(T p, T q) {
    return p > q ? p : q;
}
template <class T>
constexpr T smaller(T p, T q) {
    return q > p ? p : q;
}

/// Neither is empty, and they overlap; touching edges do not count.
template <class R>
constexpr bool intersecting(const R& a, const R& b) {
    return !emptyRect(a) && !emptyRect(b) && larger(a.top, b.top) < smaller(a.bottom, b.bottom) &&
           larger(a.left, b.left) < smaller(a.right, b.right);
}

}  // namespace zan

#endif  // ZAN_GEOM2D_RECORDS_H

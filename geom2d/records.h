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

}  // namespace zan

#endif  // ZAN_GEOM2D_RECORDS_H

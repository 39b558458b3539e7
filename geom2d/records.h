// Templates shared by the operations on rectangles, for all four record types. They use field names, so the order of
// the fields in a record does not matter.
#ifndef ZAN_GEOM2D_RECORDS_H
#define ZAN_GEOM2D_RECORDS_H

#include "zan/types.h"

namespace zan {

/// The type of the coordinates of the rectangle R.
template <class R>
using Coordinate = decltype(R::left);

// In emptyRect and intersecting, comparisons are combined with | and &, because a branch on each would mispredict.

/// True when the rectangle has no width or no height, or is inverted.
template <class R>
constexpr bool emptyRect(const R& r) {
    return (r.right <= r.left) | (r.bottom <= r.top);
}

/// True when all four fields are equal, also for empty rectangles.
template <class R>
constexpr bool sameFields(const R& a, const R& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

/// The larger and the smaller of two values. When either is NaN, and for zeros of either sign, the result is q.
template <class T>
constexpr T larger(T p, T q) {
    return p > q ? p : q;
}
template <class T>
constexpr T smaller(T p, T q) {
    return q > p ? p : q;
}

/// True when neither is empty and they overlap; touching edges do not count. An empty rectangle fails the comparison of
/// the axis on which it is empty: the larger low edge is not below the smaller high edge.
template <class R>
constexpr bool intersecting(const R& a, const R& b) {
    const bool vertically = larger(a.top, b.top) < smaller(a.bottom, b.bottom);
    const bool horizontally = larger(a.left, b.left) < smaller(a.right, b.right);
    return vertically & horizontally;
}

}  // namespace zan

#endif  // ZAN_GEOM2D_RECORDS_H

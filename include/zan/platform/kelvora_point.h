// The point type of the host's core geometry library: two floats or doubles, x first.
#ifndef ZAN_PLATFORM_KELVORA_POINT_H
#define ZAN_PLATFORM_KELVORA_POINT_H

namespace kelvora::geom {

/// A point.
/// @ingroup platform
template <class T>
struct PointT {
    T x, y;
};

}  // namespace kelvora::geom

#endif  // ZAN_PLATFORM_KELVORA_POINT_H

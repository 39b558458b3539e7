// Boost.Geometry as the benchmarks use it.
#ifndef ZAN_BENCH_PEERS_BOOST_H
#define ZAN_BENCH_PEERS_BOOST_H

#define BOOST_ALLOW_DEPRECATED_HEADERS
// Without the rescaling to integers, which later versions have given up.
#define BOOST_GEOMETRY_NO_ROBUSTNESS
#include <boost/geometry.hpp>
#include <boost/geometry/algorithms/is_convex.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

namespace zan_bench {

namespace bg = boost::geometry;
using BoostPoint = bg::model::d2::point_xy<double>;
/// Counterclockwise with y upward, not closed, as zan has its outlines.
using BoostRing = bg::model::ring<BoostPoint, false, false>;
using BoostPolygon = bg::model::polygon<BoostPoint, false, false>;

}  // namespace zan_bench

#endif  // ZAN_BENCH_PEERS_BOOST_H

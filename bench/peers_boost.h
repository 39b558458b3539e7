// Boost.Geometry's types for the benchmarks.
#ifndef ZAN_BENCH_PEERS_BOOST_H
#define ZAN_BENCH_PEERS_BOOST_H

#include "tests/support/vectors.h"

#define BOOST_ALLOW_DEPRECATED_HEADERS
// No rescaling to integer coordinates, as in later versions of Boost.
#define BOOST_GEOMETRY_NO_ROBUSTNESS
#include <boost/geometry.hpp>
#include <boost/geometry/algorithms/is_convex.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

#include <vector>

namespace zan_bench {

namespace bg = boost::geometry;
using BoostPoint = bg::model::d2::point_xy<double>;
/// As zan's outlines: counterclockwise with y upward, the first vertex not repeated at the end.
using BoostRing = bg::model::ring<BoostPoint, false, false>;
using BoostPolygon = bg::model::polygon<BoostPoint, false, false>;

/// The outlines as polygons of Boost.Geometry.
template <class Ring>
std::vector<Ring> boostRings(const std::vector<std::vector<Vector2>>& outlines) {
    std::vector<Ring> rings;
    for (const auto& outline : outlines) {
        Ring& ring = rings.emplace_back();
        for (const auto& v : outline) bg::append(ring, BoostPoint(v.x, v.y));
    }
    return rings;
}

}  // namespace zan_bench

#endif  // ZAN_BENCH_PEERS_BOOST_H

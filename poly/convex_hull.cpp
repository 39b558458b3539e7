// The convex hull, found on an integer grid, where cross products are exact: its strictly convex vertices in
// counterclockwise order from the lowest one. The points are sorted by rows and the two sides of the hull built one
// after the other (monotone chain), which gives the same vertices as an angular sort around the lowest point and is
// faster.
#include "matrix/vectors.h"
#include "platform/kelvora_point.h"
#include "zan/poly.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>
#include <limits>
#include <memory>
#include <numeric>

namespace {

// Sorting fewer points is faster than filtering them first.
constexpr size_t kMinPointsForFilter = 32;

// Coordinates are at most 2^30, so cross products fit in 64 bits.
struct GridPoint {
    int64_t x, y;
};

// A grid point as one number that sorts by y, then by x.
uint64_t pack(const GridPoint& p) { return static_cast<uint64_t>(p.y) << 32 | static_cast<uint64_t>(p.x); }
GridPoint unpack(uint64_t key) { return {static_cast<int64_t>(key & 0xFFFFFFFF), static_cast<int64_t>(key >> 32)}; }

// cross(b - a, c - b); positive for a left turn.
int64_t turn(const GridPoint& a, const GridPoint& b, const GridPoint& c) {
    return (b.x - a.x) * (c.y - b.y) - (c.x - b.x) * (b.y - a.y);
}

// The least and the greatest of some coordinates.
struct Extent {
    double low, high;

    // Ignores NaN.
    void include(double value) {
        low = value < low ? value : low;
        high = value > high ? value : high;
    }
    void include(const Extent& other) {
        low = std::min(low, other.low);
        high = std::max(high, other.high);
    }
};

// The extent of no coordinates.
constexpr Extent kEmptyExtent = {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

// One axis of the grid: 2^29 steps from the least to the greatest coordinate.
struct Axis {
    double low, step, divisor;

    // Where the extent is zero, every value snaps to 0. Division by infinity does that, too, and raises no flag.
    explicit Axis(const Extent& extent)
        : low(extent.low),
          step((extent.high - extent.low) * 0x1p-29),
          divisor(step == 0 ? std::numeric_limits<double>::infinity() : step) {}
    // The quotient is NaN or infinite when the extent overflows; every value then snaps to 0.
    int64_t snap(double value) const {
        const double position = (value - low) / divisor + 0.5;
        return position >= 0 && position <= 0x1p30 ? static_cast<int64_t>(position) : 0;
    }
    double coordinate(int64_t position) const { return static_cast<double>(position) * step + low; }
};

// Filter: writes the indexes of the points that may be hull vertices to `list` and returns their number. Points are
// binned by y into strips. A point is left out when each of the four quadrants around it holds another point: one with
// less x and one with greater x in lower strips, and the same in higher strips.
//
// No vertex of the grid hull is lost. Snapping is monotonic in each coordinate, and a hull vertex is the one grid point
// that is farthest in some direction, say, toward greater x and y. Suppose that all points that snap to it are left
// out, and let p be one of them in the highest strip. The point in the upper right quadrant of p snaps at least as far
// in that direction, so to the same vertex, but is in a higher strip: a contradiction. The strip's number may be
// rounded, since it stays monotonic in y.
size_t listCandidates(const auto* points, size_t count, const Extent& y, uint64_t* list) {
    constexpr int kMaxStripBits = 10;
    const int stripBits = std::min(kMaxStripBits, static_cast<int>(std::bit_width(count)) - 2);
    const size_t stripCount = size_t{1} << stripBits;
    std::array<Extent, 1 << kMaxStripBits> strips, inner;
    const auto last = static_cast<double>(stripCount - 1);
    // Below this height the scale would overflow: all points are in strip 0, and none is left out.
    constexpr double kMinHeight = 0x1p-1000;
    const double height = y.high - y.low;
    const double scale = height >= kMinHeight ? static_cast<double>(stripCount) / height : 0;
    const auto stripOf = [=](double value) {
        const double position = (value - y.low) * scale;
        const double notNegative = position > 0 ? position : 0;  // 0 for NaN
        return static_cast<size_t>(static_cast<int32_t>(notNegative < last ? notNegative : last));
    };
    // In strip i, every x strictly between inner[i].low and inner[i].high is hidden by points in the strips below and
    // above it.
    std::fill_n(strips.begin(), stripCount, kEmptyExtent);
    for (size_t i = 0; i < count; ++i) strips[stripOf(points[i].y)].include(points[i].x);
    Extent below = kEmptyExtent, above = kEmptyExtent;
    for (size_t i = 0; i < stripCount; ++i) {
        inner[i] = below;
        below.include(strips[i]);
    }
    for (size_t i = stripCount; i-- > 0;) {
        inner[i] = {std::max(inner[i].low, above.low), std::min(inner[i].high, above.high)};
        above.include(strips[i]);
    }
    size_t listed = 0;
    for (size_t i = 0; i < count; ++i) {
        const double x = points[i].x;
        const Extent& hidden = inner[stripOf(points[i].y)];
        // Always written and counted by a sum, because a branch would be mispredicted.
        list[listed] = i;
        listed += static_cast<size_t>(!(x > hidden.low)) | static_cast<size_t>(!(x < hidden.high));
    }
    return listed;
}

// Appends [first, last) to a chain, removing entries after its present last one that are not left turns.
template <class Iterator>
void extendChain(std::vector<GridPoint>& chain, Iterator first, Iterator last) {
    const size_t fixed = chain.size();  // these entries stay
    for (; first != last; ++first) {
        const GridPoint p = unpack(*first);
        while (chain.size() > fixed && turn(chain[chain.size() - 2], chain.back(), p) <= 0) chain.pop_back();
        chain.push_back(p);
    }
}

// The hull of at least one grid point: up along the right side, then down along the left one.
std::vector<GridPoint> gridHull(uint64_t* first, uint64_t* last) {
    std::sort(first, last);
    last = std::unique(first, last);
    std::vector<GridPoint> chain;
    chain.reserve(static_cast<size_t>(last - first) + 1);
    chain.push_back(unpack(*first));
    extendChain(chain, first + 1, last);
    extendChain(chain, std::make_reverse_iterator(last) + 1, std::make_reverse_iterator(first));
    if (chain.size() > 1) chain.pop_back();  // the first point again
    return chain;
}

template <class Point>
void computeHull(const Point* first, size_t count, std::vector<Point>& hull) {
    Extent horizontal = kEmptyExtent, vertical = kEmptyExtent;
    for (const Point* p = first; p != first + count; ++p) {
        horizontal.include(p->x);
        vertical.include(p->y);
    }
    const Axis x(horizontal), y(vertical);
    const auto keys = std::make_unique_for_overwrite<uint64_t[]>(count);
    size_t listed = count;
    if (count < kMinPointsForFilter) {
        std::iota(&keys[0], &keys[count], 0);
    } else {
        listed = listCandidates(first, count, vertical, keys.get());
    }
    std::transform(&keys[0], &keys[listed], &keys[0], [=](uint64_t i) {
        return pack({x.snap(first[i].x), y.snap(first[i].y)});
    });
    const std::vector<GridPoint> chain = gridHull(&keys[0], &keys[listed]);
    hull.assign(chain.size(), Point{});
    for (size_t i = 0; i < chain.size(); ++i) {
        hull[i].x = static_cast<decltype(hull[i].x)>(x.coordinate(chain[i].x));
        hull[i].y = static_cast<decltype(hull[i].y)>(y.coordinate(chain[i].y));
    }
}

template <class Iterator, class Container>
void hullOf(Iterator first, Iterator last, Container& hull) {
    if (last - first <= 3) {
        hull.assign(first, last);
    } else {
        computeHull(&*first, static_cast<size_t>(last - first), hull);
    }
}

}  // namespace

#define ZAN_HULL(...)                                                                                               \
    template <>                                                                                                     \
    void Zan_ComputeConvexHull(std::vector<__VA_ARGS__>::const_iterator first,                                      \
                               std::vector<__VA_ARGS__>::const_iterator last, std::vector<__VA_ARGS__>& hull) {     \
        hullOf(first, last, hull);                                                                                  \
    }                                                                                                               \
    template <>                                                                                                     \
    void Zan_ComputeConvexHull(const __VA_ARGS__* first, const __VA_ARGS__* last, std::vector<__VA_ARGS__>& hull) { \
        hullOf(first, last, hull);                                                                                  \
    }
ZAN_HULL(zan::Vector2)
ZAN_HULL(zan::Vector3)
ZAN_HULL(zan::Vector4)
ZAN_HULL(kelvora::geom::PointT<float>)

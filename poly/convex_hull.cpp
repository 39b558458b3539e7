// The convex hull on an integer grid, where every turn is exact. What is found is what a scan around the lowest point
// finds: the strictly convex vertices in counterclockwise order from that point. Sorted rows get there faster.
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

// Fewer points are sorted faster than any is left out.
constexpr size_t kWorthwhile = 32;

// Coordinates up to 2^30, so that cross products fit in 64 bits.
struct GridPoint {
    int64_t x, y;
};

// A grid point as one number, row first.
uint64_t pack(const GridPoint& p) { return static_cast<uint64_t>(p.y) << 32 | static_cast<uint64_t>(p.x); }
GridPoint unpack(uint64_t key) { return {static_cast<int64_t>(key & 0xFFFFFFFF), static_cast<int64_t>(key >> 32)}; }

// Positive when the way from a over b to c turns left.
int64_t turn(const GridPoint& a, const GridPoint& b, const GridPoint& c) {
    return (b.x - a.x) * (c.y - b.y) - (c.x - b.x) * (b.y - a.y);
}

// The outermost x of some points; the opposite of an extent where there are none.
struct Extent {
    double low, high;

    // Leaves NaN out.
    void include(double value) {
        low = value < low ? value : low;
        high = value > high ? value : high;
    }
    void include(const Extent& other) {
        low = std::min(low, other.low);
        high = std::max(high, other.high);
    }
};

constexpr Extent kNowhere = {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

// One axis of the grid: 2^29 steps from the lowest to the highest coordinate.
struct Axis {
    double low, step;

    explicit Axis(const Extent& extent) : low(extent.low), step((extent.high - extent.low) * 0x1p-29) {}
    // Without extent, or with more than there are numbers, the division gives no number: everything is in one place.
    int64_t snap(double value) const {
        const double place = (value - low) / step + 0.5;
        return place >= 0 && place <= 0x1p30 ? static_cast<int64_t>(place) : 0;
    }
    double coordinate(int64_t place) const { return static_cast<double>(place) * step + low; }
};

// Finds the points that can be corners of the hull and lists their indexes. Not listed is what has points on both
// sides, not below it, and on both sides, not above it. On the grid, where all of these may have moved together, it is
// between them or in the place of one that is further out in every direction in which that place is a corner; so one
// point of each corner is listed. The points are gathered in strips by y, which do not have to be exact to keep their
// order.
size_t listOuter(const auto* points, size_t count, const Extent& y, uint64_t* list) {
    constexpr int kMostStripBits = 10;
    const int stripBits = std::min(kMostStripBits, static_cast<int>(std::bit_width(count)) - 2);
    const size_t stripCount = size_t{1} << stripBits;
    std::array<Extent, 1 << kMostStripBits> strips, between;
    const auto last = static_cast<double>(stripCount - 1);
    const double scale = static_cast<double>(stripCount) / (y.high - y.low);
    const auto stripOf = [=](double at) {
        const double place = (at - y.low) * scale;
        const double notNegative = place > 0 ? place : 0;  // nor NaN
        return static_cast<size_t>(static_cast<int32_t>(notNegative < last ? notNegative : last));
    };
    std::fill_n(strips.begin(), stripCount, kNowhere);
    for (size_t i = 0; i < count; ++i) strips[stripOf(points[i].y)].include(points[i].x);
    Extent below = kNowhere, above = kNowhere;
    for (size_t i = 0; i < stripCount; ++i) {
        between[i] = below;
        below.include(strips[i]);
    }
    for (size_t i = stripCount; i-- > 0;) {
        between[i] = {std::max(between[i].low, above.low), std::min(between[i].high, above.high)};
        above.include(strips[i]);
    }
    size_t listed = 0;
    for (size_t i = 0; i < count; ++i) {
        const double x = points[i].x;
        const Extent& inner = between[stripOf(points[i].y)];
        list[listed] = i;
        listed += static_cast<size_t>(!(x > inner.low)) | static_cast<size_t>(!(x < inner.high));
    }
    return listed;
}

// Goes on from the last entry of the chain over [first, last), keeping left turns only.
template <class Iterator>
void extend(std::vector<GridPoint>& chain, Iterator first, Iterator last) {
    const size_t fixed = chain.size();
    for (; first != last; ++first) {
        const GridPoint p = unpack(*first);
        while (chain.size() > fixed && turn(chain[chain.size() - 2], chain.back(), p) <= 0) chain.pop_back();
        chain.push_back(p);
    }
}

// The hull of at least one grid point. Up along the right side, down along the left.
std::vector<GridPoint> gridHull(uint64_t* first, uint64_t* last) {
    std::sort(first, last);
    last = std::unique(first, last);
    std::vector<GridPoint> chain;
    chain.reserve(static_cast<size_t>(last - first) + 1);
    chain.push_back(unpack(*first));
    extend(chain, first + 1, last);
    extend(chain, std::make_reverse_iterator(last) + 1, std::make_reverse_iterator(first));
    if (chain.size() > 1) chain.pop_back();  // the first once more
    return chain;
}

template <class Point>
void computeHull(const Point* first, size_t count, std::vector<Point>& hull) {
    Extent horizontal = kNowhere, vertical = kNowhere;
    for (const Point* p = first; p != first + count; ++p) {
        horizontal.include(p->x);
        vertical.include(p->y);
    }
    const Axis x(horizontal), y(vertical);
    const auto keys = std::make_unique_for_overwrite<uint64_t[]>(count);
    size_t listed = count;
    if (count < kWorthwhile) {
        std::iota(&keys[0], &keys[count], 0);
    } else {
        listed = listOuter(first, count, vertical, keys.get());
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

}  // namespace

template <class Iterator, class Container>
void Zan_ComputeConvexHull(Iterator first, Iterator last, Container& hull) {
    if (last - first <= 3) {
        hull.assign(first, last);
    } else {
        computeHull(&*first, static_cast<size_t>(last - first), hull);
    }
}

#define ZAN_HULL(...)                                                                                                 \
    template ZAN_API void Zan_ComputeConvexHull(std::vector<__VA_ARGS__>::const_iterator,                             \
                                                std::vector<__VA_ARGS__>::const_iterator, std::vector<__VA_ARGS__>&); \
    template ZAN_API void Zan_ComputeConvexHull(const __VA_ARGS__*, const __VA_ARGS__*, std::vector<__VA_ARGS__>&)
ZAN_HULL(Zan_Vector2T<double>);
ZAN_HULL(Zan_Vector3T<double>);
ZAN_HULL(Zan_Vector4T<double>);
ZAN_HULL(kelvora::geom::PointT<float>);

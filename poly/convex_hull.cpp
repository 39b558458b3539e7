// The convex hull, found on an integer grid, where cross products are exact: its strictly convex vertices in
// counterclockwise order from the lowest one. The points are sorted by rows and the two sides of the hull built one
// after the other (monotone chain), which gives the same vertices as an angular sort around the lowest point and is
// faster. Every step takes linear time, whatever the distribution of the points.
#include "matrix/vectors.h"
#include "poly/small_buffer.h"
#include "zan/platform/kelvora_point.h"
#include "zan/poly.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <memory>
#include <numeric>
#include <utility>

namespace {

// Sorting fewer points is faster than filtering them first.
constexpr size_t kMinPointsForFilter = 32;
// Up to so many points are sorted by their ranks, more by a radix sort.
constexpr size_t kMaxPointsForRanks = 48;
// From so many points on, the digits of the radix sort have 11 bits, else 8.
constexpr size_t kMinPointsForWideDigits = 512;

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

struct Bounds {
    Extent x = kEmptyExtent, y = kEmptyExtent;
};
// A function of its own: inlined where other functions are called, it would keep the bounds in memory.
[[gnu::noinline]] Bounds boundsOf(const auto* points, size_t count) {
    Bounds bounds;
    for (size_t i = 0; i < count; ++i) {
        bounds.x.include(points[i].x);
        bounds.y.include(points[i].y);
    }
    return bounds;
}

// One axis of the grid: 2^29 steps from the least to the greatest coordinate.
struct Axis {
    double low, step, divisor;

    // Where the extent is zero, every value must snap to 0. Division by infinity gives that and raises no flag, unlike
    // division by zero.
    explicit Axis(const Extent& extent)
        : low(extent.low),
          step((extent.high - extent.low) * 0x1p-29),
          divisor(step == 0 ? std::numeric_limits<double>::infinity() : step) {}
    // The quotient is 0 or NaN when the extent is not finite; every value then snaps to 0.
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

// Sorts by counting for each key how many others precede it: no branch that could be mispredicted.
void sortFew(const uint64_t* keys, uint64_t* sorted, size_t count) {
    std::array<uint32_t, kMaxPointsForRanks> ranks;
    for (size_t i = 0; i < count; ++i) {
        const uint64_t key = keys[i];
        uint32_t rank = 0;
        for (size_t j = 0; j < i; ++j) {
            const uint32_t precedes = key < keys[j] ? 1 : 0;
            ranks[j] += precedes;
            rank += 1 - precedes;
        }
        ranks[i] = rank;
    }
    for (size_t i = 0; i < count; ++i) sorted[ranks[i]] = keys[i];
}

// Sorts by y only: a radix sort from the lowest digit up. Leaves the keys in the first array; the second one is scratch
// memory of the same size. Count is the type of the counters.
template <size_t kDigitBits, class Count>
void sortByRows(uint64_t*& keys, uint64_t*& scratch, size_t count) {
    constexpr size_t kRowBits = 31;  // a coordinate is at most 2^30
    constexpr size_t kDigits = (kRowBits + kDigitBits - 1) / kDigitBits;
    constexpr size_t kRadix = size_t{1} << kDigitBits;
    const auto digit = [](uint64_t key, size_t number) { return key >> (32 + number * kDigitBits) & (kRadix - 1); };
    std::array<std::array<Count, kRadix>, kDigits> positions{};
    for (size_t i = 0; i < count; ++i) {
        for (size_t number = 0; number < kDigits; ++number) ++positions[number][digit(keys[i], number)];
    }
    for (size_t number = 0; number < kDigits; ++number) {
        auto& position = positions[number];
        if (position[digit(keys[0], number)] == count) continue;  // all keys have the same digit
        std::exclusive_scan(position.begin(), position.end(), position.begin(), Count{0});
        for (size_t i = 0; i < count; ++i) scratch[position[digit(keys[i], number)]++] = keys[i];
        std::swap(keys, scratch);
    }
}

// Of each row, keeps the leftmost and the rightmost point, in this order, or one point if they are equal. Returns the
// number of points left.
size_t keepRowEnds(uint64_t* keys, size_t count) {
    size_t kept = 0;
    for (size_t i = 0; i < count;) {
        uint64_t left = keys[i], right = left;
        const uint64_t row = left >> 32;
        for (++i; i < count && keys[i] >> 32 == row; ++i) {
            left = std::min(left, keys[i]);
            right = std::max(right, keys[i]);
        }
        keys[kept] = left;
        kept += left != right ? 1 : 0;
        keys[kept++] = right;
    }
    return kept;
}

// Appends [first, last) to a chain whose last point is *end, removing points after that one that are not left turns.
// Returns the new end.
uint64_t* extendChain(uint64_t* end, const uint64_t* first, const uint64_t* last) {
    const uint64_t* const fixed = end;
    for (; first != last; ++first) {
        const uint64_t key = *first;
        const GridPoint p = unpack(key);
        while (end != fixed && turn(unpack(end[-1]), unpack(*end), p) <= 0) --end;
        *++end = key;
    }
    return end;
}

// The hull of at least one grid point: up along the right side, then down along the left one. Both arrays have
// count + 1 elements. Returns the number of vertices, which are in the first array.
size_t gridHull(uint64_t*& keys, uint64_t*& scratch, size_t count) {
    if (count <= kMaxPointsForRanks) {
        sortFew(keys, scratch, count);
        std::swap(keys, scratch);
    } else if (count < kMinPointsForWideDigits) {
        sortByRows<8, uint32_t>(keys, scratch, count);
    } else {
        sortByRows<11, size_t>(keys, scratch, count);
    }
    count = keepRowEnds(keys, count);
    if (count == 1) return 1;
    // Points to the right of the line from the lowest to the highest point can only be vertices of the right side, and
    // points to its left only of the left one. The right ones go to the front of the scratch memory and the left ones
    // to its back, in descending order.
    const uint64_t bottom = keys[0], top = keys[count - 1];
    const GridPoint from = unpack(bottom), to = unpack(top);
    uint64_t *right = scratch, *left = scratch + count;
    *--left = bottom;
    for (size_t i = 1; i + 1 < count; ++i) {
        const int64_t side = turn(from, to, unpack(keys[i]));
        // Always written and counted by a sum, because a branch would be mispredicted.
        *right = keys[i];
        left[-1] = keys[i];
        right += side < 0 ? 1 : 0;
        left -= side > 0 ? 1 : 0;
    }
    *right++ = top;
    uint64_t* end = extendChain(keys, scratch, right);
    end = extendChain(end, left, scratch + count);
    return static_cast<size_t>(end - keys);  // the chain ends with the first point again, which is not counted
}

template <class Point>
void computeHull(const Point* first, size_t count, std::vector<Point>& hull) {
    const Bounds bounds = boundsOf(first, count);
    const Axis x(bounds.x), y(bounds.y);
    zan::SmallBuffer<uint64_t, kMaxPointsForRanks + 1> buffers[2];
    uint64_t* keys = buffers[0].get(count + 1);
    size_t listed = count;
    if (count < kMinPointsForFilter) {
        std::iota(keys, keys + count, 0);
    } else {
        listed = listCandidates(first, count, bounds.y, keys);
    }
    std::transform(keys, keys + listed, keys, [=](uint64_t i) {
        return pack({x.snap(first[i].x), y.snap(first[i].y)});
    });
    uint64_t* scratch = buffers[1].get(listed + 1);
    const size_t size = gridHull(keys, scratch, listed);
    hull.assign(size, Point{});
    for (size_t i = 0; i < size; ++i) {
        const GridPoint p = unpack(keys[i]);
        hull[i].x = static_cast<decltype(hull[i].x)>(x.coordinate(p.x));
        hull[i].y = static_cast<decltype(hull[i].y)>(y.coordinate(p.y));
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

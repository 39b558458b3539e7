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
#include <numeric>
#include <utility>

namespace {

// Sorting fewer points is faster than filtering them first.
constexpr size_t kMinPointsForFilter = 32;
// From so many points on, a sample decides whether they are filtered.
constexpr size_t kMinPointsForSample = 4096;
// Up to so many points are sorted by their ranks, more by a radix sort.
constexpr size_t kMaxPointsForRanks = 48;
// From so many points on, the digits of the radix sort have 10 bits, else 6.
constexpr size_t kMinPointsForWideDigits = 192;

// x and y of a point. GCC does not vectorize such pairs by itself.
using Pair = double __attribute__((vector_size(16)));

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Coordinates are below 2^30, so cross products fit in 64 bits.
struct GridPoint {
    int64_t x, y;
};

// A grid point as one number, its key, sorts by y, then by x.
uint64_t rowOf(uint64_t key) { return key >> 32; }
GridPoint unpack(uint64_t key) { return {static_cast<int64_t>(key & 0xFFFFFFFF), static_cast<int64_t>(rowOf(key))}; }

// cross(b - a, c - b); positive for a left turn.
int64_t turn(const GridPoint& a, const GridPoint& b, const GridPoint& c) {
    return (b.x - a.x) * (c.y - b.y) - (c.x - b.x) * (b.y - a.y);
}

// Value by value, the smaller and the larger one. Where `value` is NaN, `other`.
Pair smaller(Pair value, Pair other) { return value < other ? value : other; }
Pair larger(Pair value, Pair other) { return value > other ? value : other; }

// The least and the greatest coordinates.
struct Bounds {
    Pair low, high;
};

// A function of its own: inlined where other functions are called, it would keep the bounds in memory.
[[gnu::noinline]] Bounds boundsOf(const auto* points, size_t count) {
    Bounds bounds = {Pair{} + kInfinity, Pair{} - kInfinity};
    for (size_t i = 0; i < count; ++i) {
        const Pair point = {points[i].x, points[i].y};
        bounds.low = smaller(point, bounds.low);
        bounds.high = larger(point, bounds.high);
    }
    return bounds;
}

// The grid has 2^29 steps from the least to the greatest coordinate in x and in y.
class Grid {
public:
    // Where the extent is zero, every value must snap to 0. Division by infinity gives that and raises no flag, unlike
    // division by zero.
    explicit Grid(const Bounds& bounds)
        : low_(bounds.low),
          step_((bounds.high - bounds.low) * 0x1p-29),
          divisor_(step_ == 0 ? Pair{} + kInfinity : step_) {}
    // Whether all points snap to one, whose key is 0.
    bool isOnePoint() const { return divisor_[0] == kInfinity && divisor_[1] == kInfinity; }
    // The key of the nearest grid point. The quotient is 0 or NaN when the extent is not finite; every value then snaps
    // to 0. A step is at least two thirds of the exact one, so positions are below 2^30.
    uint64_t snap(const auto& point) const {
        const Pair position = (Pair{point.x, point.y} - low_) / divisor_ + 0.5;
        return std::bit_cast<uint64_t>(__builtin_convertvector(position >= 0 ? position : Pair{}, Position));
    }
    template <class Point>
    Point pointAt(uint64_t key) const {
        const Pair coordinates = __builtin_convertvector(std::bit_cast<Position>(key), Pair) * step_ + low_;
        Point point{};
        point.x = static_cast<decltype(point.x)>(coordinates[0]);
        point.y = static_cast<decltype(point.y)>(coordinates[1]);
        return point;
    }

private:
    // Its bits are the key.
    static_assert(std::endian::native == std::endian::little);
    using Position = int32_t __attribute__((vector_size(8)));

    Pair low_, step_, divisor_;
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
//
// Not inlined, so that hulls of few points do not reserve its tables on the stack.
[[gnu::noinline]] size_t listCandidates(const auto* points, size_t count, const Bounds& bounds, uint64_t* list) {
    constexpr int kMaxStripBits = 10;
    const int stripBits = std::min(kMaxStripBits, static_cast<int>(std::bit_width(count)) - 2);
    const size_t stripCount = size_t{1} << stripBits;
    const double low = bounds.low[1];
    const auto last = static_cast<double>(stripCount - 1);
    // Below this height the scale would overflow: all points are in strip 0, and none is left out.
    constexpr double kMinHeight = 0x1p-1000;
    const double height = bounds.high[1] - low;
    const double scale = height >= kMinHeight ? static_cast<double>(stripCount) / height : 0;
    const auto stripOf = [=](double value) {
        const double position = (value - low) * scale;
        const double notNegative = position > 0 ? position : 0;  // 0 for NaN
        return static_cast<size_t>(static_cast<int32_t>(notNegative < last ? notNegative : last));
    };
    // {-least x, greatest x} of the points in each strip.
    std::array<Pair, 1 << kMaxStripBits> strips;
    const Pair none = Pair{} - kInfinity;
    std::fill_n(strips.begin(), stripCount, none);
    for (size_t i = 0; i < count; ++i) {
        Pair& strip = strips[stripOf(points[i].y)];
        strip = larger(Pair{-points[i].x, points[i].x}, strip);
    }
    // In strip i, points whose {-x, x} are both less than hidden[i] are hidden by points in the strips below and above.
    std::array<Pair, 1 << kMaxStripBits> hidden;
    Pair below = none, above = none;
    for (size_t i = 0; i < stripCount; ++i) {
        hidden[i] = below;
        below = larger(below, strips[i]);
    }
    for (size_t i = stripCount; i-- > 0;) {
        hidden[i] = smaller(hidden[i], above);
        above = larger(above, strips[i]);
    }
    size_t listed = 0;
    for (size_t i = 0; i < count; ++i) {
        const auto isHidden = Pair{-points[i].x, points[i].x} < hidden[stripOf(points[i].y)];
        // Always written and counted by a sum, because a branch would be mispredicted.
        list[listed] = i;
        listed += static_cast<size_t>(1 + (isHidden[0] & isHidden[1]));  // true is -1
    }
    return listed;
}

// Whether the filter is worth its time. Where it leaves out none of a sample, nearly all points are on the hull.
template <class Point>
[[gnu::noinline]] bool filterPays(const Point* points, size_t count, const Bounds& bounds, uint64_t* list) {
    if (count < kMinPointsForSample) return count >= kMinPointsForFilter;
    std::array<Point, 256> sample;
    for (size_t i = 0; i < sample.size(); ++i) sample[i] = points[i * (count / sample.size())];
    return listCandidates(sample.data(), sample.size(), bounds, list) < sample.size();
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
// memory of the same size.
template <size_t kDigitBits>
[[gnu::noinline]] void sortByRows(uint64_t*& keys, uint64_t*& scratch, size_t count) {
    constexpr size_t kRowBits = 30;
    constexpr size_t kDigits = kRowBits / kDigitBits;
    constexpr size_t kRadix = size_t{1} << kDigitBits;
    const auto digit = [](uint64_t key, size_t number) { return key >> (32 + number * kDigitBits) & (kRadix - 1); };
    std::array<std::array<size_t, kRadix>, kDigits> positions{};
    for (size_t i = 0; i < count; ++i) {
        for (size_t number = 0; number < kDigits; ++number) ++positions[number][digit(keys[i], number)];
    }
    for (size_t number = 0; number < kDigits; ++number) {
        auto& position = positions[number];
        if (position[digit(keys[0], number)] == count) continue;  // all keys have the same digit
        std::exclusive_scan(position.begin(), position.end(), position.begin(), size_t{0});
        // Two keys at a time, because store-to-load forwarding from one position to the next limits the speed.
        size_t i = 0;
        for (; i + 2 <= count; i += 2) {
            const size_t a = digit(keys[i], number), b = digit(keys[i + 1], number);
            const size_t toA = position[a], toB = position[b] + (a == b ? 1 : 0);
            position[a] = toA + 1;
            position[b] = toB + 1;
            scratch[toA] = keys[i];
            scratch[toB] = keys[i + 1];
        }
        if (i < count) scratch[position[digit(keys[i], number)]] = keys[i];
        std::swap(keys, scratch);
    }
}

// Moves the leftmost point of a row to its front and the rightmost one to its back.
void placeEnds(uint64_t* first, uint64_t* last) {
    std::swap(*first, *std::min_element(first, last));
    std::swap(last[-1], *std::max_element(first, last));
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
        sortByRows<6>(keys, scratch, count);
    } else {
        sortByRows<10>(keys, scratch, count);
    }
    // Within a row the order of the keys does not matter, because the chain keeps only the outermost point. This does
    // not hold in the lowest and in the highest row, where the outermost point must come last.
    const auto byRow = [](uint64_t a, uint64_t b) { return rowOf(a) < rowOf(b); };
    placeEnds(keys, std::upper_bound(keys, keys + count, keys[0], byRow));
    placeEnds(std::lower_bound(keys, keys + count, keys[count - 1], byRow), keys + count);
    const uint64_t bottom = keys[0], top = keys[count - 1];
    if (bottom == top) return 1;
    // Points to the right of the line from the lowest to the highest point can only be vertices of the right side, and
    // points to its left only of the left one. The right ones go to the front of the scratch memory and the left ones
    // to its back, in descending order.
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
    const Grid grid(bounds);
    if (grid.isOnePoint()) {
        hull.assign(1, grid.pointAt<Point>(0));
        return;
    }
    zan::SmallBuffer<uint64_t, 2 * (kMaxPointsForRanks + 1)> buffer;
    uint64_t* keys = buffer.get(2 * (count + 1));
    uint64_t* scratch = keys + count + 1;
    const size_t listed = filterPays(first, count, bounds, keys) ? listCandidates(first, count, bounds, keys) : count;
    if (listed == count) {
        std::transform(first, first + count, keys, [&](const Point& point) { return grid.snap(point); });
    } else {
        std::transform(keys, keys + listed, keys, [&](uint64_t i) { return grid.snap(first[i]); });
    }
    const size_t size = gridHull(keys, scratch, listed);
    hull.assign(size, Point{});
    std::transform(keys, keys + size, hull.begin(), [&](uint64_t key) { return grid.pointAt<Point>(key); });
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

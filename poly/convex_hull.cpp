// The convex hull on an integer grid, where every turn is exact. What is found is what a scan around the lowest point
// finds: the strictly convex vertices in counterclockwise order from that point. Sorted rows get there faster.
#include <algorithm>
#include <array>
#include <limits>

#include "platform/kelvora_point.h"
#include "zan/poly.h"

namespace {

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

// One axis of the grid: 2^29 steps from the lowest to the highest coordinate.
struct Axis {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
    double step = 0;

    void include(double value) {
        if (value <= low) low = value;
        if (value >= high) high = value;
    }
    void divide() { step = (high - low) * 0x1p-29; }
    // Without extent, or with more than there are numbers, the division gives no number: everything is in one place.
    int64_t snap(double value) const {
        const double place = (value - low) / step + 0.5;
        return place >= 0 && place <= 0x1p30 ? static_cast<int64_t>(place) : 0;
    }
    double coordinate(int64_t place) const { return static_cast<double>(place) * step + low; }
};

// Removes what lies inside the quadrilateral of the points that are outermost in the four diagonal directions.
void removeInner(std::vector<uint64_t>& keys) {
    std::array<GridPoint, 4> outer;
    outer.fill(unpack(keys[0]));
    for (const uint64_t key : keys) {
        const GridPoint p = unpack(key);
        if (p.x + p.y < outer[0].x + outer[0].y) outer[0] = p;
        if (p.x - p.y > outer[1].x - outer[1].y) outer[1] = p;
        if (p.x + p.y > outer[2].x + outer[2].y) outer[2] = p;
        if (p.x - p.y < outer[3].x - outer[3].y) outer[3] = p;
    }
    const auto inner = [&](uint64_t key) {
        const GridPoint p = unpack(key);
        return turn(outer[0], outer[1], p) > 0 && turn(outer[1], outer[2], p) > 0 && turn(outer[2], outer[3], p) > 0 &&
               turn(outer[3], outer[0], p) > 0;
    };
    keys.erase(std::remove_if(keys.begin(), keys.end(), inner), keys.end());
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
std::vector<GridPoint> gridHull(std::vector<uint64_t>& keys) {
    removeInner(keys);
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    std::vector<GridPoint> chain{unpack(keys[0])};
    extend(chain, keys.begin() + 1, keys.end());
    extend(chain, keys.rbegin() + 1, keys.rend());
    if (chain.size() > 1) chain.pop_back();  // the first once more
    return chain;
}

template <class Point>
void computeHull(const Point* first, size_t count, std::vector<Point>& hull) {
    Axis x, y;
    for (const Point* p = first; p != first + count; ++p) {
        x.include(p->x);
        y.include(p->y);
    }
    x.divide();
    y.divide();
    std::vector<uint64_t> keys(count);
    std::transform(first, first + count, keys.begin(), [&](const Point& p) {
        return pack({x.snap(p.x), y.snap(p.y)});
    });
    const std::vector<GridPoint> chain = gridHull(keys);
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

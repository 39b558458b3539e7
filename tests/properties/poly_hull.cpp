// Hulls against a plain walk around the same grid.

#include "platform/kelvora_point.h"
#include "property.h"
#include "zan/poly.h"

namespace {

struct Grid {
    int64_t y, x;
    auto operator<=>(const Grid&) const = default;
};

// From the lowest point on, always to the one that has all others to the left, the farthest of several.
template <class P>
std::vector<P> plainHull(const std::vector<P>& points) {
    double low[2] = {points[0].x, points[0].y}, high[2] = {low[0], low[1]};
    for (const P& p : points) {  // fmin and fmax take no NaN
        low[0] = std::fmin(low[0], p.x), high[0] = std::fmax(high[0], p.x);
        low[1] = std::fmin(low[1], p.y), high[1] = std::fmax(high[1], p.y);
    }
    const double step[2] = {(high[0] - low[0]) * 0x1p-29, (high[1] - low[1]) * 0x1p-29};
    const auto snap = [&](double value, int i) {
        const double place = (value - low[i]) / step[i] + 0.5;
        return place >= 0 && place < 0x1p30 ? static_cast<int64_t>(place) : 0;
    };
    std::vector<Grid> grid;
    for (const P& p : points) grid.push_back({snap(p.y, 1), snap(p.x, 0)});
    const Grid start = *std::min_element(grid.begin(), grid.end());
    std::vector<P> hull;
    Grid at = start;
    do {
        hull.emplace_back();
        hull.back().x = static_cast<decltype(P::x)>(static_cast<double>(at.x) * step[0] + low[0]);
        hull.back().y = static_cast<decltype(P::y)>(static_cast<double>(at.y) * step[1] + low[1]);
        Grid next = at;
        for (const Grid& c : grid) {
            const int64_t nx = next.x - at.x, ny = next.y - at.y, cx = c.x - at.x, cy = c.y - at.y;
            const int64_t turn = nx * cy - ny * cx;
            if (turn < 0 || (turn == 0 && cx * cx + cy * cy > nx * nx + ny * ny)) next = c;
        }
        at = next;
    } while (at != start);
    return hull;
}

template <class P>
bool hull(Choices& c) {
    const int32_t kind = c.below(4), count = 4 + c.below(c.below(50) == 0 ? 3000 : 12);
    const int32_t extent = 1 + c.below(c.below(2) == 0 ? 4 : 1000);
    const auto draw = [&] { return kind == 0 ? c.nasty() : kind == 1 ? c.plain(0, 1) : c.below(extent); };
    std::vector<P> points(static_cast<size_t>(count)), hull, again;
    for (P& p : points) {
        p.x = static_cast<decltype(P::x)>(draw());
        p.y = static_cast<decltype(P::y)>(kind == 3 ? p.x * 3 + 0.1 : draw());  // 3: nearly on a line
    }
    hull = points;
    Zan_ComputeConvexHull(points.cbegin(), points.cend(), hull);
    Zan_ComputeConvexHull(std::as_const(points).data(), std::as_const(points).data() + count, again);
    const std::vector<P> plain = plainHull(points);
    const auto same = [](const P& a, const P& b) { return sameBits(a.x, b.x) && sameBits(a.y, b.y); };
    must(std::equal(hull.begin(), hull.end(), plain.begin(), plain.end(), same));
    must(std::equal(again.begin(), again.end(), plain.begin(), plain.end(), same));
    if constexpr (std::is_same_v<P, Zan_Vector2T<double>>) {
        must(kind % 3 == 0 || Zan_IsConvex(plain.cbegin(), plain.cend()));
    }
    return plain.size() > 3;
}

const Property kProperty("poly_hull", 12000, [](Choices& c) {
    bool (*const types[])(Choices&) = {hull<Zan_Vector2T<double>>, hull<Zan_Vector3T<double>>,
                                       hull<Zan_Vector4T<double>>, hull<kelvora::geom::PointT<float>>};
    return c.among(types)(c);
});

}  // namespace

// Does a closed polygon turn the same way at every vertex?
#include <cmath>

#include "zan/poly.h"

namespace {

struct Delta {
    double x, y;
};

// 1 or -1 for a turn to the left or right from one edge to the next, 0 when it does not exceed its rounding error.
int turn(const Delta& d1, const Delta& d2) {
    constexpr double e = 0x1p-52;
    const double x1 = std::fabs(d1.x), y1 = std::fabs(d1.y), x2 = std::fabs(d2.x), y2 = std::fabs(d2.y);
    const double cross = d1.x * d2.y - d2.x * d1.y;
    const double error =
        (y1 * (x2 * e) + x2 * (y1 * e) + (x2 * e) * (y1 * e)) + (y2 * (x1 * e) + x1 * (y2 * e) + (y2 * e) * (x1 * e));
    if (!(std::fabs(cross) > error)) return 0;
    return cross > 0 ? 1 : -1;
}

}  // namespace

template <class Iterator>
bool Zan_IsConvex(Iterator first, Iterator last) {
    const auto count = last - first;
    if (count <= 2) return true;
    const auto between = [](const auto& a, const auto& b) { return Delta{b.x - a.x, b.y - a.y}; };
    int orientation = 0;
    Iterator at = last - 1;
    Delta before = between(*(last - 2), *at);
    for (Iterator next = first; next != last; at = next++) {
        const Delta after = between(*at, *next);
        const int here = turn(before, after);
        before = after;
        if (here == 0) continue;
        if (orientation != 0 && here != orientation) return false;
        orientation = here;
    }
    return true;
}

template ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector2T<double>>::const_iterator,
                                   std::vector<Zan_Vector2T<double>>::const_iterator);
template ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector3T<double>>::const_iterator,
                                   std::vector<Zan_Vector3T<double>>::const_iterator);
template ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector4T<double>>::const_iterator,
                                   std::vector<Zan_Vector4T<double>>::const_iterator);

// Does a closed polygon turn the same way at every vertex?
#include "frame/processor.h"
#include "poly/turn_rules.h"
#include "zan/poly.h"

namespace {

// The turns around the first vertex come first.
template <class Iterator>
zan::Turns turnsOfFew(Iterator first, Iterator last) {
    const auto between = [](const auto& a, const auto& b) { return zan::Delta{b.x - a.x, b.y - a.y}; };
    zan::Turns seen{};
    Iterator at = last - 1;
    zan::Delta before = between(*(last - 2), *at);
    for (Iterator next = first; next != last; at = next++) {
        const zan::Delta after = between(*at, *next);
        zan::look(before, after, seen);
        before = after;
    }
    return seen;
}

template <class Iterator>
zan::Turns turnsOfMany(Iterator first, Iterator last) {
    constexpr int64_t kStride = sizeof(*first) / sizeof(double);
    const Zan_Vector2T<double> joint[] = {
        {last[-2].x, last[-2].y}, {last[-1].x, last[-1].y}, {first[0].x, first[0].y}, {first[1].x, first[1].y}};
    zan::Turns seen{};
    zan::lookAtTurns(zan::kPlainTurnKernel, &joint->x, 2, 2, seen);
    const zan::TurnKernel& kernel = *zan::kTurnKernels[static_cast<int>(zan::instructions())];
    zan::lookAtTurns(kernel, &first->x, kStride, last - first - 2, seen);
    return seen;
}

}  // namespace

template <class Iterator>
bool Zan_IsConvex(Iterator first, Iterator last) {
    constexpr int kWorthwhile = 12;
    if (last - first <= 2) return true;
    const zan::Turns seen = last - first < kWorthwhile ? turnsOfFew(first, last) : turnsOfMany(first, last);
    return !(seen.left && seen.right);
}

template ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector2T<double>>::const_iterator,
                                   std::vector<Zan_Vector2T<double>>::const_iterator);
template ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector3T<double>>::const_iterator,
                                   std::vector<Zan_Vector3T<double>>::const_iterator);
template ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector4T<double>>::const_iterator,
                                   std::vector<Zan_Vector4T<double>>::const_iterator);

// Whether a closed polygon turns the same way at every vertex.
#include "frame/processor.h"
#include "poly/turn_rules.h"
#include "zan/poly.h"

namespace {

// With fewer vertices the kernel's call and set-up cost more than its lanes save.
constexpr int kMinVerticesForLanes = 12;

// Starts with the turns at the last and at the first vertex.
template <class Iterator>
zan::Turns turnsInline(Iterator first, Iterator last) {
    const auto edge = [](const auto& from, const auto& to) { return zan::Vector2(to.x - from.x, to.y - from.y); };
    zan::Turns found{};
    Iterator vertex = last - 1;
    zan::Vector2 before = edge(*(last - 2), *vertex);
    for (Iterator next = first; next != last; vertex = next++) {
        const zan::Vector2 after = edge(*vertex, *next);
        zan::addTurn(before, after, found);
        before = after;
    }
    return found;
}

template <class Iterator>
zan::Turns turnsByKernel(Iterator first, Iterator last) {
    constexpr int64_t kStride = sizeof(*first) / sizeof(double);
    // The last two vertices and the first two, for the two turns where the polygon closes.
    const zan::Vector2 closing[] = {
        {last[-2].x, last[-2].y}, {last[-1].x, last[-1].y}, {first[0].x, first[0].y}, {first[1].x, first[1].y}};
    zan::Turns found{};
    zan::findTurns(zan::kPlainTurnKernel, &closing->x, 2, 2, found);
    const zan::TurnKernel& kernel = *zan::kTurnKernels[static_cast<int>(zan::activeInstructionSet())];
    zan::findTurns(kernel, &first->x, kStride, last - first - 2, found);
    return found;
}

template <class Iterator>
bool isConvex(Iterator first, Iterator last) {
    if (last - first <= 2) return true;
    const bool few = last - first < kMinVerticesForLanes;
    const zan::Turns found = few ? turnsInline(first, last) : turnsByKernel(first, last);
    return !(found.left && found.right);
}

}  // namespace

template <>
bool Zan_IsConvex(std::vector<zan::Vector2>::const_iterator first, std::vector<zan::Vector2>::const_iterator last) {
    return isConvex(first, last);
}
template <>
bool Zan_IsConvex(std::vector<zan::Vector3>::const_iterator first, std::vector<zan::Vector3>::const_iterator last) {
    return isConvex(first, last);
}
template <>
bool Zan_IsConvex(std::vector<zan::Vector4>::const_iterator first, std::vector<zan::Vector4>::const_iterator last) {
    return isConvex(first, last);
}

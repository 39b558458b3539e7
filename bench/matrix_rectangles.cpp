// Rectangles through a matrix, beside glm.
#include "matrix_inputs.h"

namespace zan_bench {
namespace {

/// The bounding box of a transformed rectangle.
Zan_FloatRect boxByGlm(const glm::dmat3& m, double left, double top, double right, double bottom) {
    const glm::dvec3 p[4] = {m * glm::dvec3(left, top, 1), m * glm::dvec3(right, top, 1),
                             m * glm::dvec3(right, bottom, 1), m * glm::dvec3(left, bottom, 1)};
    const glm::dvec3 low = glm::min(glm::min(p[0], p[1]), glm::min(p[2], p[3]));
    const glm::dvec3 high = glm::max(glm::max(p[0], p[1]), glm::max(p[2], p[3]));
    return {low.x, low.y, high.x, high.y};
}

}  // namespace

void addMatrixRectangles() {
    static const Matrices3 all(48);
    static const auto rects = inputs(kInputs, 49, [](Random& random) {
        const int32_t left = random.integer(-1000, 1000), top = random.integer(-1000, 1000);
        return Zan_LRect{left, top, left + random.integer(1, 1000), top + random.integer(1, 1000)};
    });
    const Zan_Matrix3* m = all.zan.data();
    const glm::dmat3* g = all.glm.data();
    const Zan_LRect* r = rects.data();

    Entry("box of a rectangle, double", kInputs,
          [=](size_t i) {
              Zan_FloatRect box = {static_cast<double>(r[i].left), static_cast<double>(r[i].top),
                                   static_cast<double>(r[i].right), static_cast<double>(r[i].bottom)};
              Zan_TransformFloatRect(&m[i], &box, nullptr, nullptr);
              return box;
          })
        .peer(
            "glm", [=](size_t i) { return boxByGlm(g[i], r[i].left, r[i].top, r[i].right, r[i].bottom); }, Near());
    Entry("box of a rectangle, 32-bit", kInputs, [=](size_t i) { return Zan_TransformBounds(m[i], r[i]); })
        .peer(
            "glm, std::floor, std::ceil",
            [=](size_t i) {
                const Zan_FloatRect box = boxByGlm(g[i], r[i].left, r[i].top, r[i].right, r[i].bottom);
                return Zan_LRect{static_cast<int32_t>(std::floor(box.left)), static_cast<int32_t>(std::floor(box.top)),
                                 static_cast<int32_t>(std::ceil(box.right)),
                                 static_cast<int32_t>(std::ceil(box.bottom))};
            },
            [](const Zan_LRect& zan, const Zan_LRect& peer) {
                return zan.left == peer.left && zan.top == peer.top && zan.right == peer.right &&
                       zan.bottom == peer.bottom;
            });
}

}  // namespace zan_bench

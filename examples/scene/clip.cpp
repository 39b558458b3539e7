// Parts of outlines inside a rectangle of the window.
#include "clip.h"

#include <algorithm>

namespace scene {

Outline clipToRect(const Outline& outline, const Zan_FloatRect& rect) {
    // To zan a point on the clip line is outside, so that an outline that fills the rectangle would leave nothing. A
    // hair's breadth more than the clip's tolerance, 1e-6 as a product with the side's length, keeps it in.
    const double hair = 1e-5 / std::min(rect.right - rect.left, rect.bottom - rect.top);
    const std::vector<Zan_Vector4T<double>> frame{{rect.left - hair, rect.top - hair, 0, 1},
                                                  {rect.right + hair, rect.top - hair, 0, 1},
                                                  {rect.right + hair, rect.bottom + hair, 0, 1},
                                                  {rect.left - hair, rect.bottom + hair, 0, 1}};
    std::vector<Zan_Vector4T<double>> polygon;
    for (const Zan_Vector2T<double>& p : outline) polygon.emplace_back(p.x, p.y, 0.0, 1.0);
    Zan_PolyPolyClip2D(&frame, &polygon, &polygon);
    Outline part;
    for (const Zan_Vector4T<double>& p : polygon) {
        part.emplace_back(std::clamp(p.x, rect.left, rect.right), std::clamp(p.y, rect.top, rect.bottom));
    }
    return part;
}

}  // namespace scene

// Clipping of outlines to a rectangle.
#include "clip.h"

#include <algorithm>

namespace scene {

Outline clipToRect(const Outline& outline, const Zan_FloatRect& rect) {
    // The library takes a point on a clip line as outside, and would clip away an outline that fills the rectangle. Its
    // tolerance is 1e-6 for the cross product, so for the distance 1e-6 / side length: enlarge the rectangle by more.
    const double margin = 1e-5 / std::min(rect.right - rect.left, rect.bottom - rect.top);
    const std::vector<Zan_Vector4T<double>> frame{{rect.left - margin, rect.top - margin, 0, 1},
                                                  {rect.right + margin, rect.top - margin, 0, 1},
                                                  {rect.right + margin, rect.bottom + margin, 0, 1},
                                                  {rect.left - margin, rect.bottom + margin, 0, 1}};
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

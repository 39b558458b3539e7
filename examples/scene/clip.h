// Clipping of outlines to a rectangle.
#ifndef ZAN_SCENE_CLIP_H
#define ZAN_SCENE_CLIP_H

#include <zan/zan.h>

#include <vector>

namespace scene {

using Outline = std::vector<Zan_Vector2T<double>>;

/// The part of an outline inside a rectangle; empty when there is none.
Outline clipToRect(const Outline& outline, const Zan_FloatRect& rect);

}  // namespace scene

#endif  // ZAN_SCENE_CLIP_H

// Parts of outlines inside a rectangle of the window.
#ifndef ZAN_SCENE_CLIP_H
#define ZAN_SCENE_CLIP_H

#include <zan/zan.h>

#include <vector>

namespace scene {

using Outline = std::vector<Zan_Vector2T<double>>;

/// What of an outline lies in a rectangle; empty for nothing.
Outline clipToRect(const Outline& outline, const Zan_FloatRect& rect);

}  // namespace scene

#endif  // ZAN_SCENE_CLIP_H

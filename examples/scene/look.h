// What one camera sees: every layer's outline in the window, and which layers lie under a point of it.
#ifndef ZAN_SCENE_LOOK_H
#define ZAN_SCENE_LOOK_H

#include "clip.h"
#include "deck.h"

#include <zan/zan.h>

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace scene {

/// A layer counts as edge-on when the line of sight to its middle and its plane enclose an angle whose sine is below
/// this: seen from a thousand units away, a layer of a deck's usual size is then thinner than a pixel.
inline constexpr double kEdgeOnTolerance = 1e-3;

/// Depths that differ by less than this part of themselves are one plane; of its layers the deck's last lies in front.
inline constexpr double kSameDepth = 1e-9;

/// Of an outline that is thinner than this, in pixels, on an average, no share can be told.
inline constexpr double kThinnest = 1e-6;

struct HitPoint {
    double x, y, tolerance;
};

/// A layer as it appears in the window.
struct Appearance {
    Outline outline;                      ///< 3 to 5 points, none when it is wholly behind the near plane
    std::vector<bool> cut;                ///< by edge of the outline: the near plane cuts it off, or makes it
    std::optional<Zan_FloatRect> bounds;  ///< of the outline
    std::array<bool, 4> behind;           ///< by corner: behind the near plane
    bool edgeOn;
    double depth;                  ///< eye z of the layer's middle
    Outline inWindow;              ///< the part of the outline that the window shows
    std::optional<double> share;   ///< of the outline's area that the window shows; nothing for one without breadth
    Zan_Matrix4Decomp asStepSees;  ///< the layer's place in the camera step's own coordinates, angles in radians
};

struct HitAnswer {
    HitPoint point;
    std::vector<size_t> layers;  ///< front to back
    struct Nearest {
        size_t layer;
        double distance;
    };
    std::optional<Nearest> nearest;  ///< nothing when no layer has an outline
};

struct CameraAnswer {
    size_t camera;
    std::vector<Appearance> layers;  ///< one for each of the deck, in its order
    Outline hull;                    ///< convex, around everything that the window shows
    std::vector<HitAnswer> hits;     ///< one for each point asked for
};

/// @param layerSize  of every layer, before its scale
/// @throws Stop for numbers that leave the range of a double; a code of the library as `long`
CameraAnswer lookAt(const Deck& deck, size_t camera, Size window, Size layerSize, const std::vector<HitPoint>& points);

}  // namespace scene

#endif  // ZAN_SCENE_LOOK_H

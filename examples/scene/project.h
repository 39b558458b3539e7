// What one camera sees: every layer's outline in the window, and the layers under points of the window.
#ifndef ZAN_SCENE_PROJECT_H
#define ZAN_SCENE_PROJECT_H

#include "clip.h"
#include "deck.h"

#include <zan/zan.h>

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace scene {

/// A layer is edge-on when the sine of the angle between its plane and the line of sight to its centre is below this.
/// At a distance of a thousand units a layer of the usual size is then thinner than a pixel.
inline constexpr double kEdgeOnTolerance = 1e-3;

/// Layers whose depths differ by less than this fraction are in one plane; the last of them in the deck is in front.
inline constexpr double kSameDepth = 1e-9;

/// An outline whose area divided by the longer side of its bounds is smaller, in pixels, has no share on screen.
inline constexpr double kMinMeanWidth = 1e-6;

struct HitPoint {
    double x, y, tolerance;
};

/// A layer as it appears in the window.
struct Appearance {
    Outline outline;                      ///< 3 to 5 points; none when the layer is wholly behind the near plane
    std::vector<bool> cut;                ///< per edge of the outline: the near plane shortens or creates it
    std::optional<Zan_FloatRect> bounds;  ///< of the outline
    std::array<bool, 4> behind;           ///< per corner: behind the near plane
    bool edgeOn;
    double depth;                 ///< eye z of the layer's centre
    Outline inWindow;             ///< the part of the outline that lies in the window
    std::optional<double> share;  ///< area of inWindow divided by area of outline; none for an outline without area
    Zan_Matrix4Decomp
        inCameraStep;  ///< the layer's placement in the coordinates of the camera's step, angles in radians
};

struct HitAnswer {
    HitPoint point;
    std::vector<size_t> layers;  ///< front to back
    struct Nearest {
        size_t layer;
        double distance;
    };
    std::optional<Nearest> nearest;  ///< none when no layer has an outline
};

struct CameraAnswer {
    size_t camera;
    std::vector<Appearance> layers;  ///< one for each of the deck, in its order
    Outline hull;                    ///< the convex hull of everything that the window shows
    std::vector<HitAnswer> hits;     ///< one for each point asked for
};

/// Receives how much of a piece of work is done, from 0 to 1.
using Ticker = std::function<void(double)>;

/// @param layerSize  of every layer, before its scale
/// @throws Stop when the camera's scale is too large for the window; a code of the library as `long`
CameraAnswer projectDeck(const Deck& deck, size_t camera, Size window, Size layerSize,
                         const std::vector<HitPoint>& points, const Ticker& tick = {});

}  // namespace scene

#endif  // ZAN_SCENE_PROJECT_H

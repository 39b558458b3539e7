// Matrices of layers and cameras.
#include "mapping.h"

#include "numbers.h"

#include <algorithm>
#include <string>

namespace scene {
namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;

void rotateAbout(char axis, double degrees, Zan_Matrix4& m) {
    m.RotateAxis(axis == 'x' ? 1 : 0, axis == 'y' ? 1 : 0, axis == 'z' ? 1 : 0, degrees * kRadiansPerDegree);
}

double angleAbout(char axis, const Layer& layer) {
    return axis == 'x' ? layer.rotateX : axis == 'y' ? layer.rotateY : layer.rotateZ;
}

}  // namespace

Zan_Matrix4 layerPlacement(const Layer& layer) {
    Zan_Matrix4 m(true);
    m.Scale(layer.scale, layer.scale, layer.scale);
    if (layer.order == "xyz") {
        m.RotateXYZ(layer.rotateX * kRadiansPerDegree, layer.rotateY * kRadiansPerDegree,
                    layer.rotateZ * kRadiansPerDegree);
    } else {
        // The last axis comes first, as in RotateXYZ, which rotates about the fixed axes z, then y, then x.
        for (auto axis = layer.order.rbegin(); axis != layer.order.rend(); ++axis) {
            rotateAbout(*axis, angleAbout(*axis, layer), m);
        }
    }
    m.Translate(layer.x, layer.y, layer.z);
    return m;
}

double windowScale(const Deck& deck, Size window) {
    double scale = std::min(window.width / deck.size.width, window.height / deck.size.height);
    if (deck.maxScale != 0) scale = std::min(scale, deck.maxScale);
    if (deck.minScale != 0) scale = std::max(scale, deck.minScale);
    return scale;
}

View cameraView(const Deck& deck, const Layer& camera, Size window) {
    View view{Zan_Matrix4(true), Zan_Matrix4(true), Zan_Matrix4(true), 0, 0, window.width / 2, window.height / 2};
    view.zoom = windowScale(deck, window) / camera.scale;
    if (!(view.zoom >= kSmallestScale)) {
        throw Stop(kBadInput, "camera \"" + oneLine(camera.id) + "\": its scale is too large for the window");
    }
    view.distance = deck.perspective / view.zoom;

    view.spaceToStep.Translate(-camera.x, -camera.y, -camera.z);
    for (const char axis : camera.order) rotateAbout(axis, -angleAbout(axis, camera), view.spaceToStep);
    view.spaceToEye = view.spaceToStep;
    view.spaceToEye.Scale(1, 1, -1);
    view.spaceToEye.Translate(0, 0, view.distance);

    view.eyeToScreen.Project(view.distance);
    view.eyeToScreen.Scale(view.zoom, view.zoom, 1);
    view.eyeToScreen.Translate(view.centreX, view.centreY, 0);
    return view;
}

Zan_Ray rayThrough(const View& view, double x, double y) {
    const double unit = view.zoom * view.distance;
    Zan_Ray ray{};
    ray.direction = {(x - view.centreX) / unit, (y - view.centreY) / unit, 1.0};
    return ray;
}

}  // namespace scene

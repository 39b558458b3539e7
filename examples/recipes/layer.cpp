// A layer on the screen: its outline and a hit test, for three frames.
//! [start]
#include <zan/zan.h>

#include <cstdio>
//! [start]

namespace {

//! [projection]
// Eye space to a window of 1280 by 800 pixels: focal length 1000 pixels, line of sight through the window's centre.
Zan_Matrix4 windowProjection() {
    Zan_Matrix4 toScreen(true);
    toScreen.Project(1000.0);
    toScreen.Translate(640.0, 400.0, 0.0);
    return toScreen;
}
//! [projection]

//! [layer to eye]
// A layer rotated about its vertical axis, then moved away from the eye.
Zan_Matrix4 layerToEye(double degrees, double distance) {
    constexpr double kRadiansPerDegree = 0.017453292519943295;
    Zan_Matrix4 toEye(true);
    toEye.RotateXYZ(0.0, degrees * kRadiansPerDegree, 0.0);
    toEye.Translate(0.0, 0.0, distance);
    return toEye;
}
//! [layer to eye]

//! [pose]
// Places a layer of 200 by 100 for one frame. Each step overwrites the four corners, so every frame starts from
// SetLayerPoint.
void pose(Zan_TransformPoly3D& layer, const Zan_Matrix4& toEye, const Zan_Matrix4& toScreen) {
    layer.SetLayerPoint(0, {-100.0, -50.0});  // layer coordinates, y down
    layer.SetLayerPoint(1, {100.0, -50.0});
    layer.SetLayerPoint(2, {100.0, 50.0});
    layer.SetLayerPoint(3, {-100.0, 50.0});
    layer.TransformPointsToEye(toEye);        // corners in eye space
    layer.TransformPointsToScreen(toScreen);  // clipped at the near plane, then in pixels
    layer.InitPolyPoints();                   // builds the outline, 3 to 5 points, or 0 when all is behind the eye
}
//! [pose]

//! [show]
void show(const Zan_TransformPoly3D& layer) {
    std::printf("  outline of %d points:", layer.NumPolyPoints());
    for (int32_t i = 0; i < layer.NumPolyPoints(); ++i) {
        Zan_Vector2T<double> p;
        layer.GetPolyPoint(i, &p);
        std::printf(" (%.1f, %.1f)", p.x, p.y);
    }
    const Zan_Vector2T<double> mouse(700.0, 420.0);
    std::printf("\n  the mouse at (700, 420) is %s\n", layer.IsPointInside(&mouse, 0.0) ? "on it" : "beside it");
}
//! [show]

}  // namespace

//! [main]
int main() {
    // A mismatch is reported under the number 0x1000, one of the program's own.
    if (Zan_CheckVersions(0x1000, Zan_kInterfaceVersion) != 0) return 1;
    const Zan_Matrix4 toScreen = windowProjection();
    Zan_TransformPoly3D layer;

    std::puts("facing the eye");
    pose(layer, layerToEye(0.0, 500.0), toScreen);
    show(layer);

    std::puts("rotated by 60 degrees");
    pose(layer, layerToEye(60.0, 500.0), toScreen);
    show(layer);

    std::puts("rotated by 80 degrees and so close that one side is behind the eye");
    pose(layer, layerToEye(80.0, 60.0), toScreen);
    show(layer);
}
//! [main]

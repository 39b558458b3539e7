// A camera: eye, target and the direction of down become a view matrix, and a scene is projected to a window.
#include <zan/zan.h>

#include <cmath>
#include <cstdio>

namespace {

using Vector = Zan_Vector3T<double>;

//! [view]
// World to eye. Zan_LookAtMatrix gives the rotation from eye to world, without a translation; the inverse of a rotation
// is its transpose. `down` is the direction that points down on the screen.
Zan_Matrix4 viewMatrix(const Vector& eye, const Vector& target, const Vector& down) {
    Zan_Matrix4 worldToEye = Zan_LookAtMatrix(eye, target, down);
    worldToEye.Transpose();
    Zan_Matrix4 view(true);
    view.Translate(-eye.x, -eye.y, -eye.z);
    view *= worldToEye;
    return view;
}
//! [view]

//! [projection]
// Eye to a window in pixels, for a vertical field of view.
Zan_Matrix4 projection(double width, double height, double fieldOfViewDegrees) {
    constexpr double kRadiansPerDegree = 0.017453292519943295;
    const double focalLength = height / 2 / std::tan(fieldOfViewDegrees / 2 * kRadiansPerDegree);
    Zan_Matrix4 toScreen(true);
    toScreen.Project(focalLength);
    toScreen.Translate(width / 2, height / 2, 0.0);
    return toScreen;
}
//! [projection]

//! [points]
// Zan_TransformPoint3DtoScreen tests the near plane first, so that points behind the eye are not mirrored into the
// picture. Its third matrix maps projected points to pixels; the projection above already gives pixels.
void show(const char* name, Vector point, const Zan_Matrix4& view, const Zan_Matrix4& toScreen) {
    const Zan_Matrix3 identity(true);
    if (Zan_TransformPoint3DtoScreen(view, toScreen, identity, &point)) {
        std::printf("  %-12s (%.1f, %.1f)\n", name, point.x, point.y);
    } else {
        std::printf("  %-12s behind the eye\n", name);
    }
}
//! [points]

void showScene(const Zan_Matrix4& view) {
    const Zan_Matrix4 toScreen = projection(1280.0, 800.0, 50.0);
    show("tower foot", {0.0, 0.0, 0.0}, view, toScreen);
    show("tower top", {0.0, 30.0, 0.0}, view, toScreen);
    show("tree east", {20.0, 0.0, 0.0}, view, toScreen);
    show("car behind", {0.0, 0.0, 200.0}, view, toScreen);
}

}  // namespace

int main() {
    //! [up]
    // A world in metres: x east, y up, z south. The camera stands to the south and looks at the tower.
    const Vector eye(0.0, 10.0, 100.0);
    const Vector target(0.0, 10.0, 0.0);
    std::puts("(0, -1, 0): upright");
    showScene(viewMatrix(eye, target, {0.0, -1.0, 0.0}));
    std::puts("(0, 1, 0): on its head");
    showScene(viewMatrix(eye, target, {0.0, 1.0, 0.0}));
    //! [up]
}

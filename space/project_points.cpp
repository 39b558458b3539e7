// Single points from a layer to the screen, and the images of a plane's axes. The matrices report and throw when w is
// near zero; nothing else here fails.
#include "matrix/point_rules.h"
#include "zan/space.h"

using zan::Vector2;
using zan::Vector3;

bool Zan_TransformPoint2DtoScreen(const Zan_Matrix3& m1, const Zan_Matrix3& m2, Vector2* point) {
    Zan_Matrix3 layerToScreen = m1;
    layerToScreen *= m2;
    layerToScreen.TransformPoint(point);
    return true;
}

bool Zan_TransformPoint3DtoScreen(const Zan_Matrix4& toEye, const Zan_Matrix4& projection, const Zan_Matrix3& screen,
                                  Vector3* point) {
    Vector3 p = *point;
    toEye.TransformPointAndDivide(&p);
    if (p.z < Zan_kNearPlaneZ) return false;
    Zan_Matrix4 eyeToScreen = projection;
    eyeToScreen *= screen;
    eyeToScreen.TransformPointAndDivide(&p);
    *point = p;
    return true;
}

bool Zan_TransformPoint3DtoScreen(const Zan_Matrix4& toEye, const Zan_Matrix4& projection, const Zan_Matrix3& screen,
                                  Vector2* point) {
    Vector3 p(point->x, point->y, 0);
    const bool inFront = Zan_TransformPoint3DtoScreen(toEye, projection, screen, &p);
    *point = zan::dropLast(p);
    return inFront;
}

std::pair<Vector2, Vector2> Zan_ComputeDirectionalComponents(const Zan_Matrix3& m) {
    Vector2 images[] = {{1, 0}, {0, 1}, {0, 0}};
    m.TransformPoints(3, images);
    const Vector2 origin = images[2];
    const auto fromOrigin = [origin](const Vector2& p) { return Vector2(p.x - origin.x, p.y - origin.y); };
    return {fromOrigin(images[0]), fromOrigin(images[1])};
}

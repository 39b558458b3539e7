// Single points from a layer to the screen, and where a matrix of the plane sends the axes. Only a division by next to
// nothing fails: the matrices report it and throw its code.
#include "frame/report.h"
#include "matrix/point_rules.h"
#include "zan/space.h"

using zan::Vector2;
using zan::Vector3;

bool Zan_TransformPoint2DtoScreen(const Zan_Matrix3& m1, const Zan_Matrix3& m2, Vector2* point) {
    Zan_Matrix3 both = m1;
    both *= m2;
    both.TransformPoint(point);
    return true;
}

bool Zan_TransformPoint3DtoScreen(const Zan_Matrix4& toEye, const Zan_Matrix4& projection, const Zan_Matrix3& screen,
                                  Vector3* point) {
    Vector3 p = *point;
    toEye.TransformPointAndDivide(&p);
    if (p.z < Zan_kNearPlaneZ) return false;
    Zan_Matrix4 toScreen = projection;
    toScreen *= screen;
    toScreen.TransformPointAndDivide(&p);
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
    const auto fromOrigin = [&](const Vector2& p) { return Vector2(p.x - images[2].x, p.y - images[2].y); };
    return {fromOrigin(images[0]), fromOrigin(images[1])};
}

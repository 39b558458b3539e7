// Single points from a layer to the screen, and the images of a plane's axes. The matrices report and throw when w is
// near zero; nothing else here fails.
#include "matrix/elements.h"
#include "matrix/point_rules.h"
#include "zan/space.h"

using zan::Vector2;
using zan::Vector3;
using zan::Vector4;

bool Zan_TransformPoint2DtoScreen(const Zan_Matrix3& m1, const Zan_Matrix3& m2, Vector2* point) {
    Zan_Matrix3 layerToScreen;
    zan::assign(layerToScreen, zan::product(zan::elements(m1), zan::elements(m2)));
    *point = zan::affine(layerToScreen, *point);
    return true;
}

namespace {

// As Zan_Matrix4::TransformPointAndDivide.
inline Vector3 transformedAndDivided(const Zan_Matrix4& m, Vector3 p) {
    const Vector4 q = zan::product(m, Vector4(p));
    if (zan::nearZero(q.w)) m.TransformPointAndDivide(&p);  // reports and throws
    return zan::dropLast(zan::divided(q));
}

}  // namespace

bool Zan_TransformPoint3DtoScreen(const Zan_Matrix4& toEye, const Zan_Matrix4& projection, const Zan_Matrix3& screen,
                                  Vector3* point) {
    const Vector3 p = transformedAndDivided(toEye, *point);
    if (p.z < Zan_kNearPlaneZ) return false;
    Zan_Matrix4 eyeToScreen;
    zan::assign(eyeToScreen, zan::product(zan::elements(projection), zan::widened(screen, 1.0)));
    *point = transformedAndDivided(eyeToScreen, p);
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

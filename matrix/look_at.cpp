// The rotation from the z axis to a direction of view.
#include "matrix/elements.h"
#include "matrix/vectors.h"

#include <numbers>

namespace {

using zan::Vector3;

constexpr double kHalfPi = std::numbers::pi / 2;

// v / length; v itself when the length is 0.
Vector3 normalized(const Vector3& v, double length) {
    if (length == 0.0) return v;
    const double k = 1.0 / length;
    return {v.x * k, v.y * k, v.z * k};
}

}  // namespace

Zan_Matrix4 Zan_LookAtMatrix(const Vector3& eye, const Vector3& target, const Vector3& up) {
    const Vector3 view(target.x - eye.x, target.y - eye.y, target.z - eye.z);
    const double distance = zan::length(view);
    const Vector3 f = normalized(view, distance);
    const Vector3 side = zan::cross(up, f);
    const Vector3 upright = zan::cross(f, side);
    const double sideLength = zan::length(side);
    const double uprightLength = zan::length(upright);
    if (sideLength + uprightLength == 0.0) {
        Zan_Matrix4 rotation(/*identity=*/true);
        if (distance != 0.0) rotation.RotateAxis(1.0, 0.0, 0.0, f.y < 0.0 ? kHalfPi : -kHalfPi);
        return rotation;
    }
    const Vector3 s = normalized(side, sideLength);
    const Vector3 u = normalized(upright, uprightLength);
    Zan_Matrix4 rotation;
    zan::assign(rotation, {{{s.x, s.y, s.z, 0}, {u.x, u.y, u.z, 0}, {f.x, f.y, f.z, 0}, {0, 0, 0, 1}}});
    return rotation;
}

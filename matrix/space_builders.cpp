// Builds transforms of space: appends a translation, scale, rotation or projection, m := m * T; sets a change of basis.
// Angles in radians.
#include "frame/report.h"
#include "matrix/elements.h"
#include "matrix/kernels/matrices.h"
#include "matrix/point_rules.h"
#include "scalar/trigonometry.h"

#include <cmath>

namespace {

using zan::Vector3;
using zan::Vector4;

void append(Zan_Matrix4* m, const zan::Elements<4>& elements) {
    Zan_Matrix4 step;
    zan::assign(step, elements);
    zan::multiplyMatrices(m, &step, m);
}

// The same for a step of which most elements are constants. Inline, so that the step stays out of memory: the kernel's
// wide loads would stall on a step just stored element by element, which defeats store-to-load forwarding.
inline void appendMostlyConstant(Zan_Matrix4* m, const zan::Elements<4>& step) {
    zan::assign(*m, zan::product(zan::elements(*m), step));
}

// `length` is that of the axis, and not near zero.
void appendRotation(const Vector3& axis, double length, double radians, Zan_Matrix4* m) {
    const double k = 1.0 / length;
    const double x = axis.x * k;
    const double y = axis.y * k;
    const double z = axis.z * k;
    const auto [s, c] = zan::sineAndCosine(radians);
    const double t = 1.0 - c;
    append(m, {{{t * x * x + c, t * x * y + s * z, t * x * z - s * y, 0},
                {t * x * y - s * z, t * y * y + c, t * y * z + s * x, 0},
                {t * x * z + s * y, t * y * z - s * x, t * z * z + c, 0},
                {0, 0, 0, 1}}});
}

// Rotates about the images of the x, y and z axis in turn. Each axis is transformed by m as the rotations before have
// left it. An image near zero is skipped; the length of any other is at least its largest coordinate, so that no
// rotation can fail.
void rotateAboutOwnAxes(double rx, double ry, double rz, Zan_Matrix4* m) {
    const struct {
        Vector4 axis;
        double radians;
    } steps[] = {{{1.0, 0.0, 0.0, 0.0}, rx}, {{0.0, 1.0, 0.0, 0.0}, ry}, {{0.0, 0.0, 1.0, 0.0}, rz}};
    for (const auto& step : steps) {
        Vector4 image = zan::product(*m, step.axis);
        if (!zan::nearZero(image.w)) image = zan::divided(image);
        if (zan::nearZero(image.x) && zan::nearZero(image.y) && zan::nearZero(image.z)) continue;
        const Vector3 axis = zan::dropLast(image);
        appendRotation(axis, zan::length(axis), step.radians, m);
    }
}

// rotateAboutOwnAxes from the identity, for finite angles. Steps 1 and 2 leave out the terms that are known to be zero.
// That can only change the signs of zeros, and step 3 removes these signs: each of its sums ends with + 0.0.
zan::Elements<4> rotationAboutOwnAxes(double rx, double ry, double rz) {
    const auto [s1, c1] = zan::sineAndCosine(rx);
    const auto [s2, c2] = zan::sineAndCosine(ry);
    const auto [s3, c3] = zan::sineAndCosine(rz);
    // The image of the y axis is (0, c1, s1).
    const double k2 = 1.0 / std::sqrt(c1 * c1 + s1 * s1);
    const double y2 = c1 * k2, z2 = s1 * k2, t2 = 1.0 - c2;
    const Vector3 row1(-(s2 * z2), t2 * y2 * y2 + c2, t2 * y2 * z2);
    const Vector3 row2(s2 * y2, t2 * y2 * z2, t2 * z2 * z2 + c2);
    const double m00 = 1.0 - c1 + c1;
    const Vector3 u0(m00 * c2, m00 * (s2 * z2), -(m00 * (s2 * y2)));
    const Vector3 u1(c1 * row1.x + s1 * row2.x, c1 * row1.y + s1 * row2.y, c1 * row1.z + s1 * row2.z);
    const Vector3 u2(c1 * row2.x - s1 * row1.x, c1 * row2.y - s1 * row1.y, c1 * row2.z - s1 * row1.z);
    // The image of the z axis is the last row.
    const double k3 = 1.0 / zan::length(u2);
    const double x = u2.x * k3, y = u2.y * k3, z = u2.z * k3, t = 1.0 - c3;
    const Vector3 v0(t * x * x + c3, t * x * y + s3 * z, t * x * z - s3 * y);
    const Vector3 v1(t * x * y - s3 * z, t * y * y + c3, t * y * z + s3 * x);
    const Vector3 v2(t * x * z + s3 * y, t * y * z - s3 * x, t * z * z + c3);
    const auto row = [&](const Vector3& u) {
        return Vector3(u.x * v0.x + u.y * v1.x + u.z * v2.x + 0.0, u.x * v0.y + u.y * v1.y + u.z * v2.y + 0.0,
                       u.x * v0.z + u.y * v1.z + u.z * v2.z + 0.0);
    };
    const Vector3 r0 = row(u0), r1 = row(u1), r2 = row(u2);
    return {{{r0.x, r0.y, r0.z, 0}, {r1.x, r1.y, r1.z, 0}, {r2.x, r2.y, r2.z, 0}, {0, 0, 0, 1}}};
}

}  // namespace

int32_t Zan_TranslateMatrix4(double tx, double ty, double tz, Zan_Matrix4* m) {
    appendMostlyConstant(m, {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {tx, ty, tz, 1}}});
    return 0;
}

int32_t Zan_ScaleMatrix4(double sx, double sy, double sz, Zan_Matrix4* m) {
    appendMostlyConstant(m, {{{sx, 0, 0, 0}, {0, sy, 0, 0}, {0, 0, sz, 0}, {0, 0, 0, 1}}});
    return 0;
}

int32_t Zan_RotateMatrix4(double ax, double ay, double az, double radians, Zan_Matrix4* m) {
    const Vector3 axis(ax, ay, az);
    const double length = zan::length(axis);
    if (zan::nearZero(length)) {
        zan::reportText(zan::Site::RotateMatrix4, zan::Message::CannotBuildRotation);
        return Zan_Result_BadAxis;
    }
    appendRotation(axis, length, radians, m);
    return 0;
}

int32_t Zan_RotateMatrix4XYZ(double rx, double ry, double rz, Zan_Matrix4* m) {
    if (std::isfinite(rx) && std::isfinite(ry) && std::isfinite(rz)) {
        append(m, rotationAboutOwnAxes(rx, ry, rz));
    } else {
        Zan_Matrix4 rotation(/*identity=*/true);
        rotateAboutOwnAxes(rx, ry, rz, &rotation);
        append(m, zan::elements(rotation));
    }
    return 0;
}

int32_t Zan_RotateMatrix4XYZPlus(double rx, double ry, double rz, unsigned char startFromIdentity, Zan_Matrix4* m) {
    if (startFromIdentity != 0) return Zan_RotateMatrix4XYZ(rx, ry, rz, m);
    rotateAboutOwnAxes(rx, ry, rz, m);
    return 0;
}

int32_t Zan_SetMatrix4CoB(const Vector4* a, const Vector4* b, const Vector4* c, Zan_Matrix4* out) {
    zan::assign(*out, {{{a->x, b->x, c->x, 0}, {a->y, b->y, c->y, 0}, {a->z, b->z, c->z, 0}, {0, 0, 0, 1}}});
    return 0;
}

void Zan_Matrix4::Translate(double tx, double ty, double tz) { Zan_TranslateMatrix4(tx, ty, tz, this); }
void Zan_Matrix4::Scale(double sx, double sy, double sz) { Zan_ScaleMatrix4(sx, sy, sz, this); }
void Zan_Matrix4::RotateAxis(double ax, double ay, double az, double radians) {
    zan::throwIfFailed(Zan_RotateMatrix4(ax, ay, az, radians, this));
}
void Zan_Matrix4::RotateXYZ(double rx, double ry, double rz) { Zan_RotateMatrix4XYZ(rx, ry, rz, this); }
void Zan_Matrix4::SetCOB(const Vector4& a, const Vector4& b, const Vector4& c) { Zan_SetMatrix4CoB(&a, &b, &c, this); }
void Zan_Matrix4::Project(double d) { append(this, {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 1.0 / d}, {0, 0, -1, 0}}}); }

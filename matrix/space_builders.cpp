// Appends a translation, scale, rotation or projection to a transform of space: m := m * T; sets a change of basis.
// Angles in radians.
#include "frame/report.h"
#include "matrix/elements.h"
#include "matrix/kernels/matrices.h"
#include "matrix/point_rules.h"
#include "scalar/trigonometry.h"

#include <cmath>

namespace {

int32_t append(Zan_Matrix4* m, const zan::Elements<4>& elements) {
    Zan_Matrix4 step;
    zan::assign(step, elements);
    zan::multiplyMatrices(m, &step, m);
    return 0;
}

// The same for a step of constants but for a few, inline: they fold, and nothing waits for a step that has just been
// stored one element at a time.
inline int32_t appendMostlyConstant(Zan_Matrix4* m, const zan::Elements<4>& step) {
    zan::assign(*m, zan::product(zan::elements(*m), step));
    return 0;
}

// Turns about the x axis, then about the y and the z axis as the turns before have left them. An axis that the matrix
// takes to nothing is passed over.
int32_t turnAboutOwnAxes(double rx, double ry, double rz, Zan_Matrix4* m) {
    const struct {
        zan::Vector4 axis;
        double radians;
    } steps[] = {{{1.0, 0.0, 0.0, 0.0}, rx}, {{0.0, 1.0, 0.0, 0.0}, ry}, {{0.0, 0.0, 1.0, 0.0}, rz}};
    for (const auto& step : steps) {
        zan::Vector4 axis = step.axis;
        int32_t code = Zan_TransformVector4(m, 1, &axis);
        if (code != 0) return code;
        if (zan::nearZero(axis.x) && zan::nearZero(axis.y) && zan::nearZero(axis.z)) continue;
        code = Zan_RotateMatrix4(axis.x, axis.y, axis.z, step.radians, m);
        if (code != 0) return code;
    }
    return 0;
}

}  // namespace

int32_t Zan_TranslateMatrix4(double tx, double ty, double tz, Zan_Matrix4* m) {
    return appendMostlyConstant(m, {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {tx, ty, tz, 1}}});
}

int32_t Zan_ScaleMatrix4(double sx, double sy, double sz, Zan_Matrix4* m) {
    return appendMostlyConstant(m, {{{sx, 0, 0, 0}, {0, sy, 0, 0}, {0, 0, sz, 0}, {0, 0, 0, 1}}});
}

int32_t Zan_RotateMatrix4(double ax, double ay, double az, double radians, Zan_Matrix4* m) {
    const double length = std::sqrt(ax * ax + ay * ay + az * az);
    if (zan::nearZero(length)) {
        zan::reportText(zan::Site::RotateMatrix4, zan::Message::CannotBuildRotation);
        return Zan_Result_BadAxis;
    }
    const double k = 1.0 / length;
    const double x = ax * k;
    const double y = ay * k;
    const double z = az * k;
    const auto [s, c] = zan::sineAndCosine(radians);
    const double t = 1.0 - c;
    return append(m, {{{t * x * x + c, t * x * y + s * z, t * x * z - s * y, 0},
                       {t * x * y - s * z, t * y * y + c, t * y * z + s * x, 0},
                       {t * x * z + s * y, t * y * z - s * x, t * z * z + c, 0},
                       {0, 0, 0, 1}}});
}

int32_t Zan_RotateMatrix4XYZ(double rx, double ry, double rz, Zan_Matrix4* m) {
    return Zan_RotateMatrix4XYZPlus(rx, ry, rz, 1, m);
}

int32_t Zan_RotateMatrix4XYZPlus(double rx, double ry, double rz, unsigned char startFromIdentity, Zan_Matrix4* m) {
    if (startFromIdentity == 0) return turnAboutOwnAxes(rx, ry, rz, m);
    Zan_Matrix4 turn(true);
    const int32_t code = turnAboutOwnAxes(rx, ry, rz, &turn);
    return code != 0 ? code : Zan_ConcatMatrix4(m, &turn, m);
}

int32_t Zan_SetMatrix4CoB(const zan::Vector4* a, const zan::Vector4* b, const zan::Vector4* c, Zan_Matrix4* out) {
    zan::assign(*out, {{{a->x, b->x, c->x, 0}, {a->y, b->y, c->y, 0}, {a->z, b->z, c->z, 0}, {0, 0, 0, 1}}});
    return 0;
}

void Zan_Matrix4::Translate(double tx, double ty, double tz) {
    zan::throwIfFailed(Zan_TranslateMatrix4(tx, ty, tz, this));
}
void Zan_Matrix4::Scale(double sx, double sy, double sz) { zan::throwIfFailed(Zan_ScaleMatrix4(sx, sy, sz, this)); }
void Zan_Matrix4::RotateAxis(double ax, double ay, double az, double radians) {
    zan::throwIfFailed(Zan_RotateMatrix4(ax, ay, az, radians, this));
}
void Zan_Matrix4::RotateXYZ(double rx, double ry, double rz) {
    zan::throwIfFailed(Zan_RotateMatrix4XYZ(rx, ry, rz, this));
}
void Zan_Matrix4::SetCOB(const zan::Vector4& a, const zan::Vector4& b, const zan::Vector4& c) {
    zan::throwIfFailed(Zan_SetMatrix4CoB(&a, &b, &c, this));
}
void Zan_Matrix4::Project(double d) {
    zan::throwIfFailed(append(this, {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 1.0 / d}, {0, 0, -1, 0}}}));
}

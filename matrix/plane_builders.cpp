// Builds transforms of the plane: appends a translation, rotation, scale or skew, m := m * T. Angles in degrees.
#include "matrix/elements.h"
#include "scalar/trigonometry.h"
#include "zan/scalar.h"

#include <cmath>

namespace {

// m := m * T with the rows (m00, m01, 0), (m10, m11, 0), (m20, m21, 1).
inline void append(Zan_Matrix3* m, double m00, double m01, double m10, double m11, double m20, double m21) {
    zan::assign(*m, zan::product(zan::elements(*m), {{{m00, m01, 0}, {m10, m11, 0}, {m20, m21, 1}}}));
}

}  // namespace

int32_t Zan_TranslateMatrix(Zan_Matrix3* m, double tx, double ty) {
    append(m, 1.0, 0.0, 0.0, 1.0, tx, ty);
    return 0;
}

int32_t Zan_RotateMatrix(Zan_Matrix3* m, double degrees, double cx, double cy) {
    if (degrees == 0.0) return 0;
    const double remainder = std::fabs(degrees) < 360.0 ? degrees : Zan_fmod(degrees, 360.0);
    if (remainder == 0.0) return 0;
    // Without the errno guard, since the angle is not infinite.
    const auto [s, c] = zan::sineAndCosineUnguarded(remainder * zan::kRadiansPerDegree);
    append(m, c, s, -s, c, (1.0 - c) * cx + cy * s, (1.0 - c) * cy - cx * s);
    return 0;
}

int32_t Zan_ScaleMatrix(Zan_Matrix3* m, double sx, double sy, double cx, double cy) {
    if (sx == 1.0 && sy == 1.0) return 0;
    append(m, sx, 0.0, 0.0, sy, (1.0 - sx) * cx, (1.0 - sy) * cy);
    return 0;
}

void Zan_Matrix3::Translate(double tx, double ty) { Zan_TranslateMatrix(this, tx, ty); }
void Zan_Matrix3::Rotate(double degrees) { Rotate(degrees, 0.0, 0.0); }
void Zan_Matrix3::Rotate(double degrees, double cx, double cy) { Zan_RotateMatrix(this, degrees, cx, cy); }
void Zan_Matrix3::Scale(double sx, double sy) { Scale(sx, sy, 0.0, 0.0); }
void Zan_Matrix3::Scale(double sx, double sy, double cx, double cy) { Zan_ScaleMatrix(this, sx, sy, cx, cy); }
void Zan_Matrix3::Skew(double skewDegrees, double axisDegrees) {
    if (skewDegrees == 0.0) return;
    const double t = zan::tangent(skewDegrees * zan::kRadiansPerDegree);
    Rotate(axisDegrees);
    append(this, 1.0, 0.0, -t, 1.0, 0.0, 0.0);
    Rotate(-axisDegrees);
}

// Conversions between Zan_Matrix3 and Zan_Matrix4.
#include "matrix/elements.h"
#include "matrix/nearly_equal.h"

#include <cmath>

int32_t Zan_Matrix3ToMatrix4(const Zan_Matrix3* m, Zan_Matrix4* wide) {
    zan::assign(*wide, zan::widened(*m, 1.0));
    return 0;
}

int32_t Zan_Matrix3ToMatrix4Uniform(const Zan_Matrix3* m, Zan_Matrix4* wide) {
    const double a = m->m00 * m->m00 + m->m10 * m->m10;
    const double b = m->m01 * m->m01 + m->m11 * m->m11;
    zan::assign(*wide, zan::widened(*m, zan::nearlyEqual(a, b) ? std::sqrt(a) : 1.0));
    return 0;
}

Zan_Matrix4& Zan_Matrix4::operator=(const Zan_Matrix3& n) {
    Zan_Matrix3ToMatrix4(&n, this);
    return *this;
}

void Zan_Matrix3::AssignFromByDroppingIndices(const Zan_Matrix4& m, int32_t row, int32_t column) {
    const auto from = zan::elements(m);
    zan::Elements<3> kept;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) kept.at[i][j] = from.at[i < row ? i : i + 1][j < column ? j : j + 1];
    }
    zan::assign(*this, kept);
}
void Zan_Matrix3::AssignFromByDroppingZ(const Zan_Matrix4& m) { AssignFromByDroppingIndices(m, 2, 2); }

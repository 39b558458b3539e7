// Determinants of both sizes, and the minors of a Zan_Matrix4.
#ifndef ZAN_MATRIX_MINORS_H
#define ZAN_MATRIX_MINORS_H

#include "matrix/elements.h"

namespace zan {

/// The determinant of a Zan_Matrix3, grouped as documented at Zan_Matrix3::Determinant.
inline double determinant3(double m00, double m01, double m02, double m10, double m11, double m12, double m20,
                           double m21, double m22) {
    return (m00 * (m11 * m22 - m21 * m12) + m01 * (m12 * m20 - m10 * m22)) + m02 * (m21 * m10 - m11 * m20);
}

/// The determinant of m without one row and one column.
inline double minorOf(const Elements<4>& m, int row, int column) {
    const int i0 = row > 0 ? 0 : 1, i1 = row > 1 ? 1 : 2, i2 = row > 2 ? 2 : 3;
    const int j0 = column > 0 ? 0 : 1, j1 = column > 1 ? 1 : 2, j2 = column > 2 ? 2 : 3;
    return determinant3(m.at[i0][j0], m.at[i0][j1], m.at[i0][j2], m.at[i1][j0], m.at[i1][j1], m.at[i1][j2],
                        m.at[i2][j0], m.at[i2][j1], m.at[i2][j2]);
}

/// The determinant of a Zan_Matrix4, expanded along row 0.
inline double determinant4(const Elements<4>& m) {
    return m.at[0][0] * minorOf(m, 0, 0) - m.at[0][1] * minorOf(m, 0, 1) + m.at[0][2] * minorOf(m, 0, 2) -
           m.at[0][3] * minorOf(m, 0, 3);
}

}  // namespace zan

#endif  // ZAN_MATRIX_MINORS_H

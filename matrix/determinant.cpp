// Determinants, and the minors behind the larger one.
#include "frame/report.h"
#include "matrix/minors.h"

double zan::minorsAndDeterminant(const Zan_Matrix4& matrix, Elements<4>* minors) {
    const Elements<4> m = elements(matrix);
    if (minors != nullptr) {
        for (int i = 0; i < 4; ++i) {
            for (int j = 0; j < 4; ++j) minors->at[i][j] = minorOf(m, i, j);
        }
    }
    return m.at[0][0] * minorOf(m, 0, 0) - m.at[0][1] * minorOf(m, 0, 1) + m.at[0][2] * minorOf(m, 0, 2) -
           m.at[0][3] * minorOf(m, 0, 3);
}

int32_t Zan_GetMatrix4Determinant(const Zan_Matrix4* m, double* determinant) {
    *determinant = zan::minorsAndDeterminant(*m, nullptr);
    return 0;
}

double Zan_Matrix3::Determinant() const { return zan::determinant3(m00, m01, m02, m10, m11, m12, m20, m21, m22); }
double Zan_Matrix4::Determinant() const {
    double determinant = 0;
    zan::throwIfFailed(Zan_GetMatrix4Determinant(this, &determinant));
    return determinant;
}

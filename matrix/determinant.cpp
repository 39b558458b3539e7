// Determinants.
#include "matrix/minors.h"

int32_t Zan_GetMatrix4Determinant(const Zan_Matrix4* m, double* determinant) {
    *determinant = zan::determinant4(zan::elements(*m));
    return 0;
}

double Zan_Matrix3::Determinant() const { return zan::determinant3(m00, m01, m02, m10, m11, m12, m20, m21, m22); }
double Zan_Matrix4::Determinant() const {
    double determinant = 0;
    Zan_GetMatrix4Determinant(this, &determinant);
    return determinant;
}

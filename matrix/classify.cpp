// The kind of a Zan_Matrix3, by exact comparisons.
#include "zan/matrix.h"

int32_t Zan_GetMatrixType(const Zan_Matrix3* m, int32_t* kind) {
    const bool projective = m->m02 != 0.0 || m->m12 != 0.0 || m->m22 != 1.0;
    const bool offDiagonal = m->m01 != 0.0 || m->m10 != 0.0;
    const bool scaled = m->m00 != 1.0 || m->m11 != 1.0;
    const bool translated = m->m20 != 0.0 || m->m21 != 0.0;
    if (projective) {
        *kind = Zan_MatrixType_Perspective;
    } else if (offDiagonal) {
        *kind = Zan_MatrixType_Affine;
    } else if (scaled) {
        *kind = translated ? Zan_MatrixType_ScaleTranslate : Zan_MatrixType_Scale;
    } else {
        *kind = translated ? Zan_MatrixType_Translate : Zan_MatrixType_Identity;
    }
    return 0;
}

int32_t Zan_Matrix3::GetType() const {
    int32_t kind = 0;
    Zan_GetMatrixType(this, &kind);
    return kind;
}

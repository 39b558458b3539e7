// Transposes.
#include "matrix/elements.h"

#include <utility>

int32_t Zan_TransposeMatrix4(const Zan_Matrix4* m, Zan_Matrix4* transposed) {
    auto e = zan::elements(*m);
    for (int i = 0; i < 4; ++i) {
        for (int j = i + 1; j < 4; ++j) std::swap(e.at[i][j], e.at[j][i]);
    }
    zan::assign(*transposed, e);
    return 0;
}

void Zan_Matrix3::Transpose() {
    std::swap(m01, m10);
    std::swap(m02, m20);
    std::swap(m12, m21);
}
void Zan_Matrix4::Transpose() { Zan_TransposeMatrix4(this, this); }

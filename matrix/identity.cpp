// The identity and the zero matrix.
#include "matrix/elements.h"

namespace {

template <class Matrix>
void setIdentity(Matrix* m) {
    constexpr int n = zan::kSize<Matrix>;
    zan::Elements<n> e;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) e.at[i][j] = zan::delta(i, j);
    }
    zan::assign(*m, e);
}

}  // namespace

int32_t Zan_SetIdentityMatrix(Zan_Matrix3* m) {
    setIdentity(m);
    return 0;
}
int32_t Zan_IdentityMatrix4(Zan_Matrix4* m) {
    setIdentity(m);
    return 0;
}

int32_t Zan_ZeroMatrix4(Zan_Matrix4* m) {
    zan::assign(*m, zan::Elements<4>{});
    return 0;
}

Zan_Matrix3::Zan_Matrix3(bool identity) {
    if (identity) SetIdentity();
}
void Zan_Matrix3::SetIdentity() { setIdentity(this); }
void Zan_Matrix3::SetZero() { zan::assign(*this, zan::Elements<3>{}); }

Zan_Matrix4::Zan_Matrix4(bool identity) {
    if (identity) SetIdentity();
}
void Zan_Matrix4::SetIdentity() { setIdentity(this); }
void Zan_Matrix4::SetZero() { zan::assign(*this, zan::Elements<4>{}); }

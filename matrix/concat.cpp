// Products, sums and differences of matrices.
#include "matrix/elements.h"
#include "matrix/kernels/matrices.h"

#include <functional>

namespace {

// to := operation(to, n) for each pair of elements.
template <class Matrix, class Operation>
void combine(Matrix& to, const Matrix& n, Operation operation) {
    auto e = zan::elements(to);
    const auto other = zan::elements(n);
    for (int i = 0; i < zan::kSize<Matrix>; ++i) {
        for (int j = 0; j < zan::kSize<Matrix>; ++j) e.at[i][j] = operation(e.at[i][j], other.at[i][j]);
    }
    zan::assign(to, e);
}

}  // namespace

int32_t Zan_ConcatMatrix(const Zan_Matrix3* a, Zan_Matrix3* b) {
    zan::assign(*b, zan::product(zan::elements(*b), zan::elements(*a)));
    return 0;
}
int32_t Zan_ConcatMatrix4(const Zan_Matrix4* a, const Zan_Matrix4* b, Zan_Matrix4* product) {
    zan::multiplyMatrices(a, b, product);
    return 0;
}

Zan_Matrix3& Zan_Matrix3::operator*=(const Zan_Matrix3& n) {
    Zan_ConcatMatrix(&n, this);
    return *this;
}
Zan_Matrix3& Zan_Matrix3::operator+=(const Zan_Matrix3& n) {
    combine(*this, n, std::plus<>());
    return *this;
}
Zan_Matrix3& Zan_Matrix3::operator-=(const Zan_Matrix3& n) {
    combine(*this, n, std::minus<>());
    return *this;
}

Zan_Matrix4& Zan_Matrix4::operator*=(const Zan_Matrix4& n) {
    Zan_ConcatMatrix4(this, &n, this);
    return *this;
}
Zan_Matrix4& Zan_Matrix4::operator*=(const Zan_Matrix3& n) {
    Zan_Matrix4 wide;
    Zan_Matrix3ToMatrix4(&n, &wide);
    return *this *= wide;
}
Zan_Matrix4& Zan_Matrix4::operator+=(const Zan_Matrix4& n) {
    combine(*this, n, std::plus<>());
    return *this;
}
Zan_Matrix4& Zan_Matrix4::operator-=(const Zan_Matrix4& n) {
    combine(*this, n, std::minus<>());
    return *this;
}

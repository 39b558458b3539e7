// Products and sums of matrices. Each element of a product is added up from left to right, whatever the factors are.
#include "frame/report.h"
#include "matrix/elements.h"

#include <functional>

namespace {

// result := a * b; it may be either.
template <class Matrix>
void multiply(const Matrix& a, const Matrix& b, Matrix& result) {
    const auto x = zan::elements(a);
    const auto y = zan::elements(b);
    constexpr int n = zan::kSize<Matrix>;
    zan::Elements<n> product;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            double sum = x.at[i][0] * y.at[0][j];
            for (int k = 1; k < n; ++k) sum += x.at[i][k] * y.at[k][j];
            product.at[i][j] = sum;
        }
    }
    zan::assign(result, product);
}

// to := operation(to, n), element by element.
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
    multiply(*b, *a, *b);
    return 0;
}
int32_t Zan_ConcatMatrix4(const Zan_Matrix4* a, const Zan_Matrix4* b, Zan_Matrix4* product) {
    multiply(*a, *b, *product);
    return 0;
}

Zan_Matrix3& Zan_Matrix3::operator*=(const Zan_Matrix3& n) {
    zan::throwIfFailed(Zan_ConcatMatrix(&n, this));
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
    zan::throwIfFailed(Zan_ConcatMatrix4(this, &n, this));
    return *this;
}
Zan_Matrix4& Zan_Matrix4::operator*=(const Zan_Matrix3& n) {
    Zan_Matrix4 wide;
    zan::throwIfFailed(Zan_Matrix3ToMatrix4(&n, &wide));
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

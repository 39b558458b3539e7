// Matrices for the tests: made from a list of elements, read by index, changed in one element. And the code that a call
// throws.
#ifndef ZAN_TESTS_SUPPORT_MATRICES_H
#define ZAN_TESTS_SUPPORT_MATRICES_H

#include "tests/support/doubles.h"
#include "tests/support/random.h"
#include "tests/support/vectors.h"
#include "zan/matrix.h"

#include <array>
#include <bit>

inline constexpr double kNaN = NAN;
inline constexpr double kInf = INFINITY;
inline constexpr double kPi = 3.141592653589793;

/// The number of rows, which is that of columns.
template <class Matrix>
constexpr int sizeOf = sizeof(Matrix) == sizeof(Zan_Matrix3) ? 3 : 4;

/// A Zan_Matrix3 from 9 elements, a Zan_Matrix4 from 16.
template <size_t N>
auto matrix(const double (&elements)[N]) {
    static_assert(N == 9 || N == 16);
    return std::bit_cast<std::conditional_t<N == 9, Zan_Matrix3, Zan_Matrix4>>(elements);
}
template <class Matrix>
double at(const Matrix& m, int row, int column) {
    return std::bit_cast<DoublesOf<Matrix>>(m)[static_cast<size_t>(row * sizeOf<Matrix> + column)];
}
/// The matrix whose elements are element(row, column).
template <class Matrix, class Element>
Matrix fill(Element element) {
    constexpr int n = sizeOf<Matrix>;
    double elements[n * n];
    for (int i = 0; i < n * n; ++i) elements[i] = element(i / n, i % n);
    return matrix(elements);
}
template <class Matrix>
Matrix identity() {
    return fill<Matrix>([](int i, int j) { return i == j ? 1.0 : 0.0; });
}
/// m with one element replaced.
template <class Matrix>
Matrix with(const Matrix& m, int row, int column, double value) {
    return fill<Matrix>([&](int i, int j) { return i == row && j == column ? value : at(m, i, j); });
}
template <class Matrix>
Matrix transposed(const Matrix& m) {
    return fill<Matrix>([&](int i, int j) { return at(m, j, i); });
}
/// The matrix product; terms are added from left to right.
template <class Matrix>
Matrix product(const Matrix& a, const Matrix& b) {
    return fill<Matrix>([&](int i, int j) {
        double sum = at(a, i, 0) * at(b, 0, j);
        for (int k = 1; k < sizeOf<Matrix>; ++k) sum += at(a, i, k) * at(b, k, j);
        return sum;
    });
}
/// The linear transform of space with these 3 by 3 elements, without translation.
inline Zan_Matrix4 linear(const double (&e)[9]) {
    return fill<Zan_Matrix4>([&](int i, int j) { return i < 3 && j < 3 ? e[3 * i + j] : i == j ? 1.0 : 0.0; });
}

/// The order of rotations about the axes: Rz * Ry * Rx or Rx * Ry * Rz, named after the operations that they belong to.
enum class RotationOrder { kXYZ, kZYX };
inline Zan_Matrix4 rotation(double rx, double ry, double rz, RotationOrder order) {
    Zan_Matrix4 x(true);
    x.RotateAxis(1, 0, 0, rx);
    Zan_Matrix4 y(true);
    y.RotateAxis(0, 1, 0, ry);
    Zan_Matrix4 z(true);
    z.RotateAxis(0, 0, 1, rz);
    return order == RotationOrder::kXYZ ? product(product(z, y), x) : product(product(x, y), z);
}

/// The code that a call throws; 0 when it throws none.
template <class Call>
long thrownBy(Call call) {
    try {
        call();
        return 0;
    } catch (long code) {
        return code;
    }
}

#endif  // ZAN_TESTS_SUPPORT_MATRICES_H

// Matrices for the tests: made from a list of elements, read by index, changed in one element. And the code that a call
// throws.
#ifndef ZAN_TESTS_SUPPORT_MATRICES_H
#define ZAN_TESTS_SUPPORT_MATRICES_H

#include "tests/support/random.h"
#include "tests/support/vectors.h"
#include "zan/matrix.h"

#include <array>
#include <bit>

using V2 = Vector2;
using V3 = Vector3;
using V4 = Vector4;
inline constexpr double kNaN = NAN, kInf = INFINITY, kPi = 3.141592653589793;

template <class Matrix>
constexpr int sizeOf = sizeof(Matrix) == sizeof(Zan_Matrix3) ? 3 : 4;

/// The matrix with these 9 or 16 elements.
template <size_t N>
auto matrix(const double (&elements)[N]) {
    return std::bit_cast<std::conditional_t<N == 9, Zan_Matrix3, Zan_Matrix4>>(elements);
}
template <class Matrix>
double at(const Matrix& m, int row, int column) {
    using Elements = std::array<double, sizeof(Matrix) / sizeof(double)>;
    return std::bit_cast<Elements>(m)[static_cast<size_t>(row * sizeOf<Matrix> + column)];
}
/// The matrix whose elements are element(row, column).
template <class Matrix, class Element>
Matrix fill(Element element) {
    constexpr int n = sizeOf<Matrix>;
    double elements[n * n];
    for (int i = 0; i < n * n; ++i) elements[i] = element(i / n, i % n);
    return matrix(elements);
}
/// m with one element replaced by value.
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
/// A 4x4 transform of the given 3x3 elements, without translation.
inline Zan_Matrix4 turning(const double (&e)[9]) {
    return fill<Zan_Matrix4>([&](int i, int j) { return i < 3 && j < 3 ? e[3 * i + j] : i == j ? 1.0 : 0.0; });
}
/// Rz * Ry * Rx, or Rx * Ry * Rz.
inline Zan_Matrix4 turnBy(double rx, double ry, double rz, bool zyx) {
    Zan_Matrix4 m(true);
    m.RotateAxis(zyx, 0, !zyx, zyx ? rx : rz);
    m.RotateAxis(0, 1, 0, ry);
    m.RotateAxis(!zyx, 0, zyx, zyx ? rz : rx);
    return m;
}

template <class Call>
long thrownBy(Call call) {
    try {
        return call(), 0;
    } catch (long code) {
        return code;
    }
}

#endif  // ZAN_TESTS_SUPPORT_MATRICES_H

// Matrices for the tests: made from a list, read by index, changed at one place; and what a call throws.
#ifndef ZAN_TESTS_MATRICES_H
#define ZAN_TESTS_MATRICES_H

#include "values.h"
#include "zan/matrix.h"

template <class Matrix>
constexpr int sizeOf = sizeof(Matrix) == sizeof(Zan_Matrix3) ? 3 : 4;

/// From 9 elements or from 16.
template <size_t N>
auto matrix(const double (&elements)[N]) {
    std::conditional_t<N == 9, Zan_Matrix3, Zan_Matrix4> m;
    static_assert(sizeof m == sizeof elements);
    std::memcpy(&m, elements, sizeof m);
    return m;
}
template <class Matrix>
double at(const Matrix& m, int row, int column) {
    double elements[sizeof(Matrix) / sizeof(double)];
    std::memcpy(elements, &m, sizeof m);
    return elements[row * sizeOf<Matrix> + column];
}
/// Every element from the function of row and column.
template <class Matrix, class Element>
Matrix fill(Element element) {
    constexpr int n = sizeOf<Matrix>;
    double elements[n * n];
    for (int i = 0; i < n * n; ++i) elements[i] = element(i / n, i % n);
    return matrix(elements);
}
/// m with one element replaced.
template <class Matrix>
Matrix with(const Matrix& m, int row, int column, double value) {
    return fill<Matrix>([&](int i, int j) { return i == row && j == column ? value : at(m, i, j); });
}
/// A transform of space without translation.
inline Zan_Matrix4 turning(const double (&e)[9]) {
    return fill<Zan_Matrix4>([&](int i, int j) { return i < 3 && j < 3 ? e[3 * i + j] : i == j ? 1.0 : 0.0; });
}

template <class Call>
long thrownBy(Call call) {
    try {
        call();
    } catch (long code) {
        return code;
    }
    return 0;
}

#endif  // ZAN_TESTS_MATRICES_H

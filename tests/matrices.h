// Matrices for the tests: made from a list, read by index, random ones.
#ifndef ZAN_TESTS_MATRICES_H
#define ZAN_TESTS_MATRICES_H

#include "values.h"
#include "zan/matrix.h"

inline Zan_Matrix3 matrix3(const double (&e)[9]) {
    Zan_Matrix3 m;
    std::memcpy(&m, e, sizeof m);
    return m;
}
inline Zan_Matrix4 matrix4(const double (&e)[16]) {
    Zan_Matrix4 m;
    std::memcpy(&m, e, sizeof m);
    return m;
}
template <class Matrix>
constexpr int sizeOf = sizeof(Matrix) == sizeof(Zan_Matrix3) ? 3 : 4;

template <class Matrix>
double at(const Matrix& m, int row, int column) {
    double value;
    std::memcpy(&value, reinterpret_cast<const char*>(&m) + sizeof value * size_t(row * sizeOf<Matrix> + column),
                sizeof value);
    return value;
}
/// m with one element replaced.
template <class Matrix>
Matrix with(Matrix m, int row, int column, double value) {
    std::memcpy(reinterpret_cast<char*>(&m) + sizeof value * size_t(row * sizeOf<Matrix> + column), &value,
                sizeof value);
    return m;
}
/// Every element from the function of row and column.
template <class Matrix, class Element>
Matrix fill(Element element) {
    Matrix m;
    for (int i = 0; i < sizeOf<Matrix>; ++i) {
        for (int j = 0; j < sizeOf<Matrix>; ++j) m = with(m, i, j, element(i, j));
    }
    return m;
}

#endif  // ZAN_TESTS_MATRICES_H

// The elements of a matrix as a two-dimensional array, for loops over rows and columns. Always a copy, so that an
// operation's output may be one of its inputs.
#ifndef ZAN_MATRIX_ELEMENTS_H
#define ZAN_MATRIX_ELEMENTS_H

#include "zan/matrix.h"

namespace zan {

template <int N>
struct Elements {
    double at[N][N];
};

/// The number of rows, which is that of columns.
template <class Matrix>
inline constexpr int kSize = 0;
template <>
inline constexpr int kSize<Zan_Matrix3> = 3;
template <>
inline constexpr int kSize<Zan_Matrix4> = 4;

// Copies element by element: a block copy stores in pieces that later loads straddle, which defeats store-to-load
// forwarding.
inline Elements<3> elements(const Zan_Matrix3& m) {
    return {{{m.m00, m.m01, m.m02}, {m.m10, m.m11, m.m12}, {m.m20, m.m21, m.m22}}};
}
inline Elements<4> elements(const Zan_Matrix4& m) {
    return {{{m.m00, m.m01, m.m02, m.m03},
             {m.m10, m.m11, m.m12, m.m13},
             {m.m20, m.m21, m.m22, m.m23},
             {m.m30, m.m31, m.m32, m.m33}}};
}
inline void assign(Zan_Matrix3& m, const Elements<3>& e) {
    const auto& a = e.at;
    m.m00 = a[0][0], m.m01 = a[0][1], m.m02 = a[0][2];
    m.m10 = a[1][0], m.m11 = a[1][1], m.m12 = a[1][2];
    m.m20 = a[2][0], m.m21 = a[2][1], m.m22 = a[2][2];
}
inline void assign(Zan_Matrix4& m, const Elements<4>& e) {
    const auto& a = e.at;
    m.m00 = a[0][0], m.m01 = a[0][1], m.m02 = a[0][2], m.m03 = a[0][3];
    m.m10 = a[1][0], m.m11 = a[1][1], m.m12 = a[1][2], m.m13 = a[1][3];
    m.m20 = a[2][0], m.m21 = a[2][1], m.m22 = a[2][2], m.m23 = a[2][3];
    m.m30 = a[3][0], m.m31 = a[3][1], m.m32 = a[3][2], m.m33 = a[3][3];
}

/// m as a transform of space that multiplies z by scaleZ.
inline Elements<4> widened(const Zan_Matrix3& m, double scaleZ) {
    return {{{m.m00, m.m01, 0.0, 0.0}, {m.m10, m.m11, 0.0, 0.0}, {0.0, 0.0, scaleZ, 0.0}, {m.m20, m.m21, 0.0, 1.0}}};
}

/// a * b. Each element is a sum of products added from left to right, none left out for a factor of 0 or 1.
template <int N>
inline Elements<N> product(const Elements<N>& a, const Elements<N>& b) {
    Elements<N> result;
    for (int i = 0; i < N; ++i) {
        for (int j = 0; j < N; ++j) {
            double sum = a.at[i][0] * b.at[0][j];
            for (int k = 1; k < N; ++k) sum += a.at[i][k] * b.at[k][j];
            result.at[i][j] = sum;
        }
    }
    return result;
}

/// The identity's element (Kronecker's delta).
constexpr double delta(int row, int column) { return row == column ? 1.0 : 0.0; }

}  // namespace zan

#endif  // ZAN_MATRIX_ELEMENTS_H

// The elements of a matrix as an array, for what runs over rows and columns. Copies both ways, so that an output may be
// an input.
#ifndef ZAN_MATRIX_ELEMENTS_H
#define ZAN_MATRIX_ELEMENTS_H

#include "zan/matrix.h"

#include <bit>

namespace zan {

template <int N>
struct Elements {
    double at[N][N];
};

template <class Matrix>
inline constexpr int kSize = 0;
template <>
inline constexpr int kSize<Zan_Matrix3> = 3;
template <>
inline constexpr int kSize<Zan_Matrix4> = 4;

inline Elements<3> elements(const Zan_Matrix3& m) { return std::bit_cast<Elements<3>>(m); }
inline Elements<4> elements(const Zan_Matrix4& m) { return std::bit_cast<Elements<4>>(m); }
inline void assign(Zan_Matrix3& m, const Elements<3>& e) { m = std::bit_cast<Zan_Matrix3>(e); }
inline void assign(Zan_Matrix4& m, const Elements<4>& e) { m = std::bit_cast<Zan_Matrix4>(e); }

/// The identity's element.
constexpr double delta(int row, int column) { return row == column ? 1.0 : 0.0; }

}  // namespace zan

#endif  // ZAN_MATRIX_ELEMENTS_H

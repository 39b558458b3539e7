// Comparisons of matrices: by value, by bytes, and within a tolerance. A NaN passes every tolerance.
#include "frame/lanes.h"
#include "matrix/elements.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace {

template <class Matrix>
Lanes load(const Matrix& m, int index) {
    return load(reinterpret_cast<const double*>(&m) + index);
}

// True when condition(elements of m, index of the first one), which gives a Mask, holds for no element. Without an
// early out, because it would mispredict.
template <class Matrix, class Condition>
bool noneOf(const Matrix& m, Condition condition) {
    constexpr int kElements = zan::kSize<Matrix> * zan::kSize<Matrix>;
    Mask found{};
    for (int i = 0; i < kElements; i += kLanes) {
        const int index = std::min(i, kElements - kLanes);  // the last lanes of nine elements overlap
        found |= condition(load(m, index), index);
    }
    return !anyOf(found);
}

template <class Matrix>
unsigned char allEqual(const Matrix& a, const Matrix& b) {
    return noneOf(a, [&b](Lanes first, int index) { return first != load(b, index); });
}

// second(index) gives the elements to compare with.
template <class Matrix, class Second>
bool within(const Matrix& a, Second second, double eps) {
    return noneOf(a, [=](Lanes first, int index) { return abs(first - second(index)) > eps; });
}
template <class Matrix>
bool equalWithin(const Matrix& a, const Matrix& b, double eps) {
    return within(
        a, [&b](int index) { return load(b, index); }, eps);
}
template <class Matrix>
bool sameBytes(const Matrix& a, const Matrix& b) {
    using Words = std::array<uint64_t, sizeof(Matrix) / sizeof(uint64_t)>;
    return std::bit_cast<Words>(a) == std::bit_cast<Words>(b);
}

Lanes zeros(int /*index*/) { return Lanes{}; }
template <int N>
Lanes identityElements(int index) {
    Lanes elements{};
    for (int i = 0; i < kLanes; ++i) elements[i] = zan::delta((index + i) / N, (index + i) % N);
    return elements;
}

}  // namespace

int32_t Zan_EqualMatrix(const Zan_Matrix3* a, const Zan_Matrix3* b, unsigned char* equal) {
    *equal = allEqual(*a, *b);
    return 0;
}
int32_t Zan_EqualMatrix4(const Zan_Matrix4* a, const Zan_Matrix4* b, unsigned char* equal) {
    *equal = allEqual(*a, *b);
    return 0;
}

bool Zan_EqualMatrixWithinEpsilon(const Zan_Matrix3& a, const Zan_Matrix3& b, double eps) {
    return equalWithin(a, b, eps);
}
bool Zan_EqualMatrixWithinEpsilon(const Zan_Matrix4& a, const Zan_Matrix4& b, double eps) {
    return equalWithin(a, b, eps);
}

bool Zan_Matrix3::IsZero() const { return IsZeroWithinEpsilon(0.0); }
bool Zan_Matrix3::IsIdentity() const { return IsIdentityWithinEpsilon(0.0); }
bool Zan_Matrix3::IsZeroWithinEpsilon(double eps) const { return within(*this, zeros, eps); }
bool Zan_Matrix3::IsIdentityWithinEpsilon(double eps) const { return within(*this, identityElements<3>, eps); }
bool Zan_Matrix3::operator==(const Zan_Matrix3& n) const { return sameBytes(*this, n); }
bool Zan_Matrix3::operator!=(const Zan_Matrix3& n) const { return !sameBytes(*this, n); }

bool Zan_Matrix4::IsZero() const { return IsZeroWithinEpsilon(0.0); }
bool Zan_Matrix4::IsIdentity() const { return IsIdentityWithinEpsilon(0.0); }
bool Zan_Matrix4::IsZeroWithinEpsilon(double eps) const { return within(*this, zeros, eps); }
bool Zan_Matrix4::IsIdentityWithinEpsilon(double eps) const { return within(*this, identityElements<4>, eps); }
bool Zan_Matrix4::IsFinite() const {
    return noneOf(*this, [](Lanes x, int) { return x * 0.0 != 0.0; });  // NaN unless x is finite
}
bool Zan_Matrix4::operator==(const Zan_Matrix4& n) const { return sameBytes(*this, n); }
bool Zan_Matrix4::operator!=(const Zan_Matrix4& n) const { return !sameBytes(*this, n); }

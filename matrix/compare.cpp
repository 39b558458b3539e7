// Comparisons of matrices: by value, by bytes, and within a tolerance. A NaN passes every tolerance.
#include "matrix/elements.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

namespace {

// True when predicate(first[i][j], second(i, j)) holds for every element.
template <int N, class Second, class Predicate>
bool allOf(const zan::Elements<N>& first, Second second, Predicate predicate) {
    for (int i = 0; i < N; ++i) {
        for (int j = 0; j < N; ++j) {
            if (!predicate(first.at[i][j], second(i, j))) return false;
        }
    }
    return true;
}

template <class Matrix>
unsigned char allEqual(const Matrix& a, const Matrix& b) {
    const auto second = zan::elements(b);
    return allOf(
        zan::elements(a), [&](int i, int j) { return second.at[i][j]; }, [](double x, double y) { return x == y; });
}

template <class Matrix, class Second>
bool within(const Matrix& a, Second second, double eps) {
    return allOf(zan::elements(a), second, [eps](double x, double y) { return !(std::fabs(x - y) > eps); });
}
template <class Matrix>
bool equalWithin(const Matrix& a, const Matrix& b, double eps) {
    const auto second = zan::elements(b);
    return within(
        a, [&](int i, int j) { return second.at[i][j]; }, eps);
}
template <class Matrix>
bool sameBytes(const Matrix& a, const Matrix& b) {
    using Words = std::array<uint64_t, sizeof(Matrix) / sizeof(uint64_t)>;
    return std::bit_cast<Words>(a) == std::bit_cast<Words>(b);
}
double zero(int /*row*/, int /*column*/) { return 0.0; }

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
bool Zan_Matrix3::IsZeroWithinEpsilon(double eps) const { return within(*this, zero, eps); }
bool Zan_Matrix3::IsIdentityWithinEpsilon(double eps) const { return within(*this, zan::delta, eps); }
bool Zan_Matrix3::operator==(const Zan_Matrix3& n) const { return sameBytes(*this, n); }
bool Zan_Matrix3::operator!=(const Zan_Matrix3& n) const { return !sameBytes(*this, n); }

bool Zan_Matrix4::IsZero() const { return IsZeroWithinEpsilon(0.0); }
bool Zan_Matrix4::IsIdentity() const { return IsIdentityWithinEpsilon(0.0); }
bool Zan_Matrix4::IsZeroWithinEpsilon(double eps) const { return within(*this, zero, eps); }
bool Zan_Matrix4::IsIdentityWithinEpsilon(double eps) const { return within(*this, zan::delta, eps); }
bool Zan_Matrix4::IsFinite() const {
    return allOf(zan::elements(*this), zero, [](double x, double) { return std::isfinite(x); });
}
bool Zan_Matrix4::operator==(const Zan_Matrix4& n) const { return sameBytes(*this, n); }
bool Zan_Matrix4::operator!=(const Zan_Matrix4& n) const { return !sameBytes(*this, n); }

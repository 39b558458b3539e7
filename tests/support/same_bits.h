// Comparison of floating-point values by their bits.
#ifndef ZAN_TESTS_SUPPORT_SAME_BITS_H
#define ZAN_TESTS_SUPPORT_SAME_BITS_H

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

/// True for the same bits, and for any two NaNs: which NaN an operation returns depends on the order of its operands.
template <class T>
bool sameBits(T a, T b) {
    static_assert(std::is_floating_point_v<T>);
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

/// sameBits of every double in two records that hold only doubles.
template <class Record>
bool sameDoubles(const Record& a, const Record& b) {
    static_assert(std::is_trivially_copyable_v<Record>);
    static_assert(sizeof(Record) % sizeof(double) == 0);
    constexpr size_t n = sizeof(Record) / sizeof(double);
    double x[n], y[n];
    std::memcpy(x, &a, sizeof a);
    std::memcpy(y, &b, sizeof b);
    return std::equal(x, x + n, y, sameBits<double>);
}

#endif  // ZAN_TESTS_SUPPORT_SAME_BITS_H

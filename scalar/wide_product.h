// The exact product of two 32-bit integers, in two halves.
#ifndef ZAN_SCALAR_WIDE_PRODUCT_H
#define ZAN_SCALAR_WIDE_PRODUCT_H

#include <cstdint>

namespace zan {

struct WideProduct {
    int32_t high;
    uint32_t low;
};

constexpr WideProduct wideProduct(int32_t a, int32_t b) {
    const int64_t product = int64_t{a} * int64_t{b};
    return {static_cast<int32_t>(product >> 32), static_cast<uint32_t>(product)};
}

/// -1, 0 or 1 as a is less than, equal to or greater than b.
constexpr int32_t compare(const WideProduct& a, const WideProduct& b) {
    if (a.high != b.high) return a.high < b.high ? -1 : 1;
    if (a.low != b.low) return a.low < b.low ? -1 : 1;
    return 0;
}

}  // namespace zan

#endif  // ZAN_SCALAR_WIDE_PRODUCT_H

// Bit counts and powers of two.
#include "scalar/integers.h"
#include "zan/scalar.h"

#include <bit>

int16_t Zan_LeadingZeros(uint32_t x) { return static_cast<int16_t>(zan::leadingZeros(x)); }

int16_t Zan_TrailingZeros(uint32_t x) { return static_cast<int16_t>(zan::trailingZeros(x)); }

uint32_t Zan_RoundUpToPowerOf2(uint32_t x) {
    const uint32_t power = std::bit_floor(x);
    return power == x ? power : power * 2U;
}

uint32_t Zan_RoundDownToPowerOf2(uint32_t x) { return std::bit_floor(x); }

int16_t Zan_BitsUsed(int32_t x) {
    if (x <= 0) return 0;
    return static_cast<int16_t>(32 - zan::leadingZeros(static_cast<uint32_t>(x)));
}

bool Zan_IsTopTwoBitsSame(int32_t x) {
    const auto bits = static_cast<uint32_t>(x);
    return (bits >> 31) == ((bits >> 30) & 1U);
}

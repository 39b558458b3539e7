// Overflow tests for 32-bit sums and products.
#include "scalar/integers.h"
#include "zan/scalar.h"

bool Zan_AddWouldOverflow(int32_t a, int32_t b) { return zan::addWouldOverflow(a, b); }

bool Zan_MulWouldOverflow(int32_t a, int32_t b) { return zan::multiplyWouldOverflow(a, b); }

bool Zan_UMulWouldOverflow(uint32_t a, uint32_t b) { return zan::multiplyWouldOverflow(a, b); }

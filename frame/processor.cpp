// What the processor and the system can do, and what the environment lets kernels use of it.
#include "frame/processor.h"

#include <cstdlib>
#include <cstring>

#if defined(ZAN_AVX2_KERNELS)
#include <cpuid.h>

// Asked directly, since the compiler's own look-up would have the processor examined when the library is loaded.
zan::Instructions zan::supportedInstructions() {
    unsigned a = 0, b = 0, c = 0, d = 0;
    constexpr unsigned kSystemSavesAndAvx = bit_OSXSAVE | bit_AVX;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & kSystemSavesAndAvx) != kSystemSavesAndAvx) {
        return Instructions::kPlain;
    }
    unsigned saved = 0, high = 0;
    __asm__("xgetbv" : "=a"(saved), "=d"(high) : "c"(0));
    constexpr unsigned kWideRegisters = 6;
    if ((saved & kWideRegisters) != kWideRegisters) return Instructions::kPlain;
    const bool avx2 = __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & bit_AVX2) != 0;
    return avx2 ? Instructions::kAvx2 : Instructions::kPlain;
}
#else
zan::Instructions zan::supportedInstructions() { return Instructions::kPlain; }
#endif

constinit std::atomic<int> zan::chosenInstructions{-1};

zan::Instructions zan::chooseInstructions() {
    Instructions best = supportedInstructions();
    const char* wanted = std::getenv("ZAN_KERNEL");
    if (wanted != nullptr && std::strcmp(wanted, "plain") == 0) best = Instructions::kPlain;
    chosenInstructions.store(static_cast<int>(best), std::memory_order_relaxed);
    return best;
}

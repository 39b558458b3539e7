// Detection of the instruction sets that the processor and the system support.
#include "frame/processor.h"

#if defined(ZAN_AVX2_KERNELS)
#include <cpuid.h>

// Not __builtin_cpu_supports: it would add code that runs when the library is loaded.
zan::InstructionSet zan::supportedInstructionSet() {
    unsigned a = 0, b = 0, c = 0, d = 0;
    constexpr unsigned kXgetbvAndAvx = bit_OSXSAVE | bit_AVX;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & kXgetbvAndAvx) != kXgetbvAndAvx) return InstructionSet::kBaseline;
    // AVX needs a system that saves both the XMM and the YMM registers of a thread.
    unsigned saved = 0, high = 0;
    __asm__("xgetbv" : "=a"(saved), "=d"(high) : "c"(0));
    constexpr unsigned kXmmAndYmm = 6;
    if ((saved & kXmmAndYmm) != kXmmAndYmm) return InstructionSet::kBaseline;
    const bool avx2 = __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & bit_AVX2) != 0;
    return avx2 ? InstructionSet::kAvx2 : InstructionSet::kBaseline;
}
#else
zan::InstructionSet zan::supportedInstructionSet() { return InstructionSet::kBaseline; }
#endif

constinit std::atomic<int> zan::activeInstructionSetOrNone{-1};

zan::InstructionSet zan::initActiveInstructionSet() {
    const InstructionSet active = preferredInstructionSet();
    activeInstructionSetOrNone.store(static_cast<int>(active), std::memory_order_relaxed);
    return active;
}

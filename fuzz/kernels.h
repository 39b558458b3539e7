// Walks a room's list of kernels, for the properties that compare each with the plain one.
#ifndef ZAN_FUZZ_KERNELS_H
#define ZAN_FUZZ_KERNELS_H

#include "choices.h"
#include "frame/processor.h"

/// Calls check(kernel) for each that this machine can run, the plain one included.
template <class Kernel, class Check>
void eachKernel(const Kernel* const* kernels, const Kernel& plain, const Check& check) {
    must(kernels[0] == &plain);
    for (int i = 0; kernels[i] != nullptr; ++i) {
        if (i <= static_cast<int>(zan::supportedInstructions())) {
            check(*kernels[i]);
        } else {
            static const int told = std::printf("%s skipped: not on this machine\n", kernels[i]->name);
            must(told > 0);
        }
    }
}

#endif  // ZAN_FUZZ_KERNELS_H

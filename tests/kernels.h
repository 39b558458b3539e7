// Walks a room's list of kernels, for the tests that compare each with the plain one.
#ifndef ZAN_TESTS_KERNELS_H
#define ZAN_TESTS_KERNELS_H

#include "frame/processor.h"
#include "values.h"

/// Calls check(kernel) for each that this machine can run, the plain one included.
template <class Kernel, class Check>
void eachKernel(const Kernel* const* kernels, const Kernel& plain, const Check& check) {
    CHECK(kernels[0] == &plain);
    for (int i = 0; kernels[i] != nullptr; ++i) {
        if (i <= static_cast<int>(zan::supportedInstructions())) {
            check(*kernels[i]);
        } else {
            WARN(kernels[i]->name << " skipped: not on this machine");
        }
    }
}

#endif  // ZAN_TESTS_KERNELS_H

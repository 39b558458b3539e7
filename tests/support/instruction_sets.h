// A loop over the instruction sets that have kernels, for programs that link the library's objects.
#ifndef ZAN_TESTS_SUPPORT_INSTRUCTION_SETS_H
#define ZAN_TESTS_SUPPORT_INSTRUCTION_SETS_H

#include "frame/processor.h"

/// The number of instruction sets that this machine can run. Asked only once: in virtual machines the query is slow.
inline int countInstructionSets() {
    static const int count = static_cast<int>(zan::supportedInstructionSet()) + 1;
    return count;
}

/// Makes each instruction set in turn the active one, the plain one first, and calls check(number). At the end the one
/// that was active is active again.
template <class Check>
void eachInstructionSet(const Check& check) {
    const auto before = static_cast<int>(zan::activeInstructionSet());
    for (int set = 0; set < countInstructionSets(); ++set) {
        zan::activeInstructionSetOrNone = set;
        check(set);
    }
    zan::activeInstructionSetOrNone = before;
}

#endif  // ZAN_TESTS_SUPPORT_INSTRUCTION_SETS_H

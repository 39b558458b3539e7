// What every property is made of: its registration, how a failure is thrown, and a loop over the kernels.
#ifndef ZAN_TESTS_PROPERTIES_PROPERTY_H
#define ZAN_TESTS_PROPERTIES_PROPERTY_H

#include "frame/processor.h"
#include "tests/support/choices.h"
#include "tests/support/same_bits.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

/// Throws the place of the call when the condition does not hold. The driver adds which seed or file it was.
inline void must(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!holds) throw std::string(file) + ":" + std::to_string(line);
}

/// Calls check(kernel) for each kernel of a subsystem's list that this machine can run, and for one that may not be in
/// the list.
template <class Kernel, class Check>
void eachKernel(const Kernel* const* kernels, const Kernel& another, const Check& check) {
    check(another);
    for (int i = 0; kernels[i] != nullptr && i <= static_cast<int>(zan::supportedInstructionSet()); ++i)
        check(*kernels[i]);
}

/// A property of the library. Its check draws a case, compares the library's answers with answers found by other means,
/// and returns whether the case belongs to the first of two classes, for example: the rectangles overlap. Each class
/// must make up at least 5 % of the seeded cases.
struct Property {
    Property(const char* itsName, int32_t itsSeeds, bool (*itsCheck)(Choices&))
        : name(itsName), seeds(itsSeeds), check(itsCheck), next(std::exchange(first, this)) {}
    const char* name;  ///< subsystem_topic
    int32_t seeds;     ///< the number of seeded cases
    bool (*check)(Choices&);
    const Property* next;
    inline static const Property* first = nullptr;
};

#endif  // ZAN_TESTS_PROPERTIES_PROPERTY_H

// The choice of kernels for tests and benchmarks that compare: always those of the baseline, which on x86-64 are the
// plain ones. Linked instead of frame/kernel_choice.cpp.
#include "frame/processor.h"

zan::InstructionSet zan::preferredInstructionSet() { return InstructionSet::kBaseline; }

// The choice of kernels for tests and benchmarks that compare: always the plain ones. Linked instead of
// frame/kernel_choice.cpp.
#include "frame/processor.h"

zan::InstructionSet zan::preferredInstructionSet() { return InstructionSet::kPlain; }

// The choice of kernels: the best that the machine supports.
#include "frame/processor.h"

zan::InstructionSet zan::preferredInstructionSet() { return supportedInstructionSet(); }

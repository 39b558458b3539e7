// The kernel of the convexity test for AVX2.
#include "poly/kernels/turns_lanes.h"

const zan::TurnKernel zan::kAvx2TurnKernel = {"AVX2", scan};

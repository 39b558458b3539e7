// The kernel of the convexity test for two lanes.
#include "poly/kernels/turns_lanes.h"

const zan::TurnKernel zan::kLanesTurnKernel = {"two lanes", scan};

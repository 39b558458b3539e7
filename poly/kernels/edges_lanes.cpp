// The kernel of the hit test for two lanes. Edges of small outlines are classified by the plain kernel's loop.
#include "poly/kernels/edges_lanes.h"

const zan::EdgeKernel zan::kLanesEdgeKernel = {
    "two lanes",
    kLanes,
    {scan<kWithoutTolerance, double>, scan<kWithTolerance, double>, scan<kWithoutTolerance, float>,
     scan<kWithTolerance, float>},
    {scanSmallOutlinePlain<kWithoutTolerance, double>, scanSmallOutlinePlain<kWithTolerance, double>,
     scanSmallOutlinePlain<kWithoutTolerance, float>, scanSmallOutlinePlain<kWithTolerance, float>}};

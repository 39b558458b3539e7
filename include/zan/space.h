// Planes, rays, lines and the projection of points.
#ifndef ZAN_SPACE_H
#define ZAN_SPACE_H

#include "zan/types.h"

#endif  // ZAN_SPACE_H

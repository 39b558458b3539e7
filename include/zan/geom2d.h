// Operations on points and rectangles.
#ifndef ZAN_GEOM2D_H
#define ZAN_GEOM2D_H

#include "zan/types.h"

#endif  // ZAN_GEOM2D_H

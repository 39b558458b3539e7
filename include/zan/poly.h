// Layer outlines, hit tests, hulls and clipping.
#ifndef ZAN_POLY_H
#define ZAN_POLY_H

#include "zan/types.h"

#endif  // ZAN_POLY_H

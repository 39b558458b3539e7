// Zan: arithmetic and plane and spatial geometry for image layers. Includes every public header.
#ifndef ZAN_ZAN_H
#define ZAN_ZAN_H

#include "zan/frame.h"
#include "zan/geom2d.h"
#include "zan/matrix.h"
#include "zan/poly.h"
#include "zan/scalar.h"
#include "zan/space.h"
#include "zan/types.h"

#endif  // ZAN_ZAN_H

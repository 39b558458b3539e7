// Matrices and transforms.
#ifndef ZAN_MATRIX_H
#define ZAN_MATRIX_H

#include "zan/types.h"

#endif  // ZAN_MATRIX_H

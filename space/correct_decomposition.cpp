// Correction of a decomposition for a layer without depth: a half turn about x or y becomes a mirrored scale.
#include "matrix/vectors.h"
#include "scalar/trigonometry.h"
#include "zan/space.h"

#include <cmath>

int32_t Zan_Correct3DDecompFor2D(Zan_Matrix4Decomp* decomposition) {
    Zan_Matrix4Decomp& d = *decomposition;
    const auto isHalfTurn = [](double radians) {
        return zan::nearZero(std::fabs(radians * zan::kDegreesPerRadian) - 180);
    };
    const bool aboutX = isHalfTurn(d.rx);
    const bool aboutY = isHalfTurn(d.ry);
    if (aboutX) {
        d.rx = 0;
        d.ry = -d.ry;
        d.sy = -d.sy;
        d.rz = -d.rz;
    }
    if (aboutY) {
        d.ry = 0;
        d.sx = -d.sx;
        d.rx = -d.rx;
        d.rz = -d.rz;
    }
    d.sz = 1.0;
    return 0;
}

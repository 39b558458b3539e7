// Compass angles: degrees clockwise from straight up, on a screen whose vertical axis points down.
#include "frame/keep_errno.h"
#include "zan/geom2d.h"

#include <cmath>

namespace {

// Radians counterclockwise from the right, y pointing up. Straight up and down come from the constant alone.
double bearing(double x, double y, double quarterTurn) {
    const zan::KeepErrno keepErrno;
    if (x != 0) return std::atan2(y, x);
    if (y > 0) return quarterTurn;
    return y < 0 ? -quarterTurn : 0.0;
}

double clockwiseFromUp(double degrees) {
    double turned = 360.0 - degrees + 90.0;
    while (turned > 360.0) turned -= 360.0;
    while (turned < 0.0) turned += 360.0;
    return turned;
}

}  // namespace

int32_t Zan_PtToAngle(const Zan_Rect* rect, Zan_Point point, int16_t* angle) {
    const double x = point.h - (rect->right + rect->left) * 0.5;
    const double y = -(point.v - (rect->bottom + rect->top) * 0.5);
    // The short constants belong to the results: their drift from exact degrees survives the truncation.
    *angle = static_cast<int16_t>(clockwiseFromUp(bearing(x, y, 1.5708) * 180.0 / 3.1416));
    return 0;
}

int32_t Zan_Pt2Angle(const Zan_FloatRect* rect, Zan_Vector2T<double>* point, double* angle) {
    const double x = point->x - (rect->right + rect->left) * 0.5;
    const double y = -(point->y - (rect->bottom + rect->top) * 0.5);
    *angle = clockwiseFromUp(bearing(x, y, 1.5707963267948966) * 180.0 / 3.141592653589793);
    return 0;
}

double Zan_VecToAngle(const Zan_Vector2T<double>& direction) {
    return clockwiseFromUp(bearing(direction.x, -direction.y, 1.5707963267948966) * 57.29577951308232);
}

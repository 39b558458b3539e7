// Compass angles: degrees clockwise from the upward direction, on a screen whose vertical axis points down.
#include "frame/keep_errno.h"
#include "scalar/trigonometry.h"
#include "zan/geom2d.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double kHalfPi = std::numbers::pi / 2;

// The polar angle of (x, y), y pointing up, in radians counterclockwise from the x axis. On the y axis it is halfPi or
// -halfPi, with the accuracy of the caller's constant, and 0 for the origin. The caller constructs KeepErrno before it
// calculates x and y: values calculated earlier would have to be saved across that call.
double polarAngle(double x, double y, double halfPi) {
    if (x != 0) return std::atan2(y, x);
    if (y > 0) return halfPi;
    return y < 0 ? -halfPi : 0.0;
}

// A polar angle of -180 to 180 degrees as a compass angle of more than 0 to 360 degrees. Selects what to subtract,
// because a branch on the direction would mispredict.
double compassAngle(double degrees) {
    const double angle = 360.0 - degrees + 90.0;
    return angle - (angle > 360.0 ? 360.0 : 0.0);
}

}  // namespace

int32_t Zan_PtToAngle(const Zan_Rect* rect, Zan_Point point, int16_t* angle) {
    const zan::KeepErrno keepErrno;
    const double x = point.h - (rect->right + rect->left) * 0.5;
    const double y = -(point.v - (rect->bottom + rect->top) * 0.5);
    // The short constants are part of the definition: their error decides which whole degree the truncation gives.
    *angle = static_cast<int16_t>(compassAngle(polarAngle(x, y, 1.5708) * 180.0 / 3.1416));
    return 0;
}

int32_t Zan_Pt2Angle(const Zan_FloatRect* rect, Zan_Vector2T<double>* point, double* angle) {
    const zan::KeepErrno keepErrno;
    const double x = point->x - (rect->right + rect->left) * 0.5;
    const double y = -(point->y - (rect->bottom + rect->top) * 0.5);
    *angle = compassAngle(polarAngle(x, y, kHalfPi) * 180.0 / std::numbers::pi);
    return 0;
}

double Zan_VecToAngle(const Zan_Vector2T<double>& direction) {
    const zan::KeepErrno keepErrno;
    return compassAngle(polarAngle(direction.x, -direction.y, kHalfPi) * zan::kDegreesPerRadian);
}

// Rotation of a single-precision point about a centre.
#include "scalar/trigonometry.h"
#include "zan/space.h"

int32_t Zan_TransformPtF(Zan_Vector2T<float>* centre, double degrees, Zan_Vector2T<float>* point) {
    const double radians = (degrees - 90) * zan::kRadiansPerDegree;
    const auto [sine, cosine] = zan::sineAndCosine(radians);
    const Zan_Vector2T<float> pivot = *centre;
    const double dx = point->x - pivot.x;
    const double minusDy = -static_cast<double>(point->y - pivot.y);
    const auto x = static_cast<float>(minusDy * cosine - dx * sine);
    const auto y = static_cast<float>(minusDy * sine + dx * cosine);
    *point = {x + pivot.x, y + pivot.y};
    return 0;
}

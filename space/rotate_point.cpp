// A single-precision point turned about a centre.
#include "scalar/trigonometry.h"
#include "zan/space.h"

int32_t Zan_TransformPtF(Zan_Vector2T<float>* centre, double degrees, Zan_Vector2T<float>* point) {
    const double angle = (degrees - 90) * 0.017453292519943295;
    const auto [s, c] = zan::sineAndCosine(angle);
    const Zan_Vector2T<float> about = *centre;
    const double dx = point->x - about.x;
    const double u = -static_cast<double>(point->y - about.y);
    const auto x = static_cast<float>(u * c - dx * s);
    const auto y = static_cast<float>(u * s + dx * c);
    *point = {x + about.x, y + about.y};
    return 0;
}

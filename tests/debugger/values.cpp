// Values of every record, initialised at compile time, for a debugger to print before the program runs.
#include "zan/zan.h"

#include <array>
#include <bit>
#include <cfloat>
#include <cmath>

using Elements3 = std::array<double, 9>;
using Elements4 = std::array<double, 16>;
template <class M, class Elements>
constexpr M matrix(const Elements& elements) {
    return std::bit_cast<M>(elements);
}

Zan_Fixed fixed16[] = {98304, -1, 6554, INT32_MIN};
Zan_Fix24 fixed24[] = {-0x01800000, 1, INT32_MIN};
int32_t plain = 98304;
Zan_Ratio ratios[] = {{-3, 4}, {6, 3}, {1, 3}, {5, 0}, {0, 0}};
Zan_Point pt = {-7, 8};
Zan_LPoint lpt = {3, -70000};
Zan_FixedPoint fpt = {98304, INT32_MIN};
Zan_Rect rects[] = {{2, 1, 7, 11}, {2, 1, 2, 11}};
Zan_LRect lrect = {INT32_MIN, 0, INT32_MAX, 1};
Zan_FixedRect frects[] = {{-32768, 0, 65536, 16384}, {INT32_MIN, 0, 65536, 16384}};
Zan_FloatRect drect = {0.1, 0.0, -0.0, 1e300};
Zan_Vector2T<float> v2[] = {{0.1F, -2.5F}, {FLT_MAX, 16777216.0F}};
extern const Zan_Vector3T<double> v3;
const Zan_Vector3T<double> v3 = {0.1, -0.0, 1e-300};
Zan_Vector4T<double> v4 = {1, 2, 3, 1};
Zan_Matrix3 kinds[] = {
    matrix<Zan_Matrix3>(Elements3{1, 0, 0, 0, 1, 0, 0, 0, 1}),
    matrix<Zan_Matrix3>(Elements3{1, 0, 0, 0, 1, 0, 5, 0.1, 1}),
    matrix<Zan_Matrix3>(Elements3{2, 0, 0, 0, 1, 0, 0, 0, 1}),
    matrix<Zan_Matrix3>(Elements3{1, 0, 0, 0, 3, 0, 0, 4, 1}),
    matrix<Zan_Matrix3>(Elements3{1, -0.5, 0, 0, 1, 0, 0, 0, 1}),
    matrix<Zan_Matrix3>(Elements3{1, 0, 0, 0, 1, 0, 0, 0, NAN}),
};
Zan_Matrix4 solid = matrix<Zan_Matrix4>(Elements4{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 7, 1});
const Zan_Matrix4& sameSolid = solid;

int main() { return plain == 0 ? 1 : 0; }

// Quaternions: conversions to and from matrices, spherical interpolation.
#include "frame/keep_errno.h"
#include "matrix/elements.h"
#include "matrix/nearly_equal.h"

#include <cmath>

int32_t Zan_QuatToMatrix4(const Zan_Quat* q, Zan_Matrix4* out) {
    const double x = q->x, y = q->y, z = q->z, w = q->w;
    const double xx = x * x, yy = y * y, zz = z * z, ww = w * w;
    zan::assign(*out, {{{xx - yy - zz + ww, 2 * (x * y + z * w), 2 * (x * z - y * w), 0},
                        {2 * (x * y - z * w), yy - xx - zz + ww, 2 * (y * z + x * w), 0},
                        {2 * (x * z + y * w), 2 * (y * z - x * w), zz - (xx + yy) + ww, 0},
                        {0, 0, 0, 1}}});
    return 0;
}

namespace {

// A component of a quaternion that is not small, and the factor that turns sums and differences of the matrix's
// elements into the other components. Both are calculated from 4 * component^2 - 1.
struct Pivot {
    double component, factor;

    explicit Pivot(double fourTimesSquareLess1) {
        const double root = std::sqrt(fourTimesSquareLess1 + 1);
        component = root / 2;
        factor = 0.5 / root;
    }
};

}  // namespace

// By Shoemake's method (1985). The pivot is w if its square is above 1/4, else the largest of x, y and z. A case for
// each: an index would put all elements in memory.
int32_t Zan_Matrix4ToQuat(const Zan_Matrix4* m, Zan_Quat* out) {
    const double xx = m->m00, yy = m->m11, zz = m->m22;
    const double xy = m->m01 + m->m10, yz = m->m12 + m->m21, zx = m->m20 + m->m02;
    const double xw = m->m12 - m->m21, yw = m->m20 - m->m02, zw = m->m01 - m->m10;
    const double trace = xx + yy + zz;
    if (trace > 0) {
        const Pivot w(trace);
        *out = {xw * w.factor, yw * w.factor, zw * w.factor, w.component};
    } else if (zz > (yy > xx ? yy : xx)) {
        const Pivot z(zz - (xx + yy));
        *out = {zx * z.factor, yz * z.factor, z.component, zw * z.factor};
    } else if (yy > xx) {
        const Pivot y(yy - (zz + xx));
        *out = {xy * y.factor, y.component, yz * y.factor, yw * y.factor};
    } else {
        const Pivot x(xx - (yy + zz));
        *out = {x.component, xy * x.factor, zx * x.factor, xw * x.factor};
    }
    return 0;
}

int32_t Zan_Slerp(const Zan_Quat* q0, const Zan_Quat* q1, double t, Zan_Quat* out) {
    const Zan_Quat a = *q0, b = *q1;
    if (zan::nearlyEqual(a.x, b.x) && zan::nearlyEqual(a.y, b.y) && zan::nearlyEqual(a.z, b.z) &&
        zan::nearlyEqual(a.w, b.w)) {
        *out = a;
        return 0;
    }
    const double dot = a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
    const double cosine = std::fabs(dot);
    double s0 = 1 - t;
    double s1 = t;
    if (1 - cosine > 1e-5) {
        const zan::KeepErrno keepErrno;
        const double omega = std::acos(cosine);
        const double k = 1 / std::sin(omega);
        s0 = std::sin((1 - t) * omega) * k;
        s1 = std::sin(t * omega) * k;
    }
    // q1 and -q1 are the same rotation; the nearer one gives the shorter arc. Selects a factor, because a branch on the
    // sign would mispredict.
    const double signs[] = {1, -1};
    s1 *= signs[dot < 0 ? 1 : 0];
    *out = {s0 * a.x + s1 * b.x, s0 * a.y + s1 * b.y, s0 * a.z + s1 * b.z, s0 * a.w + s1 * b.w};
    return 0;
}

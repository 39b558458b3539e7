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

// The largest component comes from a square root, the others from quotients with that root (Shoemake, 1985).
int32_t Zan_Matrix4ToQuat(const Zan_Matrix4* m, Zan_Quat* out) {
    const auto e = zan::elements(*m);
    const double trace = m->m00 + m->m11 + m->m22;
    if (trace > 0) {
        const double s = std::sqrt(trace + 1);
        const double f = 0.5 / s;
        *out = {(m->m12 - m->m21) * f, (m->m20 - m->m02) * f, (m->m01 - m->m10) * f, s / 2};
        return 0;
    }
    int i = 0;
    if (e.at[1][1] > e.at[0][0]) i = 1;
    if (e.at[2][2] > e.at[i][i]) i = 2;
    const int j = (i + 1) % 3;
    const int k = (j + 1) % 3;
    const double s = std::sqrt(e.at[i][i] - (e.at[j][j] + e.at[k][k]) + 1);
    const double f = 0.5 / s;
    double vector[3];
    vector[i] = s / 2;
    vector[j] = (e.at[i][j] + e.at[j][i]) * f;
    vector[k] = (e.at[i][k] + e.at[k][i]) * f;
    *out = {vector[0], vector[1], vector[2], (e.at[j][k] - e.at[k][j]) * f};
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

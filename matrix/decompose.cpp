// Transforms of space taken apart: translation, scale, shear and three angles; the angles of an axis and a turn.
#include "frame/keep_errno.h"
#include "frame/report.h"
#include "matrix/nearly_equal.h"
#include "matrix/vectors.h"
#include "zan/matrix.h"

#include <cmath>

namespace {

using zan::Vector3;

struct Rotation {
    Vector3 r0, r1, r2;
};

Vector3 scaled(const Vector3& v, double k) { return {v.x * k, v.y * k, v.z * k}; }
Vector3 without(const Vector3& v, double share, const Vector3& along) {
    return {v.x - share * along.x, v.y - share * along.y, v.z - share * along.z};
}
Vector3 negated(const Vector3& v) { return {-v.x, -v.y, -v.z}; }
// Brings a row to unit length, unless it has none, and returns what length it had.
double takeLength(Vector3& row) {
    const double length = zan::length(row);
    if (length > 0) row = scaled(row, 1.0 / length);
    return length;
}

double clampedToOne(double x) {
    if (x < -1.0) return -1.0;
    return x > 1.0 ? 1.0 : x;
}
// Where the turn about y is a quarter, those about x and z cannot be told apart.
bool gimbalLock(double c) { return -1e-5 < c && c < 1e-5; }

// The angles of R = Rz * Ry * Rx.
void anglesXYZ(const Rotation& r, Zan_Matrix4Decomp* out) {
    const zan::KeepErrno keepErrno;
    out->ry = std::asin(clampedToOne(r.r2.x));
    const double c = std::cos(-out->ry);
    if (gimbalLock(c)) {
        out->rx = 0.0;
        out->rz = std::atan2(r.r0.y, r.r1.y);
        return;
    }
    const double k = 1.0 / c;
    out->rx = std::atan2(-(k * r.r2.y), k * r.r2.z);
    out->rz = std::atan2(-(k * r.r1.x), k * r.r0.x);
}

// The angles of R = Rx * Ry * Rz.
void anglesZYX(const Rotation& r, Zan_Matrix4Decomp* out) {
    const zan::KeepErrno keepErrno;
    const double a = std::asin(clampedToOne(r.r0.z));
    out->ry = -a;
    const double c = std::cos(-a);
    if (gimbalLock(c)) {
        out->rx = 0.0;
        out->rz = 0.0;
        if (!(-1e-5 < r.r2.y && r.r2.y < 1e-5)) {
            out->rx = -std::atan2(r.r2.y, r.r1.y);
        } else if (zan::nearlyEqual(r.r1.y, -1.0)) {
            out->rz = 3.141592653589793;
        }
        return;
    }
    const double k = 1.0 / c;
    out->rx = std::atan2(k * r.r1.z, k * r.r2.z);
    out->rz = std::atan2(k * r.r0.y, k * r.r0.x);
}

int32_t decompose(const Zan_Matrix4& m, Zan_Matrix4Decomp* out, unsigned char* failed,
                  void (*angles)(const Rotation&, Zan_Matrix4Decomp*)) {
    *out = {};
    const double w = m.m33;
    const bool affine = w != 0.0 && m.m03 / w == 0.0 && m.m13 / w == 0.0 && m.m23 / w == 0.0;
    if (!affine) {
        if (failed == nullptr)
            return zan::report(zan::Site::TakeApartMatrix4, Zan_Err_CannotDecompose, zan::kNoContext);
        *failed = 1;
        return Zan_Err_CannotDecompose;
    }
    out->tx = m.m30 / w;
    out->ty = m.m31 / w;
    out->tz = m.m32 / w;
    Rotation r = {
        {m.m00 / w, m.m01 / w, m.m02 / w}, {m.m10 / w, m.m11 / w, m.m12 / w}, {m.m20 / w, m.m21 / w, m.m22 / w}};
    out->sx = takeLength(r.r0);
    out->shearXY = zan::dot(r.r1, r.r0);
    r.r1 = without(r.r1, out->shearXY, r.r0);
    out->sy = takeLength(r.r1);
    out->shearXZ = zan::dot(r.r2, r.r0);
    r.r2 = without(r.r2, out->shearXZ, r.r0);
    out->shearYZ = zan::dot(r.r2, r.r1);
    r.r2 = without(r.r2, out->shearYZ, r.r1);
    out->sz = takeLength(r.r2);
    if (zan::dot(zan::cross(r.r0, r.r1), r.r2) < 0) {
        out->sx = -out->sx;
        out->sy = -out->sy;
        out->sz = -out->sz;
        r = {negated(r.r0), negated(r.r1), negated(r.r2)};
    }
    angles(r, out);
    return 0;
}

}  // namespace

int32_t Zan_DecomposeMatrix4(const Zan_Matrix4* m, Zan_Matrix4Decomp* out, unsigned char* failed) {
    return decompose(*m, out, failed, anglesXYZ);
}
int32_t Zan_DecomposeMatrix4ZYX(const Zan_Matrix4* m, Zan_Matrix4Decomp* out, unsigned char* failed) {
    return decompose(*m, out, failed, anglesZYX);
}

int32_t Zan_GetOrderedXYZRotationFromMatrix(const Zan_Matrix4* m, double* rx, double* ry, double* rz) {
    Zan_Matrix4Decomp parts;
    const int32_t code = Zan_DecomposeMatrix4(m, &parts, nullptr);
    *rx = parts.rx;
    *ry = parts.ry;
    *rz = parts.rz;
    return code;
}

int32_t Zan_ConvertAxisAngleToOrderedXYZRotation(double ax, double ay, double az, double radians, double* rx,
                                                 double* ry, double* rz) {
    *rx = *ry = *rz = 0.0;
    Zan_Matrix4 turn(true);
    const int32_t code = Zan_RotateMatrix4(ax, ay, az, radians, &turn);
    return code != 0 ? code : Zan_GetOrderedXYZRotationFromMatrix(&turn, rx, ry, rz);
}

void Zan_Matrix4::Decompose(Zan_Matrix4Decomp* out) const {
    zan::throwIfFailed(Zan_DecomposeMatrix4(this, out, nullptr));
}
void Zan_Matrix4::DecomposeZYX(Zan_Matrix4Decomp* out) const {
    zan::throwIfFailed(Zan_DecomposeMatrix4ZYX(this, out, nullptr));
}

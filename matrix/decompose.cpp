// Decomposes transforms of space into translation, scale, shear and three angles; converts axis and angle to those
// angles.
#include "frame/keep_errno.h"
#include "frame/report.h"
#include "matrix/elements.h"
#include "matrix/nearly_equal.h"
#include "matrix/vectors.h"
#include "zan/matrix.h"

#include <cmath>
#include <numbers>

namespace {

using zan::Vector3;

constexpr double kGimbalTolerance = 1e-5;

struct Rotation {
    Vector3 r0, r1, r2;  // the rows
};

Vector3 scaled(const Vector3& v, double k) { return {v.x * k, v.y * k, v.z * k}; }
// v - k * axis.
Vector3 subtractScaled(const Vector3& v, double k, const Vector3& axis) {
    return {v.x - k * axis.x, v.y - k * axis.y, v.z - k * axis.z};
}
Vector3 negated(const Vector3& v) { return {-v.x, -v.y, -v.z}; }
// Scales a row to unit length, except one of length 0, and returns the length it had.
double normalizeRow(Vector3& row) {
    const double length = zan::length(row);
    if (length > 0) row = scaled(row, 1.0 / length);
    return length;
}

// Rounding can take the sine of an angle just out of the domain of asin.
double clampedToOne(double x) {
    if (x < -1.0) return -1.0;
    return x > 1.0 ? 1.0 : x;
}
bool withinGimbalTolerance(double x) { return -kGimbalTolerance < x && x < kGimbalTolerance; }
// With a rotation of 90 degrees about y, the rotations about x and z have the same axis, and only their sum or
// difference is determined.
bool gimbalLock(double cosY) { return withinGimbalTolerance(cosY); }

// The angles of the rotation R = Rz * Ry * Rx.
void anglesXYZ(const Rotation& r, Zan_Matrix4Decomp* out) {
    const zan::KeepErrno keepErrno;
    out->ry = std::asin(clampedToOne(r.r2.x));
    const double cosY = std::cos(-out->ry);
    if (gimbalLock(cosY)) {
        out->rx = 0.0;
        out->rz = std::atan2(r.r0.y, r.r1.y);
        return;
    }
    const double k = 1.0 / cosY;
    out->rx = std::atan2(-(k * r.r2.y), k * r.r2.z);
    out->rz = std::atan2(-(k * r.r1.x), k * r.r0.x);
}

// The angles of the rotation R = Rx * Ry * Rz.
void anglesZYX(const Rotation& r, Zan_Matrix4Decomp* out) {
    const zan::KeepErrno keepErrno;
    const double a = std::asin(clampedToOne(r.r0.z));
    out->ry = -a;
    const double cosY = std::cos(-a);
    if (gimbalLock(cosY)) {
        out->rx = 0.0;
        out->rz = 0.0;
        if (!withinGimbalTolerance(r.r2.y)) {
            out->rx = -std::atan2(r.r2.y, r.r1.y);
        } else if (zan::nearlyEqual(r.r1.y, -1.0)) {
            out->rz = std::numbers::pi;
        }
        return;
    }
    const double k = 1.0 / cosY;
    out->rx = std::atan2(k * r.r1.z, k * r.r2.z);
    out->rz = std::atan2(k * r.r0.y, k * r.r0.x);
}

// Divides all elements by m33 unless it is 1. False if the last column is then not (0, 0, 0, 1).
bool makeAffine(zan::Elements<4>& m) {
    const double w = m.at[3][3];
    if (w == 1.0) return m.at[0][3] == 0.0 && m.at[1][3] == 0.0 && m.at[2][3] == 0.0;
    const bool affine = w != 0.0 && m.at[0][3] / w == 0.0 && m.at[1][3] / w == 0.0 && m.at[2][3] / w == 0.0;
    if (!affine) return false;
    for (auto& row : m.at) {
        for (int j = 0; j < 3; ++j) row[j] /= w;
    }
    return true;
}

// Gram-Schmidt orthogonalization of the rows; `angles` reads the angles from the rotation that remains.
template <void (*angles)(const Rotation&, Zan_Matrix4Decomp*)>
int32_t decompose(const Zan_Matrix4& matrix, Zan_Matrix4Decomp* out, unsigned char* failed) {
    auto m = zan::elements(matrix);
    if (!makeAffine(m)) {
        *out = {};
        if (failed == nullptr)
            return zan::report(zan::Site::InvertOrDecomposeMatrix4, Zan_Err_CannotDecompose, zan::kNoContext);
        *failed = 1;
        return Zan_Err_CannotDecompose;
    }
    const auto row = [&m](int i) { return Vector3(m.at[i][0], m.at[i][1], m.at[i][2]); };
    out->tx = m.at[3][0];
    out->ty = m.at[3][1];
    out->tz = m.at[3][2];
    Rotation r = {row(0), row(1), row(2)};
    out->sx = normalizeRow(r.r0);
    out->shearXY = zan::dot(r.r1, r.r0);
    r.r1 = subtractScaled(r.r1, out->shearXY, r.r0);
    out->sy = normalizeRow(r.r1);
    out->shearXZ = zan::dot(r.r2, r.r0);
    r.r2 = subtractScaled(r.r2, out->shearXZ, r.r0);
    out->shearYZ = zan::dot(r.r2, r.r1);
    r.r2 = subtractScaled(r.r2, out->shearYZ, r.r1);
    out->sz = normalizeRow(r.r2);
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
    return decompose<anglesXYZ>(*m, out, failed);
}
int32_t Zan_DecomposeMatrix4ZYX(const Zan_Matrix4* m, Zan_Matrix4Decomp* out, unsigned char* failed) {
    return decompose<anglesZYX>(*m, out, failed);
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
    Zan_Matrix4 rotation(/*identity=*/true);
    const int32_t code = Zan_RotateMatrix4(ax, ay, az, radians, &rotation);
    return code != 0 ? code : Zan_GetOrderedXYZRotationFromMatrix(&rotation, rx, ry, rz);
}

void Zan_Matrix4::Decompose(Zan_Matrix4Decomp* out) const {
    zan::throwIfFailed(Zan_DecomposeMatrix4(this, out, nullptr));
}
void Zan_Matrix4::DecomposeZYX(Zan_Matrix4Decomp* out) const {
    zan::throwIfFailed(Zan_DecomposeMatrix4ZYX(this, out, nullptr));
}

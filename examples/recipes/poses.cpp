// Poses: takes transforms apart, interpolates between them, and puts them together again.
//! [start]
#include <zan/zan.h>

#include <cmath>
#include <cstdio>
//! [start]

namespace {

//! [pose]
// A transform in parts that can be interpolated.
struct Pose {
    Zan_Vector3T<double> translation, scale;
    double shearXY, shearXZ, shearYZ;
    Zan_Quat rotation;
};
//! [pose]

//! [apart]
bool takeApart(const Zan_Matrix4& m, Pose* pose) {
    Zan_Matrix4Decomp parts;
    unsigned char failed = 0;  // passing it makes a failure quiet: a projective matrix has no parts
    if (Zan_DecomposeMatrix4(&m, &parts, &failed) != 0) return false;
    pose->translation = {parts.tx, parts.ty, parts.tz};
    pose->scale = {parts.sx, parts.sy, parts.sz};
    // A mirrored transform has three negative scales. Its shears refer to the axes before they were negated.
    const double sign = parts.sx < 0.0 ? -1.0 : 1.0;
    pose->shearXY = sign * parts.shearXY;
    pose->shearXZ = sign * parts.shearXZ;
    pose->shearYZ = sign * parts.shearYZ;
    Zan_Matrix4 rotation(true);
    rotation.RotateXYZ(parts.rx, parts.ry, parts.rz);
    Zan_Matrix4ToQuat(&rotation, &pose->rotation);
    return true;
}
//! [apart]

//! [together]
// Scale and shear in one lower triangular matrix, then the rotation, then the translation.
Zan_Matrix4 putTogether(const Pose& pose) {
    Zan_Matrix4 m(true);
    m.m00 = pose.scale.x;
    m.m10 = pose.shearXY;
    m.m11 = pose.scale.y;
    m.m20 = pose.shearXZ;
    m.m21 = pose.shearYZ;
    m.m22 = pose.scale.z;
    Zan_Matrix4 rotation;
    Zan_QuatToMatrix4(&pose.rotation, &rotation);
    m *= rotation;
    m.Translate(pose.translation.x, pose.translation.y, pose.translation.z);
    return m;
}
//! [together]

//! [between]
Pose between(const Pose& a, const Pose& b, double t) {
    const auto mix = [t](double from, double to) { return from + (to - from) * t; };
    Pose pose{};
    pose.translation = {mix(a.translation.x, b.translation.x), mix(a.translation.y, b.translation.y),
                        mix(a.translation.z, b.translation.z)};
    pose.scale = {mix(a.scale.x, b.scale.x), mix(a.scale.y, b.scale.y), mix(a.scale.z, b.scale.z)};
    pose.shearXY = mix(a.shearXY, b.shearXY);
    pose.shearXZ = mix(a.shearXZ, b.shearXZ);
    pose.shearYZ = mix(a.shearYZ, b.shearYZ);
    Zan_Slerp(&a.rotation, &b.rotation, t, &pose.rotation);
    return pose;
}
//! [between]

//! [flat]
// A scale of zero along z leaves a row of zeros, which has no direction: the rotation cannot be read from it. The
// direction is known all the same: it is perpendicular to the other two rows.
bool takeFlatApart(Zan_Matrix4 m, Pose* pose) {
    Zan_Vector3T<double> normal(m.m01 * m.m12 - m.m02 * m.m11, m.m02 * m.m10 - m.m00 * m.m12,
                                m.m00 * m.m11 - m.m01 * m.m10);
    const double length = std::sqrt(normal.LengthSquared());
    m.m20 = normal.x / length;
    m.m21 = normal.y / length;
    m.m22 = normal.z / length;
    if (!takeApart(m, pose)) return false;
    pose->scale.z = 0.0;
    return true;
}
//! [flat]

//! [check]
bool same(const Zan_Matrix4& a, const Zan_Matrix4& b) { return Zan_EqualMatrixWithinEpsilon(a, b, 1e-12); }

// Two decimals are shown, and no negative zero.
double shown(double value) { return std::round(value * 100.0) / 100.0 + 0.0; }

void check(const char* what, const Zan_Matrix4& m) {
    Pose pose{};
    if (!takeApart(m, &pose)) {
        std::printf("%-10s no parts\n", what);
        return;
    }
    std::printf("%-10s scale (%g, %g, %g), shears (%g, %g, %g), put together again: %s\n", what, shown(pose.scale.x),
                shown(pose.scale.y), shown(pose.scale.z), shown(pose.shearXY), shown(pose.shearXZ), shown(pose.shearYZ),
                same(putTogether(pose), m) ? "the same" : "another transform");
}
//! [check]

//! [transforms]
void checkTransforms() {
    Zan_Matrix4 start(true);
    start.Scale(2.0, 3.0, 1.0);
    start.RotateXYZ(0.3, 0.4, 0.5);
    start.Translate(10.0, 20.0, 30.0);
    check("scaled", start);

    Zan_Matrix4 sheared(true);
    sheared.m10 = 0.5;
    sheared *= start;
    check("sheared", sheared);

    Zan_Matrix4 mirrored(true);
    mirrored.m10 = 0.5;
    mirrored.Scale(-1.0, 1.0, 1.0);
    mirrored *= start;
    check("mirrored", mirrored);

    Zan_Matrix4 projective = start;
    projective.Project(1000.0);
    check("projected", projective);

    Zan_Matrix4 flat(true);
    flat.Scale(2.0, 3.0, 0.0);
    flat.RotateXYZ(0.3, 0.4, 0.5);
    check("flat", flat);
    Pose flatPose{};
    const bool apart = takeFlatApart(flat, &flatPose);
    std::printf("%-10s with its normal added, put together again: %s\n", "flat",
                apart && same(putTogether(flatPose), flat) ? "the same" : "another transform");
}
//! [transforms]

//! [animation]
void animate() {
    std::puts("from a rotation by -1 to one by 1.5, growing from 1 to 3 and moving by 100:");
    Zan_Matrix4 left(true);
    left.RotateXYZ(0.0, 0.0, -1.0);
    Zan_Matrix4 right(true);
    right.Scale(3.0, 3.0, 1.0);
    right.RotateXYZ(0.0, 0.0, 1.5);
    right.Translate(100.0, 0.0, 0.0);
    Pose from{};
    Pose to{};
    if (!takeApart(left, &from) || !takeApart(right, &to)) return;
    for (const double t : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        const Zan_Matrix4 m = putTogether(between(from, to, t));
        Zan_Vector3T<double> tip(1.0, 0.0, 0.0);
        m.TransformPoint(&tip);
        std::printf("  t %.2f: (1, 0) goes to (%.2f, %.2f)\n", t, tip.x, tip.y);
    }
}
//! [animation]

}  // namespace

int main() {
    checkTransforms();
    animate();
}

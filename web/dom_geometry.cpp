// The geometry of dom.js: outlines of transformed boxes, computed with the library's operations. Arguments and results
// pass through one exchange buffer, so that JavaScript copies numbers and nothing has to be freed.
#include "zan/zan.h"

#include <emscripten.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

// A browser's matrix carries a box to homogeneous points (x, y, z, w); the plane through the eye is w = 0. For the
// library's eye space, depth = w * kDepthOfW, so that its near plane (depth 0.1) is at w = 1e-6. Only points with a
// smaller w are cut away; they would be drawn at more than 1e6 times their distance from the axis. The depth of a cut,
// 0.1, has a relative error of about 1e-10, and so have its coordinates.
constexpr double kDepthOfW = Zan_kNearPlaneZ * 1e6;

// A plane is edge-on when the sine of its angle to the line of sight is below this: a box of 1000 pixels then looks
// thinner than a pixel.
constexpr double kEdgeOnSine = 0.001;

constexpr int32_t kMaxMatrices = 32;
constexpr int32_t kMaxPoints = 4 + kMaxMatrices + 4;

// geometry.js relies on this layout.
struct Exchange {
    Zan_Matrix4 matrices[kMaxMatrices];
    Zan_Vector2T<double> points[kMaxPoints];
} exchange;

struct Box {
    Zan_Vector2T<double> corners[4];
    Box(double x, double y, double width, double height)
        : corners{{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}} {}
};

// A browser's matrix, to (x, y, z, w), becomes one to (x, y, depth).
Zan_Matrix4 toEye(const Zan_Matrix4& m) {
    Zan_Matrix4 eye(false);
    eye.m00 = m.m00, eye.m01 = m.m01, eye.m02 = m.m03 * kDepthOfW, eye.m03 = 0;
    eye.m10 = m.m10, eye.m11 = m.m11, eye.m12 = m.m13 * kDepthOfW, eye.m13 = 0;
    eye.m20 = m.m20, eye.m21 = m.m21, eye.m22 = m.m23 * kDepthOfW, eye.m23 = 0;
    eye.m30 = m.m30, eye.m31 = m.m31, eye.m32 = m.m33 * kDepthOfW, eye.m33 = 1;
    return eye;
}

// (x, y, depth) to (x / w, y / w).
Zan_Matrix4 eyeToScreen() {
    Zan_Matrix4 screen(true);
    screen.m23 = 1 / kDepthOfW;
    screen.m33 = 0;
    return screen;
}

// A vertex of the polygon that goes through the matrices, with the corner of the box that it comes from.
struct Vertex {
    Zan_Vector2T<double> point;
    int32_t corner;  // -1 for a point where an edge was cut
};
using Polygon = std::vector<Vertex>;

// The usual case: a box through the first matrix, which is not degenerate.
Polygon carryBox(const Box& box, const Zan_Matrix4& m) {
    Zan_TransformPoly3D outline;
    for (int32_t i = 0; i < 4; ++i) outline.SetLayerPoint(i, box.corners[i]);
    outline.TransformPointsToEye(toEye(m));
    outline.TransformPointsToScreen(eyeToScreen());
    outline.InitPolyPoints();
    // The outline has the corners in front, in order; where edges cross the near plane, a cut after the last corner in
    // front and one before the next corner in front.
    Polygon polygon;
    int32_t next = 0;
    for (int32_t i = 0; i < 4; ++i) {
        Zan_Vector2T<double> corner;
        std::pair<Zan_Vector2T<double>, Zan_Vector2T<double>> edge;
        const bool inFront = outline.GetPoint(i, &corner);
        const bool nextInFront = outline.GetPoint((i + 1) % 4, &corner);
        if (!outline.GetEdge(i, &edge)) continue;
        polygon.push_back({outline.GetPolyPoints()[next++], inFront ? i : -1});
        if (!nextInFront) polygon.push_back({outline.GetPolyPoints()[next++], -1});
    }
    return polygon;
}

// The same for any polygon, edge by edge: one that has been clipped already, or one under a degenerate matrix.
Polygon carry(const Polygon& polygon, const Zan_Matrix4& m) {
    const Zan_Matrix4 eye = toEye(m);
    std::vector<Zan_Vector3T<double>> points;
    for (const Vertex& v : polygon) points.emplace_back(v.point.x, v.point.y, 0.0);
    const auto count = static_cast<int32_t>(points.size());
    Zan_Transform3DFloatPoints(&eye, count, points.data());
    std::vector<Zan_Vector3T<double>> kept;
    Polygon result;
    const auto keep = [&](const Zan_Vector3T<double>& p, int32_t corner) {
        kept.push_back(p);
        result.push_back({{}, corner});
    };
    for (size_t i = 0; i < points.size(); ++i) {
        const size_t j = (i + 1) % points.size();
        bool behind = false, nextBehind = false;
        Zan_Vector3T<double> cut;
        Zan_Clip3DLine(&points[i], &points[j], &behind, &nextBehind, &cut);
        if (!behind) keep(points[i], polygon[i].corner);
        if (behind != nextBehind) keep(cut, -1);
    }
    const Zan_Matrix4 screen = eyeToScreen();
    Zan_Transform3DFloatPoints(&screen, static_cast<int32_t>(kept.size()), kept.data());
    for (size_t i = 0; i < kept.size(); ++i) result[i].point = {kept[i].x, kept[i].y};
    return result;
}

// For Zan_TransformPoly3D a matrix is degenerate when one of its first two rows is nearly zero.
bool degenerate(const Zan_Matrix4& m) {
    const auto shortRow = [](double x, double y, double w) { return x * x + y * y + w * w < 1e-11; };
    return shortRow(m.m00, m.m01, m.m03) || shortRow(m.m10, m.m11, m.m13);
}

}  // namespace

extern "C" {

/// The buffer through which matrices and points are exchanged.
EMSCRIPTEN_KEEPALIVE Exchange* zan_dom_exchange() { return &exchange; }

/// Carries a box through count matrices, clipping at the near plane of each; the outline is in points.
/// @return the number of points in the lowest byte; bits 8 to 11 are set for the corners that are behind
EMSCRIPTEN_KEEPALIVE int32_t zan_dom_outline(int32_t count, double x, double y, double width, double height) {
    const Box box(x, y, width, height);
    Polygon polygon;
    int32_t at = 0;
    if (count > 0 && !degenerate(exchange.matrices[0])) {
        polygon = carryBox(box, exchange.matrices[at++]);
    } else {
        for (int32_t i = 0; i < 4; ++i) polygon.push_back({box.corners[i], i});
    }
    for (; at < count; ++at) polygon = carry(polygon, exchange.matrices[at]);
    int32_t behind = 0xF00;
    for (size_t i = 0; i < polygon.size(); ++i) {
        exchange.points[i] = polygon[i].point;
        if (polygon[i].corner >= 0) behind &= ~(0x100 << polygon[i].corner);
    }
    return static_cast<int32_t>(polygon.size()) | behind;
}

/// Whether a point lies in an outline or within a tolerance of it.
EMSCRIPTEN_KEEPALIVE int32_t zan_dom_inside(int32_t count, double x, double y, double tolerance) {
    const Zan_Vector2T<double> point = {x, y};
    unsigned char inside = 0;
    Zan_IsFloatPointInConcavePoly(&point, exchange.points, count, tolerance, &inside);
    return inside;
}

/// matrices[0] := matrices[0] * matrices[1]; the transform of matrices[0] is applied first.
EMSCRIPTEN_KEEPALIVE void zan_dom_concat() {
    Zan_ConcatMatrix4(&exchange.matrices[0], &exchange.matrices[1], &exchange.matrices[0]);
}

/// matrices[0] := a rotation about an axis, as in CSS; the identity for an axis of zero length.
EMSCRIPTEN_KEEPALIVE void zan_dom_rotation(double x, double y, double z, double radians) {
    exchange.matrices[0].SetIdentity();
    const double length = std::sqrt(x * x + y * y + z * z);
    if (!(length > 1e-12)) return;
    if (Zan_RotateMatrix4(x, y, z, radians, &exchange.matrices[0]) != 0) exchange.matrices[0].SetIdentity();
}

/// matrices[0] := its inverse, or the adjugate if it is singular. Returns 0 if it is singular.
EMSCRIPTEN_KEEPALIVE int32_t zan_dom_invert() {
    return Zan_InverseMatrix4Quiet(&exchange.matrices[0], &exchange.matrices[0], nullptr) == 0;
}

/// The determinant of matrices[0].
EMSCRIPTEN_KEEPALIVE double zan_dom_determinant() {
    double determinant = 0;
    Zan_GetMatrix4Determinant(&exchange.matrices[0], &determinant);
    return determinant;
}

/// Whether a box is seen edge-on through matrices[0]. The eye is the point that the matrix maps to x = y = w = 0; it
/// may be at infinity, a direction.
EMSCRIPTEN_KEEPALIVE int32_t zan_dom_edge_on(double x, double y, double width, double height) {
    Zan_Matrix4 inverse;
    if (Zan_InverseMatrix4Quiet(&exchange.matrices[0], &inverse, nullptr) != 0) return 0;
    Zan_Vector4T<double> eye(0, 0, 1, 0);
    Zan_TransformVector4NoDivide(&inverse, 1, &eye);
    const double size = std::max({width, height, 1.0});
    const double length = std::sqrt(eye.x * eye.x + eye.y * eye.y + eye.z * eye.z);
    // An eye at infinity is placed so far away that its lines of sight are parallel to within rounding.
    const double w = std::fabs(eye.w) * 1e9 * size > length ? eye.w : length / (1e9 * size);
    Zan_Matrix4 fromEye(true);
    Zan_TranslateMatrix4(-eye.x / w, -eye.y / w, -eye.z / w, &fromEye);
    const Box box(x, y, width, height);
    Zan_Vector3T<double> quad[4];
    for (int32_t i = 0; i < 4; ++i) quad[i] = {box.corners[i].x, box.corners[i].y, 0};
    bool edgeOn = false;
    Zan_IsQuadEdgeOn(&fromEye, quad, kEdgeOnSine, false, &edgeOn);
    return edgeOn;
}
}

// Prints the guide's table of absolute tolerances. Each threshold is found by bisection with calls of the operation.
#include "zan/platform/bel.h"

#include <zan/zan.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

using Point = Zan_Vector2T<double>;
using Vector = Zan_Vector3T<double>;

constexpr double kDegreesPerRadian = 57.29577951308232;

// Each predicate is true when the operation treats the quantity as nothing, because it is too small. The exception is
// distanceToTheLine, which is true while the length is not too large.

bool behindNearPlane(double depth) {
    Zan_Vector3T<double> p(0.0, 0.0, depth);
    return !Zan_TransformPoint3DtoScreen(Zan_Matrix4(true), Zan_Matrix4(true), Zan_Matrix3(true), &p);
}
bool degenerate(double rowLength) {
    Zan_Matrix3 m(true);
    m.Scale(rowLength, 1.0);
    Zan_TransformPoly2D layer;
    for (int32_t i = 0; i < 4; ++i) layer.SetLayerPoint(i, {0.0, 0.0});
    layer.TransformPoints(m);
    return !layer.IsVisible();
}
// A sliver along the left edge of the clip square (edges of length 1): its right side is at `distance` from that edge.
bool clippedAway(double distance) {
    using Polygon = std::vector<Zan_Vector4T<double>>;
    const Polygon square = {{0, 0, 0, 1}, {0, 1, 0, 1}, {1, 1, 0, 1}, {1, 0, 0, 1}};
    const Polygon sliver = {{0, 0.25, 0, 1}, {0, 0.75, 0, 1}, {distance, 0.75, 0, 1}, {distance, 0.25, 0, 1}};
    Polygon left;
    Zan_PolyPolyClip2D(&square, &sliver, &left);
    return left.empty();
}
bool onTheEdge(double distance) {
    const std::array<Point, 4> square = {Point(0, 0), Point(1, 0), Point(1, 1), Point(0, 1)};
    const Point above(0.5, -distance);
    unsigned char inside = 0;
    Zan_IsFloatPointInConcavePoly(&above, square.data(), 4, 0.0, &inside);
    return inside != 0;
}
bool notDivided(double w) {
    Zan_Matrix4 m(true);
    m.m33 = w;
    Zan_Vector4T<double> p(1.0, 0.0, 0.0, 1.0);
    Zan_TransformVector4(&m, 1, &p);
    return p.x == 1.0;
}
bool noAxis(double length) {
    double rx = 0.0;
    double ry = 0.0;
    double rz = 0.0;
    return Zan_ConvertAxisAngleToOrderedXYZRotation(length, 0.0, 0.0, 1.0, &rx, &ry, &rz) != 0;
}
bool ownAxisSkipped(double scale) {
    Zan_Matrix4 m(true);
    m.Scale(scale, 1.0, 1.0);
    Zan_RotateMatrix4XYZPlus(1.0, 0.0, 0.0, 0, &m);
    return m.m11 == 1.0;
}
bool singular3(double pivot) {
    Zan_Matrix3 m(true);
    m.m00 = pivot;
    return m.InvertQuiet();
}
bool singular4(double determinant) {
    Zan_Matrix4 m(true);
    m.m00 = determinant;
    return m.InvertQuiet();
}
bool normalNotScaled(double twiceTheArea) {
    const std::array<Vector, 3> triangle = {Vector(0, 0, 0), Vector(twiceTheArea, 0, 0), Vector(0, 1, 0)};
    Zan_PlaneEq plane;
    Zan_GetPlaneEquation(triangle.data(), 3, &plane, nullptr);
    return plane.c < 0.5;
}
bool parallel(double cosine) {
    const Zan_PlaneEq plane = {0.0, 0.0, 1.0, -1.0};
    const Zan_Ray ray = {{0.0, 0.0, 0.0, 1.0}, {1.0, 0.0, cosine}};
    Vector hit;
    bool found = false;
    return Zan_RayIntersectPlane(&plane, false, &ray, &hit, nullptr, &found) == 0 && !found;
}
bool distanceToTheEnd(double length) {
    const Point p(3.0, 4.0);
    const Point a(0.0, 0.0);
    const Point b(length, 0.0);
    double distance = 0.0;
    Zan_PerpDistTo2DLine(&p, &a, &b, nullptr, &distance);
    return distance == 5.0;
}
bool distanceToTheLine(double length) { return !distanceToTheEnd(length); }
bool noNormal(double twiceTheArea) {
    const double width = twiceTheArea / 2;
    const std::array<Vector, 4> quad = {Vector(0, 0, 1), Vector(width, 0, 1), Vector(width, 1, 1), Vector(0, 1, 1)};
    const Zan_Matrix4 identity(true);
    bool edgeOn = false;
    Zan_IsQuadEdgeOn(&identity, quad.data(), 2.0, false, &edgeOn);  // with 2, every cosine counts as edge-on
    return !edgeOn;
}
bool gimbalLock(double cosine) {
    Zan_Matrix4 m(true);
    m.RotateXYZ(0.1, std::acos(cosine), 0.2);
    Zan_Matrix4Decomp parts;
    m.Decompose(&parts);
    return parts.rx == 0.0;
}
// A linear step leaves the unit sphere; a spherical one does not.
bool linear(double oneMinusCosine) {
    const double angle = std::acos(1.0 - oneMinusCosine);
    const Zan_Quat from = {0.0, 0.0, 0.0, 1.0};
    const Zan_Quat to = {std::sin(angle), 0.0, 0.0, std::cos(angle)};
    Zan_Quat middle;
    Zan_Slerp(&from, &to, 0.5, &middle);
    return middle.x * middle.x + middle.w * middle.w < 1.0 - 1e-9;
}
bool equalScales(double scale) {
    Zan_Matrix3 m(true);
    m.Scale(scale, 0.0);
    Zan_Matrix4 wide;
    Zan_Matrix3ToMatrix4Uniform(&m, &wide);
    return wide.m22 != 1.0;
}
bool halfTurn(double degrees) {
    Zan_Matrix4Decomp parts{};
    parts.sx = parts.sy = parts.sz = 1.0;
    parts.ry = (180.0 - degrees) / kDegreesPerRadian;
    Zan_Correct3DDecompFor2D(&parts);
    return parts.sx < 0.0;
}

struct Tolerance {
    const char* operation;
    const char* quantity;
    bool (*ignored)(double);
    double low, high;  // the predicate is true at low and false at high
    const char* effect;
    const char* advice;
};

constexpr std::array kTolerances = {
    Tolerance{"Near plane: `Zan_TransformPoly3D`, `Zan_Clip3DLine`, `Zan_TransformPoint3DtoScreen`",
              "depth in eye space", behindNearPlane, 0.001, 10.0, "behind the eye",
              "a tenth of a pixel; in metres, everything nearer than ten centimetres disappears"},
    Tolerance{"`Zan_TransformPoly2D::TransformPoints`, `Zan_TransformPoly3D`", "length of row 0 or 1 of the matrix",
              degenerate, 1e-9, 1.0,
              "`Zan_TransformPoly2D`: the layer is invisible; `Zan_TransformPoly3D`: the step is skipped",
              "a layer a million pixels wide that shrinks to one"},
    Tolerance{"`Zan_PolyPolyClip2D`", "distance to a clip edge of length 1; for length L it is divided by L",
              clippedAway, 1e-9, 1.0, "counts as outside",
              "invisible; in degrees, or on a page of size 1, small polygons vanish"},
    Tolerance{"`Zan_IsFloatPointInConcavePoly` and the outlines' `IsPointInside`",
              "vertical distance to an edge, for coordinates up to 1; relative above", onTheEdge, 1e-15, 1.0,
              "counts as on the edge", "invisible"},
    Tolerance{"`Zan_TransformVector4`, the *Divide* members and others that divide by w", "w", notDivided, 1e-15, 0.5,
              "not divided, or reported", "after `Project`, w is depth / focal length: this small only at the eye"},
    Tolerance{"`Zan_RotateMatrix4`, `RotateAxis`, `Zan_ConvertAxisAngleToOrderedXYZRotation`", "length of the axis",
              noAxis, 1e-15, 1.0, "error", "pass a unit vector"},
    Tolerance{"`Zan_RotateMatrix4XYZPlus` about own axes", "coordinates of the transformed axis", ownAxisSkipped, 1e-15,
              1.0, "rotation left out", "only a scale of about 0"},
    Tolerance{"`Zan_InverseMatrix`, `Zan_Matrix3::Invert`", "pivot of the elimination", singular3, 1e-30, 1.0,
              "singular", "only a scale of about 0"},
    Tolerance{"`Zan_InverseMatrix4`, `Zan_CalcNormalMatrix4`, `Zan_Matrix4::Invert`", "determinant", singular4, 1e-30,
              1.0, "singular",
              "a uniform scale of 4.6e-6: far smaller than any scale in use when both spaces are in pixels"},
    Tolerance{"`Zan_GetPlaneEquation`", "twice the area of the outline", normalNotScaled, 1e-15, 1.0,
              "the normal is not scaled to length 1", "only points on a line"},
    Tolerance{"`Zan_RayIntersectPlane`", "normal . direction", parallel, 1e-15, 1.0, "the ray is parallel and misses",
              "pass a normal and a direction of length about 1"},
    Tolerance{"`Zan_PerpDistTo2DLine`, `GetMinimumEdgeDistance`", "length of the segment", distanceToTheEnd, 1e-15, 1.0,
              "the distance to its first end (`GetMinimumEdgeDistance`: to its nearer end)", "invisible"},
    Tolerance{
        "`Zan_PerpDistTo2DLine`, `GetMinimumEdgeDistance` for long segments (the effect is at and above the threshold)",
        "length of the segment", distanceToTheLine, 1.0, 1e15,
        "the distance to its first end (`GetMinimumEdgeDistance`: to its nearer end)",
        "only an edge that ends almost at the eye"},
    Tolerance{"`Zan_IsQuadEdgeOn`", "twice the area of the transformed quadrilateral", noNormal, 1e-15, 1.0,
              "answers false", "invisible"},
    Tolerance{"`Zan_DecomposeMatrix4` and all that reads angles", "cosine of the rotation about y", gimbalLock, 1e-9,
              0.5, "gimbal lock: the angle about x is 0 (`Zan_DecomposeMatrix4ZYX`: about z)",
              "within 0.0006 degrees of a quarter turn, in any unit"},
    Tolerance{"`Zan_Slerp`", "1 - cosine of half the angle between the rotations", linear, 1e-7, 0.5,
              "linear instead of spherical", "rotations that differ by less than 0.5 degrees, in any unit"},
    Tolerance{"`Zan_Matrix3ToMatrix4Uniform`",
              "a scale, when the other is 0 (their squares are compared: within 1e-12, relative above 1)", equalScales,
              1e-12, 0.5, "the two scales count as equal", "only scales of about 0"},
    Tolerance{"`Zan_Correct3DDecompFor2D`", "degrees from a half turn", halfTurn, 1e-14, 1.0, "counts as a half turn",
              "only rotations that were meant as half turns"},
};

double threshold(const Tolerance& t) {
    double low = t.low;
    double high = t.high;
    if (!t.ignored(low) || t.ignored(high)) return NAN;
    for (int i = 0; i < 100; ++i) {
        const double middle = std::sqrt(low * high);
        (t.ignored(middle) ? low : high) = middle;
    }
    return high;
}

}  // namespace

int main() {
    Bel_SetReportHandler([](void*, const Bel_Report*) {}, nullptr);  // a short axis is reported each time
    std::puts("| Operation | Quantity | Threshold | Below it | In pixels |\n|---|---|---|---|---|");
    for (const Tolerance& t : kTolerances)
        std::printf("| %s | %s | %.2g | %s | %s |\n", t.operation, t.quantity, threshold(t), t.effect, t.advice);
}

// Prints the guide's table of traps: what the interface does that a newcomer may not expect. Every row has been shown
// by calls of the library; a row that is no longer true fails the program.
#include "zan/platform/bel.h"

#include <zan/zan.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

using Point = Zan_Vector2T<double>;
using Polygon = std::vector<Zan_Vector4T<double>>;

Zan_Matrix3 moved(double x) {
    Zan_Matrix3 m(true);
    m.Translate(x, 0.0);
    return m;
}
Zan_Matrix3 scaled(double k) {
    Zan_Matrix3 m(true);
    m.Scale(k, k);
    return m;
}

bool concatOrder() {
    Zan_Matrix3 product = moved(1.0);
    const Zan_Matrix3 factor = scaled(2.0);
    Zan_ConcatMatrix(&factor, &product);  // moved, then scaled
    Zan_Matrix4 a(true);
    Zan_Matrix4 b(true);
    a.Translate(1.0, 0.0, 0.0);
    b.Scale(2.0, 2.0, 2.0);
    Zan_Matrix4 product4;
    Zan_ConcatMatrix4(&a, &b, &product4);  // moved, then scaled
    return product.m20 == 2.0 && product4.m30 == 2.0;
}
bool builderArguments() {
    Zan_Matrix3 plane(true);
    Zan_Matrix4 space(true);
    return Zan_TranslateMatrix(&plane, 1.0, 2.0) == 0 && Zan_TranslateMatrix4(1.0, 2.0, 3.0, &space) == 0;
}
bool angleUnits() {
    Zan_Matrix3 degrees(true);
    degrees.Rotate(90.0);
    Zan_Matrix4 radians(true);
    radians.RotateXYZ(0.0, 0.0, 1.5707963267948966);
    return std::fabs(degrees.m01 - 1.0) < 1e-15 && std::fabs(radians.m01 - 1.0) < 1e-15;
}
bool invertQuiet() {
    Zan_Matrix3 singular = scaled(0.0);
    Zan_Matrix3 regular = scaled(2.0);
    return singular.InvertQuiet() && !regular.InvertQuiet();
}
bool failedInverses() {
    const Zan_Matrix3 singular = scaled(0.0);
    Zan_Matrix3 out;
    Zan_Matrix4 singular4(true);
    singular4.Scale(2.0, 3.0, 0.0);
    Zan_Matrix4 out4;
    return Zan_InverseMatrixQuiet(&singular, &out, nullptr) != 0 && out.IsIdentity() &&
           Zan_InverseMatrix4Quiet(&singular4, &out4, nullptr) != 0 && out4.m22 == 6.0;
}
bool smallScale() {
    Zan_Matrix3 plane = scaled(1e-6);
    Zan_Matrix4 space(true);
    space.Scale(1e-6, 1e-6, 1e-6);
    return !plane.InvertQuiet() && space.InvertQuiet();
}
bool droppedW() {
    Zan_Matrix4 m(true);
    m.m33 = 2.0;
    Zan_Vector3T<double> member(10.0, 0.0, 0.0);
    Zan_Vector3T<double> plain = member;
    m.TransformPoint(&member);
    Zan_Transform3DFloatPoints(&m, 1, &plain);
    return member.x == 10.0 && plain.x == 5.0;
}
bool projectiveColumn() {
    Zan_Matrix3 m(true);
    m.m22 = 2.0;
    Point p(10.0, 0.0);
    m.TransformPoint(&p);
    return p.x == 10.0;
}
bool verticalFirst() {
    const Zan_Point p = {1, 2};
    const Zan_LPoint wide = {1, 2};
    return p.v == 1 && wide.h == 1;
}
bool fixedTranslation() {
    const Zan_Matrix3 m = moved(1.0);
    Zan_FixedPoint p = {0, 0};
    return Zan_TransformFixPoints(&m, 1, &p) == 0 && p.h == 65536;
}
bool partlyTransformed() {
    const Zan_Matrix3 m = scaled(2.0);
    std::array<Zan_Point, 3> points = {Zan_Point{1, 1}, Zan_Point{1, 30000}, Zan_Point{1, 1}};
    return Zan_TransformPoints(&m, 3, points.data()) != 0 && points[0].h == 2 && points[2].h == 1;
}
bool overwrittenCorners() {
    Zan_TransformPoly2D layer;
    for (int32_t i = 0; i < 4; ++i) layer.SetLayerPoint(i, {1.0, 1.0});
    layer.TransformPoints(scaled(2.0));
    layer.TransformPoints(scaled(2.0));
    Point corner;
    layer.GetPoint(0, &corner);
    return corner.x == 4.0;
}
bool noOutlineYet() {
    Zan_TransformPoly3D layer;
    for (int32_t i = 0; i < 4; ++i) layer.SetLayerPoint(i, {i % 3 == 0 ? 0.0 : 1.0, i < 2 ? 0.0 : 1.0});
    Zan_Matrix4 toEye(true);
    toEye.Translate(0.0, 0.0, 10.0);
    layer.TransformPointsToEye(toEye);
    layer.TransformPointsToScreen(Zan_Matrix4(true));
    const int32_t before = layer.NumPolyPoints();
    layer.InitPolyPoints();
    return before == 0 && layer.NumPolyPoints() == 4;
}
bool skippedStep() {
    Zan_TransformPoly3D layer;
    for (int32_t i = 0; i < 4; ++i) layer.SetLayerPoint(i, {1.0, 1.0});
    Zan_Matrix4 flat(true);
    flat.Scale(0.0, 1.0, 1.0);
    layer.TransformPointsToEye(flat);
    Point corner;
    return layer.GetPoint(0, &corner) && corner.x == 1.0 && layer.IsVisible();
}
bool comparedBytes() {
    Zan_Matrix3 a(true);
    Zan_Matrix3 b(true);
    b.m01 = -0.0;
    unsigned char equal = 0;
    Zan_EqualMatrix(&a, &b, &equal);
    return a != b && equal == 1;
}
bool nanPasses() {
    Zan_Matrix3 m(true);
    m.m01 = NAN;
    return m.IsIdentity();
}
bool leftSideOutside() {
    const std::array<Point, 4> square = {Point(0, 0), Point(10, 0), Point(10, 10), Point(0, 10)};
    const Point left(0.0, 5.0);
    const Point right(10.0, 5.0);
    unsigned char leftInside = 0;
    unsigned char rightInside = 0;
    Zan_IsFloatPointInQuad(&left, square.data(), &leftInside);
    Zan_IsFloatPointInQuad(&right, square.data(), &rightInside);
    return leftInside == 0 && rightInside == 1;
}
bool closedRing() {
    const Polygon ring = {{0, 0, 0, 1}, {0, 4, 0, 1}, {4, 4, 0, 1}, {4, 0, 0, 1}, {0, 0, 0, 1}};
    const Polygon open(ring.begin(), ring.end() - 1);
    const Polygon subject = {{1, 1, 0, 1}, {1, 2, 0, 1}, {2, 2, 0, 1}};
    Polygon byRing;
    Polygon byOpen;
    Zan_PolyPolyClip2D(&ring, &subject, &byRing);
    Zan_PolyPolyClip2D(&open, &subject, &byOpen);
    return byRing.empty() && byOpen.size() == 3;
}
bool snappedHull() {
    const std::vector<Point> points = {{0.0, 0.0}, {1.0, 0.0}, {0.7, 0.1}, {1.0, 0.7}, {0.1, 0.9}};
    std::vector<Point> hull;
    Zan_ComputeConvexHull(points.cbegin(), points.cend(), hull);
    for (const Point& h : hull) {
        bool input = false;
        for (const Point& p : points) input = input || p == h;
        if (!input) return true;
    }
    return false;
}
bool horizontalLine() {
    const Zan_FloatRect rect = {0.0, 0.0, 10.0, 10.0};
    Point a(-5.0, 5.0);
    Point b(5.0, 5.0);
    bool visible = true;
    Zan_ClipLine2Rect(&rect, &a, &b, &visible);
    return !visible;
}
bool quietRatio() {
    const Zan_Ratio big = {INT32_MAX, 1};
    Zan_Ratio sum;
    uint8_t status = 0;
    return Zan_AddRatio(&big, &big, &sum, &status) == 0 && status == Zan_RatioFailed && sum.den == 0;
}
bool wrappedProduct() {
    const Zan_Fixed twoHundredFiftySeven = 257 * 65536;
    constexpr Zan_Fixed kWrapped = 513 * 65536;
    const Zan_Fixed product = Zan_FixMul(twoHundredFiftySeven, twoHundredFiftySeven);  // 66049 does not fit
    return product == kWrapped;
}
bool emptyAreEqual() {
    const Zan_LRect a = {0, 0, 0, 5};
    const Zan_LRect b = {7, 9, 7, 9};
    return Zan_EqualLRect(&a, &b);
}
bool shearKeepsSign() {
    Zan_Matrix4 m(true);
    m.m10 = 0.5;
    Zan_Matrix4Decomp plain;
    m.Decompose(&plain);
    m.Scale(-1.0, 1.0, 1.0);
    Zan_Matrix4Decomp mirrored;
    m.Decompose(&mirrored);
    return plain.shearXY == 0.5 && mirrored.shearXY == 0.5 && plain.sx == 1.0 && mirrored.sx == -1.0 &&
           mirrored.sy == -1.0 && mirrored.sz == -1.0;
}
bool lookAtIsEyeToWorld() {
    const Zan_Matrix4 m = Zan_LookAtMatrix({5.0, 0.0, 0.0}, {5.0, 0.0, 10.0}, {0.0, 1.0, 0.0});
    return m.IsIdentity();
}

struct Trap {
    const char* what;
    const char* instead;
    bool (*shown)();
};

constexpr std::array kTraps = {
    Trap{"`Zan_ConcatMatrix(&a, &b)` forms b * a in b; `Zan_ConcatMatrix4(&a, &b, &product)` forms a * b",
         "`m *= n` for both sizes: m, then n", concatOrder},
    Trap{"`Zan_TranslateMatrix(&m, x, y)` takes the matrix first, `Zan_TranslateMatrix4(x, y, z, &m)` last",
         "the members `Translate`, `Scale`, `Rotate...`", builderArguments},
    Trap{"`Zan_Matrix3` rotates by degrees, `Zan_Matrix4` by radians", "", angleUnits},
    Trap{"`InvertQuiet` returns true when there is *no* inverse", "", invertQuiet},
    Trap{"After a failure `Zan_InverseMatrix` has written the identity, `Zan_InverseMatrix4` the adjugate",
         "the members leave the matrix unchanged", failedInverses},
    Trap{"A uniform scale of 1e-6 has an inverse as a `Zan_Matrix3`, and none as a `Zan_Matrix4`",
         "work in pixels, not in units that make scales so small", smallScale},
    Trap{"`Zan_Matrix4::TransformPoint` on a `Zan_Vector3T` drops w; `Zan_Transform3DFloatPoints` divides by it",
         "see the table of transform calls", droppedW},
    Trap{"Points of the plane ignore the projective column of a `Zan_Matrix3`", "`TransformPointAndDivide`",
         projectiveColumn},
    Trap{"`Zan_Point` and `Zan_Rect` store the vertical field first, all others the horizontal one",
         "`Zan_SetPt` and `Zan_SetRect`, which take h first", verticalFirst},
    Trap{"`Zan_TransformFixPoints` takes the translation in whole units, the points in 1/65536", "", fixedTranslation},
    Trap{"A failing `Zan_TransformPoints` has transformed the points before the failing one",
         "transform a copy when all or nothing is wanted", partlyTransformed},
    Trap{"Each step of an outline overwrites its corners; the same step again transforms them again",
         "start every frame from `SetLayerPoint`", overwrittenCorners},
    Trap{"A `Zan_TransformPoly3D` has no outline before `InitPolyPoints`", "call it after `TransformPointsToScreen`",
         noOutlineYet},
    Trap{"A degenerate matrix makes a `Zan_TransformPoly3D` skip the step: the corners stay, and count as in front",
         "test the scale of the layer first", skippedStep},
    Trap{"`operator==` of a matrix compares bytes: 0.0 and -0.0 differ", "`Zan_EqualMatrix`, `Zan_EqualMatrix4`",
         comparedBytes},
    Trap{"`IsZero` and `IsIdentity` take a NaN for equal", "`Zan_Matrix4::IsFinite`", nanPasses},
    Trap{"The left side of a square is outside, its right side inside", "a tolerance of half a pixel", leftSideOutside},
    Trap{"A clip polygon whose last vertex repeats the first clips everything away", "drop the repeated vertices",
         closedRing},
    Trap{"A vertex of a hull can differ from the input point by half a step of the hull's grid, 2^-30 of the extent",
         "take the nearest input point if you need one", snappedHull},
    Trap{"`Zan_ClipLine2Rect` finds a horizontal or vertical segment invisible unless both ends are inside", "",
         horizontalLine},
    Trap{"With a status byte, a ratio operation that overflows still returns code 0", "read the byte", quietRatio},
    Trap{"`Zan_FixMul` detects an overflow only if the sign is wrong",
         "keep the magnitudes of both factors below 181, or multiply in double precision", wrappedProduct},
    Trap{"Any two empty rectangles are equal", "", emptyAreEqual},
    Trap{"A mirrored transform has three negative scales, and shears with the sign they have without the mirroring",
         "the recipe of poses", shearKeepsSign},
    Trap{"`Zan_LookAtMatrix` is the rotation from eye to world, without the position of the eye",
         "the recipe of the camera", lookAtIsEyeToWorld},
};

}  // namespace

int main() {
    Bel_SetReportHandler([](void*, const Bel_Report*) {}, nullptr);
    std::puts("| What happens | Instead |\n|---|---|");
    int wrong = 0;
    for (const Trap& trap : kTraps) {
        if (!trap.shown()) {
            std::fprintf(stderr, "not true: %s\n", trap.what);
            ++wrong;
        }
        std::printf("| %s | %s |\n", trap.what, trap.instead);
    }
    return wrong;
}

// Every exported operation and how it is called; the test "golden sums: every export" tells when one is missing.
#include "batch.h"

using namespace selfcheck;

namespace {

using V2 = Zan_Vector2T<double>;
using V2f = Zan_Vector2T<float>;
using V3 = Zan_Vector3T<double>;
using V4 = Zan_Vector4T<double>;
using PointF = kelvora::geom::PointT<float>;

// An index beyond the outline is not allowed.
void polyPointsOneByOne(Draw& d, Sum& sum) {
    const auto poly = d.draw<Zan_TransformPoly3D>();
    for (int32_t i = 0; i < poly.NumPolyPoints(); ++i) {
        V2 point;
        poly.GetPolyPoint(i, &point);
        sum.add(point);
    }
}

// Where one edge alone is clipped, its neighbours' clip points may not have been set.
void clipAllEdges(Draw& d, Sum& sum) {
    auto poly = d.draw<Zan_TransformPoly3D>();
    for (int32_t i = 0; i < 4; ++i) poly.ClipEdgeToScreen(i);
    sum.add(poly);
}

// The box of two points, as often as not small: anything else cuts nearly all away.
void clipByBox(Draw& d, Sum& sum) {
    const V2 a = d.draw<V2>(), b = d.draw<V2>();
    const std::vector<V4> box = {V4(a.x, a.y, 0, 1), V4(b.x, a.y, 0, 1), V4(b.x, b.y, 0, 1), V4(a.x, b.y, 0, 1)};
    const auto subject = d.draw<std::vector<V4>>();
    std::vector<V4> result;
    Zan_PolyPolyClip2D(&box, &subject, &result);
    sum.add(result);
}
template <class Point>
void convexity(Draw& d, Sum& sum) {
    const auto points = d.draw<std::vector<Point>>();
    sum.add(Zan_IsConvex(points.begin(), points.end()));
}
template <class Point>
void hull(Draw& d, Sum& sum) {
    const auto points = d.draw<std::vector<Point>>();
    std::vector<Point> vertices;
    Zan_ComputeConvexHull(points.begin(), points.end(), vertices);
    sum.add(vertices);
}
template <class Point>
void hullOfArray(Draw& d, Sum& sum) {
    const auto points = d.draw<std::vector<Point>>();
    std::vector<Point> vertices;
    Zan_ComputeConvexHull(points.data(), points.data() + points.size(), vertices);
    sum.add(vertices);
}

// G: any arguments. N: integers are counts of up to the eight values that a pointer points to. I: they are corners.
// O, ON: an overload. L: a call written out.
#define G(f) entry(#f, &f)
#define N(f) entry(#f, &f, -1, 8)
#define I(f) entry(#f, &f, 0, 3)
#define O(f, ...) entry(#f "(" #__VA_ARGS__ ")", Taking<__VA_ARGS__>{}(&f))
#define ON(f, ...) entry(#f "(" #__VA_ARGS__ ")", Taking<__VA_ARGS__>{}(&f), -1, 8)
#define L(name, ...) \
    Entry { name, __VA_ARGS__ }
const Entry kEntries[] = {

    // frame
    G(Zan_PkgObjectVersion), G(Zanp_ReportErr),
    // scalar
    G(Zan_AddWouldOverflow), G(Zan_BitsUsed), G(Zan_Fix24Mul), G(Zan_Fix24Ratio), G(Zan_FixDiv), G(Zan_FixMul),
    G(Zan_IsTopTwoBitsSame), G(Zan_LeadingZeros), G(Zan_MulWouldOverflow), G(Zan_RoundDouble), G(Zan_RoundDouble64),
    G(Zan_RoundDoubleSafe), G(Zan_RoundDownToPowerOf2), G(Zan_RoundToNearestMult), G(Zan_RoundUpToPowerOf2),
    G(Zan_SignedGCD), G(Zan_SignedLCM), G(Zan_TrailingZeros), G(Zan_UMulWouldOverflow), G(Zan_UnsignedGCD),
    G(Zan_UnsignedLCM), G(Zan_fmod), G(Zan_ReduceRatio), G(Zan_RecipRatio), G(Zan_ConvRatio), G(Zan_ShortConvRatio),
    G(Zan_FpLong2Ratio), G(Zan_AddRatio), G(Zan_SubRatio), G(Zan_MulRatio), G(Zan_DivRatio), G(Zan_CompareRatio),
    G(Zan_MinRatio), G(Zan_MaxRatio), G(Zan_ClipRatio), G(Zan_ClipRatioToSpan), G(Zan_ClipSpanToSpan),
    // geom2d
    G(Zan_AddPt), G(Zan_CenterFixedRect), G(Zan_CenterLRect), G(Zan_CenterRect), G(Zan_CopyFixedPt),
    G(Zan_CopyFixedRect), G(Zan_CopyLPt), G(Zan_CopyLRect), G(Zan_CopyPt), G(Zan_CopyRect), G(Zan_CopyWHRect),
    G(Zan_EmptyFixedRect), G(Zan_EmptyLRect), G(Zan_EmptyRect), G(Zan_EqualFixedPt), G(Zan_EqualFixedRect),
    G(Zan_EqualLPt), G(Zan_EqualLRect), G(Zan_EqualPt), G(Zan_EqualRect), G(Zan_EqualWHRect), G(Zan_FixedPt2Rect),
    G(Zan_FixedPtInRect), G(Zan_FixedRect2LRect), G(Zan_FixedRect2LRectIn), G(Zan_FixedRect2LRectOut),
    G(Zan_FixedRect2Rect), G(Zan_FixedRect2RectIn), G(Zan_FixedRect2RectOut), G(Zan_InsetFixedRect), G(Zan_InsetLRect),
    G(Zan_InsetRect), G(Zan_LPt2Rect), G(Zan_LPtInRect), G(Zan_LRect2FixedRect), G(Zan_LRect2Rect),
    G(Zan_OffsetFixedRect), G(Zan_OffsetLRect), G(Zan_OffsetRect), G(Zan_Pt2Rect), G(Zan_PtInRect),
    G(Zan_Rect2FixedRect), G(Zan_SetFixedPt), G(Zan_SetFixedRect), G(Zan_SetLPt), G(Zan_SetLRect), G(Zan_SetPt),
    G(Zan_SetRect), G(Zan_SetWHRect), G(Zan_TopLeft), G(Zan_DeltaPoint), G(Zan_BottomRight), G(Zan_SectRect),
    G(Zan_SectLRect), G(Zan_SectFixedRect), G(Zan_SectFloatRect), G(Zan_UnionRect), G(Zan_UnionLRect),
    G(Zan_UnionFixedRect), N(Zan_RectCompare), N(Zan_LRectCompare), N(Zan_FixedRectCompare),
    // matrix
    N(Zan_3DTransform2DPoints), G(Zan_ConcatMatrix), G(Zan_ConcatMatrix4), G(Zan_EqualMatrix), G(Zan_EqualMatrix4),
    G(Zan_GetMatrix4Determinant), G(Zan_GetMatrixType), G(Zan_IdentityMatrix4), G(Zan_Matrix3ToMatrix4),
    G(Zan_Matrix3ToMatrix4Uniform), G(Zan_ScaleMatrix), G(Zan_ScaleMatrix4), G(Zan_SetIdentityMatrix),
    G(Zan_SetMatrix4CoB), N(Zan_Transform3DFloatPoints), N(Zan_TransformFixPoints), G(Zan_TransformFixRect),
    N(Zan_TransformFloatPoints), G(Zan_TransformFloatRect), N(Zan_TransformPoints), G(Zan_TransformRect),
    N(Zan_TransformVector3), N(Zan_TransformVector4), N(Zan_TransformVector4NoDivide), G(Zan_TranslateMatrix),
    G(Zan_TranslateMatrix4), G(Zan_TransposeMatrix4), G(Zan_ZeroMatrix4), G(Zan_TransformBounds),
    O(Zan_EqualMatrixWithinEpsilon, const Zan_Matrix3&, const Zan_Matrix3&, double),
    O(Zan_EqualMatrixWithinEpsilon, const Zan_Matrix4&, const Zan_Matrix4&, double), G(Zan_Matrix3::SetIdentity),
    G(Zan_Matrix3::AssignFromByDroppingZ), N(Zan_Matrix3::AssignFromByDroppingIndices),
    O(Zan_Matrix3::Scale, double, double), O(Zan_Matrix3::Scale, double, double, double, double),
    G(Zan_Matrix3::SetZero), G(Zan_Matrix3::Translate), G(Zan_Matrix3::Transpose),
    L("Zan_Matrix3::Zan_Matrix3", [](Draw&, Sum& sum) { sum.add(Zan_Matrix3(true)); }), G(Zan_Matrix3::operator-=),
    G(Zan_Matrix3::operator*=), G(Zan_Matrix3::operator+=), G(Zan_Matrix4::SetIdentity), G(Zan_Matrix4::Scale),
    G(Zan_Matrix4::SetCOB), G(Zan_Matrix4::Project), G(Zan_Matrix4::SetZero), G(Zan_Matrix4::Translate),
    G(Zan_Matrix4::Transpose), L("Zan_Matrix4::Zan_Matrix4", [](Draw&, Sum& sum) { sum.add(Zan_Matrix4(true)); }),
    O(Zan_Matrix4::operator=, const Zan_Matrix3&), G(Zan_Matrix4::operator-=),
    O(Zan_Matrix4::operator*=, const Zan_Matrix3&), O(Zan_Matrix4::operator*=, const Zan_Matrix4&),
    G(Zan_Matrix4::operator+=), G(Zan_Matrix3::IsIdentity), G(Zan_Matrix3::Determinant),
    O(Zan_Matrix3::TransformRect, Zan_FixedRect*, Zan_FixedPoint*, unsigned char*),
    O(Zan_Matrix3::TransformRect, Zan_Rect*, V2*, unsigned char*), O(Zan_Matrix3::TransformPoint, V2*),
    O(Zan_Matrix3::TransformPoint, V3*), G(Zan_Matrix3::GetScaleSquared),
    ON(Zan_Matrix3::TransformPoints, int32_t, V2*), ON(Zan_Matrix3::TransformPoints, int32_t, V3*),
    ON(Zan_Matrix3::TransformPoints, int32_t, Zan_FixedPoint*), ON(Zan_Matrix3::TransformPoints, int32_t, Zan_Point*),
    G(Zan_Matrix3::IsZeroWithinEpsilon), G(Zan_Matrix3::IsIdentityWithinEpsilon),
    O(Zan_Matrix3::TransformPointAndDivide, V2*), O(Zan_Matrix3::TransformPointAndDivide, V3*),
    ON(Zan_Matrix3::TransformPointsAndDivide, int32_t, V2*), ON(Zan_Matrix3::TransformPointsAndDivide, int32_t, V3*),
    G(Zan_Matrix3::TransformPointAndDivideFast), N(Zan_Matrix3::TransformPointsAndDivideFast), G(Zan_Matrix3::IsZero),
    G(Zan_Matrix3::GetType), G(Zan_Matrix3::GetScale), G(Zan_Matrix3::operator==), G(Zan_Matrix3::operator!=),
    G(Zan_Matrix4::IsIdentity), G(Zan_Matrix4::Determinant), O(Zan_Matrix4::TransformPoint, V3*),
    O(Zan_Matrix4::TransformPoint, V4*), G(Zan_Matrix4::GetScaleSquared),
    ON(Zan_Matrix4::TransformPoints, int32_t, V3*), ON(Zan_Matrix4::TransformPoints, int32_t, V4*),
    G(Zan_Matrix4::IsZeroWithinEpsilon), G(Zan_Matrix4::IsIdentityWithinEpsilon),
    O(Zan_Matrix4::TransformPointAndDivide, V3*), O(Zan_Matrix4::TransformPointAndDivide, V4*),
    ON(Zan_Matrix4::TransformPointsAndDivide, int32_t, V3*), ON(Zan_Matrix4::TransformPointsAndDivide, int32_t, V4*),
    G(Zan_Matrix4::TransformPointAndDivideFast), N(Zan_Matrix4::TransformPointsAndDivideFast), G(Zan_Matrix4::IsZero),
    G(Zan_Matrix4::GetScale), G(Zan_Matrix4::IsFinite), G(Zan_Matrix4::operator==), G(Zan_Matrix4::operator!=),
    G(Zan_InverseMatrix), G(Zan_InverseMatrixQuiet), G(Zan_InverseMatrix4), G(Zan_InverseMatrix4Quiet),
    G(Zan_CalcNormalMatrix4), G(Zan_CalcNormalMatrix4Quiet), G(Zan_Matrix3::Invert), G(Zan_Matrix3::InvertQuiet),
    G(Zan_Matrix3::Adjoint), G(Zan_Matrix4::Invert), G(Zan_Matrix4::InvertQuiet), G(Zan_Matrix4ToQuat),
    G(Zan_QuatToMatrix4), G(Zan_Correct3DDecompFor2D),
    // space
    G(Zan_Clip3DLine), G(Zan_ClipLine2Rect), G(Zan_GetPlaneEquation2), G(Zan_IsQuadEdgeOn), G(Zan_PerpDistTo2DLine),
    G(Zan_RayIntersectPlane), N(Zan_GetPlaneEquation), G(Zan_TransformPoint2DtoScreen),
    O(Zan_TransformPoint3DtoScreen, const Zan_Matrix4&, const Zan_Matrix4&, const Zan_Matrix3&, V2*),
    O(Zan_TransformPoint3DtoScreen, const Zan_Matrix4&, const Zan_Matrix4&, const Zan_Matrix3&, V3*),
    G(Zan_ComputeDirectionalComponents),
    // poly
    L("Zan_PolyPolyClip2D", clipByBox), L("Zan_IsConvex(V2)", convexity<V2>), L("Zan_IsConvex(V3)", convexity<V3>),
    L("Zan_IsConvex(V4)", convexity<V4>), L("Zan_ComputeConvexHull(V2)", hull<V2>),
    L("Zan_ComputeConvexHull(V3)", hull<V3>), L("Zan_ComputeConvexHull(V4)", hull<V4>),
    L("Zan_ComputeConvexHull(PointT<float>)", hull<PointF>), L("Zan_ComputeConvexHull(V2*)", hullOfArray<V2>),
    L("Zan_ComputeConvexHull(V3*)", hullOfArray<V3>), L("Zan_ComputeConvexHull(V4*)", hullOfArray<V4>),
    L("Zan_ComputeConvexHull(PointT<float>*)", hullOfArray<PointF>), G(Zan_IsFloatPointInQuad),
    N(Zan_SignedPolygonArea2D), N(Zan_IsFloatPointInConcavePoly<V2>), N(Zan_IsFloatPointInConcavePoly<V2f>),
    I(Zan_TransformPoly2D::SetLayerPoint), G(Zan_TransformPoly2D::TransformPoints),
    L("Zan_TransformPoly2D::Zan_TransformPoly2D(const Zan_TransformPoly2D&)",
      [](Draw& d, Sum& sum) { sum.add(Zan_TransformPoly2D(d.draw<Zan_TransformPoly2D>())); }),
    L("Zan_TransformPoly2D::Zan_TransformPoly2D()", [](Draw& d, Sum& sum) { sum.add(d.draw<Zan_TransformPoly2D>()); }),
    G(Zan_TransformPoly2D::operator=), I(Zan_TransformPoly3D::SetLayerPoint), G(Zan_TransformPoly3D::PolyPointsInit),
    L("Zan_TransformPoly3D::ClipEdgeToScreen", clipAllEdges), G(Zan_TransformPoly3D::InvalidatePolyPoints),
    G(Zan_TransformPoly3D::TransformPointsToEye), G(Zan_TransformPoly3D::TransformPointsToScreen),
    L("Zan_TransformPoly3D::Zan_TransformPoly3D(const Zan_TransformPoly3D&)",
      [](Draw& d, Sum& sum) { sum.add(Zan_TransformPoly3D(d.draw<Zan_TransformPoly3D>())); }),
    L("Zan_TransformPoly3D::Zan_TransformPoly3D()", [](Draw& d, Sum& sum) { sum.add(d.draw<Zan_TransformPoly3D>()); }),
    G(Zan_TransformPoly3D::operator=), I(Zan_TransformPoly2D::GetPolyPoint), G(Zan_TransformPoly2D::GetPolyPoints),
    G(Zan_TransformPoly2D::IsPointInside), G(Zan_TransformPoly2D::NumPolyPoints),
    G(Zan_TransformPoly2D::InitPolyPoints), G(Zan_TransformPoly2D::GetMinimumEdgeDistance),
    I(Zan_TransformPoly2D::GetEdge), I(Zan_TransformPoly2D::GetPoint), G(Zan_TransformPoly2D::IsVisible),
    L("Zan_TransformPoly3D::GetPolyPoint", polyPointsOneByOne), G(Zan_TransformPoly3D::GetPolyPoints),
    G(Zan_TransformPoly3D::IsPointInside), G(Zan_TransformPoly3D::NumPolyPoints),
    G(Zan_TransformPoly3D::InitPolyPoints), G(Zan_TransformPoly3D::GetMinimumEdgeDistance),
    I(Zan_TransformPoly3D::GetEdge), I(Zan_TransformPoly3D::GetPoint), G(Zan_TransformPoly3D::IsVisible)};

const Entry kLibmEntries[] = {

    // geom2d
    G(Zan_PtToAngle), G(Zan_Pt2Angle), G(Zan_VecToAngle),
    // matrix
    G(Zan_DecomposeMatrix4), G(Zan_DecomposeMatrix4ZYX), G(Zan_GetOrderedXYZRotationFromMatrix),
    G(Zan_ConvertAxisAngleToOrderedXYZRotation), G(Zan_Slerp), G(Zan_Matrix4::Decompose), G(Zan_Matrix4::DecomposeZYX),
    G(Zan_RotateMatrix), G(Zan_RotateMatrix4), G(Zan_RotateMatrix4XYZ), G(Zan_RotateMatrix4XYZPlus),
    G(Zan_LookAtMatrix), G(Zan_Matrix3::Skew), O(Zan_Matrix3::Rotate, double),
    O(Zan_Matrix3::Rotate, double, double, double), G(Zan_Matrix4::RotateAxis), G(Zan_Matrix4::RotateXYZ),
    // space
    G(Zan_TransformPtF)};

constexpr const char* kState[] = {"Zan_Birth",        "Zan_CheckVersions", "Zan_Death",
                                  "Zan_GetGlobals",   "Zan_SetGlobals",    "Zan_PrepareFCMD",
                                  "Zan_PrepareFTrig", "Zan_UnprepareFCMD", "Zan_UnprepareFTrig"};

}  // namespace

const std::vector<Entry>& selfcheck::entries() {
    static const std::vector<Entry> all = [] {
        std::vector<Entry> list(std::begin(kEntries), std::end(kEntries));
        for (Entry entry : kLibmEntries) {
            entry.libm = true;
            list.push_back(std::move(entry));
        }
        return list;
    }();
    return all;
}
std::span<const char* const> selfcheck::operationsOfState() { return kState; }

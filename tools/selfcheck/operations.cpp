// Every exported operation and how it is called. The test "golden sums: every export has one" fails when one is
// missing.
#include "batch.h"

using namespace selfcheck;

namespace {

using Vector2 = Zan_Vector2T<double>;
using Vector2f = Zan_Vector2T<float>;
using Vector3 = Zan_Vector3T<double>;
using Vector4 = Zan_Vector4T<double>;
using PointF = kelvora::geom::PointT<float>;

template <class Matrix>
void identity(Draw&, Sum& sum) {
    sum.add(Matrix(true));
}

template <class Poly>
void defaultConstructed(Draw& d, Sum& sum) {
    sum.add(d.draw<Poly>());
}
template <class Poly>
void copyConstructed(Draw& d, Sum& sum) {
    sum.add(Poly(d.draw<Poly>()));
}

// GetPolyPoint must not be called with an index outside the outline.
void everyPolyPoint(Draw& d, Sum& sum) {
    const auto poly = d.draw<Zan_TransformPoly3D>();
    for (int32_t i = 0; i < poly.NumPolyPoints(); ++i) {
        Vector2 point;
        poly.GetPolyPoint(i, &point);
        sum.add(point);
    }
}

// All four edges: clipping one edge alone may leave the clip points of its neighbours uninitialised.
void clipEveryEdge(Draw& d, Sum& sum) {
    auto poly = d.draw<Zan_TransformPoly3D>();
    for (int32_t i = 0; i < 4; ++i) poly.ClipEdgeToScreen(i);
    sum.add(poly);
}

// Clips by the bounding box of two points: most random clip polygons would leave nothing of the subject.
void clipByBox(Draw& d, Sum& sum) {
    const Vector2 a = d.draw<Vector2>();
    const Vector2 b = d.draw<Vector2>();
    const std::vector<Vector4> box = {Vector4(a.x, a.y, 0, 1), Vector4(b.x, a.y, 0, 1), Vector4(b.x, b.y, 0, 1),
                                      Vector4(a.x, b.y, 0, 1)};
    const auto subject = d.draw<std::vector<Vector4>>();
    std::vector<Vector4> result;
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

// OPERATION: a function or member function that takes any arguments.
// OPERATION_SMALL: its 16-bit and 32-bit integers are counts of array elements, selectors or indexes.
// OPERATION_CORNER: they are corners of a layer.
// OVERLOAD, OVERLOAD_SMALL: the overload with these parameter types.
// Rows in braces: calls that are written out above.
#define OPERATION(f) entry(#f, &f, kAnyInteger)
#define OPERATION_SMALL(f) entry(#f, &f, kSmallInteger)
#define OPERATION_CORNER(f) entry(#f, &f, kCorner)
#define OVERLOAD(f, ...) entry(#f "(" #__VA_ARGS__ ")", Taking<__VA_ARGS__>{}(&f), kAnyInteger)
#define OVERLOAD_SMALL(f, ...) entry(#f "(" #__VA_ARGS__ ")", Taking<__VA_ARGS__>{}(&f), kSmallInteger)

// clang-format off
const Entry kEntries[] = {
    // frame
    OPERATION(Zan_PkgObjectVersion),
    OPERATION(Zanp_ReportErr),

    // scalar
    OPERATION(Zan_AddWouldOverflow),
    OPERATION(Zan_BitsUsed),
    OPERATION(Zan_Fix24Mul),
    OPERATION(Zan_Fix24Ratio),
    OPERATION(Zan_FixDiv),
    OPERATION(Zan_FixMul),
    OPERATION(Zan_IsTopTwoBitsSame),
    OPERATION(Zan_LeadingZeros),
    OPERATION(Zan_MulWouldOverflow),
    OPERATION(Zan_RoundDouble),
    OPERATION(Zan_RoundDouble64),
    OPERATION(Zan_RoundDoubleSafe),
    OPERATION(Zan_RoundDownToPowerOf2),
    OPERATION(Zan_RoundToNearestMult),
    OPERATION(Zan_RoundUpToPowerOf2),
    OPERATION(Zan_SignedGCD),
    OPERATION(Zan_SignedLCM),
    OPERATION(Zan_TrailingZeros),
    OPERATION(Zan_UMulWouldOverflow),
    OPERATION(Zan_UnsignedGCD),
    OPERATION(Zan_UnsignedLCM),
    OPERATION(Zan_fmod),
    OPERATION(Zan_ReduceRatio),
    OPERATION(Zan_RecipRatio),
    OPERATION(Zan_ConvRatio),
    OPERATION(Zan_ShortConvRatio),
    OPERATION(Zan_FpLong2Ratio),
    OPERATION(Zan_AddRatio),
    OPERATION(Zan_SubRatio),
    OPERATION(Zan_MulRatio),
    OPERATION(Zan_DivRatio),
    OPERATION(Zan_CompareRatio),
    OPERATION(Zan_MinRatio),
    OPERATION(Zan_MaxRatio),
    OPERATION(Zan_ClipRatio),
    OPERATION(Zan_ClipRatioToSpan),
    OPERATION(Zan_ClipSpanToSpan),

    // geom2d
    OPERATION(Zan_AddPt),
    OPERATION(Zan_CenterFixedRect),
    OPERATION(Zan_CenterLRect),
    OPERATION(Zan_CenterRect),
    OPERATION(Zan_CopyFixedPt),
    OPERATION(Zan_CopyFixedRect),
    OPERATION(Zan_CopyLPt),
    OPERATION(Zan_CopyLRect),
    OPERATION(Zan_CopyPt),
    OPERATION(Zan_CopyRect),
    OPERATION(Zan_CopyWHRect),
    OPERATION(Zan_EmptyFixedRect),
    OPERATION(Zan_EmptyLRect),
    OPERATION(Zan_EmptyRect),
    OPERATION(Zan_EqualFixedPt),
    OPERATION(Zan_EqualFixedRect),
    OPERATION(Zan_EqualLPt),
    OPERATION(Zan_EqualLRect),
    OPERATION(Zan_EqualPt),
    OPERATION(Zan_EqualRect),
    OPERATION(Zan_EqualWHRect),
    OPERATION(Zan_FixedPt2Rect),
    OPERATION(Zan_FixedPtInRect),
    OPERATION(Zan_FixedRect2LRect),
    OPERATION(Zan_FixedRect2LRectIn),
    OPERATION(Zan_FixedRect2LRectOut),
    OPERATION(Zan_FixedRect2Rect),
    OPERATION(Zan_FixedRect2RectIn),
    OPERATION(Zan_FixedRect2RectOut),
    OPERATION(Zan_InsetFixedRect),
    OPERATION(Zan_InsetLRect),
    OPERATION(Zan_InsetRect),
    OPERATION(Zan_LPt2Rect),
    OPERATION(Zan_LPtInRect),
    OPERATION(Zan_LRect2FixedRect),
    OPERATION(Zan_LRect2Rect),
    OPERATION(Zan_OffsetFixedRect),
    OPERATION(Zan_OffsetLRect),
    OPERATION(Zan_OffsetRect),
    OPERATION(Zan_Pt2Rect),
    OPERATION(Zan_PtInRect),
    OPERATION(Zan_Rect2FixedRect),
    OPERATION(Zan_SetFixedPt),
    OPERATION(Zan_SetFixedRect),
    OPERATION(Zan_SetLPt),
    OPERATION(Zan_SetLRect),
    OPERATION(Zan_SetPt),
    OPERATION(Zan_SetRect),
    OPERATION(Zan_SetWHRect),
    OPERATION(Zan_TopLeft),
    OPERATION(Zan_DeltaPoint),
    OPERATION(Zan_BottomRight),
    OPERATION(Zan_SectRect),
    OPERATION(Zan_SectLRect),
    OPERATION(Zan_SectFixedRect),
    OPERATION(Zan_SectFloatRect),
    OPERATION(Zan_UnionRect),
    OPERATION(Zan_UnionLRect),
    OPERATION(Zan_UnionFixedRect),
    OPERATION_SMALL(Zan_RectCompare),
    OPERATION_SMALL(Zan_LRectCompare),
    OPERATION_SMALL(Zan_FixedRectCompare),

    // matrix
    OPERATION_SMALL(Zan_3DTransform2DPoints),
    OPERATION(Zan_ConcatMatrix),
    OPERATION(Zan_ConcatMatrix4),
    OPERATION(Zan_EqualMatrix),
    OPERATION(Zan_EqualMatrix4),
    OPERATION(Zan_GetMatrix4Determinant),
    OPERATION(Zan_GetMatrixType),
    OPERATION(Zan_IdentityMatrix4),
    OPERATION(Zan_Matrix3ToMatrix4),
    OPERATION(Zan_Matrix3ToMatrix4Uniform),
    OPERATION(Zan_ScaleMatrix),
    OPERATION(Zan_ScaleMatrix4),
    OPERATION(Zan_SetIdentityMatrix),
    OPERATION(Zan_SetMatrix4CoB),
    OPERATION_SMALL(Zan_Transform3DFloatPoints),
    OPERATION_SMALL(Zan_TransformFixPoints),
    OPERATION(Zan_TransformFixRect),
    OPERATION_SMALL(Zan_TransformFloatPoints),
    OPERATION(Zan_TransformFloatRect),
    OPERATION_SMALL(Zan_TransformPoints),
    OPERATION(Zan_TransformRect),
    OPERATION_SMALL(Zan_TransformVector3),
    OPERATION_SMALL(Zan_TransformVector4),
    OPERATION_SMALL(Zan_TransformVector4NoDivide),
    OPERATION(Zan_TranslateMatrix),
    OPERATION(Zan_TranslateMatrix4),
    OPERATION(Zan_TransposeMatrix4),
    OPERATION(Zan_ZeroMatrix4),
    OPERATION(Zan_TransformBounds),
    OVERLOAD(Zan_EqualMatrixWithinEpsilon, const Zan_Matrix3&, const Zan_Matrix3&, double),
    OVERLOAD(Zan_EqualMatrixWithinEpsilon, const Zan_Matrix4&, const Zan_Matrix4&, double),
    OPERATION(Zan_Matrix3::SetIdentity),
    OPERATION(Zan_Matrix3::AssignFromByDroppingZ),
    OPERATION_SMALL(Zan_Matrix3::AssignFromByDroppingIndices),
    OVERLOAD(Zan_Matrix3::Scale, double, double),
    OVERLOAD(Zan_Matrix3::Scale, double, double, double, double),
    OPERATION(Zan_Matrix3::SetZero),
    OPERATION(Zan_Matrix3::Translate),
    OPERATION(Zan_Matrix3::Transpose),
    {"Zan_Matrix3::Zan_Matrix3", identity<Zan_Matrix3>},
    OPERATION(Zan_Matrix3::operator-=),
    OPERATION(Zan_Matrix3::operator*=),
    OPERATION(Zan_Matrix3::operator+=),
    OPERATION(Zan_Matrix4::SetIdentity),
    OPERATION(Zan_Matrix4::Scale),
    OPERATION(Zan_Matrix4::SetCOB),
    OPERATION(Zan_Matrix4::Project),
    OPERATION(Zan_Matrix4::SetZero),
    OPERATION(Zan_Matrix4::Translate),
    OPERATION(Zan_Matrix4::Transpose),
    {"Zan_Matrix4::Zan_Matrix4", identity<Zan_Matrix4>},
    OVERLOAD(Zan_Matrix4::operator=, const Zan_Matrix3&),
    OPERATION(Zan_Matrix4::operator-=),
    OVERLOAD(Zan_Matrix4::operator*=, const Zan_Matrix3&),
    OVERLOAD(Zan_Matrix4::operator*=, const Zan_Matrix4&),
    OPERATION(Zan_Matrix4::operator+=),
    OPERATION(Zan_Matrix3::IsIdentity),
    OPERATION(Zan_Matrix3::Determinant),
    OVERLOAD(Zan_Matrix3::TransformRect, Zan_FixedRect*, Zan_FixedPoint*, unsigned char*),
    OVERLOAD(Zan_Matrix3::TransformRect, Zan_Rect*, Vector2*, unsigned char*),
    OVERLOAD(Zan_Matrix3::TransformPoint, Vector2*),
    OVERLOAD(Zan_Matrix3::TransformPoint, Vector3*),
    OPERATION(Zan_Matrix3::GetScaleSquared),
    OVERLOAD_SMALL(Zan_Matrix3::TransformPoints, int32_t, Vector2*),
    OVERLOAD_SMALL(Zan_Matrix3::TransformPoints, int32_t, Vector3*),
    OVERLOAD_SMALL(Zan_Matrix3::TransformPoints, int32_t, Zan_FixedPoint*),
    OVERLOAD_SMALL(Zan_Matrix3::TransformPoints, int32_t, Zan_Point*),
    OPERATION(Zan_Matrix3::IsZeroWithinEpsilon),
    OPERATION(Zan_Matrix3::IsIdentityWithinEpsilon),
    OVERLOAD(Zan_Matrix3::TransformPointAndDivide, Vector2*),
    OVERLOAD(Zan_Matrix3::TransformPointAndDivide, Vector3*),
    OVERLOAD_SMALL(Zan_Matrix3::TransformPointsAndDivide, int32_t, Vector2*),
    OVERLOAD_SMALL(Zan_Matrix3::TransformPointsAndDivide, int32_t, Vector3*),
    OPERATION(Zan_Matrix3::TransformPointAndDivideFast),
    OPERATION_SMALL(Zan_Matrix3::TransformPointsAndDivideFast),
    OPERATION(Zan_Matrix3::IsZero),
    OPERATION(Zan_Matrix3::GetType),
    OPERATION(Zan_Matrix3::GetScale),
    OPERATION(Zan_Matrix3::operator==),
    OPERATION(Zan_Matrix3::operator!=),
    OPERATION(Zan_Matrix4::IsIdentity),
    OPERATION(Zan_Matrix4::Determinant),
    OVERLOAD(Zan_Matrix4::TransformPoint, Vector3*),
    OVERLOAD(Zan_Matrix4::TransformPoint, Vector4*),
    OPERATION(Zan_Matrix4::GetScaleSquared),
    OVERLOAD_SMALL(Zan_Matrix4::TransformPoints, int32_t, Vector3*),
    OVERLOAD_SMALL(Zan_Matrix4::TransformPoints, int32_t, Vector4*),
    OPERATION(Zan_Matrix4::IsZeroWithinEpsilon),
    OPERATION(Zan_Matrix4::IsIdentityWithinEpsilon),
    OVERLOAD(Zan_Matrix4::TransformPointAndDivide, Vector3*),
    OVERLOAD(Zan_Matrix4::TransformPointAndDivide, Vector4*),
    OVERLOAD_SMALL(Zan_Matrix4::TransformPointsAndDivide, int32_t, Vector3*),
    OVERLOAD_SMALL(Zan_Matrix4::TransformPointsAndDivide, int32_t, Vector4*),
    OPERATION(Zan_Matrix4::TransformPointAndDivideFast),
    OPERATION_SMALL(Zan_Matrix4::TransformPointsAndDivideFast),
    OPERATION(Zan_Matrix4::IsZero),
    OPERATION(Zan_Matrix4::GetScale),
    OPERATION(Zan_Matrix4::IsFinite),
    OPERATION(Zan_Matrix4::operator==),
    OPERATION(Zan_Matrix4::operator!=),
    OPERATION(Zan_InverseMatrix),
    OPERATION(Zan_InverseMatrixQuiet),
    OPERATION(Zan_InverseMatrix4),
    OPERATION(Zan_InverseMatrix4Quiet),
    OPERATION(Zan_CalcNormalMatrix4),
    OPERATION(Zan_CalcNormalMatrix4Quiet),
    OPERATION(Zan_Matrix3::Invert),
    OPERATION(Zan_Matrix3::InvertQuiet),
    OPERATION(Zan_Matrix3::Adjoint),
    OPERATION(Zan_Matrix4::Invert),
    OPERATION(Zan_Matrix4::InvertQuiet),
    OPERATION(Zan_Matrix4ToQuat),
    OPERATION(Zan_QuatToMatrix4),
    OPERATION(Zan_Correct3DDecompFor2D),

    // space
    OPERATION(Zan_Clip3DLine),
    OPERATION(Zan_ClipLine2Rect),
    OPERATION(Zan_GetPlaneEquation2),
    OPERATION(Zan_IsQuadEdgeOn),
    OPERATION(Zan_PerpDistTo2DLine),
    OPERATION(Zan_RayIntersectPlane),
    OPERATION_SMALL(Zan_GetPlaneEquation),
    OPERATION(Zan_TransformPoint2DtoScreen),
    OVERLOAD(Zan_TransformPoint3DtoScreen, const Zan_Matrix4&, const Zan_Matrix4&, const Zan_Matrix3&, Vector2*),
    OVERLOAD(Zan_TransformPoint3DtoScreen, const Zan_Matrix4&, const Zan_Matrix4&, const Zan_Matrix3&, Vector3*),
    OPERATION(Zan_ComputeDirectionalComponents),

    // poly
    {"Zan_PolyPolyClip2D", clipByBox},
    {"Zan_IsConvex(Vector2)", convexity<Vector2>},
    {"Zan_IsConvex(Vector3)", convexity<Vector3>},
    {"Zan_IsConvex(Vector4)", convexity<Vector4>},
    {"Zan_ComputeConvexHull(Vector2)", hull<Vector2>},
    {"Zan_ComputeConvexHull(Vector3)", hull<Vector3>},
    {"Zan_ComputeConvexHull(Vector4)", hull<Vector4>},
    {"Zan_ComputeConvexHull(PointT<float>)", hull<PointF>},
    {"Zan_ComputeConvexHull(Vector2*)", hullOfArray<Vector2>},
    {"Zan_ComputeConvexHull(Vector3*)", hullOfArray<Vector3>},
    {"Zan_ComputeConvexHull(Vector4*)", hullOfArray<Vector4>},
    {"Zan_ComputeConvexHull(PointT<float>*)", hullOfArray<PointF>},
    OPERATION(Zan_IsFloatPointInQuad),
    OPERATION_SMALL(Zan_SignedPolygonArea2D),
    OPERATION_SMALL(Zan_IsFloatPointInConcavePoly<Vector2>),
    OPERATION_SMALL(Zan_IsFloatPointInConcavePoly<Vector2f>),
    OPERATION_CORNER(Zan_TransformPoly2D::SetLayerPoint),
    OPERATION(Zan_TransformPoly2D::TransformPoints),
    {"Zan_TransformPoly2D::Zan_TransformPoly2D(const Zan_TransformPoly2D&)", copyConstructed<Zan_TransformPoly2D>},
    {"Zan_TransformPoly2D::Zan_TransformPoly2D()", defaultConstructed<Zan_TransformPoly2D>},
    OPERATION(Zan_TransformPoly2D::operator=),
    OPERATION_CORNER(Zan_TransformPoly3D::SetLayerPoint),
    OPERATION(Zan_TransformPoly3D::PolyPointsInit),
    {"Zan_TransformPoly3D::ClipEdgeToScreen", clipEveryEdge},
    OPERATION(Zan_TransformPoly3D::InvalidatePolyPoints),
    OPERATION(Zan_TransformPoly3D::TransformPointsToEye),
    OPERATION(Zan_TransformPoly3D::TransformPointsToScreen),
    {"Zan_TransformPoly3D::Zan_TransformPoly3D(const Zan_TransformPoly3D&)", copyConstructed<Zan_TransformPoly3D>},
    {"Zan_TransformPoly3D::Zan_TransformPoly3D()", defaultConstructed<Zan_TransformPoly3D>},
    OPERATION(Zan_TransformPoly3D::operator=),
    OPERATION_CORNER(Zan_TransformPoly2D::GetPolyPoint),
    OPERATION(Zan_TransformPoly2D::GetPolyPoints),
    OPERATION(Zan_TransformPoly2D::IsPointInside),
    OPERATION(Zan_TransformPoly2D::NumPolyPoints),
    OPERATION(Zan_TransformPoly2D::InitPolyPoints),
    OPERATION(Zan_TransformPoly2D::GetMinimumEdgeDistance),
    OPERATION_CORNER(Zan_TransformPoly2D::GetEdge),
    OPERATION_CORNER(Zan_TransformPoly2D::GetPoint),
    OPERATION(Zan_TransformPoly2D::IsVisible),
    {"Zan_TransformPoly3D::GetPolyPoint", everyPolyPoint},
    OPERATION(Zan_TransformPoly3D::GetPolyPoints),
    OPERATION(Zan_TransformPoly3D::IsPointInside),
    OPERATION(Zan_TransformPoly3D::NumPolyPoints),
    OPERATION(Zan_TransformPoly3D::InitPolyPoints),
    OPERATION(Zan_TransformPoly3D::GetMinimumEdgeDistance),
    OPERATION_CORNER(Zan_TransformPoly3D::GetEdge),
    OPERATION_CORNER(Zan_TransformPoly3D::GetPoint),
    OPERATION(Zan_TransformPoly3D::IsVisible),
};

// Operations whose last bits depend on the C library.
const Entry kLibmEntries[] = {
    // geom2d
    OPERATION(Zan_PtToAngle),
    OPERATION(Zan_Pt2Angle),
    OPERATION(Zan_VecToAngle),

    // matrix
    OPERATION(Zan_DecomposeMatrix4),
    OPERATION(Zan_DecomposeMatrix4ZYX),
    OPERATION(Zan_GetOrderedXYZRotationFromMatrix),
    OPERATION(Zan_ConvertAxisAngleToOrderedXYZRotation),
    OPERATION(Zan_Slerp),
    OPERATION(Zan_Matrix4::Decompose),
    OPERATION(Zan_Matrix4::DecomposeZYX),
    OPERATION(Zan_RotateMatrix),
    OPERATION(Zan_RotateMatrix4),
    OPERATION(Zan_RotateMatrix4XYZ),
    OPERATION(Zan_RotateMatrix4XYZPlus),
    OPERATION(Zan_LookAtMatrix),
    OPERATION(Zan_Matrix3::Skew),
    OVERLOAD(Zan_Matrix3::Rotate, double),
    OVERLOAD(Zan_Matrix3::Rotate, double, double, double),
    OPERATION(Zan_Matrix4::RotateAxis),
    OPERATION(Zan_Matrix4::RotateXYZ),

    // space
    OPERATION(Zan_TransformPtF),
};

// Operations that change or return the library's state, and so have no sum.
constexpr const char* kState[] = {
    "Zan_Birth",
    "Zan_CheckVersions",
    "Zan_Death",
    "Zan_GetGlobals",
    "Zan_SetGlobals",
    "Zan_PrepareFCMD",
    "Zan_PrepareFTrig",
    "Zan_UnprepareFCMD",
    "Zan_UnprepareFTrig",
};
// clang-format on

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

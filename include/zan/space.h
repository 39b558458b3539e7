// Planes, rays, lines and the projection of points.
#ifndef ZAN_SPACE_H
#define ZAN_SPACE_H

#include "zan/matrix.h"

#include <utility>

/// @defgroup planes Planes, rays and lines
/// A degenerate input (coincident points, a zero normal, a segment without length, a parallel ray) takes the fallback
/// that its entry states; only a ray that misses can be an error. An output may be the same record as an input.
/// @{

/// The eye-space near plane. The eye looks along +z; a point with z < 0.1 is behind, z = 0.1 is in front.
inline constexpr double Zan_kNearPlaneZ = 0.1;

/// The points with a x + b y + c z + d = 0; (a, b, c) is the normal, of any length.
struct Zan_PlaneEq {
    double a, b, c, d;
};

/// The points origin + t direction; the direction may have any length.
struct Zan_Ray {
    Zan_Vector4T<double> origin;  ///< x, y, z; w is not read
    Zan_Vector3T<double> direction;
};

/// The plane through the centroid of the points with the normal of their outline, by the sums over its edges that
/// Newell gave (Sutherland, Sproull and Schumacker, 1974). The normal is on the side from which the points run
/// counterclockwise.
/// @param points    the outline in order, the last joined to the first
/// @param count     how many; for a count below 1 plane and centroid are all zeros
/// @param plane     receives a unit normal, or the sums as they are when their length is at most 1e-12 (zeros for fewer
///                  than three points and for points on one line), and d = -(centroid . normal)
/// @param centroid  receives the mean of the points; may be null
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_GetPlaneEquation(const Zan_Vector3T<double>* points, int32_t count, Zan_PlaneEq* plane,
                                     Zan_Vector3T<double>* centroid);

extern "C" {

/// The plane through a point with a given normal, which is stored as it is.
/// @param point   any point of the plane
/// @param normal  of any length
/// @param plane   receives the normal and d = -(point . normal)
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_GetPlaneEquation2(const Zan_Vector3T<double>* point, const Zan_Vector3T<double>* normal,
                                      Zan_PlaneEq* plane);

/// Where a ray meets a plane. A ray is parallel when normal . direction lies strictly between -1e-12 and 1e-12; it has
/// no intersection.
/// @param plane        the plane
/// @param forwardOnly  only t > 0 counts as found, not the origin itself
/// @param ray          the ray
/// @param hit          receives origin + t direction whether or not it counts as found; the origin for a parallel ray
/// @param behind       receives t < 0; false for a parallel ray; may be null
/// @param hitFound     receives whether there is an intersection that counts; when null, a miss is an error
/// @return   0; Zan_Err_NoPlaneIntersection (0x110A) for a miss when hitFound is null
/// @reports  0x11002F "unable to intersect plane." for that miss; hit and behind are written all the same
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_RayIntersectPlane(const Zan_PlaneEq* plane, bool forwardOnly, const Zan_Ray* ray,
                                                    Zan_Vector3T<double>* hit, bool* behind, bool* hitFound);

/// Where the segment from a to b crosses the near plane z = 0.1.
/// @param a, b       the ends, in eye space
/// @param aBehind    receives a.z < 0.1
/// @param bBehind    receives b.z < 0.1
/// @param clipPoint  receives the crossing when exactly one end is behind, (0, 0, 0) otherwise
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_Clip3DLine(const Zan_Vector3T<double>* a, const Zan_Vector3T<double>* b, bool* aBehind,
                               bool* bBehind, Zan_Vector3T<double>* clipPoint);

/// The distance from p to the infinite line through a and b; from p to a when the segment is at most 1e-12 or more than
/// about 1e12 long.
/// @param p              the point
/// @param a, b           two points of the line
/// @param withinSegment  receives whether p is beside the segment: its projection is not before a and |p - a| does not
///                       exceed |b - a|. A point beside b whose distance from a exceeds the length counts as beyond it.
///                       False for a segment too short or too long. May be null
/// @param distance       receives the distance
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_PerpDistTo2DLine(const Zan_Vector2T<double>* p, const Zan_Vector2T<double>* a,
                                     const Zan_Vector2T<double>* b, bool* withinSegment, double* distance);

/// Clips a segment to a closed rectangle. A segment with an end outside counts as visible only where its bounding box
/// and the rectangle overlap with positive area, so a horizontal or vertical one is visible only with both ends inside.
/// @param rect     left <= x <= right and top <= y <= bottom is inside
/// @param a, b     the ends, moved to the sides of the rectangle where they are outside; unchanged when the boxes do
///                 not overlap, partly clipped when the segment turns out to pass a corner outside
/// @param visible  receives whether part of the segment is inside
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_ClipLine2Rect(const Zan_FloatRect* rect, Zan_Vector2T<double>* a, Zan_Vector2T<double>* b,
                                  bool* visible);

/// Whether a quadrilateral is seen edge-on after a transform: the cosine of the angle between its normal and the line
/// of sight lies strictly between -tolerance and tolerance.
/// @param m             layer to eye; divides as Zan_TransformVector4 does
/// @param quad          four points
/// @param tolerance     of the cosine
/// @param orthographic  the line of sight is (0, 0, 1), not the direction from the origin to the middle of the four
/// @param edgeOn        receives the answer; false where the normal or the line of sight is at most 1e-12 long
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_IsQuadEdgeOn(const Zan_Matrix4* m, const Zan_Vector3T<double>* quad, double tolerance,
                                 bool orthographic, bool* edgeOn);

}  // extern "C"

/// @}

/// @defgroup projection Points to the screen
/// Single points carried from a layer to the screen. Matrices apply from left to right.
/// @{

/// Carries a point of the plane through m1 and then m2, affinely: their whole product is formed, but its projective
/// column is not used.
/// @param m1, m2  layer to screen in two steps
/// @param point   the point, replaced by its image
/// @return   true
/// @threads  any
ZAN_API bool Zan_TransformPoint2DtoScreen(const Zan_Matrix3& m1, const Zan_Matrix3& m2, Zan_Vector2T<double>* point);

/// Carries a point of space to the eye and, unless it is behind the near plane z = 0.1 there, through the projection
/// and the screen matrix. Both steps divide by w as Zan_Matrix4::TransformPointAndDivide does.
/// @param toEye       layer to eye
/// @param projection  eye to projected
/// @param screen      projected to screen, for x and y; z passes through, the projective column is not used
/// @param point       the point, replaced by its image; unchanged when it is behind or cannot be divided
/// @return   false for a point behind the near plane
/// @reports  0x11003B "homogeneous point has W=0" for a w strictly between -1e-12 and 1e-12
/// @throws   Zan_Err_HomogeneousWZero (0x110C) after that report, as a `long`
/// @threads  any
[[nodiscard]] ZAN_API bool Zan_TransformPoint3DtoScreen(const Zan_Matrix4& toEye, const Zan_Matrix4& projection,
                                                        const Zan_Matrix3& screen, Zan_Vector3T<double>* point);
/// The same for the point (x, y, 0) of a layer; x and y are stored.
/// @threads any
[[nodiscard]] ZAN_API bool Zan_TransformPoint3DtoScreen(const Zan_Matrix4& toEye, const Zan_Matrix4& projection,
                                                        const Zan_Matrix3& screen, Zan_Vector2T<double>* point);

/// Where the two unit vectors go: the images of (1, 0) and of (0, 1), each less the image of (0, 0), affinely. With a
/// large translation the last bits differ from the elements of the matrix.
/// @param m  the transform
/// @return   the x direction and the y direction
/// @threads  any
[[nodiscard]] ZAN_API std::pair<Zan_Vector2T<double>, Zan_Vector2T<double>> Zan_ComputeDirectionalComponents(
    const Zan_Matrix3& m);

extern "C" {

/// Rewrites the decomposition of a layer without depth: a rotation about x or about y that is a half turn, to within
/// 1e-12 degrees, becomes a mirrored scale. Half turns are found before anything is changed, x is rewritten first. A
/// half turn about x negates ry, sy and rz, one about y negates rx, sx and rz; the angle itself becomes 0. Translation
/// and shears stay.
/// @param decomposition  rewritten; sz becomes 1 in any case
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_Correct3DDecompFor2D(Zan_Matrix4Decomp* decomposition);

}  // extern "C"

/// Rotates a point about a centre: counterclockwise with y upward, clockwise on a screen. Calculated in double
/// precision from the single-precision difference of the two, by sine and cosine of degrees - 90, and rounded to single
/// precision before the centre is added.
/// @param centre   stays where it is
/// @param degrees  the angle
/// @param point    the point, replaced by its image
/// @return   0
/// @threads  any
/// @libm     passes through sin and cos
ZAN_API int32_t Zan_TransformPtF(Zan_Vector2T<float>* centre, double degrees, Zan_Vector2T<float>* point);

/// @}

/// @cond
namespace zan_layout {
static_assert(kPlainData<Zan_PlaneEq> && sizeof(Zan_PlaneEq) == 32 && offsetof(Zan_PlaneEq, d) == 24);
static_assert(kPlainData<Zan_Ray> && sizeof(Zan_Ray) == 56 && offsetof(Zan_Ray, direction) == 32);
}  // namespace zan_layout
/// @endcond

#endif  // ZAN_SPACE_H

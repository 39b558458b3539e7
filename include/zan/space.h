// Planes, rays, lines and the projection of points.
#ifndef ZAN_SPACE_H
#define ZAN_SPACE_H

#include "zan/matrix.h"

#include <utility>

/// @defgroup space Planes, lines, projection
/// @{

/// @defgroup planes Planes, rays and lines
/// Degenerate inputs (coincident points, a zero normal, a segment of zero length, a parallel ray) give the result that
/// their entry states. The only error is a ray that misses. An output may be the same record as an input.
/// @{

/// The near plane in eye space. The eye is at the origin and looks along +z; a point with z < 0.1 is behind the plane,
/// one with z = 0.1 is in front.
inline constexpr double Zan_kNearPlaneZ = 0.1;

/// The plane a x + b y + c z + d = 0. Its normal (a, b, c) may have any length.
struct Zan_PlaneEq {
    double a, b, c, d;
};

/// The line of points origin + t * direction. The direction may have any length.
struct Zan_Ray {
    Zan_Vector4T<double> origin;  ///< the point (x, y, z); w is ignored
    Zan_Vector3T<double> direction;
};

/// The plane of an outline: it contains the mean of the points, and its normal is calculated by Newell's method
/// (Sutherland, Sproull and Schumacker, 1974). Seen from the tip of the normal, the points run counterclockwise.
/// @param points    the outline in order; the last point is joined to the first. Repeated points only weight the mean
/// @param count     number of points; below 1, plane and centroid become all zeros
/// @param plane     receives the unit normal and d = -(centroid . normal). A normal whose length before scaling (twice
///                  the outline's area) is at most 1e-12 is not scaled: that of points on one line is 0 up to rounding
/// @param centroid  receives the mean of the points; may be null
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_GetPlaneEquation(const Zan_Vector3T<double>* points, int32_t count, Zan_PlaneEq* plane,
                                     Zan_Vector3T<double>* centroid);

extern "C" {

/// The plane through a point with a given normal.
/// @param point   any point of the plane
/// @param normal  a normal of any length; it is not scaled
/// @param plane   receives the normal and d = -(point . normal)
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_GetPlaneEquation2(const Zan_Vector3T<double>* point, const Zan_Vector3T<double>* normal,
                                      Zan_PlaneEq* plane);

/// The intersection of a ray with a plane. The ray is parallel, and misses, when -1e-12 < normal . direction < 1e-12.
/// @param plane        the plane
/// @param forwardOnly  true: the ray misses unless t > 0, so also when its origin is in the plane. False: every t is a
///                     hit
/// @param ray          the ray
/// @param hit          receives the intersection origin + t * direction, also when the ray misses because of t; the
///                     origin for a parallel ray
/// @param behind       receives t < 0; false for a parallel ray; may be null
/// @param hitFound     receives whether the ray hits; may be null, which makes a miss an error
/// @return   0; Zan_Err_NoPlaneIntersection (0x110A) for a miss when hitFound is null
/// @reports  0x11002F "unable to intersect plane." for that error; hit and behind hold what they hold for any miss
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_RayIntersectPlane(const Zan_PlaneEq* plane, bool forwardOnly, const Zan_Ray* ray,
                                                    Zan_Vector3T<double>* hit, bool* behind, bool* hitFound);

/// The intersection of the segment from a to b with the near plane z = 0.1. If a z is NaN, a counts as
/// behind and b as in front, and the intersection is NaN.
/// @param a, b       the ends, in eye space
/// @param aBehind    receives whether a is behind: a.z < 0.1
/// @param bBehind    receives whether b is behind: b.z < 0.1. May be the same flag as aBehind, which then tells whether
///                   an end is behind
/// @param clipPoint  receives the intersection when exactly one end is behind, else (0, 0, 0)
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_Clip3DLine(const Zan_Vector3T<double>* a, const Zan_Vector3T<double>* b, bool* aBehind,
                               bool* bBehind, Zan_Vector3T<double>* clipPoint);

/// The distance from a point to the infinite line through a segment. When the segment's length is at most 1e-12, about
/// 1e12 or more, or NaN, it is the distance from p to a.
/// @param p              the point
/// @param a, b           the ends of the segment
/// @param withinSegment  receives whether p counts as beside the segment: (p - a) . (b - a) >= 0 and |p - a| <=
///                       |b - a|. A point whose projection is on the segment, but close to b, can fail this test.
///                       False when the distance is the one to a because of the segment's length. May be null
/// @param distance       receives the distance
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_PerpDistTo2DLine(const Zan_Vector2T<double>* p, const Zan_Vector2T<double>* a,
                                     const Zan_Vector2T<double>* b, bool* withinSegment, double* distance);

/// Clips a segment to a closed rectangle. If an end is outside, the segment is visible only when its bounding box and
/// the rectangle overlap in a positive area; so a horizontal or vertical segment is visible only with both ends inside.
/// @param rect     the rectangle; a point with left <= x <= right and top <= y <= bottom is inside
/// @param a, b     the ends. Those outside are moved to the rectangle's sides. Both are unchanged when the bounding box
///                 does not overlap; a segment whose bounding box overlaps, but that runs past a corner outside the
///                 rectangle, is left partly clipped
/// @param visible  receives whether part of the segment is inside
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_ClipLine2Rect(const Zan_FloatRect* rect, Zan_Vector2T<double>* a, Zan_Vector2T<double>* b,
                                  bool* visible);

/// Whether a quadrilateral is seen edge-on after a transform: the cosine of the angle between its normal and the line
/// of sight lies strictly between -tolerance and tolerance.
/// @param m             layer to eye; transforms the points as Zan_Transform3DFloatPoints does
/// @param quad          four points
/// @param tolerance     limit of the cosine
/// @param orthographic  true: the line of sight is (0, 0, 1). False: it is the direction from the origin to the mean of
///                      the four transformed points
/// @param edgeOn        receives the answer; false when the normal or the line of sight has a length of at most 1e-12
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_IsQuadEdgeOn(const Zan_Matrix4* m, const Zan_Vector3T<double>* quad, double tolerance,
                                 bool orthographic, bool* edgeOn);

}  // extern "C"

/// @}

/// @defgroup projection Points to the screen
/// Transforms of single points from a layer to the screen. Matrices apply from left to right.
/// @{

/// Transforms a point of the plane by m1 and then m2. The whole product m1 * m2 is formed, but it is applied as an
/// affine transform: its projective column is ignored.
/// @param m1, m2  layer to screen in two steps
/// @param point   the point, replaced by its image
/// @return   true
/// @threads  any
ZAN_API bool Zan_TransformPoint2DtoScreen(const Zan_Matrix3& m1, const Zan_Matrix3& m2, Zan_Vector2T<double>* point);

/// Transforms a point of space to eye space and, unless it is behind the near plane z = 0.1 there, by projection *
/// screen. Both steps divide by w as Zan_Matrix4::TransformPointAndDivide does.
/// @param toEye       layer to eye
/// @param projection  eye to projected
/// @param screen      projected to screen, applied to x and y; its projective column is ignored, and z is not changed
/// @param point       the point, replaced by its image; unchanged when it is behind the near plane or w is near zero
/// @return   true; false for a point behind the near plane
/// @reports  0x11003B "homogeneous point has W=0" when -1e-12 < w < 1e-12 in either step
/// @throws   Zan_Err_HomogeneousWZero (0x110C) after that report, as a `long`
/// @threads  any
[[nodiscard]] ZAN_API bool Zan_TransformPoint3DtoScreen(const Zan_Matrix4& toEye, const Zan_Matrix4& projection,
                                                        const Zan_Matrix3& screen, Zan_Vector3T<double>* point);
/// The same for the point (x, y, 0) of a layer; x and y of the image are stored.
/// @threads any
[[nodiscard]] ZAN_API bool Zan_TransformPoint3DtoScreen(const Zan_Matrix4& toEye, const Zan_Matrix4& projection,
                                                        const Zan_Matrix3& screen, Zan_Vector2T<double>* point);

/// The directions of the transformed x and y axes: the images of (1, 0) and (0, 1) minus the image of (0, 0). They
/// equal the first two rows of the matrix except for the rounding when the translation is added and subtracted.
/// @param m  the transform; its projective column is ignored
/// @return   the x direction and the y direction
/// @threads  any
[[nodiscard]] ZAN_API std::pair<Zan_Vector2T<double>, Zan_Vector2T<double>> Zan_ComputeDirectionalComponents(
    const Zan_Matrix3& m);

extern "C" {

/// Rewrites a decomposition for a layer without depth: a rotation about x or y that is within 1e-12 degrees of a half
/// turn, in either direction, becomes a mirrored scale. Both angles are examined first. Then a half turn about x sets
/// rx to 0 and negates ry, sy and rz, and after that one about y sets ry to 0 and negates rx, sx and rz.
/// @param decomposition  rewritten; sz always becomes 1, translation and shears stay
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_Correct3DDecompFor2D(Zan_Matrix4Decomp* decomposition);

}  // extern "C"

/// Rotates a point about a centre. The difference of the two is calculated in single precision, rotated in double
/// precision (by an exact quarter turn, then with the sine and cosine of degrees - 90), and rounded to single precision
/// before the centre is added.
/// @param centre   the centre; not changed
/// @param degrees  the angle, counterclockwise with y upward (clockwise on a screen)
/// @param point    the point, replaced by its image
/// @return   0
/// @threads  any
/// @libm     sin, cos
ZAN_API int32_t Zan_TransformPtF(Zan_Vector2T<float>* centre, double degrees, Zan_Vector2T<float>* point);

/// @}

/// @cond
namespace zan_layout {
static_assert(kPlainData<Zan_PlaneEq> && sizeof(Zan_PlaneEq) == 32 && offsetof(Zan_PlaneEq, d) == 24);
static_assert(kPlainData<Zan_Ray> && sizeof(Zan_Ray) == 56 && offsetof(Zan_Ray, direction) == 32);
}  // namespace zan_layout
/// @endcond

/// @}

#endif  // ZAN_SPACE_H

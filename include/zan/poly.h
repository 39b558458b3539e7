// Layer outlines, hit tests, hulls and clipping.
//
// A polygon is a list of vertices in order; the last is joined to the first. The function templates are defined in the
// library, for the types that are declared here.
#ifndef ZAN_POLY_H
#define ZAN_POLY_H

#include "zan/matrix.h"

#include <cassert>
#include <iterator>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

/// @cond
namespace kelvora::geom {
template <class T>
struct PointT;
}
/// @endcond

/// @defgroup poly Polygons
/// @{

/// @defgroup hittests Points in polygons
/// Whether a point is inside an outline, which may be concave; one that crosses itself follows the even-odd rule. A ray
/// from the point toward increasing y counts the edges that it crosses.
///
/// An edge is examined only when it spans the point's x, its smaller x excluded and its larger x included. So a vertex
/// with the point's x is counted once where the outline crosses the ray, and twice or not at all where it only touches
/// it. A vertical edge never spans an x.
///
/// A point on an examined edge is inside. It is on the edge when its y differs from that of the edge by less than 1e-12
/// of the larger of the two, or by less than about 1e-12. So of the square from (0, 0) to (10, 10) everything is inside
/// but the side x = 0 with its corners.
/// @{

/// Whether a point is inside an outline, or within a tolerance of it. Vector is Zan_Vector2T<double> or
/// Zan_Vector2T<float>. Calculated in double precision for both; only for an outline of one repeated vertex is the
/// squared distance to it calculated in the type of the vertices.
/// @param point      the point
/// @param vertices   the outline; consecutive vertices with the same bits count as one. If that leaves one vertex, the
///                   point is inside when it equals that vertex or is within the tolerance of it
/// @param count      number of vertices; below 1 nothing is inside
/// @param tolerance  a point is inside when its distance from a vertex, or from the line of an edge that it is beside
///                   (see Zan_PerpDistTo2DLine), is at most this. Only the square of the tolerance counts; if that is 0
///                   or NaN there is no tolerance
/// @param inside     receives 1 or 0
/// @return   0; it cannot fail and allocates nothing
/// @threads  any
template <class Vector>
int32_t Zan_IsFloatPointInConcavePoly(const Vector* point, const Vector* vertices, int32_t count, double tolerance,
                                      unsigned char* inside);

/// @cond
// The library defines these specializations.
template <>
ZAN_API int32_t Zan_IsFloatPointInConcavePoly(const Zan_Vector2T<double>*, const Zan_Vector2T<double>*, int32_t, double,
                                              unsigned char*);
template <>
ZAN_API int32_t Zan_IsFloatPointInConcavePoly(const Zan_Vector2T<float>*, const Zan_Vector2T<float>*, int32_t, double,
                                              unsigned char*);

template <class Vector>
int32_t Zan_IsFloatPointInConcavePoly(const Vector* /*point*/, const Vector* /*vertices*/, int32_t /*count*/,
                                      double /*tolerance*/, unsigned char* /*inside*/) {
    static_assert(std::is_void_v<Vector>,
                  "Zan_IsFloatPointInConcavePoly: the points are not Zan_Vector2T<double> or Zan_Vector2T<float>");
    return 0;
}
/// @endcond

extern "C" {

/// Zan_IsFloatPointInConcavePoly for four vertices, without tolerance.
/// @param point     the point
/// @param vertices  four vertices
/// @param inside    receives 1 or 0
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_IsFloatPointInQuad(const Zan_Vector2T<double>* point, const Zan_Vector2T<double>* vertices,
                                       unsigned char* inside);

}  // extern "C"

/// The signed area of a polygon that does not cross itself, from the cross products of the diagonals of a fan of
/// quadrilaterals.
/// @param vertices  the outline; repeated vertices add nothing
/// @param count     number of vertices; below 3 the area is 0
/// @return   the area, positive when the vertices run counterclockwise with y upward (clockwise on a screen)
/// @threads any
[[nodiscard]] ZAN_API double Zan_SignedPolygonArea2D(const Zan_Vector2T<double>* vertices, int32_t count);

/// @}

/// @defgroup outlines Layer outlines
/// The four corners of a layer on the screen, the part of the layer in front of the eye, hit tests of screen points,
/// and their distance from the edges. Corners are numbered 0 to 3 around the layer; edge i runs from corner i to corner
/// (i + 1) mod 4. Indexes are not checked, except in a build with assertions, which aborts when one is out of range.
///
/// Each step of a transform overwrites the corners, and nothing records which step was last. A matrix is degenerate
/// when the squared length of its row 0 or of its row 1, projective column included, is below 1e-12; that is no error.
/// An object may be used by one thread at a time, and that includes its const members.
/// @{

/// Allocates an outline's points in the host's tracked memory. Its members are defined in the library only.
template <class T>
class Zan_TrackedAllocator {
public:
    /// The type of the objects.
    using value_type = T;

    /// Has no state.
    Zan_TrackedAllocator() = default;
    /// Allocators have no state, so any of them can free what another has allocated.
    template <class U>
    constexpr Zan_TrackedAllocator(const Zan_TrackedAllocator<U>& /*other*/) noexcept {}

    /// Uninitialised memory.
    /// @param count  number of objects that it holds
    /// @throws std::bad_alloc
    [[nodiscard]] T* allocate(size_t count);
    /// Frees memory.
    /// @param objects, count  the result and the argument of allocate
    void deallocate(T* objects, size_t count) noexcept;
    /// Constructs an object; without arguments it stays uninitialised, so that a vector grows without writing zeros.
    template <class U, class... Arguments>
    void construct(U* object, Arguments&&... arguments) {
        if constexpr (sizeof...(Arguments) == 0) {
            ::new (static_cast<void*>(object)) U;
        } else {
            ::new (static_cast<void*>(object)) U(std::forward<Arguments>(arguments)...);
        }
    }

    /// True: any allocator can free what another has allocated.
    [[nodiscard]] friend constexpr bool operator==(const Zan_TrackedAllocator& /*a*/,
                                                   const Zan_TrackedAllocator& /*b*/) {
        return true;
    }
    /// False.
    [[nodiscard]] friend constexpr bool operator!=(const Zan_TrackedAllocator& /*a*/,
                                                   const Zan_TrackedAllocator& /*b*/) {
        return false;
    }
};

/// A layer in the plane, transformed to the screen by one Zan_Matrix3. Call SetLayerPoint for each corner,
/// TransformPoints, then any query. The outline is the four corners. Nothing is allocated.
class ZAN_API Zan_TransformPoly2D {
public:
    /// Makes a visible layer with uninitialised corners.
    Zan_TransformPoly2D();
    /// Copies the corners and the visibility.
    Zan_TransformPoly2D(const Zan_TransformPoly2D& other);
    /// Copies the corners and the visibility.
    Zan_TransformPoly2D& operator=(const Zan_TransformPoly2D& other);
    /// Frees nothing, since nothing is allocated.
    virtual ~Zan_TransformPoly2D();

    /// Sets a corner.
    /// @param i  0 to 3
    /// @param p  the corner in layer coordinates
    ZAN_INLINE_API void SetLayerPoint(int32_t i, const Zan_Vector2T<double>& p) {
        assert(0 <= i && i < 4);
        corners[i] = {p.x, p.y};
    }
    /// Transforms the corners as Zan_TransformFloatPoints does, and makes the layer visible. A degenerate matrix makes
    /// it invisible instead and leaves the corners unchanged.
    /// @param m  layer to screen
    void TransformPoints(const Zan_Matrix3& m);

    /// False when the last TransformPoints was given a degenerate matrix.
    [[nodiscard]] bool IsVisible() const;
    /// Does nothing, since the outline is the corners.
    void InitPolyPoints() const;
    /// Returns 4.
    [[nodiscard]] int32_t NumPolyPoints() const;
    /// The four corners; the pointer is valid as long as the object.
    [[nodiscard]] const Zan_Vector2T<double>* GetPolyPoints() const;
    /// A point of the outline.
    /// @param i    0 to 3
    /// @param out  receives it
    void GetPolyPoint(int32_t i, Zan_Vector2T<double>* out) const;
    /// A corner.
    /// @param i    0 to 3
    /// @param out  receives it
    /// @return true
    bool GetPoint(int32_t i, Zan_Vector2T<double>* out) const;
    /// An edge, from start to end.
    /// @param i    0 to 3
    /// @param out  receives corner i and the next one
    /// @return true
    bool GetEdge(int32_t i, std::pair<Zan_Vector2T<double>, Zan_Vector2T<double>>* out) const;

    /// Zan_IsFloatPointInConcavePoly for the outline; false when the layer is invisible.
    /// @param p          on the screen
    /// @param tolerance  0 or the distance at which a point beside the outline still hits
    [[nodiscard]] bool IsPointInside(const Zan_Vector2T<double>* p, double tolerance) const;
    /// The distance from p to the nearest edge. For an edge that p is beside (see Zan_PerpDistTo2DLine) it is the
    /// distance to its line, for any other the distance to its nearer end.
    /// @param p  a point of the screen
    [[nodiscard]] double GetMinimumEdgeDistance(const Zan_Vector2T<double>* p) const;

private:
    Zan_Vector2T<double> corners[4];
    bool visible;
};

/// A layer in space, transformed to eye space, clipped at the near plane, and transformed to the screen. Call
/// SetLayerPoint for each corner, TransformPointsToEye, TransformPointsToScreen, InitPolyPoints, then any query.
/// IsPointInside, NumPolyPoints, GetPolyPoints and GetPolyPoint read the outline as it was last built; the other
/// queries (IsVisible, GetPoint, GetEdge, GetMinimumEdgeDistance) use the corners and clip points instead. Copies own
/// their outline; copy construction allocates exactly the tracked memory that its points need.
class ZAN_API Zan_TransformPoly3D {
public:
    /// Makes a layer with no corner behind, no outline, and uninitialised corners and clip points.
    Zan_TransformPoly3D();
    /// Copies everything, the outline included.
    /// @throws std::bad_alloc
    Zan_TransformPoly3D(const Zan_TransformPoly3D& other);
    /// Copies everything, the outline included.
    /// @throws std::bad_alloc; the old outline is then kept
    Zan_TransformPoly3D& operator=(const Zan_TransformPoly3D& other);
    /// Frees the outline.
    virtual ~Zan_TransformPoly3D();

    /// Sets a corner to (p.x, p.y, 0). Does not change which corners are behind, nor the outline.
    /// @param i  0 to 3
    /// @param p  the corner in layer coordinates
    ZAN_INLINE_API void SetLayerPoint(int32_t i, const Zan_Vector2T<double>& p) {
        assert(0 <= i && i < 4);
        corners[i] = {p.x, p.y, 0.0};
    }
    /// Transforms the corners as Zan_Transform3DFloatPoints does. With a degenerate matrix it only marks every
    /// corner as in front. The outline stays.
    /// @param layerToEye  the transform to eye space, in which the eye looks along +z
    void TransformPointsToEye(const Zan_Matrix4& layerToEye);
    /// Clips the four edges with ClipEdgeToScreen, then transforms corners and clip points as
    /// Zan_Transform3DFloatPoints does, and empties the outline. With a degenerate matrix it only marks every
    /// corner as in front.
    /// @param eyeToScreen  the projection; the corners must be in eye space
    void TransformPointsToScreen(const Zan_Matrix4& eyeToScreen);
    /// Clips an edge at the near plane z = 0.1, as Zan_Clip3DLine does: stores which of its corners are behind, and its
    /// clip point. The corners must be in eye space. TransformPointsToScreen does this for every edge.
    /// @param i  0 to 3
    void ClipEdgeToScreen(int32_t i);

    /// Empties the outline; the next one reuses its memory.
    void InvalidatePolyPoints();
    /// True when the outline has been built since it was last emptied.
    [[nodiscard]] bool PolyPointsInit();
    /// Builds the outline, unless PolyPointsInit is true: the corners in front and the clip points of edges that cross
    /// the near plane, in order. It has 0 or 3 to 5 points, or 6 if the corners are not those of a convex layer.
    /// The first call allocates tracked memory for 8 points.
    /// @throws std::bad_alloc; the outline is then still empty
    void InitPolyPoints() const;

    /// True when at least one corner is not behind.
    [[nodiscard]] bool IsVisible() const;
    /// The number of points in the outline; 0 before it is built.
    [[nodiscard]] int32_t NumPolyPoints() const;
    /// The points of the outline; the pointer is valid until the outline changes. May be null when there are none.
    [[nodiscard]] const Zan_Vector2T<double>* GetPolyPoints() const;
    /// A point of the outline.
    /// @param i    0 to NumPolyPoints() - 1
    /// @param out  receives it
    void GetPolyPoint(int32_t i, Zan_Vector2T<double>* out) const;
    /// A corner's x and y.
    /// @param i    0 to 3
    /// @param out  receives them; unchanged for a corner behind
    /// @return true; false for a corner behind
    bool GetPoint(int32_t i, Zan_Vector2T<double>* out) const;
    /// The part of an edge that is in front, from start to end.
    /// @param i    0 to 3
    /// @param out  receives it, with the clip point for an end that is behind; unchanged when both ends are behind
    /// @return true; false when both ends are behind
    bool GetEdge(int32_t i, std::pair<Zan_Vector2T<double>, Zan_Vector2T<double>>* out) const;

    /// Zan_IsFloatPointInConcavePoly for the outline as it was last built; false when the outline is empty or every
    /// corner is behind.
    /// @param p          on the screen
    /// @param tolerance  0 or the distance at which a point beside the outline still hits
    [[nodiscard]] bool IsPointInside(const Zan_Vector2T<double>* p, double tolerance) const;
    /// The distance as in Zan_TransformPoly2D, for the parts of the edges that are in front; -1 when there are none.
    /// @param p  a point of the screen
    [[nodiscard]] double GetMinimumEdgeDistance(const Zan_Vector2T<double>* p) const;

private:
    Zan_Vector3T<double> corners[4];
    Zan_Vector3T<double> edgeClipPoints[4];
    bool cornerBehind[4];
    mutable std::vector<Zan_Vector2T<double>, Zan_TrackedAllocator<Zan_Vector2T<double>>> polyPoints;
    mutable bool polyPointsInit;
};

/// @}

/// @defgroup clipping Clipping
/// @{

extern "C" {

/// The part of a polygon that lies inside a convex one: the subject is clipped by the line of each edge of the clip
/// polygon in turn (Sutherland and Hodgman, 1974), in the plane of x and y. For the edges of a clockwise clip polygon
/// (y upward), a vertex p is inside the edge from a to b when cross(b - a, p - a) < -1e-6. A vertex on the line is
/// outside, so polygons that only touch give an empty result.
/// @param clipPolygon  a convex polygon in either order, each vertex once; fewer than three vertices give an empty
///                     result. So do repeated vertices, since an edge between them has nothing inside: a closed ring,
///                     whose last vertex repeats the first, clips everything away
/// @param subject      a polygon that does not cross itself; fewer than three vertices give an empty result
/// @param result       receives the subject's vertices that are left, with their z and w, and the intersections, with z
///                     and w interpolated along the edge; may be the same vector as one of the others
/// @throws   std::bad_alloc; result is then unchanged
/// @threads  any
ZAN_API void Zan_PolyPolyClip2D(const std::vector<Zan_Vector4T<double>>* clipPolygon,
                                const std::vector<Zan_Vector4T<double>>* subject,
                                std::vector<Zan_Vector4T<double>>* result);

}  // extern "C"

/// @}

/// @defgroup hulls Hulls and convexity
/// In the plane of x and y; z and w are ignored. Points are Zan_Vector2T<double>, Zan_Vector3T<double>,
/// Zan_Vector4T<double> or, for hulls, kelvora::geom::PointT<float>. Iterators of a std::vector and pointers are passed
/// on to the library; points of any other range, and for Zan_IsConvex those of an array, are copied to a std::vector
/// first.
/// @{

/// The convex hull of some points, counterclockwise with y upward, from the lowest point (the leftmost of several). The
/// points are snapped to a grid of 2^29 steps across their bounds in x and in y, the hull is found exactly on that grid
/// (Andrew, 1979), and its vertices are mapped back to coordinates. So a vertex is a point of the grid: within half a
/// step of an input point, but seldom equal to it. Points on an edge of the hull and repeated points are omitted:
/// points on a line give its two ends, one repeated point gives that point.
/// @param first, last  the points. A NaN coordinate is ignored for the bounds and snaps to the lower bound. Where the
///                     extent is not finite, the coordinates of the result are NaN
/// @param hull         a std::vector of the same point type, which must not share memory with the points; receives the
///                     vertices, with z and w 0. Three points or fewer are copied unchanged
/// @throws   std::bad_alloc, std::length_error; hull is then unchanged or empty
/// @threads  any
template <class Iterator, class Container>
void Zan_ComputeConvexHull(Iterator first, Iterator last, Container& hull);

/// Whether a closed polygon turns in the same direction at all its vertices. A turn counts only when the magnitude of
/// its cross product exceeds the error bound of that product, so straight and nearly straight turns, repeated vertices
/// and turns with NaN do not count.
/// @param first, last  the vertices
/// @return   true when no two turns that count have opposite directions: also for fewer than three vertices, for points
///           on a line, and for a polygon that winds around more than once
/// @throws   std::bad_alloc, only where the points are copied
/// @threads  any
template <class Iterator>
[[nodiscard]] bool Zan_IsConvex(Iterator first, Iterator last);

/// @cond
// The library defines these specializations. All else is passed on to one of them.
#define ZAN_HULL(...)                                                                                        \
    template <>                                                                                              \
    ZAN_API void Zan_ComputeConvexHull(std::vector<__VA_ARGS__>::const_iterator,                             \
                                       std::vector<__VA_ARGS__>::const_iterator, std::vector<__VA_ARGS__>&); \
    template <>                                                                                              \
    ZAN_API void Zan_ComputeConvexHull(const __VA_ARGS__*, const __VA_ARGS__*, std::vector<__VA_ARGS__>&)
ZAN_HULL(Zan_Vector2T<double>);
ZAN_HULL(Zan_Vector3T<double>);
ZAN_HULL(Zan_Vector4T<double>);
ZAN_HULL(kelvora::geom::PointT<float>);
#undef ZAN_HULL
template <>
[[nodiscard]] ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector2T<double>>::const_iterator,
                                        std::vector<Zan_Vector2T<double>>::const_iterator);
template <>
[[nodiscard]] ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector3T<double>>::const_iterator,
                                        std::vector<Zan_Vector3T<double>>::const_iterator);
template <>
[[nodiscard]] ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector4T<double>>::const_iterator,
                                        std::vector<Zan_Vector4T<double>>::const_iterator);

namespace zan_ranges {
template <class Point>
inline constexpr bool kVector =
    std::is_same_v<Point, Zan_Vector2T<double>> || std::is_same_v<Point, Zan_Vector3T<double>> ||
    std::is_same_v<Point, Zan_Vector4T<double>>;
template <class Point>
inline constexpr bool kHullPoint = kVector<Point> || std::is_same_v<Point, kelvora::geom::PointT<float>>;
template <class Iterator>
using PointOf = std::remove_cv_t<typename std::iterator_traits<Iterator>::value_type>;
template <class Iterator>
using ConstIterator = typename std::vector<PointOf<Iterator>>::const_iterator;
}  // namespace zan_ranges

template <class Iterator, class Container>
void Zan_ComputeConvexHull(Iterator first, Iterator last, Container& hull) {
    using Point = zan_ranges::PointOf<Iterator>;
    constexpr bool kRightPoint = zan_ranges::kHullPoint<Point>;
    constexpr bool kRightHull = std::is_same_v<Container, std::vector<Point>>;
    static_assert(kRightPoint,
                  "Zan_ComputeConvexHull: the points are not Zan_Vector2T<double>, Zan_Vector3T<double>, "
                  "Zan_Vector4T<double> or kelvora::geom::PointT<float>");
    static_assert(!kRightPoint || kRightHull,
                  "Zan_ComputeConvexHull: the hull is not a std::vector of the points' type");
    if constexpr (kRightPoint && kRightHull) {
        using ConstIterator = zan_ranges::ConstIterator<Iterator>;
        if constexpr (std::is_convertible_v<Iterator, ConstIterator>) {
            Zan_ComputeConvexHull<ConstIterator, Container>(first, last, hull);
        } else if constexpr (std::is_convertible_v<Iterator, const Point*>) {
            Zan_ComputeConvexHull<const Point*, Container>(first, last, hull);
        } else {
            const std::vector<Point> points(first, last);
            Zan_ComputeConvexHull(points.cbegin(), points.cend(), hull);
        }
    }
}

template <class Iterator>
bool Zan_IsConvex(Iterator first, Iterator last) {
    using Point = zan_ranges::PointOf<Iterator>;
    static_assert(
        zan_ranges::kVector<Point>,
        "Zan_IsConvex: the vertices are not Zan_Vector2T<double>, Zan_Vector3T<double> or Zan_Vector4T<double>");
    if constexpr (!zan_ranges::kVector<Point>) {
        return false;
    } else if constexpr (std::is_convertible_v<Iterator, zan_ranges::ConstIterator<Iterator>>) {
        return Zan_IsConvex<zan_ranges::ConstIterator<Iterator>>(first, last);
    } else {
        const std::vector<Point> points(first, last);
        return Zan_IsConvex(points.cbegin(), points.cend());
    }
}
/// @endcond

/// @}

/// @}

#endif  // ZAN_POLY_H

// Layer outlines, hit tests, hulls and clipping.
//
// A polygon is a list of vertices in order, the last joined to the first. The function templates have no body here: the
// library holds the instantiations that are declared, and no others.
#ifndef ZAN_POLY_H
#define ZAN_POLY_H

#include "zan/matrix.h"

#include <utility>
#include <vector>

/// @cond
namespace kelvora::geom {
template <class T>
struct PointT;
}
/// @endcond

/// @defgroup hittests Points in polygons
/// Whether a point is inside an outline that may be concave; a self-crossing one follows the even-odd rule. A ray from
/// the point toward increasing y counts the edges that it crosses. An edge takes part when it spans the point's x, its
/// smaller x left out and its larger x included: a vertex above or below the point counts once where the outline passes
/// and not or twice where it only touches. A point on an edge that takes part (within about 1e-12, relatively) is
/// inside. Of the square from (0, 0) to (10, 10) so everything is inside but the side x = 0, its corners included.
/// @{

/// Whether a point is inside an outline, or within a tolerance of it. Calculated in double precision for both types,
/// except that a polygon whose vertices are all the same compares the point with it in its own type.
/// @param point      the point
/// @param vertices   the outline; vertices repeated one after the other count as one
/// @param count      how many; below 1 nothing is inside
/// @param tolerance  a point this far from an edge that it is beside (see Zan_PerpDistTo2DLine), or from a vertex, is
///                   inside. A tolerance whose square is 0 or NaN is none
/// @param inside     receives 1 or 0
/// @return   0; it cannot fail, and takes no memory
/// @threads  any
template <class Vector>
int32_t Zan_IsFloatPointInConcavePoly(const Vector* point, const Vector* vertices, int32_t count, double tolerance,
                                      unsigned char* inside);

/// @cond
extern template ZAN_API int32_t Zan_IsFloatPointInConcavePoly<Zan_Vector2T<double>>(const Zan_Vector2T<double>*,
                                                                                    const Zan_Vector2T<double>*,
                                                                                    int32_t, double, unsigned char*);
extern template ZAN_API int32_t Zan_IsFloatPointInConcavePoly<Zan_Vector2T<float>>(const Zan_Vector2T<float>*,
                                                                                   const Zan_Vector2T<float>*, int32_t,
                                                                                   double, unsigned char*);
/// @endcond

extern "C" {

/// Zan_IsFloatPointInConcavePoly for four vertices and no tolerance.
/// @param point     the point
/// @param vertices  four
/// @param inside    receives 1 or 0
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_IsFloatPointInQuad(const Zan_Vector2T<double>* point, const Zan_Vector2T<double>* vertices,
                                       unsigned char* inside);

}  // extern "C"

/// The area of a simple polygon, positive when its vertices run counterclockwise with y upward (clockwise on a screen).
/// @param vertices  the outline
/// @param count     how many; below 3 the area is 0
/// @threads any
[[nodiscard]] ZAN_API double Zan_SignedPolygonArea2D(const Zan_Vector2T<double>* vertices, int32_t count);

/// @}

/// @defgroup outlines Layer outlines
/// Where the four corners of a layer land on the screen, how much of it is in front of the eye, whether a point of the
/// screen hits it and how far away it is. Corners are numbered 0 to 3 around the layer; edge i runs from corner i to
/// corner (i + 1) mod 4. Indexes out of range are the host's to avoid; a build with assertions stops there.
///
/// Each step of a transform overwrites the corners: nothing records which step was last. A matrix is degenerate when
/// the squared length of its row 0 or of its row 1, projective column included, lies strictly between -1e-12 and 1e-12;
/// that is no error. An object belongs to one thread at a time, its const members included.
/// @{

/// The memory of an outline: the host counts it. Only the library allocates with it.
template <class T>
class Zan_TrackedAllocator {
public:
    using value_type = T;

    Zan_TrackedAllocator() = default;
    /// All of them are the same.
    template <class U>
    constexpr Zan_TrackedAllocator(const Zan_TrackedAllocator<U>& /*other*/) noexcept {}

    /// Memory for some objects, none of them made.
    /// @param count  how many
    [[nodiscard]] T* allocate(size_t count);
    /// Gives memory back.
    /// @param objects, count  as they were allocated
    void deallocate(T* objects, size_t count) noexcept;

    [[nodiscard]] friend constexpr bool operator==(const Zan_TrackedAllocator& /*a*/,
                                                   const Zan_TrackedAllocator& /*b*/) {
        return true;
    }
    [[nodiscard]] friend constexpr bool operator!=(const Zan_TrackedAllocator& /*a*/,
                                                   const Zan_TrackedAllocator& /*b*/) {
        return false;
    }
};

/// A layer in the plane, carried to the screen by one Zan_Matrix3: SetLayerPoint for each corner, TransformPoints, then
/// any question. Its outline is its four corners. Copying copies everything; nothing is allocated.
class ZAN_API Zan_TransformPoly2D {
public:
    /// Visible, the corners unset.
    Zan_TransformPoly2D();
    Zan_TransformPoly2D(const Zan_TransformPoly2D& other);
    Zan_TransformPoly2D& operator=(const Zan_TransformPoly2D& other);
    virtual ~Zan_TransformPoly2D();

    /// Sets a corner.
    /// @param i  0 to 3
    /// @param p  in the layer's coordinates
    void SetLayerPoint(int32_t i, const Zan_Vector2T<double>& p);
    /// Carries the corners from the layer to the screen, as Zan_TransformFloatPoints does. A degenerate matrix makes
    /// the layer invisible and leaves the corners alone; any other makes it visible.
    /// @param m  layer to screen
    void TransformPoints(const Zan_Matrix3& m);

    /// False after a degenerate matrix.
    [[nodiscard]] bool IsVisible() const;
    /// Does nothing: the outline is the corners.
    void InitPolyPoints() const;
    /// 4.
    [[nodiscard]] int32_t NumPolyPoints() const;
    /// The four corners, for as long as the object lives.
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
    /// The distance to the nearest edge. To an edge that p is beside, as Zan_PerpDistTo2DLine says, it is the distance
    /// to its line, to any other the distance to its nearer end.
    /// @param p  on the screen
    [[nodiscard]] double GetMinimumEdgeDistance(const Zan_Vector2T<double>* p) const;

private:
    Zan_Vector2T<double> corners[4];
    bool visible;
};

/// A layer in space, carried to the eye and from there to the screen, with what is behind the near plane cut away:
/// SetLayerPoint for each corner, TransformPointsToEye, TransformPointsToScreen, InitPolyPoints, then any question.
/// IsPointInside and the members with PolyPoint in their names read the outline as it was last built; the others do not
/// need it. A copy has an outline of its own, in exactly as much tracked memory as its points need.
class ZAN_API Zan_TransformPoly3D {
public:
    /// No corner behind, no outline, corners and clip points unset.
    Zan_TransformPoly3D();
    /// @throws std::bad_alloc
    Zan_TransformPoly3D(const Zan_TransformPoly3D& other);
    /// @throws std::bad_alloc; this then has its former outline
    Zan_TransformPoly3D& operator=(const Zan_TransformPoly3D& other);
    virtual ~Zan_TransformPoly3D();

    /// Sets a corner to (p.x, p.y, 0). Flags and outline stay.
    /// @param i  0 to 3
    /// @param p  in the layer's coordinates
    void SetLayerPoint(int32_t i, const Zan_Vector2T<double>& p);
    /// Carries the corners from the layer to the eye, as Zan_Transform3DFloatPoints does. A degenerate matrix sets no
    /// corner behind and does nothing else. The outline stays.
    /// @param layerToEye  the eye looks along +z
    void TransformPointsToEye(const Zan_Matrix4& layerToEye);
    /// Clips the four edges, then carries corners and clip points from the eye to the screen, as
    /// Zan_Transform3DFloatPoints does, and empties the outline. A degenerate matrix sets no corner behind and does
    /// nothing else.
    /// @param eyeToScreen  the projection
    void TransformPointsToScreen(const Zan_Matrix4& eyeToScreen);
    /// Clips an edge at the near plane z = 0.1, as Zan_Clip3DLine does: sets which of its corners are behind and where
    /// it crosses. The corners must be in eye space. Part of TransformPointsToScreen.
    /// @param i  0 to 3
    void ClipEdgeToScreen(int32_t i);

    /// Empties the outline and keeps its memory for the next one.
    void InvalidatePolyPoints();
    /// Whether the outline has been built since it was last emptied.
    [[nodiscard]] bool PolyPointsInit();
    /// Builds the outline unless it is there: the corners in front and the points where edges cross the near plane, in
    /// order; none, or 3 to 6. The first time allocates tracked memory, for 8 points.
    /// @throws std::bad_alloc
    void InitPolyPoints() const;

    /// Some corner is not behind.
    [[nodiscard]] bool IsVisible() const;
    /// How many points the outline has; 0 before it is built.
    [[nodiscard]] int32_t NumPolyPoints() const;
    /// The points of the outline, until it changes. May be null where there are none.
    [[nodiscard]] const Zan_Vector2T<double>* GetPolyPoints() const;
    /// A point of the outline.
    /// @param i    0 to NumPolyPoints() - 1
    /// @param out  receives it
    void GetPolyPoint(int32_t i, Zan_Vector2T<double>* out) const;
    /// A corner's x and y.
    /// @param i    0 to 3
    /// @param out  receives them; untouched for a corner behind
    /// @return false for a corner behind
    bool GetPoint(int32_t i, Zan_Vector2T<double>* out) const;
    /// The part of an edge that is in front, from start to end.
    /// @param i    0 to 3
    /// @param out  receives it, with the clip point in the place of an end that is behind; untouched when both are
    /// @return false when both ends are behind
    bool GetEdge(int32_t i, std::pair<Zan_Vector2T<double>, Zan_Vector2T<double>>* out) const;

    /// Zan_IsFloatPointInConcavePoly for the outline as it is; false when it has no points or no corner is in front.
    /// @param p          on the screen
    /// @param tolerance  0 or the distance at which a point beside the outline still hits
    [[nodiscard]] bool IsPointInside(const Zan_Vector2T<double>* p, double tolerance) const;
    /// As Zan_TransformPoly2D has it, for the parts of the edges that are in front; -1 when there are none.
    /// @param p  on the screen
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

/// The part of a polygon that lies inside a convex one, cut by the line of each of its edges in turn (Sutherland and
/// Hodgman, 1974). Only x and y decide. A vertex is inside a line when their cross product is below -1e-6; on the line
/// is outside, so polygons that touch have nothing in common.
/// @param clipPolygon  convex, in either order; with fewer than three vertices it leaves nothing
/// @param subject      any simple polygon; fewer than three vertices give nothing
/// @param result       receives the vertices that are left, z and w included, and the cuts, whose z and w are
///                     interpolated along the edge that is cut; may be one of the other two
/// @throws   std::bad_alloc; result is then as it was
/// @threads  any
ZAN_API void Zan_PolyPolyClip2D(const std::vector<Zan_Vector4T<double>>* clipPolygon,
                                const std::vector<Zan_Vector4T<double>>* subject,
                                std::vector<Zan_Vector4T<double>>* result);

}  // extern "C"

/// @}

/// @defgroup hulls Hulls and convexity
/// In the plane of x and y. The library holds instantiations for the const iterators of vectors of
/// Zan_Vector2T<double>, Zan_Vector3T<double>, Zan_Vector4T<double> and, for the hull, kelvora::geom::PointT<float>;
/// for the hull also for pointers to const points of these types.
/// @{

/// The convex hull of some points, counterclockwise with y upward from the lowest one (the leftmost of several). The
/// points are snapped to a grid of 2^29 steps across their bounds in x and in y, the hull is found exactly there
/// (Andrew, 1979), and its vertices are mapped back: they are within half a step of input points. Points on an edge of
/// the hull and repeated points are left out: what is left of points on a line is the two ends, of one repeated point
/// itself.
/// @param first, last  the points. A NaN coordinate is left out of the bounds and snaps to their low end; where the
///                     extent is not finite, the coordinates of the result are NaN
/// @param hull         a vector of these points, which must not share memory with them; receives the vertices, z and w
///                     being 0. Three points or fewer are copied as they are
/// @throws   std::bad_alloc, std::length_error; hull is then as it was or empty
/// @threads  any
template <class Iterator, class Container>
void Zan_ComputeConvexHull(Iterator first, Iterator last, Container& hull);

/// Whether a closed polygon turns the same way at all its vertices. A turn counts when its cross product exceeds its
/// rounding error. Without such turns (fewer than three points, points on a line) it is convex; so is one that winds
/// around more than once.
/// @param first, last  the vertices; the turns at NaN vertices do not count
/// @threads  any
template <class Iterator>
[[nodiscard]] bool Zan_IsConvex(Iterator first, Iterator last);

/// @cond
#define ZAN_HULL(...)                                                                            \
    extern template ZAN_API void Zan_ComputeConvexHull(std::vector<__VA_ARGS__>::const_iterator, \
                                                       std::vector<__VA_ARGS__>::const_iterator, \
                                                       std::vector<__VA_ARGS__>&);               \
    extern template ZAN_API void Zan_ComputeConvexHull(const __VA_ARGS__*, const __VA_ARGS__*,   \
                                                       std::vector<__VA_ARGS__>&)
ZAN_HULL(Zan_Vector2T<double>);
ZAN_HULL(Zan_Vector3T<double>);
ZAN_HULL(Zan_Vector4T<double>);
ZAN_HULL(kelvora::geom::PointT<float>);
#undef ZAN_HULL
extern template ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector2T<double>>::const_iterator,
                                          std::vector<Zan_Vector2T<double>>::const_iterator);
extern template ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector3T<double>>::const_iterator,
                                          std::vector<Zan_Vector3T<double>>::const_iterator);
extern template ZAN_API bool Zan_IsConvex(std::vector<Zan_Vector4T<double>>::const_iterator,
                                          std::vector<Zan_Vector4T<double>>::const_iterator);
/// @endcond

/// @}

#endif  // ZAN_POLY_H

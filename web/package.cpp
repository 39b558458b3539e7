// What zan.js calls besides the functions that C can call: the classes, templates and C++ functions of the library.
// Arguments and results are in scratch memory.
#include "zan/platform/bel.h"
#include "zan/zan.h"

#include <emscripten.h>

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

using Vector2 = Zan_Vector2T<double>;
using Vector3 = Zan_Vector3T<double>;
using Vector4 = Zan_Vector4T<double>;

namespace {

alignas(8) unsigned char scratch[1024];

// The first report since JavaScript last set `reported` to 0. wasm.js relies on the layout.
struct Report {
    uint32_t reported, number;
    int32_t severity;
    char text[kBel_LoggingBufferSize];
} firstReport;

void keep(void* /*context*/, const Bel_Report* report) {
    if (firstReport.reported != 0) return;
    firstReport.reported = 1;
    firstReport.number = report->errorNumber;
    firstReport.severity = report->severity;
    std::strncpy(firstReport.text, report->text, sizeof firstReport.text - 1);
}

std::vector<Vector4> clipped;

// Stores the corners of a box in a layer.
template <class Poly>
void setBox(Poly& poly, const double* box) {
    const double left = box[0], top = box[1], right = box[0] + box[2], bottom = box[1] + box[3];
    poly.SetLayerPoint(0, {left, top});
    poly.SetLayerPoint(1, {right, top});
    poly.SetLayerPoint(2, {right, bottom});
    poly.SetLayerPoint(3, {left, bottom});
}

Zan_TransformPoly2D flatLayer(const double* box, const Zan_Matrix3& toScreen) {
    Zan_TransformPoly2D poly;
    setBox(poly, box);
    poly.TransformPoints(toScreen);
    return poly;
}

Zan_TransformPoly3D spaceLayer(const double* box, const Zan_Matrix4& toEye, const Zan_Matrix4& toScreen) {
    Zan_TransformPoly3D poly;
    setBox(poly, box);
    poly.TransformPointsToEye(toEye);
    poly.TransformPointsToScreen(toScreen);
    poly.InitPolyPoints();
    return poly;
}

template <class Poly>
void distances(const Poly& poly, int32_t count, const Vector2* points, double* out) {
    for (int32_t i = 0; i < count; ++i) out[i] = poly.GetMinimumEdgeDistance(&points[i]);
}

}  // namespace

extern "C" {

/// The formatting of messages needs no floating point, whose code is large.
int vsniprintf(char* text, size_t size, const char* format, va_list arguments);
int __wrap_vsnprintf(char* text, size_t size, const char* format, va_list arguments) {
    return vsniprintf(text, size, format, arguments);
}

/// Keeps reports for JavaScript from now on; returns where.
EMSCRIPTEN_KEEPALIVE Report* zan_start() {
    Bel_SetReportHandler(keep, nullptr);
    return &firstReport;
}

/// Memory for arguments and results.
EMSCRIPTEN_KEEPALIVE void* zan_scratch() { return scratch; }

/// Memory for arrays, of the given size at least; what the last call returned is freed. Null when there is not enough.
EMSCRIPTEN_KEEPALIVE void* zan_room(size_t bytes) {
    static void* room = nullptr;
    std::free(room);
    return room = std::malloc(bytes);
}

/// A layer of the plane: its four corners; false when it is invisible.
EMSCRIPTEN_KEEPALIVE bool zan_flat_layer(const double* box, const Zan_Matrix3* toScreen, Vector2* corners) {
    const Zan_TransformPoly2D poly = flatLayer(box, *toScreen);
    for (int32_t i = 0; i < 4; ++i) poly.GetPolyPoint(i, &corners[i]);
    return poly.IsVisible();
}

/// A layer of space: the points of its outline, 8 at most.
/// @return the number of points in the lowest byte; bits 8 to 11 are set for the corners that are behind
EMSCRIPTEN_KEEPALIVE int32_t zan_space_layer(const double* box, const Zan_Matrix4* toEye, const Zan_Matrix4* toScreen,
                                             Vector2* outline) {
    const Zan_TransformPoly3D poly = spaceLayer(box, *toEye, *toScreen);
    int32_t behind = 0;
    for (int32_t i = 0; i < 4; ++i) {
        Vector2 corner;
        if (!poly.GetPoint(i, &corner)) behind |= 0x100 << i;
    }
    for (int32_t i = 0; i < poly.NumPolyPoints(); ++i) poly.GetPolyPoint(i, &outline[i]);
    return poly.NumPolyPoints() | behind;
}

/// The distances of points from the edges of a layer of the plane.
EMSCRIPTEN_KEEPALIVE void zan_flat_layer_distances(const double* box, const Zan_Matrix3* toScreen, int32_t count,
                                                   const Vector2* points, double* out) {
    distances(flatLayer(box, *toScreen), count, points, out);
}

/// The distances of points from the edges of a layer of space; -1 when all of it is behind.
EMSCRIPTEN_KEEPALIVE void zan_space_layer_distances(const double* box, const Zan_Matrix4* toEye,
                                                    const Zan_Matrix4* toScreen, int32_t count, const Vector2* points,
                                                    double* out) {
    distances(spaceLayer(box, *toEye, *toScreen), count, points, out);
}

EMSCRIPTEN_KEEPALIVE void zan_points_in_polygon(int32_t count, const Vector2* points, int32_t vertexCount,
                                                const Vector2* vertices, double tolerance, unsigned char* inside) {
    for (int32_t i = 0; i < count; ++i) {
        Zan_IsFloatPointInConcavePoly(&points[i], vertices, vertexCount, tolerance, &inside[i]);
    }
}

EMSCRIPTEN_KEEPALIVE double zan_area(const Vector2* vertices, int32_t count) {
    return Zan_SignedPolygonArea2D(vertices, count);
}

/// Replaces the points by their hull; returns its size.
EMSCRIPTEN_KEEPALIVE int32_t zan_hull(Vector2* points, int32_t count) {
    std::vector<Vector2> hull;
    Zan_ComputeConvexHull(points, points + count, hull);
    std::copy(hull.begin(), hull.end(), points);
    return static_cast<int32_t>(hull.size());
}

EMSCRIPTEN_KEEPALIVE bool zan_is_convex(const Vector2* vertices, int32_t count) {
    return Zan_IsConvex(vertices, vertices + count);
}

/// Clips a polygon by a convex one; the vertices that are left are at zan_clipped().
/// @return the number of vertices
EMSCRIPTEN_KEEPALIVE int32_t zan_clip(const Vector4* vertices, int32_t clipCount, int32_t subjectCount) {
    const std::vector<Vector4> clip(vertices, vertices + clipCount);
    clipped.assign(vertices + clipCount, vertices + clipCount + subjectCount);
    Zan_PolyPolyClip2D(&clip, &clipped, &clipped);
    return static_cast<int32_t>(clipped.size());
}

EMSCRIPTEN_KEEPALIVE const Vector4* zan_clipped() { return clipped.data(); }

EMSCRIPTEN_KEEPALIVE void zan_plane(const Vector3* points, int32_t count, Zan_PlaneEq* plane, Vector3* centroid) {
    Zan_GetPlaneEquation(points, count, plane, centroid);
}

EMSCRIPTEN_KEEPALIVE void zan_look_at(const Vector3* eye, const Vector3* target, const Vector3* up, Zan_Matrix4* out) {
    *out = Zan_LookAtMatrix(*eye, *target, *up);
}

EMSCRIPTEN_KEEPALIVE void zan_project(Zan_Matrix4* m, double distance) { m->Project(distance); }

EMSCRIPTEN_KEEPALIVE void zan_skew(Zan_Matrix3* m, double skewDegrees, double axisDegrees) {
    m->Skew(skewDegrees, axisDegrees);
}

EMSCRIPTEN_KEEPALIVE double zan_determinant3(const Zan_Matrix3* m) { return m->Determinant(); }

EMSCRIPTEN_KEEPALIVE void zan_drop_z(const Zan_Matrix4* m, Zan_Matrix3* out) { out->AssignFromByDroppingZ(*m); }

EMSCRIPTEN_KEEPALIVE bool zan_equal3(const Zan_Matrix3* a, const Zan_Matrix3* b, double tolerance) {
    return Zan_EqualMatrixWithinEpsilon(*a, *b, tolerance);
}

EMSCRIPTEN_KEEPALIVE bool zan_equal4(const Zan_Matrix4* a, const Zan_Matrix4* b, double tolerance) {
    return Zan_EqualMatrixWithinEpsilon(*a, *b, tolerance);
}

/// Divides by w; false, after a report, where a w is near zero.
EMSCRIPTEN_KEEPALIVE bool zan_transform_and_divide3(const Zan_Matrix3* m, int32_t count, Vector2* points) {
    try {
        m->TransformPointsAndDivide(count, points);
        return true;
    } catch (long) {
        return false;
    }
}

EMSCRIPTEN_KEEPALIVE double zan_angle(double x, double y) { return Zan_VecToAngle({x, y}); }
}

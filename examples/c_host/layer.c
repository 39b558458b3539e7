// Outlines and hit tests of layers by Zan's plain functions.
#include "layer.h"

static void addPoint(LayerOutline* outline, const Zan_Vector3d* point) {
    outline->points[outline->count].x = point->x;
    outline->points[outline->count].y = point->y;
    ++outline->count;
}

void layerOutline(const Zan_Vector2d corners[4], const Zan_Matrix4* layerToEye, const Zan_Matrix4* eyeToScreen,
                  LayerOutline* outline) {
    Zan_Vector3d points[4];
    for (int i = 0; i < 4; ++i) {
        points[i].x = corners[i].x;
        points[i].y = corners[i].y;
        points[i].z = 0.0;
    }
    Zan_Transform3DFloatPoints(layerToEye, 4, points);

    // Edge i runs from corner i to the next one. Where it crosses the near plane it has a clip point.
    bool behind[4];
    Zan_Vector3d clipPoints[4];
    for (int i = 0; i < 4; ++i) {
        const int next = (i + 1) % 4;
        Zan_Clip3DLine(&points[i], &points[next], &behind[i], &behind[next], &clipPoints[i]);
    }
    Zan_Transform3DFloatPoints(eyeToScreen, 4, points);
    Zan_Transform3DFloatPoints(eyeToScreen, 4, clipPoints);

    outline->count = 0;
    for (int i = 0; i < 4; ++i) {
        if (!behind[i]) addPoint(outline, &points[i]);
        if (behind[i] != behind[(i + 1) % 4]) addPoint(outline, &clipPoints[i]);
    }
}

static double distanceSquared(const Zan_Vector2d* a, const Zan_Vector2d* b) {
    const double dx = a->x - b->x;
    const double dy = a->y - b->y;
    return dx * dx + dy * dy;
}

static bool isNearEdge(const Zan_Vector2d* point, const Zan_Vector2d* start, const Zan_Vector2d* end,
                       double tolerance) {
    bool withinSegment;
    double distance;
    Zan_PerpDistTo2DLine(point, start, end, &withinSegment, &distance);
    const double limit = tolerance * tolerance;
    return (withinSegment && distance * distance <= limit) || distanceSquared(point, start) <= limit ||
           distanceSquared(point, end) <= limit;
}

bool layerIsHit(const LayerOutline* outline, Zan_Vector2d point, double tolerance) {
    const int32_t count = outline->count;
    const Zan_Vector2d* points = outline->points;
    if (tolerance != 0.0) {
        for (int32_t i = 0; i < count; ++i) {
            if (isNearEdge(&point, &points[i], &points[(i + 1) % count], tolerance)) return true;
        }
    }
    // Zan_IsFloatPointInQuad takes four points: test the quadrilaterals 0, i, i + 1, i + 2 of a fan. The last one is a
    // triangle when the count is odd: its last point is repeated, which changes nothing.
    for (int32_t i = 1; i + 1 < count; i += 2) {
        const int32_t last = i + 2 < count ? i + 2 : i + 1;
        const Zan_Vector2d quad[4] = {points[0], points[i], points[i + 1], points[last]};
        unsigned char inside;
        Zan_IsFloatPointInQuad(&point, quad, &inside);
        if (inside) return true;
    }
    return false;
}

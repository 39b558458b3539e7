// Projects layers to the window with zan's layer polygons and tests points against them.
#include "project.h"

#include "mapping.h"

#include <algorithm>
#include <cmath>

namespace scene {
namespace {

/// Functions return the codes that the classes throw.
void throwIfFailed(int32_t code) {
    if (code != 0) throw static_cast<long>(code);
}

/// A layer's polygon, and its plane and depths in eye space.
struct ProjectedLayer {
    Zan_TransformPoly3D poly;
    Zan_PlaneEq plane;
    double nearest, farthest;  ///< smallest and largest eye z of its corners, clamped to the near plane
};

ProjectedLayer projectLayer(const Zan_Matrix4& layerToEye, const View& view, Size size, Appearance& seen) {
    const double right = size.width / 2;
    const double bottom = size.height / 2;
    const Zan_Vector2T<double> corners[4] = {{-right, -bottom}, {right, -bottom}, {right, bottom}, {-right, bottom}};
    Zan_Vector3T<double> inEye[4];
    ProjectedLayer layer{};
    for (int32_t i = 0; i < 4; ++i) {
        layer.poly.SetLayerPoint(i, corners[i]);
        inEye[i] = {corners[i].x, corners[i].y, 0.0};
    }
    throwIfFailed(Zan_IsQuadEdgeOn(&layerToEye, inEye, kEdgeOnTolerance, false, &seen.edgeOn));
    layer.poly.TransformPointsToEye(layerToEye);
    layer.poly.TransformPointsToScreen(view.eyeToScreen);
    layer.poly.InitPolyPoints();

    throwIfFailed(Zan_Transform3DFloatPoints(&layerToEye, 4, inEye));
    Zan_Vector3T<double> centre{};
    throwIfFailed(Zan_GetPlaneEquation(inEye, 4, &layer.plane, &centre));
    seen.depth = centre.z;
    const auto [low, high] = std::minmax({inEye[0].z, inEye[1].z, inEye[2].z, inEye[3].z});
    layer.nearest = std::max(low, Zan_kNearPlaneZ);
    layer.farthest = std::max(high, Zan_kNearPlaneZ);
    return layer;
}

void readOutline(const Zan_TransformPoly3D& poly, Appearance& seen) {
    // The outline has the corners in front and, in order between them, the crossing of each edge that crosses the near
    // plane. crossing[i] is true when point i of the outline is a crossing, false when it is a
    // corner.
    std::vector<bool> crossing;
    for (int32_t i = 0; i < 4; ++i) {
        Zan_Vector2T<double> ignored{};
        seen.behind[static_cast<size_t>(i)] = !poly.GetPoint(i, &ignored);
    }
    for (size_t i = 0; i < 4; ++i) {
        const bool start = seen.behind[i];
        const bool end = seen.behind[(i + 1) % 4];
        if (!(start && end)) crossing.push_back(start);
        if (!start && end) crossing.push_back(true);
    }
    const int32_t count = poly.NumPolyPoints();
    for (int32_t i = 0; i < count; ++i) {
        Zan_Vector2T<double> p{};
        poly.GetPolyPoint(i, &p);
        seen.outline.push_back(p);
        const auto at = static_cast<size_t>(i);
        seen.cut.push_back(crossing[at] || crossing[(at + 1) % crossing.size()]);
        if (!seen.bounds) seen.bounds = Zan_FloatRect{p.x, p.y, p.x, p.y};
        seen.bounds->left = std::min(seen.bounds->left, p.x);
        seen.bounds->top = std::min(seen.bounds->top, p.y);
        seen.bounds->right = std::max(seen.bounds->right, p.x);
        seen.bounds->bottom = std::max(seen.bounds->bottom, p.y);
    }
}

double areaOf(const Outline& outline) {
    return std::fabs(Zan_SignedPolygonArea2D(outline.data(), static_cast<int32_t>(outline.size())));
}

void measure(Size window, Appearance& seen) {
    seen.inWindow = clipToRect(seen.outline, {0, 0, window.width, window.height});
    if (!seen.bounds) {
        seen.share = 0.0;
        return;
    }
    const double area = areaOf(seen.outline);
    const double length = std::max(seen.bounds->right - seen.bounds->left, seen.bounds->bottom - seen.bounds->top);
    if (area / length >= kMinMeanWidth) seen.share = std::min(areaOf(seen.inWindow) / area, 1.0);
}

/// Depth at which the ray meets the layer. A ray through a point that hits by its tolerance, or at an edge-on layer,
/// can meet the plane outside the layer or not at all, so the depth is clamped to those of the layer.
double depthAt(const ProjectedLayer& layer, const Zan_Ray& ray) {
    Zan_Vector3T<double> hit{};
    bool found = false;
    throwIfFailed(Zan_RayIntersectPlane(&layer.plane, false, &ray, &hit, nullptr, &found));
    return found ? std::clamp(hit.z, layer.nearest, layer.farthest) : layer.nearest;
}

HitAnswer hitTest(const std::vector<ProjectedLayer>& layers, const View& view, const HitPoint& point) {
    HitAnswer answer{point, {}, {}};
    const Zan_Vector2T<double> p(point.x, point.y);
    const Zan_Ray ray = rayThrough(view, point.x, point.y);
    struct Depth {
        double depth;
        size_t layer;
    };
    std::vector<Depth> depths;
    for (size_t i = 0; i < layers.size(); ++i) {
        if (layers[i].poly.IsPointInside(&p, point.tolerance)) depths.push_back({depthAt(layers[i], ray), i});
        const double distance = layers[i].poly.GetMinimumEdgeDistance(&p);
        if (distance >= 0 && (!answer.nearest || distance < answer.nearest->distance)) answer.nearest = {i, distance};
    }
    std::stable_sort(depths.begin(), depths.end(), [](const Depth& a, const Depth& b) { return a.depth < b.depth; });
    for (auto plane = depths.begin(); plane != depths.end();) {
        auto end = plane + 1;
        while (end != depths.end() && end->depth - (end - 1)->depth <= kSameDepth * end->depth) ++end;
        std::sort(plane, end, [](const Depth& a, const Depth& b) { return a.layer > b.layer; });
        plane = end;
    }
    for (const Depth& depth : depths) answer.layers.push_back(depth.layer);
    return answer;
}

}  // namespace

CameraAnswer projectDeck(const Deck& deck, size_t camera, Size window, Size layerSize,
                         const std::vector<HitPoint>& points, const Ticker& tick) {
    const View view = cameraView(deck, deck.layers[camera], window);
    CameraAnswer answer{camera, {}, {}, {}};
    std::vector<ProjectedLayer> projected;
    Outline visible;
    const auto steps = static_cast<double>(deck.layers.size() + points.size());
    for (const Layer& layer : deck.layers) {
        Appearance& seen = answer.layers.emplace_back();
        const Zan_Matrix4 placement = layerPlacement(layer);
        (Zan_Matrix4(placement) *= view.spaceToStep).Decompose(&seen.inCameraStep);
        projected.push_back(projectLayer(Zan_Matrix4(placement) *= view.spaceToEye, view, layerSize, seen));
        readOutline(projected.back().poly, seen);
        measure(window, seen);
        visible.insert(visible.end(), seen.inWindow.begin(), seen.inWindow.end());
        if (tick) tick(static_cast<double>(answer.layers.size()) / steps);
    }
    Zan_ComputeConvexHull(visible.cbegin(), visible.cend(), answer.hull);
    for (const HitPoint& point : points) {
        answer.hits.push_back(hitTest(projected, view, point));
        if (tick) tick(static_cast<double>(answer.layers.size() + answer.hits.size()) / steps);
    }
    return answer;
}

}  // namespace scene

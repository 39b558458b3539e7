// Carries layers to the window through zan's layer polygons and asks them about points.
#include "look.h"

#include "mapping.h"

#include <algorithm>
#include <cmath>

namespace scene {
namespace {

/// The plain functions return what the classes throw.
void orThrow(int32_t code) {
    if (code != 0) throw static_cast<long>(code);
}

/// One layer on its way: the polygon that answers, and what the hit depth needs of eye space.
struct Carried {
    Zan_TransformPoly3D poly;
    Zan_PlaneEq plane;
    double nearest, farthest;  ///< eye z of its corners, not before the near plane
};

Carried carry(const Zan_Matrix4& layerToEye, const View& view, Size size, Appearance& seen) {
    const double right = size.width / 2;
    const double bottom = size.height / 2;
    const Zan_Vector2T<double> corners[4] = {{-right, -bottom}, {right, -bottom}, {right, bottom}, {-right, bottom}};
    Zan_Vector3T<double> inEye[4];
    Carried carried{};
    for (int32_t i = 0; i < 4; ++i) {
        carried.poly.SetLayerPoint(i, corners[i]);
        inEye[i] = {corners[i].x, corners[i].y, 0.0};
    }
    orThrow(Zan_IsQuadEdgeOn(&layerToEye, inEye, kEdgeOnTolerance, false, &seen.edgeOn));
    carried.poly.TransformPointsToEye(layerToEye);
    carried.poly.TransformPointsToScreen(view.eyeToScreen);
    carried.poly.InitPolyPoints();

    orThrow(Zan_Transform3DFloatPoints(&layerToEye, 4, inEye));
    Zan_Vector3T<double> middle{};
    orThrow(Zan_GetPlaneEquation(inEye, 4, &carried.plane, &middle));
    seen.depth = middle.z;
    const auto [low, high] = std::minmax({inEye[0].z, inEye[1].z, inEye[2].z, inEye[3].z});
    carried.nearest = std::max(low, Zan_kNearPlaneZ);
    carried.farthest = std::max(high, Zan_kNearPlaneZ);
    return carried;
}

void readOutline(const Zan_TransformPoly3D& poly, Appearance& seen) {
    // The outline runs from corner to corner; where it leaves the front it has the crossing of that edge, and where it
    // comes back the crossing of the other one.
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
    if (area / length >= kThinnest) seen.share = std::min(areaOf(seen.inWindow) / area, 1.0);
}

bool isFinite(const Appearance& seen) {
    return std::isfinite(seen.depth) && std::all_of(seen.outline.begin(), seen.outline.end(), [](const auto& p) {
               return std::isfinite(p.x) && std::isfinite(p.y);
           });
}

/// Where the ray through a point meets the layer. A point that hits by tolerance alone, or a layer that is edge-on, can
/// meet the plane outside the layer or not at all: the layer's own depths are the bounds.
double depthUnder(const Carried& layer, const Zan_Ray& ray) {
    Zan_Vector3T<double> hit{};
    bool found = false;
    orThrow(Zan_RayIntersectPlane(&layer.plane, false, &ray, &hit, nullptr, &found));
    return found ? std::clamp(hit.z, layer.nearest, layer.farthest) : layer.nearest;
}

HitAnswer hitLayers(const std::vector<Carried>& layers, const View& view, const HitPoint& point) {
    HitAnswer answer{point, {}, {}};
    const Zan_Vector2T<double> p(point.x, point.y);
    const Zan_Ray ray = rayThrough(view, point.x, point.y);
    struct Depth {
        double depth;
        size_t layer;
    };
    std::vector<Depth> depths;
    for (size_t i = 0; i < layers.size(); ++i) {
        if (layers[i].poly.IsPointInside(&p, point.tolerance)) depths.push_back({depthUnder(layers[i], ray), i});
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

CameraAnswer lookAt(const Deck& deck, size_t camera, Size window, Size layerSize, const std::vector<HitPoint>& points) {
    const View view = lookThrough(deck, deck.layers[camera], window);
    CameraAnswer answer{camera, {}, {}, {}};
    std::vector<Carried> carried;
    Outline visible;
    for (const Layer& layer : deck.layers) {
        Appearance& seen = answer.layers.emplace_back();
        const Zan_Matrix4 place = placeLayer(layer);
        (Zan_Matrix4(place) *= view.spaceToStep).Decompose(&seen.asStepSees);
        carried.push_back(carry(Zan_Matrix4(place) *= view.spaceToEye, view, layerSize, seen));
        readOutline(carried.back().poly, seen);
        if (!isFinite(seen)) {
            throw Stop(kBadInput, "layer \"" + oneLine(layer.id) + "\" seen by camera \"" +
                                      oneLine(deck.layers[camera].id) + "\" leaves the range of numbers");
        }
        measure(window, seen);
        visible.insert(visible.end(), seen.inWindow.begin(), seen.inWindow.end());
    }
    Zan_ComputeConvexHull(visible.cbegin(), visible.cend(), answer.hull);
    for (const HitPoint& point : points) answer.hits.push_back(hitLayers(carried, view, point));
    return answer;
}

}  // namespace scene

// Picking: which of 200 layers are under the mouse, front to back, and the selection's outline and bounds.
// picking [PICTURE.svg]: also draws the layers.
//! [start]
#include <zan/zan.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>
//! [start]

namespace {

//! [names]
using Point = Zan_Vector2T<double>;

constexpr double kFocalLength = 1000.0;
constexpr Point kCentre(640.0, 400.0);
//! [names]

//! [layer]
struct Layer {
    std::string name;
    Zan_TransformPoly3D outline;  // on the screen
    Zan_PlaneEq plane;            // in eye space
    double nearest, farthest;     // depths of the corners
};
//! [layer]

//! [place]
// A layer of `size` by `size` at toEye: its outline for hit tests, its plane for the order of hits.
Layer place(const std::string& name, double size, const Zan_Matrix4& toEye, const Zan_Matrix4& toScreen) {
    const double half = size / 2;
    const std::array<Point, 4> corners = {Point(-half, -half), Point(half, -half), Point(half, half),
                                          Point(-half, half)};
    Layer layer{name, {}, {}, 0.0, 0.0};
    std::array<Zan_Vector3T<double>, 4> inEye{};
    for (size_t i = 0; i < 4; ++i) {
        layer.outline.SetLayerPoint(static_cast<int32_t>(i), corners[i]);
        inEye[i] = {corners[i].x, corners[i].y, 0.0};
    }
    Zan_Transform3DFloatPoints(&toEye, 4, inEye.data());
    Zan_GetPlaneEquation(inEye.data(), 4, &layer.plane, nullptr);  // null: the centroid is not needed
    const auto [near, far] =
        std::minmax_element(inEye.begin(), inEye.end(), [](const auto& a, const auto& b) { return a.z < b.z; });
    layer.nearest = near->z;
    layer.farthest = far->z;
    layer.outline.TransformPointsToEye(toEye);
    layer.outline.TransformPointsToScreen(toScreen);
    layer.outline.InitPolyPoints();
    return layer;
}
//! [place]

//! [scene]
// 200 layers in 10 rows of 20. Each is rotated by another angle and stands at another distance.
std::vector<Layer> makeScene() {
    Zan_Matrix4 toScreen(true);
    toScreen.Project(kFocalLength);
    toScreen.Translate(kCentre.x, kCentre.y, 0.0);
    std::vector<Layer> layers;
    for (int i = 0; i < 200; ++i) {
        Zan_Matrix4 toEye(true);
        toEye.RotateXYZ(0.1 * (i % 7), 0.15 * (i % 11), 0.0);
        const int row = i / 20;
        toEye.Translate(60.0 * (i % 20 - 9.5), 60.0 * (row - 4.5), 900.0 + 37.0 * (i % 13));
        layers.push_back(place("layer " + std::to_string(i), 150.0, toEye, toScreen));
    }
    return layers;
}
//! [scene]

//! [hits]
struct Hit {
    const Layer* layer;
    double depth;
};

// The layers at a point of the screen, nearest first. `tolerance` is in pixels.
std::vector<Hit> hitsAt(const std::vector<Layer>& layers, Point mouse, double tolerance) {
    // The ray from the eye through the mouse, with z = 1, so that a distance along it is a depth.
    Zan_Ray ray{};
    ray.direction = {(mouse.x - kCentre.x) / kFocalLength, (mouse.y - kCentre.y) / kFocalLength, 1.0};
    std::vector<Hit> hits;
    for (const Layer& layer : layers) {
        if (!layer.outline.IsPointInside(&mouse, tolerance)) continue;
        Zan_Vector3T<double> at;
        bool found = false;  // passing it makes a miss an answer, not an error
        constexpr bool kForwardOnly = true;
        if (Zan_RayIntersectPlane(&layer.plane, kForwardOnly, &ray, &at, nullptr, &found) != 0) continue;
        // Beside the outline the ray meets the plane outside the layer, or misses it.
        hits.push_back({&layer, found ? std::clamp(at.z, layer.nearest, layer.farthest) : layer.nearest});
    }
    std::stable_sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) { return a.depth < b.depth; });
    return hits;
}
//! [hits]

//! [bounds]
// The pixels that an outline touches, clipped to the window.
Zan_LRect boundsOf(const Zan_TransformPoly3D& outline) {
    Zan_LRect bounds{};
    if (outline.NumPolyPoints() == 0) return bounds;
    const Point* points = outline.GetPolyPoints();
    const Point* end = points + outline.NumPolyPoints();
    const auto x = std::minmax_element(points, end, [](Point a, Point b) { return a.x < b.x; });
    const auto y = std::minmax_element(points, end, [](Point a, Point b) { return a.y < b.y; });
    Zan_SetLRect(&bounds, Zan_RoundDoubleSafe(std::floor(x.first->x)), Zan_RoundDoubleSafe(std::floor(y.first->y)),
                 Zan_RoundDoubleSafe(std::ceil(x.second->x)), Zan_RoundDoubleSafe(std::ceil(y.second->y)));
    constexpr Zan_LRect kWindow = {0, 0, 1280, 800};
    Zan_SectLRect(&bounds, &kWindow, &bounds);
    return bounds;
}
//! [bounds]

//! [selection]
// The parts of the edges in front of the eye: what a selection draws.
void showSelection(const Layer& layer) {
    for (int32_t i = 0; i < 4; ++i) {
        std::pair<Point, Point> edge;
        if (!layer.outline.GetEdge(i, &edge)) continue;
        std::printf("  edge %d from (%.1f, %.1f) to (%.1f, %.1f)\n", i, edge.first.x, edge.first.y, edge.second.x,
                    edge.second.y);
    }
    const Zan_LRect bounds = boundsOf(layer.outline);
    std::printf("  bounds: left %d, top %d, right %d, bottom %d\n", bounds.left, bounds.top, bounds.right,
                bounds.bottom);
}
//! [selection]

//! [answers]
void showAnswers(const std::vector<Layer>& layers, Point mouse) {
    for (const double tolerance : {0.0, 5.0}) {
        const std::vector<Hit> hits = hitsAt(layers, mouse, tolerance);
        std::printf("%zu layers at (%g, %g) with tolerance %g:\n", hits.size(), mouse.x, mouse.y, tolerance);
        for (const Hit& hit : hits) std::printf("  %s, %.1f away\n", hit.layer->name.c_str(), hit.depth);
    }
    const Hit front = hitsAt(layers, mouse, 0.0).front();
    std::printf("selected: %s\n", front.layer->name.c_str());
    showSelection(*front.layer);
    // For snapping, or for the choice among layers that only the tolerance hits.
    std::printf("  nearest edge of it: %.1f pixels from the mouse\n",
                front.layer->outline.GetMinimumEdgeDistance(&mouse));
}
//! [answers]

bool draw(const std::vector<Layer>& layers, const std::vector<Hit>& hits, Point mouse, const char* path) {
    std::ofstream file(path, std::ios::binary);
    file << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"640\" height=\"400\" viewBox=\"0 0 1280 800\">\n"
         << "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
    for (const Layer& layer : layers) {
        const bool hit = std::any_of(hits.begin(), hits.end(), [&layer](const Hit& h) { return h.layer == &layer; });
        file << "<polygon points=\"";
        for (int32_t i = 0; i < layer.outline.NumPolyPoints(); ++i) {
            const Point& p = layer.outline.GetPolyPoints()[i];
            file << std::lround(p.x) << ',' << std::lround(p.y) << ' ';
        }
        file << (hit ? "\" fill=\"#c8501e\" fill-opacity=\"0.25\" stroke=\"#c8501e\" stroke-width=\"3\"/>\n"
                     : "\" fill=\"none\" stroke=\"#9aa7b2\"/>\n");
    }
    file << "<circle cx=\"" << mouse.x << "\" cy=\"" << mouse.y << "\" r=\"7\" fill=\"#24323f\"/>\n</svg>\n";
    return static_cast<bool>(file.flush());
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<Layer> layers = makeScene();
    const Point mouse(632.0, 380.0);
    showAnswers(layers, mouse);
    if (argc > 1 && !draw(layers, hitsAt(layers, mouse, 0.0), mouse, argv[1])) return 1;
}

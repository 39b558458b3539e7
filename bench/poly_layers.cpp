// Layers end to end: corners to the screen, cut at the near plane, and a hit test; beside glm and code by hand.
#include "peers_glm.h"
#include "poly_outlines.h"
#include "zan/matrix.h"

namespace zan_bench {
namespace {

/// A layer's size and its transform to eye space, and the point that the user clicks.
struct Scene {
    double width, height;
    Zan_Matrix4 toEye;
    Vector2 click;
};

/// Perspective projection, focal length 1000 pixels: (x, y, z) to (640 + 1000 x/z, 360 + 1000 y/z).
constexpr std::array<double, 16> kToScreen = {1000, 0, 0, 0, 0, 1000, 0, 0, 640, 360, 1, 1, 0, 0, -0.1, 0};

Scene sceneOf(Random& random) {
    Scene scene;
    scene.width = random.real(100, 800);
    scene.height = random.real(100, 800);
    const auto layer = spaceTransform(random);
    std::memcpy(&scene.toEye, layer.data(), sizeof scene.toEye);
    scene.toEye.m32 = random.real(300, 1500);
    scene.click = {random.real(0, 1280), random.real(0, 720)};
    return scene;
}

/// Clips the layer at the near plane and projects what remains. Returns the number of vertices.
size_t outlineByHand(const Scene& scene, const glm::dmat4& toEye, const glm::dmat4& toScreen, Vector2* outline) {
    const glm::dvec4 layer[4] = {
        {0, 0, 0, 1}, {scene.width, 0, 0, 1}, {scene.width, scene.height, 0, 1}, {0, scene.height, 0, 1}};
    glm::dvec4 eye[4];
    for (int i = 0; i < 4; ++i) {
        eye[i] = toEye * layer[i];
        eye[i] /= eye[i].w;
    }
    size_t count = 0;
    const auto append = [&](const glm::dvec4& p) {
        const glm::dvec4 s = toScreen * p;
        outline[count++] = {s.x / s.w, s.y / s.w};
    };
    for (int i = 0; i < 4; ++i) {
        const glm::dvec4 &a = eye[i], &b = eye[(i + 1) % 4];
        if (a.z >= 0.1) append(a);
        if ((a.z >= 0.1) != (b.z >= 0.1)) append(glm::mix(a, b, (0.1 - a.z) / (b.z - a.z)));
    }
    return count;
}

}  // namespace

void addPolyLayers() {
    static const auto scenes = inputs(kSmallOutlines, 78, sceneOf);
    static const auto toEyes = [] {
        std::vector<Zan_Matrix4> all;
        for (const Scene& scene : scenes) all.push_back(scene.toEye);
        return sameBytes<glm::dmat4>(all);
    }();
    static const auto planes = sameBytes<Zan_Matrix3>(inputs(kSmallOutlines, 79, planeTransform));
    static const auto glmPlanes = sameBytes<glm::dmat3>(planes);
    const Scene* s = scenes.data();
    const glm::dmat4* e = toEyes.data();
    const Zan_Matrix3* m = planes.data();
    const glm::dmat3* g = glmPlanes.data();
    static const auto screen = sameBytes<Zan_Matrix4>(std::vector(1, kToScreen));
    static const auto glmScreen = sameBytes<glm::dmat4>(screen);
    const Zan_Matrix4* toScreen = screen.data();
    const glm::dmat4* glmToScreen = glmScreen.data();

    for (const double tolerance : {0.0, 2.0}) {
        const std::string suffix = nameWithCount(", tolerance ", static_cast<size_t>(tolerance), "");
        Entry(std::string("layer in space, end to end").append(suffix), kSmallOutlines,
              [=](size_t i) {
                  // A host keeps its layers between frames, and so the memory of their outlines.
                  static Zan_TransformPoly3D layer;
                  layer.SetLayerPoint(0, {0, 0});
                  layer.SetLayerPoint(1, {s[i].width, 0});
                  layer.SetLayerPoint(2, {s[i].width, s[i].height});
                  layer.SetLayerPoint(3, {0, s[i].height});
                  layer.TransformPointsToEye(s[i].toEye);
                  layer.TransformPointsToScreen(*toScreen);
                  layer.InitPolyPoints();
                  return layer.IsPointInside(&s[i].click, tolerance);
              })
            .peer("glm, by hand",
                  [=](size_t i) {
                      Vector2 outline[8];
                      const size_t count = outlineByHand(s[i], e[i], *glmToScreen, outline);
                      return hitByHand(outline, count, s[i].click, tolerance);
                  })
            .hasKernels();
        Entry(std::string("layer in the plane, end to end").append(suffix), kSmallOutlines,
              [=](size_t i) {
                  static Zan_TransformPoly2D layer;
                  layer.SetLayerPoint(0, {0, 0});
                  layer.SetLayerPoint(1, {s[i].width, 0});
                  layer.SetLayerPoint(2, {s[i].width, s[i].height});
                  layer.SetLayerPoint(3, {0, s[i].height});
                  layer.TransformPoints(m[i]);
                  return layer.IsPointInside(&s[i].click, tolerance);
              })
            .peer("glm, by hand",
                  [=](size_t i) {
                      const glm::dvec3 corners[4] = {
                          {0, 0, 1}, {s[i].width, 0, 1}, {s[i].width, s[i].height, 1}, {0, s[i].height, 1}};
                      Vector2 outline[4];
                      for (int k = 0; k < 4; ++k) {
                          const glm::dvec3 p = g[i] * corners[k];
                          outline[k] = {p.x, p.y};
                      }
                      return hitByHand(outline, 4, s[i].click, tolerance);
                  })
            .hasKernels();
    }
}

}  // namespace zan_bench

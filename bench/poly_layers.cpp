// Layers end to end: corners to the screen, cut at the near plane, and a hit test; beside code by hand with glm and
// with Eigen.
#include "peers_glm.h"
#include "poly_outlines.h"
#include "zan/matrix.h"

#include <Eigen/Dense>

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
constexpr double kNearPlane = 0.1;

/// Where a layer is: in front of the near plane, on both sides of it, or behind it.
enum class Depth { kInFront, kCut, kBehind };

Scene sceneOf(Random& random, Depth depth) {
    Scene scene;
    scene.width = random.real(100, 800);
    scene.height = random.real(100, 800);
    const auto layer = spaceTransform(random);
    std::memcpy(&scene.toEye, layer.data(), sizeof scene.toEye);
    scene.click = {random.real(0, 1280), random.real(0, 720)};
    // The depths of the nearest and the farthest corner relative to corner 0, whose depth is m32.
    const double dx = scene.toEye.m02 * scene.width, dy = scene.toEye.m12 * scene.height;
    const double nearest = std::min(dx, 0.0) + std::min(dy, 0.0), farthest = std::max(dx, 0.0) + std::max(dy, 0.0);
    switch (depth) {
        case Depth::kInFront:
            scene.toEye.m32 = kNearPlane - nearest + random.real(10, 1000);
            break;
        case Depth::kCut:
            scene.toEye.m32 = kNearPlane - nearest - random.real(0.1, 0.9) * (farthest - nearest);
            break;
        case Depth::kBehind:
            scene.toEye.m32 = kNearPlane - farthest - random.real(10, 1000);
            break;
    }
    return scene;
}

/// Scenes with the same matrices in the types of the peers. One in `oneIn`, at random, is at that depth, the others
/// are in front.
struct Scenes {
    std::vector<Scene> zan;
    std::vector<glm::dmat4> glm;
    std::vector<Eigen::Matrix4d> eigen;

    Scenes(int32_t oneIn, Depth depth)
        : zan(inputs(kManyInputs, 78, [=](Random& random) {
              const bool isThere = random.integer(1, oneIn) == 1;
              return sceneOf(random, isThere ? depth : Depth::kInFront);
          })) {
        std::vector<Zan_Matrix4> toEyes;
        for (const Scene& scene : zan) toEyes.push_back(scene.toEye);
        glm = copiedBytes<glm::dmat4>(toEyes);
        eigen = copiedBytes<Eigen::Matrix4d>(toEyes);
    }
};

/// Clips the layer at the near plane and projects what remains. Returns the number of vertices.
template <class Vector, class Matrix>
size_t outlineByHand(double width, double height, const Matrix& toEye, const Matrix& toScreen, Vector2* outline) {
    const Vector layer[4] = {{0, 0, 0, 1}, {width, 0, 0, 1}, {width, height, 0, 1}, {0, height, 0, 1}};
    Vector eye[4];
    for (int i = 0; i < 4; ++i) {
        eye[i] = toEye * layer[i];
        eye[i] /= double{eye[i][3]};
    }
    size_t count = 0;
    const auto append = [&](const Vector& p) {
        const Vector s = toScreen * p;
        outline[count++] = {s[0] / s[3], s[1] / s[3]};
    };
    for (int i = 0; i < 4; ++i) {
        const Vector &a = eye[i], &b = eye[(i + 1) % 4];
        if (a[2] >= kNearPlane) append(a);
        if ((a[2] >= kNearPlane) != (b[2] >= kNearPlane)) append(a + (b - a) * ((kNearPlane - a[2]) / (b[2] - a[2])));
    }
    return count;
}

bool hitByZan(Zan_TransformPoly3D& layer, const Scene& scene, const Zan_Matrix4& toEye, const Zan_Matrix4& toScreen,
              double tolerance) {
    layer.SetLayerPoint(0, {0, 0});
    layer.SetLayerPoint(1, {scene.width, 0});
    layer.SetLayerPoint(2, {scene.width, scene.height});
    layer.SetLayerPoint(3, {0, scene.height});
    layer.TransformPointsToEye(toEye);
    layer.TransformPointsToScreen(toScreen);
    layer.InitPolyPoints();
    return layer.IsPointInside(&scene.click, tolerance);
}

/// A host keeps its layers between frames, and so the memory of their outlines; or it makes each layer anew.
enum class Object { kKept, kNew };
/// The transform to eye space is kept as well, or calculated each time: the layer's transform times the camera's.
enum class ToEye { kKept, kMultiplied };

void addSpace(const char* name, const Scenes& scenes, double tolerance, Object object = Object::kKept,
              ToEye toEye = ToEye::kKept) {
    static const auto screen = copiedBytes<Zan_Matrix4>(std::vector(1, kToScreen));
    static const auto glmScreen = copiedBytes<glm::dmat4>(screen);
    static const auto eigenScreen = copiedBytes<Eigen::Matrix4d>(screen);
    // The camera's matrix is the identity, so that the product leaves the layers where they are.
    static const Zan_Matrix4 camera(true);
    static const glm::dmat4 glmCamera(1);
    static const Eigen::Matrix4d eigenCamera = Eigen::Matrix4d::Identity();
    const Scene* s = scenes.zan.data();
    const glm::dmat4* g = scenes.glm.data();
    const Eigen::Matrix4d* e = scenes.eigen.data();
    const auto hitByHandAt = [=](size_t i, size_t count, const Vector2* outline) {
        return hitByHand(outline, count, s[i].click, tolerance);
    };
    const bool multiplies = toEye == ToEye::kMultiplied;

    Entry(nameWithCount(name, static_cast<size_t>(tolerance), ""), kManyInputs,
          [=](size_t i) {
              static Zan_TransformPoly3D kept;
              if (multiplies) {
                  Zan_Matrix4 product;
                  Zan_ConcatMatrix4(&s[i].toEye, &camera, &product);
                  return hitByZan(kept, s[i], product, screen[0], tolerance);
              }
              if (object == Object::kKept) return hitByZan(kept, s[i], s[i].toEye, screen[0], tolerance);
              Zan_TransformPoly3D layer;
              return hitByZan(layer, s[i], s[i].toEye, screen[0], tolerance);
          })
        .peer("glm, by hand",
              [=](size_t i) {
                  Vector2 outline[8];
                  const glm::dmat4 product = multiplies ? glmCamera * g[i] : g[i];
                  const size_t count =
                      outlineByHand<glm::dvec4>(s[i].width, s[i].height, product, glmScreen[0], outline);
                  return hitByHandAt(i, count, outline);
              })
        .peer("Eigen, by hand",
              [=](size_t i) {
                  Vector2 outline[8];
                  const Eigen::Matrix4d product = multiplies ? Eigen::Matrix4d(eigenCamera * e[i]) : e[i];
                  const size_t count =
                      outlineByHand<Eigen::Vector4d>(s[i].width, s[i].height, product, eigenScreen[0], outline);
                  return hitByHandAt(i, count, outline);
              })
        .hasKernels();
}

void addPlane(double tolerance) {
    static const Scenes scenes(1, Depth::kInFront);
    static const auto planes = copiedBytes<Zan_Matrix3>(inputs(kManyInputs, 79, planeTransform));
    static const auto glmPlanes = copiedBytes<glm::dmat3>(planes);
    const Scene* s = scenes.zan.data();
    const Zan_Matrix3* m = planes.data();
    const glm::dmat3* g = glmPlanes.data();
    Entry(nameWithCount("layer in the plane, end to end, tolerance ", static_cast<size_t>(tolerance), ""), kManyInputs,
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

}  // namespace

void addPolyLayers() {
    static const Scenes noneCut(1, Depth::kInFront), aFifthCut(5, Depth::kCut), allCut(1, Depth::kCut),
        aFifthBehind(5, Depth::kBehind);
    for (const double tolerance : {0.0, 2.0}) {
        addSpace("layer in space, none cut, tolerance ", noneCut, tolerance);
        addSpace("layer in space, a fifth cut, tolerance ", aFifthCut, tolerance);
        addSpace("layer in space, all cut, tolerance ", allCut, tolerance);
        addSpace("layer in space, a fifth behind, tolerance ", aFifthBehind, tolerance);
        addSpace("layer in space, a fifth cut, new object, tolerance ", aFifthCut, tolerance, Object::kNew);
        addSpace("layer in space, a fifth cut, matrix multiplied, tolerance ", aFifthCut, tolerance, Object::kKept,
                 ToEye::kMultiplied);
        addPlane(tolerance);
    }
}

}  // namespace zan_bench

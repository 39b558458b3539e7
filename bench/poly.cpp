// Hit tests, hulls, clipping and whole layers beside Boost.Geometry, Clipper, glm and what a host writes by hand.
#include "zan/poly.h"

#include <polyclipping/clipper.hpp>

#include "entries.h"
#include "peers_boost.h"
#include "peers_glm.h"
#include "zan/matrix.h"

namespace zan_bench {
namespace {

using Vector2 = Zan_Vector2T<double>;
using Vector4 = Zan_Vector4T<double>;
using Outline = std::vector<Vector2>;

constexpr double kPi = 3.141592653589793;
/// Outlines that take turns, so that their shape cannot be learnt.
constexpr size_t kOutlines = 16;

Vector2 around(double angle, double radius) { return {radius * std::cos(angle), radius * std::sin(angle)}; }

/// A concave outline without crossings around the origin.
Outline star(Random& random, int vertices) {
    Outline outline;
    for (int k = 0; k < vertices; ++k) {
        outline.push_back(around(2 * kPi * (k + random.real(0, 0.9)) / vertices, random.real(20, 100)));
    }
    return outline;
}
/// A convex outline: points of an ellipse.
Outline ellipse(Random& random, int vertices) {
    const double a = random.real(30, 100), b = random.real(30, 100), first = random.real(0, 1);
    const double x = random.real(-30, 30), y = random.real(-30, 30);
    Outline outline;
    for (int k = 0; k < vertices; ++k) {
        const double angle = 2 * kPi * (k + first) / vertices;
        outline.emplace_back(x + a * std::cos(angle), y + b * std::sin(angle));
    }
    return outline;
}

template <class Ring>
Ring boostRing(const Outline& outline) {
    Ring ring;
    for (const Vector2& v : outline) bg::append(ring, BoostPoint(v.x, v.y));
    return ring;
}
template <class Ring>
std::vector<Ring> boostRings(const std::vector<Outline>& outlines) {
    std::vector<Ring> rings;
    for (const Outline& outline : outlines) rings.push_back(boostRing<Ring>(outline));
    return rings;
}

std::vector<Vector2> targets(uint32_t seed) {
    return inputs(kMany, seed, [](Random& random) {
        const double x = random.real(-110, 110);
        return Vector2(x, random.real(-110, 110));
    });
}

/// The crossing test that goes round as PNPOLY (Franklin, 1970).
bool pnpoly(const Vector2* v, size_t count, double x, double y) {
    bool inside = false;
    for (size_t i = 0, j = count - 1; i < count; j = i++) {
        if ((v[i].y > y) != (v[j].y > y) && x < (v[j].x - v[i].x) * (y - v[i].y) / (v[j].y - v[i].y) + v[i].x) {
            inside = !inside;
        }
    }
    return inside;
}

double squaredDistance(const Vector2& p, const Vector2& a, const Vector2& b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
    const double x = p.x - a.x - t * dx, y = p.y - a.y - t * dy;
    return x * x + y * y;
}
bool hitByHand(const Vector2* v, size_t count, const Vector2& p, double tolerance) {
    if (count == 0) return false;
    for (size_t i = 0, j = count - 1; i < count; j = i++) {
        if (squaredDistance(p, v[j], v[i]) <= tolerance * tolerance) return true;
    }
    return pnpoly(v, count, p.x, p.y);
}

bool hit(const Vector2& p, const Outline& outline, double tolerance) {
    unsigned char inside = 0;
    static_cast<void>(
        Zan_IsFloatPointInConcavePoly(&p, outline.data(), static_cast<int32_t>(outline.size()), tolerance, &inside));
    return inside != 0;
}

void addHits() {
    static const auto stars = inputs(kOutlines, 71, [](Random& random) { return star(random, 64); });
    static const auto rings = boostRings<BoostRing>(stars);
    static const auto quads = inputs(kMany, 72, [](Random& random) { return ellipse(random, 4); });
    static const auto quadRings = boostRings<BoostRing>(quads);
    static const auto points = targets(73);
    const Vector2* p = points.data();
    const Outline *o = stars.data(), *q = quads.data();
    const BoostRing *r = rings.data(), *qr = quadRings.data();

    Entry("point in a quadrilateral", kMany, [=](size_t i) {
        unsigned char inside = 0;
        static_cast<void>(Zan_IsFloatPointInQuad(&p[i], q[i].data(), &inside));
        return inside != 0;
    }).peer("PNPOLY", [=](size_t i) {
          return pnpoly(q[i].data(), 4, p[i].x, p[i].y);
      }).peer("Boost.Geometry", [=](size_t i) { return bg::covered_by(BoostPoint(p[i].x, p[i].y), qr[i]); });
    Entry("point in a polygon of 64", kMany, [=](size_t i) {
        return hit(p[i], o[i % kOutlines], 0);
    }).peer("PNPOLY", [=](size_t i) {
          return pnpoly(o[i % kOutlines].data(), 64, p[i].x, p[i].y);
      }).peer("Boost.Geometry", [=](size_t i) { return bg::covered_by(BoostPoint(p[i].x, p[i].y), r[i % kOutlines]); });
    Entry("point in a polygon of 64, within 2 of it", kMany, [=](size_t i) {
        return hit(p[i], o[i % kOutlines], 2);
    }).peer("distances and PNPOLY", [=](size_t i) {
          return hitByHand(o[i % kOutlines].data(), 64, p[i], 2);
      }).peer("Boost.Geometry", [=](size_t i) {
        return bg::distance(BoostPoint(p[i].x, p[i].y), r[i % kOutlines]) <= 2;
    });
    Entry("signed area of a polygon of 64", kOutlines,
          [=](size_t i) { return Zan_SignedPolygonArea2D(o[i].data(), 64); })
        .peer(
            "shoelace by hand",
            [=](size_t i) {
                double sum = 0;
                for (size_t a = 63, b = 0; b < 64; a = b++) sum += o[i][a].x * o[i][b].y - o[i][b].x * o[i][a].y;
                return sum / 2;
            },
            Near())
        .peer(
            "Boost.Geometry", [=](size_t i) { return bg::area(r[i]); }, Near());
}

double twiceTurn(const Vector2& o, const Vector2& a, const Vector2& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}
/// The hull by the monotone chain (Andrew, 1979).
void hullByHand(std::vector<Vector2> points, std::vector<Vector2>& hull) {
    std::sort(points.begin(), points.end(),
              [](const Vector2& a, const Vector2& b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    hull.resize(points.size() * 2);
    size_t size = 0;
    for (const Vector2& p : points) {
        while (size >= 2 && twiceTurn(hull[size - 2], hull[size - 1], p) <= 0) --size;
        hull[size++] = p;
    }
    for (size_t i = points.size() - 1, lower = size + 1; i-- > 0;) {
        while (size >= lower && twiceTurn(hull[size - 2], hull[size - 1], points[i]) <= 0) --size;
        hull[size++] = points[i];
    }
    hull.resize(size - 1);
}

void addHulls() {
    static const auto clouds = inputs(kOutlines, 74, [](Random& random) {
        std::vector<Vector2> cloud;
        for (int32_t i = 0; i < kPoints; ++i) cloud.push_back(around(random.real(0, 6.2), random.real(0, 100)));
        return cloud;
    });
    static const auto multiPoints = [] {
        std::vector<bg::model::multi_point<BoostPoint>> all;
        for (const auto& cloud : clouds) {
            all.emplace_back();
            for (const Vector2& v : cloud) bg::append(all.back(), BoostPoint(v.x, v.y));
        }
        return all;
    }();
    static const auto rounds = inputs(kMany, 75, [](Random& random) { return ellipse(random, random.whole(3, 12)); });
    static const auto roundRings = boostRings<BoostRing>(rounds);
    static std::vector<Vector2> ours, byHand;
    static BoostRing theirs;

    Entry("hull of 1000 points", kOutlines,
          [](size_t i) {
              Zan_ComputeConvexHull(clouds[i].cbegin(), clouds[i].cend(), ours);
              return &ours;
          })
        .peer(
            "monotone chain",
            [](size_t i) {
                hullByHand(clouds[i], byHand);
                return &byHand;
            },
            [](const std::vector<Vector2>* zan, const std::vector<Vector2>* peer) {
                const auto area = [](const Outline& o) {
                    return Zan_SignedPolygonArea2D(o.data(), static_cast<int32_t>(o.size()));
                };
                return zan->size() == peer->size() && Near{1e-7}(area(*zan), area(*peer));
            })
        .peer(
            "Boost.Geometry",
            [](size_t i) {
                theirs.clear();
                bg::convex_hull(multiPoints[i], theirs);
                return &theirs;
            },
            [](const std::vector<Vector2>* zan, const BoostRing* peer) { return zan->size() == peer->size(); });
    Entry("is a polygon convex", kMany, [](size_t i) {
        return Zan_IsConvex(rounds[i].cbegin(), rounds[i].cend());
    }).peer("Boost.Geometry", [](size_t i) { return bg::is_convex(roundRings[i]); });
}

/// Clipper works on integers; a host scales.
constexpr double kClipperScale = 1 << 20;
ClipperLib::Path clipperPath(const Outline& outline) {
    ClipperLib::Path path;
    for (const Vector2& v : outline) {
        path.emplace_back(std::llround(v.x * kClipperScale), std::llround(v.y * kClipperScale));
    }
    return path;
}

void addClips() {
    static const auto subjects = inputs(kManyLarge, 76, [](Random& random) { return ellipse(random, 12); });
    static const auto clips = inputs(kManyLarge, 77, [](Random& random) { return ellipse(random, 4); });
    static const auto flatten = [](const std::vector<Outline>& outlines) {
        std::vector<std::vector<Vector4>> all;
        for (const Outline& outline : outlines) {
            all.emplace_back();
            for (const Vector2& v : outline) all.back().emplace_back(v.x, v.y, 0.0, 1.0);
        }
        return all;
    };
    static const auto subjects4 = flatten(subjects), clips4 = flatten(clips);
    static const auto subjectRings = boostRings<BoostPolygon>(subjects), clipRings = boostRings<BoostPolygon>(clips);
    static std::vector<Vector4> ours;
    static std::vector<BoostPolygon> boosts;
    static ClipperLib::Paths paths;
    static const auto area = [](const std::vector<Vector4>& outline) {
        Outline flat;
        for (const Vector4& v : outline) flat.emplace_back(v.x, v.y);
        return std::abs(Zan_SignedPolygonArea2D(flat.data(), static_cast<int32_t>(flat.size())));
    };

    Entry("polygon of 12 clipped to a quadrilateral", kManyLarge,
          [](size_t i) {
              Zan_PolyPolyClip2D(&clips4[i], &subjects4[i], &ours);
              return &ours;
          })
        .peer(
            "Boost.Geometry",
            [](size_t i) {
                boosts.clear();
                bg::intersection(subjectRings[i], clipRings[i], boosts);
                return &boosts;
            },
            [](const std::vector<Vector4>* zan, const std::vector<BoostPolygon>* peer) {
                return Near{1e-4}(area(*zan), peer->empty() ? 0.0 : bg::area(peer->front()));
            })
        .peer(
            "Clipper",
            [](size_t i) {
                ClipperLib::Clipper clipper;
                clipper.AddPath(clipperPath(subjects[i]), ClipperLib::ptSubject, true);
                clipper.AddPath(clipperPath(clips[i]), ClipperLib::ptClip, true);
                clipper.Execute(ClipperLib::ctIntersection, paths);
                return &paths;
            },
            [](const std::vector<Vector4>* zan, const ClipperLib::Paths* peer) {
                const double square = kClipperScale * kClipperScale;
                return Near{1e-4}(area(*zan), peer->empty() ? 0.0 : std::abs(ClipperLib::Area(peer->front())) / square);
            });
}

/// One layer, the camera that looks at it and the point that the user clicks.
struct Scene {
    double width, height;
    Zan_Matrix4 toEye;
    Vector2 click;
};

/// Perspective with a focal length of 1000 pixels: (x, y, z) goes to (640 + 1000 x/z, 360 + 1000 y/z).
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

/// The layer's outline in front of the near plane, then on the screen, in the order of its corners.
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

void addLayers() {
    static const auto scenes = inputs(kManyLarge, 78, sceneOf);
    static const auto toEyes = [] {
        std::vector<Zan_Matrix4> all;
        for (const Scene& scene : scenes) all.push_back(scene.toEye);
        return sameBytes<glm::dmat4>(all);
    }();
    static const auto planes = sameBytes<Zan_Matrix3>(inputs(kManyLarge, 79, planeTransform));
    static const auto glmPlanes = sameBytes<glm::dmat3>(planes);
    const Scene* s = scenes.data();
    const glm::dmat4* e = toEyes.data();
    const Zan_Matrix3* m = planes.data();
    const glm::dmat3* g = glmPlanes.data();
    static const auto screen = sameBytes<Zan_Matrix4>(std::vector(1, kToScreen));
    static const auto glmScreen = sameBytes<glm::dmat4>(screen);
    const Zan_Matrix4* toScreen = screen.data();
    const glm::dmat4* glmToScreen = glmScreen.data();

    Entry("layer in space: outline and hit test", kManyLarge, [=](size_t i) {
        // A host keeps its layers from picture to picture, and with them the storage of their outlines.
        static Zan_TransformPoly3D layer;
        layer.SetLayerPoint(0, {0, 0});
        layer.SetLayerPoint(1, {s[i].width, 0});
        layer.SetLayerPoint(2, {s[i].width, s[i].height});
        layer.SetLayerPoint(3, {0, s[i].height});
        layer.TransformPointsToEye(s[i].toEye);
        layer.TransformPointsToScreen(*toScreen);
        layer.InitPolyPoints();
        return layer.IsPointInside(&s[i].click, 3);
    }).peer("glm, by hand", [=](size_t i) {
        Vector2 outline[8];
        return hitByHand(outline, outlineByHand(s[i], e[i], *glmToScreen, outline), s[i].click, 3);
    });
    Entry("layer in the plane: corners and hit test", kManyLarge, [=](size_t i) {
        static Zan_TransformPoly2D layer;
        layer.SetLayerPoint(0, {0, 0});
        layer.SetLayerPoint(1, {s[i].width, 0});
        layer.SetLayerPoint(2, {s[i].width, s[i].height});
        layer.SetLayerPoint(3, {0, s[i].height});
        layer.TransformPoints(m[i]);
        return layer.IsPointInside(&s[i].click, 3);
    }).peer("glm, by hand", [=](size_t i) {
        const glm::dvec3 corners[4] = {
            {0, 0, 1}, {s[i].width, 0, 1}, {s[i].width, s[i].height, 1}, {0, s[i].height, 1}};
        Vector2 outline[4];
        for (int k = 0; k < 4; ++k) {
            const glm::dvec3 p = g[i] * corners[k];
            outline[k] = {p.x, p.y};
        }
        return hitByHand(outline, 4, s[i].click, 3);
    });
}

}  // namespace

void addPolyEntries() {
    addHits();
    addHulls();
    addClips();
    addLayers();
}

}  // namespace zan_bench

// Hit tests, hulls, clipping and whole layers beside Boost.Geometry, CGAL, Clipper, glm and what a host writes by hand.
#include "zan/poly.h"

#include "entries.h"
#include "peers_boost.h"
#include "peers_glm.h"
#include "tests/support/plain_forms.h"
#include "zan/matrix.h"

#include <polyclipping/clipper.hpp>

#ifdef ZAN_BENCH_CGAL
#include "peers_cgal.h"
#endif

namespace zan_bench {
namespace {

using Outline = std::vector<Vector2>;

constexpr double kPi = 3.141592653589793;
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

std::vector<Vector2> targets(size_t count, uint32_t seed) {
    return inputs(count, seed, [](Random& random) {
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
    for (size_t i = 0, j = count - 1; tolerance > 0 && i < count; j = i++) {
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

/// Outlines that take turns with the points, so that neither can be learnt.
template <size_t kVertices>
void addHits(size_t count, uint32_t seed, bool tolerant) {
    static const auto outlines = inputs(
        count, seed, [](Random& random) { return kVertices == 4 ? ellipse(random, 4) : star(random, kVertices); });
    static const auto rings = boostRings<BoostRing>(outlines);
    // The inputs of an entry whose outlines are long are fewer: all vertices of an outline are input.
    const size_t pairs = kVertices > 1000 ? 256 : std::max(count, kMany);
    static const auto points = targets(pairs, seed + 1);
    const std::string of = named("hit test, ", kVertices, " vertices");
    static const auto outline = [](size_t i) -> const Outline& { return outlines[i % outlines.size()]; };
    static const auto boostPoint = [](size_t i) { return BoostPoint(points[i].x, points[i].y); };

    Entry(of, pairs, [](size_t i) { return hit(points[i], outline(i), 0); })
        .plain([](size_t i) { return plain_forms::hit(points[i], outline(i).data(), kVertices, 0); })
        .peer("PNPOLY", [](size_t i) { return pnpoly(outline(i).data(), kVertices, points[i].x, points[i].y); })
        .peer("Boost.Geometry", [](size_t i) { return bg::covered_by(boostPoint(i), rings[i % rings.size()]); });
    if (!tolerant) return;
    Entry(std::string(of).append(", tolerance 2"), pairs, [](size_t i) { return hit(points[i], outline(i), 2); })
        .plain([](size_t i) { return plain_forms::hit(points[i], outline(i).data(), kVertices, 2); })
        .peer("distances and PNPOLY", [](size_t i) { return hitByHand(outline(i).data(), kVertices, points[i], 2); })
        .peer("Boost.Geometry", [](size_t i) { return bg::distance(boostPoint(i), rings[i % rings.size()]) <= 2; });
}

void addAreas() {
    static const auto stars = inputs(16, 71, [](Random& random) { return star(random, 64); });
    static const auto rings = boostRings<BoostRing>(stars);
    const Outline* o = stars.data();
    const BoostRing* r = rings.data();

    Entry("signed area of a polygon of 64", stars.size(),
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

/// A hull on a grid may have a vertex more or less where three are almost in line.
struct SameHull {
    template <class Hull>
    bool operator()(const Array<Vector2>& zan, const Hull& peer) const {
        const auto more = static_cast<double>(zan.count) - static_cast<double>(peer.count);
        return std::abs(more) <= 2 && Near{1e-6}(area(zan), area(peer));
    }

private:
    static double area(const Array<Vector2>& hull) {
        return std::abs(Zan_SignedPolygonArea2D(hull.data, static_cast<int32_t>(hull.count)));
    }
    static double area(const Array<BoostPoint>& hull) {
        return std::abs(bg::area(BoostRing(hull.data, hull.data + hull.count)));
    }
};

template <size_t kCount>
void addHulls(size_t count, uint32_t seed) {
    static const auto clouds = inputs(count, seed, [](Random& random) {
        std::vector<Vector2> cloud;
        for (size_t i = 0; i < kCount; ++i) {
            // Evenly over the disc.
            const double radius = 100 * std::sqrt(random.real(0, 1));
            cloud.push_back(around(random.real(0, 2 * kPi), radius));
        }
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
    static std::vector<Vector2> ours, byDefinition, byHand;
    static BoostRing theirs;

    Entry entry(
        named("hull of ", kCount, " points"), count,
        [](size_t i) {
            Zan_ComputeConvexHull(clouds[i].cbegin(), clouds[i].cend(), ours);
            return arrayOf(ours);
        },
        kCount);
    entry
        .plain([](size_t i) {
            plain_forms::hull(clouds[i], byDefinition);
            return arrayOf(byDefinition);
        })
        .peer(
            "monotone chain",
            [](size_t i) {
                hullByHand(clouds[i], byHand);
                return arrayOf(byHand);
            },
            SameHull())
        .peer(
            "Boost.Geometry",
            [](size_t i) {
                theirs.clear();
                bg::convex_hull(multiPoints[i], theirs);
                return arrayOf(theirs);
            },
            SameHull());
#ifdef ZAN_BENCH_CGAL
    entry.peer("CGAL", CgalHulls(clouds), SameHull());
#endif
}

bool convexByHand(const Outline& v) {
    const size_t n = v.size();
    bool left = false, right = false;
    for (size_t i = 0; i < n; ++i) {
        const double turn = twiceTurn(v[i], v[i + 1 < n ? i + 1 : 0], v[i + 2 < n ? i + 2 : i + 2 - n]);
        left |= turn > 0;
        right |= turn < 0;
        if (left && right) return false;
    }
    return true;
}

template <int kVertices>
void addConvexity(size_t count, uint32_t seed) {
    // One in four is not convex, so that the answer cannot be learnt.
    static const auto outlines = inputs(count, seed, [](Random& random) {
        Outline outline = ellipse(random, kVertices);
        if (random.whole(0, 3) == 0) {
            Vector2& dented = outline[static_cast<size_t>(random.whole(0, kVertices - 1))];
            dented = {dented.x * 0.01, dented.y * 0.01};
        }
        return outline;
    });
    static const auto rings = boostRings<BoostRing>(outlines);
    Entry(named("convexity of ", kVertices, " vertices"), count,
          [](size_t i) { return Zan_IsConvex(outlines[i].cbegin(), outlines[i].cend()); })
        .plain([](size_t i) { return plain_forms::convex(outlines[i]); })
        .peer("by hand", [](size_t i) { return convexByHand(outlines[i]); })
        .peer("Boost.Geometry", [](size_t i) { return bg::is_convex(rings[i]); });
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

/// Sutherland and Hodgman (1974) in buffers of fixed size; the clip polygon is counterclockwise.
struct Clipped {
    Vector2 vertices[128];
    size_t count;
};
void clipByHand(const Outline& clip, const Outline& subject, Clipped& result) {
    static Clipped other;
    Clipped *from = &other, *to = &result;
    if (clip.size() % 2 == 0) std::swap(from, to);
    std::copy(subject.begin(), subject.end(), from->vertices);
    from->count = subject.size();
    for (size_t k = 0, before = clip.size() - 1; k < clip.size(); before = k++) {
        const Vector2 &a = clip[before], &b = clip[k];
        to->count = 0;
        for (size_t i = 0, last = from->count - 1; i < from->count; last = i++) {
            const Vector2 &s = from->vertices[last], &p = from->vertices[i];
            const double atS = twiceTurn(a, b, s), atP = twiceTurn(a, b, p);
            if ((atS > 0) != (atP > 0)) {
                const double t = atS / (atS - atP);
                to->vertices[to->count++] = {s.x + t * (p.x - s.x), s.y + t * (p.y - s.y)};
            }
            if (atP > 0) to->vertices[to->count++] = p;
        }
        std::swap(from, to);
    }
}

template <int kVertices>
void addClips(size_t count, uint32_t seed) {
    static const auto convex = [](Random& random) { return ellipse(random, kVertices); };
    static const auto subjects = inputs(count, seed, convex), clips = inputs(count, seed + 1, convex);
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
    static std::vector<Vector4> ours, byDefinition;
    static std::vector<BoostPolygon> boosts;
    static ClipperLib::Paths paths;
    static Clipped byHand;
    static const auto area = [](const Array<Vector4>& outline) {
        Outline flat;
        for (size_t i = 0; i < outline.count; ++i) flat.emplace_back(outline.data[i].x, outline.data[i].y);
        return std::abs(Zan_SignedPolygonArea2D(flat.data(), static_cast<int32_t>(flat.size())));
    };

    Entry(named("convex polygons clipped, ", kVertices, " vertices each"), count,
          [](size_t i) {
              Zan_PolyPolyClip2D(&clips4[i], &subjects4[i], &ours);
              return arrayOf(ours);
          })
        .plain([](size_t i) {
            plain_forms::clip(clips4[i], subjects4[i], byDefinition);
            return arrayOf(byDefinition);
        })
        .peer(
            "Sutherland-Hodgman by hand",
            [](size_t i) {
                clipByHand(clips[i], subjects[i], byHand);
                return &byHand;
            },
            [](const Array<Vector4>& zan, const Clipped* peer) {
                const auto size = static_cast<int32_t>(peer->count);
                return Near{1e-4}(area(zan), std::abs(Zan_SignedPolygonArea2D(peer->vertices, size)));
            })
        .peer(
            "Boost.Geometry",
            [](size_t i) {
                boosts.clear();
                bg::intersection(subjectRings[i], clipRings[i], boosts);
                return &boosts;
            },
            [](const Array<Vector4>& zan, const std::vector<BoostPolygon>* peer) {
                return Near{1e-4}(area(zan), peer->empty() ? 0.0 : bg::area(peer->front()));
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
            [](const Array<Vector4>& zan, const ClipperLib::Paths* peer) {
                const double square = kClipperScale * kClipperScale;
                return Near{1e-4}(area(zan), peer->empty() ? 0.0 : std::abs(ClipperLib::Area(peer->front())) / square);
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
    static const auto scenes = inputs(kVeryMany, 78, sceneOf);
    static const auto toEyes = [] {
        std::vector<Zan_Matrix4> all;
        for (const Scene& scene : scenes) all.push_back(scene.toEye);
        return sameBytes<glm::dmat4>(all);
    }();
    static const auto planes = sameBytes<Zan_Matrix3>(inputs(kVeryMany, 79, planeTransform));
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
        const std::string with = named(", tolerance ", static_cast<size_t>(tolerance), "");
        Entry(std::string("layer in space, end to end").append(with), kVeryMany,
              [=](size_t i) {
                  // A host keeps its layers from picture to picture, and with them the storage of their outlines.
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
            .kernels();
        Entry(std::string("layer in the plane, end to end").append(with), kVeryMany,
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
            .kernels();
    }
}

}  // namespace

void addPolyEntries() {
    addHits<4>(kVeryMany, 81, true);
    addHits<256>(64, 83, true);
    addHits<4096>(8, 85, false);
    addAreas();
    addHulls<100>(256, 74);
    addHulls<10000>(4, 75);
    addHulls<1000000>(1, 76);
    addConvexity<4>(kVeryMany, 87);
    addConvexity<1000>(64, 88);
    addClips<4>(kVeryMany, 89);
    addClips<32>(1024, 101);
    addLayers();
}

}  // namespace zan_bench

// Planes, rays, segments and the projection of points to the screen, beside Eigen's geometry module, glm and code by
// hand.
#include "zan/space.h"

#include "entries.h"
#include "peers_glm.h"
#include "tests/support/vectors.h"

#include <Eigen/Dense>

namespace zan_bench {
namespace {

Vector3 pointOf(Random& random, double low, double high) {
    return {random.real(low, high), random.real(low, high), random.real(low, high)};
}

struct Quad {
    Vector3 corners[4];
};

/// Four corners of a layer somewhere in space.
Quad quadOf(Random& random) {
    const Vector3 o = pointOf(random, -100, 100), u = pointOf(random, -50, 50), v = pointOf(random, -50, 50);
    return {{o,
             {o.x + u.x, o.y + u.y, o.z + u.z},
             {o.x + u.x + v.x, o.y + u.y + v.y, o.z + u.z + v.z},
             {o.x + v.x, o.y + v.y, o.z + v.z}}};
}

/// Through the centre of the corners; the normal is the cross product of the diagonals.
Zan_PlaneEq planeByDiagonals(const glm::dvec3* corners) {
    const glm::dvec3 normal = glm::normalize(glm::cross(corners[2] - corners[0], corners[3] - corners[1]));
    const glm::dvec3 centre = (corners[0] + corners[1] + corners[2] + corners[3]) * 0.25;
    return {normal.x, normal.y, normal.z, -glm::dot(normal, centre)};
}

void addPlanes() {
    static const auto quads = inputs(kInputs, 51, quadOf);
    static const auto glmQuads = [] {
        std::vector<std::array<glm::dvec3, 4>> all(quads.size());
        std::memcpy(static_cast<void*>(all.data()), quads.data(), quads.size() * sizeof(Quad));
        return all;
    }();
    const Quad* q = quads.data();
    const std::array<glm::dvec3, 4>* g = glmQuads.data();

    Entry("plane of four corners", kInputs,
          [=](size_t i) {
              Zan_PlaneEq plane;
              Zan_GetPlaneEquation(q[i].corners, 4, &plane, nullptr);
              return plane;
          })
        .peer(
            "glm, by the diagonals", [=](size_t i) { return planeByDiagonals(g[i].data()); }, Near{1e-7})
        .peer(
            "Eigen, Hyperplane::Through",
            [=](size_t i) {
                const auto corner = [&](size_t k) { return Eigen::Vector3d(g[i][k].x, g[i][k].y, g[i][k].z); };
                return Eigen::Hyperplane<double, 3>::Through(corner(0), corner(2), corner(1));
            },
            Near{1e-7});
}

struct RayAndPlane {
    Zan_Ray ray;
    Zan_PlaneEq plane;
};

void addRays() {
    static const auto pairs = inputs(kInputs, 52, [](Random& random) {
        const Vector3 origin = pointOf(random, -100, 100);
        return RayAndPlane{{Vector4(origin), pointOf(random, -1, 1)},
                           {random.real(-1, 1), random.real(-1, 1), random.real(0.1, 1), random.real(-50, 50)}};
    });
    static const auto lines = [] {
        std::vector<std::pair<Eigen::ParametrizedLine<double, 3>, Eigen::Hyperplane<double, 3>>> all;
        for (const auto& [ray, plane] : pairs) {
            // Eigen expects unit vectors, but intersectionPoint does not depend on their length.
            Eigen::ParametrizedLine<double, 3> line({ray.origin.x, ray.origin.y, ray.origin.z},
                                                    {ray.direction.x, ray.direction.y, ray.direction.z});
            Eigen::Hyperplane<double, 3> hyperplane(Eigen::Vector3d(plane.a, plane.b, plane.c), plane.d);
            all.emplace_back(line, hyperplane);
        }
        return all;
    }();
    const RayAndPlane* r = pairs.data();
    const auto* l = lines.data();

    Entry("ray and plane", kInputs,
          [=](size_t i) {
              Vector3 hit;
              bool found = false;
              static_cast<void>(Zan_RayIntersectPlane(&r[i].plane, false, &r[i].ray, &hit, nullptr, &found));
              return hit;
          })
        .peer(
            "Eigen, ParametrizedLine",
            [=](size_t i) -> Eigen::Vector3d { return l[i].first.intersectionPoint(l[i].second); }, Near{1e-6})
        .peer(
            "glm, by hand",
            [=](size_t i) {
                const glm::dvec3 origin(r[i].ray.origin.x, r[i].ray.origin.y, r[i].ray.origin.z);
                const glm::dvec3 direction(r[i].ray.direction.x, r[i].ray.direction.y, r[i].ray.direction.z);
                const glm::dvec3 normal(r[i].plane.a, r[i].plane.b, r[i].plane.c);
                const double slope = glm::dot(normal, direction);
                if (std::abs(slope) < 1e-12) return origin;
                return origin - direction * ((glm::dot(normal, origin) + r[i].plane.d) / slope);
            },
            Near{1e-6});
}

struct Segment {
    Vector3 a, b;
};

/// Where a segment crosses the near plane, by linear interpolation; the origin if it does not.
Vector3 nearCrossing(const glm::dvec3& a, const glm::dvec3& b) {
    if ((a.z < 0.1) == (b.z < 0.1)) return {0, 0, 0};
    const glm::dvec3 p = glm::mix(a, b, (0.1 - a.z) / (b.z - a.z));
    return {p.x, p.y, p.z};
}

struct FlatCase {
    Vector2 p, a, b;
};

double distanceToLine(const glm::dvec2& p, const glm::dvec2& a, const glm::dvec2& b, bool* within) {
    const glm::dvec2 d = b - a, v = p - a;
    const double size = glm::length(d);
    if (size < 1e-12) {
        *within = false;
        return glm::length(v);
    }
    const double t = glm::dot(d, v) / size;
    *within = t >= 0 && t <= size;
    return std::abs(d.x * v.y - d.y * v.x) / size;
}

/// Clips a segment to a rectangle by the method of Liang and Barsky (1984).
bool liangBarsky(const Zan_FloatRect& rect, Vector2& a, Vector2& b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {a.x - rect.left, rect.right - a.x, a.y - rect.top, rect.bottom - a.y};
    double enter = 0, leave = 1;
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0) return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0) {
            if (t > leave) return false;
            enter = std::max(enter, t);
        } else {
            if (t < enter) return false;
            leave = std::min(leave, t);
        }
    }
    const Vector2 start = a;
    if (enter > 0) a = {start.x + enter * dx, start.y + enter * dy};
    if (leave < 1) b = {start.x + leave * dx, start.y + leave * dy};
    return true;
}

struct Clipped {
    Vector2 a, b;
    bool visible;
};

void addSegments() {
    static const auto segments = inputs(kManyInputs, 53, [](Random& random) {
        return Segment{pointOf(random, -10, 10), pointOf(random, -10, 10)};
    });
    static const auto flat = inputs(kManyInputs, 54, [](Random& random) {
        const auto point = [&] { return Vector2(random.real(-100, 100), random.real(-100, 100)); };
        const Vector2 p = point(), a = point();
        return FlatCase{p, a, point()};
    });
    const Segment* s = segments.data();
    const FlatCase* f = flat.data();

    Entry("segment against the near plane", kManyInputs,
          [=](size_t i) {
              Vector3 crossing;
              bool aBehind = false, bBehind = false;
              Zan_Clip3DLine(&s[i].a, &s[i].b, &aBehind, &bBehind, &crossing);
              return crossing;
          })
        .peer(
            "glm::mix",
            [=](size_t i) {
                return nearCrossing({s[i].a.x, s[i].a.y, s[i].a.z}, {s[i].b.x, s[i].b.y, s[i].b.z});
            },
            Near());
    Entry("distance from a point to a line", kManyInputs,
          [=](size_t i) {
              bool within = false;
              double distance = 0;
              Zan_PerpDistTo2DLine(&f[i].p, &f[i].a, &f[i].b, &within, &distance);
              return within ? distance : -distance;
          })
        .peer(
            "glm, by the cross product",
            [=](size_t i) {
                bool within = false;
                const double distance =
                    distanceToLine({f[i].p.x, f[i].p.y}, {f[i].a.x, f[i].a.y}, {f[i].b.x, f[i].b.y}, &within);
                return within ? distance : -distance;
            },
            // Compare the distance alone: near the segment's second end the two differ in which points project onto it.
            [](double zan, double peer) { return Near{1e-7}(std::abs(zan), std::abs(peer)); });
    Entry("segment against a rectangle", kManyInputs,
          [=](size_t i) {
              const Zan_FloatRect rect = {-50, -50, 50, 50};
              Clipped clipped = {f[i].a, f[i].b, false};
              Zan_ClipLine2Rect(&rect, &clipped.a, &clipped.b, &clipped.visible);
              return clipped;
          })
        .peer(
            "Liang-Barsky",
            [=](size_t i) {
                const Zan_FloatRect rect = {-50, -50, 50, 50};
                Clipped clipped = {f[i].a, f[i].b, false};
                clipped.visible = liangBarsky(rect, clipped.a, clipped.b);
                return clipped;
            },
            [](const Clipped& zan, const Clipped& peer) {
                return zan.visible == peer.visible && (!zan.visible || Near{1e-7}.arrays(&zan, &peer, 4));
            });
}

void addScreen() {
    static const auto toEyes = copiedBytes<Zan_Matrix4>(inputs(kInputs, 55, [](Random& random) {
        auto m = spaceTransform(random);
        m[14] = random.real(-200, 2000);
        return m;
    }));
    static const auto screens = copiedBytes<Zan_Matrix3>(inputs(kInputs, 56, planeTransform));
    static const auto glmToEyes = copiedBytes<glm::dmat4>(toEyes);
    static const auto glmScreens = copiedBytes<glm::dmat3>(screens);
    // Perspective with a focal length of 1000 pixels.
    static const std::array<double, 16> kProjection = {1000, 0, 0, 0, 0, 1000, 0, 0, 0, 0, 1, 1, 0, 0, -0.1, 0};
    static const auto projections = copiedBytes<Zan_Matrix4>(std::vector(1, kProjection));
    static const auto glmProjections = copiedBytes<glm::dmat4>(projections);
    static const auto points = inputs(kInputs, 57, [](Random& random) { return pointOf(random, -100, 100); });
    const Zan_Matrix4 *e = toEyes.data(), *projection = projections.data();
    const Zan_Matrix3* s = screens.data();
    const glm::dmat4 *ge = glmToEyes.data(), *glmProjection = glmProjections.data();
    const glm::dmat3* gs = glmScreens.data();
    const Vector3* p = points.data();

    Entry("point of a layer in space to the screen", kInputs,
          [=](size_t i) {
              Vector3 point = p[i];
              static_cast<void>(Zan_TransformPoint3DtoScreen(e[i], *projection, s[i], &point));
              return point;
          })
        .peer(
            "glm, by hand",
            [=](size_t i) {
                const glm::dvec4 eye = ge[i] * glm::dvec4(p[i].x, p[i].y, p[i].z, 1);
                const glm::dvec3 before = glm::dvec3(eye) / eye.w;
                if (before.z < 0.1) return p[i];
                glm::dmat4 screen(1);
                screen[0] = {gs[i][0].x, gs[i][0].y, 0, 0};
                screen[1] = {gs[i][1].x, gs[i][1].y, 0, 0};
                screen[3] = {gs[i][2].x, gs[i][2].y, 0, 1};
                const glm::dvec4 shown = screen * *glmProjection * glm::dvec4(before, 1);
                return Vector3(shown.x / shown.w, shown.y / shown.w, shown.z / shown.w);
            },
            Near());
}

}  // namespace

void addSpaceEntries() {
    addPlanes();
    addRays();
    addSegments();
    addScreen();
}

}  // namespace zan_bench

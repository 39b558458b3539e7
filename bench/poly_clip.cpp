// Clipping of convex polygons, beside Boost.Geometry, Clipper and Sutherland-Hodgman by hand.
#include "peers_boost.h"
#include "poly_outlines.h"
#include "tests/support/plain_forms.h"

#include <polyclipping/clipper.hpp>

namespace zan_bench {
namespace {

/// Clipper has integer coordinates, to which a host scales its own.
constexpr double kClipperScale = 1 << 20;
ClipperLib::Path clipperPath(const Outline& outline) {
    ClipperLib::Path path;
    for (const Vector2& v : outline) {
        path.emplace_back(std::llround(v.x * kClipperScale), std::llround(v.y * kClipperScale));
    }
    return path;
}

struct ClippedByHand {
    Vector2 vertices[128];
    size_t count;
};
/// Sutherland and Hodgman (1974) in buffers of fixed size; the clip polygon is counterclockwise.
void clipByHand(const Outline& clip, const Outline& subject, ClippedByHand& result) {
    static ClippedByHand other;
    ClippedByHand *from = &other, *to = &result;
    if (clip.size() % 2 == 0) std::swap(from, to);
    std::copy(subject.begin(), subject.end(), from->vertices);
    from->count = subject.size();
    for (size_t k = 0, before = clip.size() - 1; k < clip.size(); before = k++) {
        const Vector2 &a = clip[before], &b = clip[k];
        to->count = 0;
        for (size_t i = 0, last = from->count - 1; i < from->count; last = i++) {
            const Vector2 &s = from->vertices[last], &p = from->vertices[i];
            const double atS = cross(a, b, s), atP = cross(a, b, p);
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
    static std::vector<Vector4> ours, plain;
    static std::vector<BoostPolygon> boosts;
    static ClipperLib::Paths paths;
    static ClippedByHand byHand;
    static const auto area = [](const ArrayView<Vector4>& outline) {
        Outline flat;
        for (size_t i = 0; i < outline.count; ++i) flat.emplace_back(outline.data[i].x, outline.data[i].y);
        return std::abs(Zan_SignedPolygonArea2D(flat.data(), static_cast<int32_t>(flat.size())));
    };

    Entry(nameWithCount("convex polygons clipped, ", kVertices, " vertices each"), count,
          [](size_t i) {
              Zan_PolyPolyClip2D(&clips4[i], &subjects4[i], &ours);
              return viewOf(ours);
          })
        .plain([](size_t i) {
            plain_forms::clip(clips4[i], subjects4[i], plain);
            return viewOf(plain);
        })
        .peer(
            "Sutherland-Hodgman by hand",
            [](size_t i) {
                clipByHand(clips[i], subjects[i], byHand);
                return &byHand;
            },
            [](const ArrayView<Vector4>& zan, const ClippedByHand* peer) {
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
            [](const ArrayView<Vector4>& zan, const std::vector<BoostPolygon>* peer) {
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
            [](const ArrayView<Vector4>& zan, const ClipperLib::Paths* peer) {
                const double square = kClipperScale * kClipperScale;
                return Near{1e-4}(area(zan), peer->empty() ? 0.0 : std::abs(ClipperLib::Area(peer->front())) / square);
            });
}

}  // namespace

void addPolyClips() {
    addClips<4>(kManyInputs, 89);
    addClips<32>(1024, 101);
}

}  // namespace zan_bench

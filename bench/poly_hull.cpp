// Signed areas, convex hulls and convexity, beside Boost.Geometry, CGAL and what a host would write by hand.
#include "peers_boost.h"
#include "poly_outlines.h"
#include "tests/support/plain_forms.h"

#ifdef ZAN_BENCH_CGAL
#include "peers_cgal.h"
#endif

namespace zan_bench {
namespace {

template <size_t kVertices>
void addAreas(size_t count, uint32_t seed) {
    static const auto stars = inputs(count, seed, [](Random& random) { return star(random, kVertices); });
    static const auto rings = boostRings<BoostRing>(stars);
    const Outline* o = stars.data();
    const BoostRing* r = rings.data();

    Entry(nameWithCount("signed area of a polygon of ", kVertices, ""), stars.size(),
          [=](size_t i) { return Zan_SignedPolygonArea2D(o[i].data(), static_cast<int32_t>(kVertices)); })
        .peer(
            "shoelace by hand",
            [=](size_t i) {
                double sum = 0;
                for (size_t a = kVertices - 1, b = 0; b < kVertices; a = b++)
                    sum += o[i][a].x * o[i][b].y - o[i][b].x * o[i][a].y;
                return sum / 2;
            },
            Near())
        .peer(
            "Boost.Geometry", [=](size_t i) { return bg::area(r[i]); }, Near());
}

/// Convex hull by the monotone chain (Andrew, 1979).
void hullByHand(std::vector<Vector2> points, std::vector<Vector2>& hull) {
    std::sort(points.begin(), points.end(),
              [](const Vector2& a, const Vector2& b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    hull.resize(points.size() * 2);
    size_t size = 0;
    for (const Vector2& p : points) {
        while (size >= 2 && cross(hull[size - 2], hull[size - 1], p) <= 0) --size;
        hull[size++] = p;
    }
    for (size_t i = points.size() - 1, lower = size + 1; i-- > 0;) {
        while (size >= lower && cross(hull[size - 2], hull[size - 1], points[i]) <= 0) --size;
        hull[size++] = points[i];
    }
    hull.resize(size - 1);
}

/// The areas only: zan's hull snaps points to a grid, so where points are almost collinear it has other vertices.
struct SameHull {
    template <class Hull>
    bool operator()(const ArrayView<Vector2>& zan, const Hull& peer) const {
        return Near{1e-6}(area(zan), area(peer));
    }

private:
    static double area(const ArrayView<Vector2>& hull) {
        return std::abs(Zan_SignedPolygonArea2D(hull.data, static_cast<int32_t>(hull.count)));
    }
    static double area(const ArrayView<BoostPoint>& hull) {
        return std::abs(bg::area(BoostRing(hull.data, hull.data + hull.count)));
    }
};

enum class Distribution { kDisc, kCircle, kGrid, kSorted, kEqual, kTwoClusters };

constexpr const char* suffixOf(Distribution distribution) {
    constexpr const char* kSuffixes[] = {"",         ", on a circle", ", on a grid",
                                         ", sorted", ", all equal",   ", in two clusters"};
    return kSuffixes[static_cast<int>(distribution)];
}

std::vector<Vector2> cloudOf(Distribution distribution, size_t count, Random& random) {
    std::vector<Vector2> cloud;
    for (size_t i = 0; i < count; ++i) {
        const double angle = random.real(0, 2 * kPi);
        const double uniformOverDisc = 100 * std::sqrt(random.real(0, 1));
        switch (distribution) {
            case Distribution::kDisc:
            case Distribution::kSorted:
                cloud.push_back(pointOnCircle(angle, uniformOverDisc));
                break;
            case Distribution::kCircle:
                cloud.push_back(pointOnCircle(angle, 100));
                break;
            case Distribution::kGrid:
                cloud.emplace_back(random.integer(0, 99), random.integer(0, 99));
                break;
            case Distribution::kEqual:
                cloud.emplace_back(12, 34);
                break;
            case Distribution::kTwoClusters:
                cloud.push_back(pointOnCircle(angle, uniformOverDisc * 0.01));
                cloud.back().y += i % 2 == 0 ? -100 : 100;
                break;
        }
    }
    if (distribution == Distribution::kSorted) {
        std::sort(cloud.begin(), cloud.end(), [](const Vector2& a, const Vector2& b) { return a.x < b.x; });
    }
    return cloud;
}

template <Distribution kDistribution, size_t kCount>
void addHulls(size_t count, uint32_t seed) {
    static const auto clouds =
        inputs(count, seed, [](Random& random) { return cloudOf(kDistribution, kCount, random); });
    static const auto multiPoints = [] {
        std::vector<bg::model::multi_point<BoostPoint>> all;
        for (const auto& cloud : clouds) {
            all.emplace_back();
            for (const Vector2& v : cloud) bg::append(all.back(), BoostPoint(v.x, v.y));
        }
        return all;
    }();
    static std::vector<Vector2> ours, plain, byHand;
    static BoostRing theirs;

    Entry entry(
        nameWithCount("hull of ", kCount, " points").append(suffixOf(kDistribution)), count,
        [](size_t i) {
            Zan_ComputeConvexHull(clouds[i].cbegin(), clouds[i].cend(), ours);
            return viewOf(ours);
        },
        kCount);
    // Neither the plain form nor Boost.Geometry handles points that are all equal.
    if (kDistribution != Distribution::kEqual) {
        entry
            .plain([](size_t i) {
                plain_forms::hull(clouds[i], plain);
                return viewOf(plain);
            })
            .peer(
                "Boost.Geometry",
                [](size_t i) {
                    theirs.clear();
                    bg::convex_hull(multiPoints[i], theirs);
                    return viewOf(theirs);
                },
                SameHull());
    }
    entry.peer(
        "monotone chain",
        [](size_t i) {
            hullByHand(clouds[i], byHand);
            return viewOf(byHand);
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
        const double turn = cross(v[i], v[i + 1 < n ? i + 1 : 0], v[i + 2 < n ? i + 2 : i + 2 - n]);
        left |= turn > 0;
        right |= turn < 0;
        if (left && right) return false;
    }
    return true;
}

template <int kVertices>
void addConvexity(size_t count, uint32_t seed) {
    // One in four is not convex, so that the result is unpredictable.
    static const auto outlines = inputs(count, seed, [](Random& random) {
        Outline outline = ellipse(random, kVertices);
        if (random.integer(0, 3) == 0) {
            Vector2& dented = outline[static_cast<size_t>(random.integer(0, kVertices - 1))];
            dented = {dented.x * 0.01, dented.y * 0.01};
        }
        return outline;
    });
    static const auto rings = boostRings<BoostRing>(outlines);
    Entry(nameWithCount("convexity of ", kVertices, " vertices"), count,
          [](size_t i) { return Zan_IsConvex(outlines[i].cbegin(), outlines[i].cend()); })
        .plain([](size_t i) { return plain_forms::convex(outlines[i]); })
        .peer("by hand", [](size_t i) { return convexByHand(outlines[i]); })
        .peer("Boost.Geometry", [](size_t i) { return bg::is_convex(rings[i]); });
}

}  // namespace

void addPolyHulls() {
    addAreas<4>(kInputs, 69);
    addAreas<16>(64, 70);
    addAreas<64>(16, 71);
    addHulls<Distribution::kDisc, 8>(kInputs, 72);
    addHulls<Distribution::kDisc, 100>(256, 74);
    addHulls<Distribution::kDisc, 10000>(4, 75);
    addHulls<Distribution::kDisc, 1000000>(1, 76);
    addHulls<Distribution::kCircle, 100>(256, 74);
    addHulls<Distribution::kCircle, 10000>(4, 75);
    addHulls<Distribution::kCircle, 1000000>(1, 76);
    addHulls<Distribution::kGrid, 10000>(4, 75);
    addHulls<Distribution::kSorted, 10000>(4, 75);
    addHulls<Distribution::kEqual, 10000>(4, 75);
    addHulls<Distribution::kTwoClusters, 10000>(4, 75);
    addConvexity<4>(kManyInputs, 87);
    addConvexity<1000>(64, 88);
}

}  // namespace zan_bench

// Outlines, flags and hits of random decks, compared with a second computation: each corner is rotated axis by axis, in
// long double.
#include "project.h"
#include "tests/support/random.h"

#include <array>
#include <complex>

namespace {

using Real = long double;
using P2 = std::complex<Real>;
using P3 = std::array<Real, 3>;

Real dot(const P3& a, const P3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
// Relative to the magnitude of the numbers.
bool same(Real a, Real b, Real size) { return std::abs(a - b) <= 1e-9L * (1 + size); }

P3 rotated(P3 p, const scene::Layer& by, char axis, Real direction) {
    const auto k = static_cast<size_t>(axis - 'x');
    const size_t u = (k + 1) % 3;
    const size_t v = (k + 2) % 3;
    const Real angle = P3{by.rotateX, by.rotateY, by.rotateZ}[k] * direction * 3.14159265358979323846264338L / 180;
    const Real a = p[u];
    const Real b = p[v];
    p[u] = a * std::cos(angle) - b * std::sin(angle);
    p[v] = a * std::sin(angle) + b * std::cos(angle);
    return p;
}

struct RandomDeck : scene::Deck {
    scene::Size window{};
    scene::Size layer{};

    explicit RandomDeck(Random& random) {
        const auto pick = [&](std::initializer_list<double> of) { return of.begin()[random.bits() % of.size()]; };
        size = {pick({1024, 800}), pick({768, 500})};
        window = {pick({1280, 333.5, 160}), pick({800, 701, 100})};
        layer = {pick({1024, 640}), pick({768, 50})};
        perspective = pick({1000, 700});
        minScale = pick({0, 0, 0.5});
        maxScale = pick({0, 1});
        for (int i = 0; i < 6; ++i) {
            const char* const orders[] = {"xyz", "xzy", "yxz", "yzx", "zxy", "zyx"};
            const bool level = random.below(2) == 0;
            const auto place = [&] { return pick({0, 0, 0, 0, 30, -260, 280, -400, 1700}); };
            const auto angle = [&] { return level ? 0 : pick({0, 90, 17, -31, 253}); };
            layers.push_back({"", place(), place(), place(), angle(), angle(), angle(), orders[random.below(6)],
                              pick({1, 1, 0.3, 2})});
        }
    }
};

// One layer seen by one camera.
struct PlainView {
    std::array<P3, 4> eye;
    std::vector<P2> outline;
    P2 centre;  // of the window
    Real unit;  // pixels for x / z = 1

    PlainView(const RandomDeck& deck, const scene::Layer& layer, const scene::Layer& camera)
        : centre(deck.window.width / 2, deck.window.height / 2), unit(deck.perspective) {
        double f = std::min(deck.window.width / deck.size.width, deck.window.height / deck.size.height);
        if (deck.maxScale != 0) f = std::min(f, deck.maxScale);
        const Real distance = unit / std::max(f, deck.minScale) * camera.scale;
        for (size_t i = 0; i < 4; ++i) {
            const Real right = i == 1 || i == 2 ? 0.5L : -0.5L;
            const Real down = i < 2 ? -0.5L : 0.5L;
            P3 p{right * deck.layer.width * layer.scale, down * deck.layer.height * layer.scale, 0};
            for (size_t k = 3; k-- > 0;) p = rotated(p, layer, layer.order[k], 1);
            p = {p[0] + layer.x - camera.x, p[1] + layer.y - camera.y, p[2] + layer.z - camera.z};
            for (const char axis : camera.order) p = rotated(p, camera, axis, -1);
            eye[i] = {p[0], p[1], distance - p[2]};
        }
        for (size_t i = 0, j = 1; i < 4; ++i, j = (i + 1) % 4) {
            const Real t = (0.1L - eye[i][2]) / (eye[j][2] - eye[i][2]);
            const auto crossing = [&](size_t k) { return eye[i][k] + (eye[j][k] - eye[i][k]) * t; };
            if (!behind(i)) outline.push_back(toScreen(eye[i]));
            if (behind(i) != behind(j)) outline.push_back(toScreen({crossing(0), crossing(1), 0.1L}));
        }
    }
    bool behind(size_t i) const { return eye[i][2] < 0.1L; }
    P2 toScreen(const P3& p) const { return centre + P2(p[0], p[1]) * (unit / p[2]); }
    // The winding number is not zero.
    bool contains(P2 p) const {
        Real angle = 0;
        for (size_t i = 0; i < outline.size(); ++i) {
            angle += std::arg((outline[(i + 1) % outline.size()] - p) / (outline[i] - p));
        }
        return std::abs(angle) > 3;
    }
    // Eye z at which the ray through p meets the layer.
    Real depth(P2 p) const {
        const P2 direction = (p - centre) / unit;
        const auto side = [this](size_t i, size_t k) { return eye[i][k % 3] - eye[0][k % 3]; };
        P3 normal{};
        for (size_t k = 0; k < 3; ++k) normal[k] = side(1, k + 1) * side(3, k + 2) - side(1, k + 2) * side(3, k + 1);
        return dot(eye[0], normal) / dot({direction.real(), direction.imag(), 1}, normal);
    }
};

void compareHit(const scene::HitAnswer& hit, const std::vector<PlainView>& views) {
    const P2 p(hit.point.x, hit.point.y);
    std::vector<bool> reported(views.size(), false);
    Real before = 0;
    size_t layerBefore = views.size();
    for (const size_t i : hit.layers) {
        const Real depth = views[i].depth(p);
        // In one plane, the last of the deck is in front.
        if (same(depth, before, 10 * depth)) {
            CHECK(i < layerBefore);
        } else {
            CHECK(depth > before);
        }
        before = depth;
        layerBefore = i;
        reported[i] = true;
    }
    for (size_t i = 0; i < views.size(); ++i) CHECK(reported[i] == views[i].contains(p));
}

}  // namespace

TEST_CASE("scene: random decks, every layer seen by every camera") {
    Random random(81);
    size_t behind = 0;
    size_t cut = 0;
    size_t hits = 0;
    for (int round = 0; round < 60; ++round) {
        const RandomDeck deck(random);
        std::vector<scene::HitPoint> points;
        for (int i = 0; i < 24; ++i) {
            points.push_back(
                {deck.window.width * (i % 6 * 2 + 1) / 12.1, deck.window.height * (i / 6 * 2 + 1) / 8.1, 0});
        }
        for (size_t camera = 0; camera < 6; ++camera) {
            CAPTURE(round, camera);
            const scene::CameraAnswer seen = projectDeck(deck, camera, deck.window, deck.layer, points);
            std::vector<PlainView> views;
            for (size_t i = 0; i < 6; ++i) {
                const auto& outline = views.emplace_back(deck, deck.layers[i], deck.layers[camera]).outline;
                REQUIRE(seen.layers.at(i).outline.size() == outline.size());
                for (size_t k = 0; k < 4; ++k) CHECK(seen.layers[i].behind[k] == views[i].behind(k));
                for (size_t k = 0; k < outline.size(); ++k) {
                    const P2 p(seen.layers[i].outline[k].x, seen.layers[i].outline[k].y);
                    CHECK(same(std::abs(p - outline[k]), 0, std::abs(p)));
                }
                behind += outline.empty() ? 1 : 0;
                cut += outline.size() % 2;
            }
            for (const scene::HitAnswer& hit : seen.hits) {
                compareHit(hit, views);
                hits += hit.layers.size();
            }
        }
    }
    CHECK(behind > 0);
    CHECK(cut > 0);
    CHECK(hits > 0);
}

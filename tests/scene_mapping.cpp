// Outlines, flags and hits of random decks, compared with a second, plain computation: single turns of single points in
// long double. Real decks, each layer through its own camera.
#include <array>
#include <catch2/catch.hpp>
#include <cmath>
#include <complex>
#include <fstream>
#include <nlohmann/json.hpp>

#include "scene_run.h"
#include "values.h"

namespace {

using Json = nlohmann::json;
using Real = long double;
using P2 = std::complex<Real>;
using P3 = std::array<Real, 3>;

Real dot(const P3& a, const P3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
P2 point(const Json& p) { return {p[0].get<double>(), p[1].get<double>()}; }
// To a billionth of the size of the numbers.
bool same(Real a, Real b, Real size) { return std::abs(a - b) <= 1e-9L * (1 + size); }

struct Step {
    std::string order;  // of the axes x to z
    P3 at, turn;
    Real scale;

    P3 turned(P3 p, char axis, Real direction) const {
        const auto k = static_cast<size_t>(axis - 'x'), u = (k + 1) % 3, v = (k + 2) % 3;
        const Real a = p[u], b = p[v], sine = std::sin(turn[k]) * direction;
        p[u] = a * std::cos(turn[k]) - b * sine;
        p[v] = a * sine + b * std::cos(turn[k]);
        return p;
    }
};

struct RandomDeck {
    P2 size, window, layer;
    Real perspective, least, most;
    std::vector<Step> steps;
    std::ostringstream page;

    explicit RandomDeck(Random& random) {
        const auto pick = [&](std::initializer_list<double> of) { return of.begin()[random.bits() % of.size()]; };
        size = {pick({1024, 800}), pick({768, 500})};
        window = {pick({1280, 333.5, 160}), pick({800, 701, 100})};
        layer = {pick({1024, 640}), pick({768, 50})};
        perspective = pick({1000, 700}), least = pick({0, 0, 0.5}), most = pick({0, 1});
        page << "<ol id=impress data-width=" << size.real() << " data-height=" << size.imag()
             << " data-perspective=" << perspective << " data-min-scale=" << least << " data-max-scale=" << most;
        for (int i = 0; i < 6; ++i) {
            const char* const orders[] = {"xyz", "xzy", "yxz", "yzx", "zxy", "zyx"};
            Step s{orders[random.below(6)], steps.empty() ? P3{} : steps.back().at, {}, pick({1, 1, 0.3, 2})};
            const bool level = random.below(2) == 0;
            page << ">\n<li class=step data-scale=" << s.scale;
            if (s.order != "xyz") page << " data-rotate-order=" << s.order;
            for (size_t k = 0; k < 3; ++k) {
                const char axis = "xyz"[k];
                const double turn = level ? 0 : pick({0, 90, 17, -31, 253});
                s.turn[k] = turn * 3.14159265358979323846264338327950288L / 180;
                if (turn != 0) page << " data-rotate-" << axis << '=' << turn;
                if (random.below(3) == 0) continue;  // where the step before stands
                s.at[k] = pick({0, 0, 30, -260, 280, -400, 1700});
                page << " data-" << axis << '=' << s.at[k];
            }
            steps.push_back(s);
        }
        page << '>';
    }
};

// One layer through one camera.
struct PlainView {
    std::array<P3, 4> eye;
    std::vector<P2> outline;
    P2 middle;
    Real unit;  // pixels of a length as far away as it is long

    PlainView(const RandomDeck& deck, const Step& layer, const Step& camera) : middle(deck.window / Real(2)) {
        Real f = std::min(deck.window.real() / deck.size.real(), deck.window.imag() / deck.size.imag());
        if (deck.most != 0) f = std::min(f, deck.most);
        unit = deck.perspective;
        const Real distance = unit / std::max(f, deck.least) * camera.scale;
        for (size_t i = 0; i < 4; ++i) {
            const Real right = i == 1 || i == 2 ? 0.5L : -0.5L, down = i < 2 ? -0.5L : 0.5L;
            P3 p{right * deck.layer.real() * layer.scale, down * deck.layer.imag() * layer.scale, 0};
            for (size_t k = 3; k-- > 0;) p = layer.turned(p, layer.order[k], 1);
            for (size_t k = 0; k < 3; ++k) p[k] += layer.at[k] - camera.at[k];
            for (const char axis : camera.order) p = camera.turned(p, axis, -1);
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
    P2 toScreen(const P3& p) const { return middle + P2(p[0], p[1]) * (unit / p[2]); }
    // Inside of the outline: who walks along it is seen all around.
    bool contains(P2 p) const {
        Real turn = 0;
        for (size_t i = 0; i < outline.size(); ++i) {
            turn += std::arg((outline[(i + 1) % outline.size()] - p) / (outline[i] - p));
        }
        return std::abs(turn) > 3;
    }
    // Where the ray through a point meets the layer.
    Real depth(P2 p) const {
        const P2 way = (p - middle) / unit;
        const auto side = [this](size_t i, size_t k) { return eye[i][k % 3] - eye[0][k % 3]; };
        P3 normal{};
        for (size_t k = 0; k < 3; ++k) normal[k] = side(1, k + 1) * side(3, k + 2) - side(1, k + 2) * side(3, k + 1);
        return dot(eye[0], normal) / dot({way.real(), way.imag(), 1}, normal);
    }
};

// A layer's place in the deck, from its name "step-1" and so on.
size_t placeOf(const Json& id) { return std::stoul(id.get<std::string>().substr(5)) - 1; }

void compareHit(const Json& hit, const std::vector<PlainView>& views) {
    const P2 p = point(hit["point"]);
    CAPTURE(hit.dump());
    std::vector<bool> reported(views.size(), false);
    Real before = 0;
    size_t placeBefore = views.size();
    for (const Json& id : hit["layers"]) {
        const size_t i = placeOf(id);
        const Real depth = views[i].depth(p);
        // In one plane, the deck's last lies in front.
        CHECK((same(depth, before, 10 * depth) ? i < placeBefore : depth > before));
        before = depth, placeBefore = i, reported[i] = true;
    }
    for (size_t i = 0; i < views.size(); ++i) CHECK(reported[i] == views[i].contains(p));
}

void compareLayer(const Json& layer, const PlainView& view) {
    CAPTURE(layer.dump());
    REQUIRE(layer["outline"].size() == view.outline.size());
    for (size_t i = 0; i < 4; ++i) CHECK(layer["behind"][i] == view.behind(i));
    for (size_t k = 0; k < view.outline.size(); ++k) {
        const P2 p = point(layer["outline"][k]);
        CHECK(same(std::abs(p - view.outline[k]), 0, std::abs(p)));
    }
}

std::string pair(P2 p, char between) { return std::to_string(p.real()) + between + std::to_string(p.imag()); }

}  // namespace

TEST_CASE("scene: random decks, every layer through every camera") {
    Random random(81);
    size_t behind = 0, cut = 0, hits = 0;
    for (int round = 0; round < 60; ++round) {
        const RandomDeck deck(random);
        std::ofstream("random_deck") << deck.page.str();
        std::vector<std::string> arguments{"random_deck", "--all", "--json=-", "--window=" + pair(deck.window, 'x'),
                                           "--layer=" + pair(deck.layer, 'x')};
        for (int i = 0; i < 24; ++i) {
            const P2 at(deck.window.real() * (i % 6 * 2 + 1) / 12.1L, deck.window.imag() * (i / 6 * 2 + 1) / 8.1L);
            arguments.push_back("--hit=" + pair(at, ','));
        }
        const SceneRun run = runScene(arguments);
        CAPTURE(round, deck.page.str(), arguments, run.err);
        REQUIRE(run.code == 0);
        const Json all = Json::parse(run.out);
        REQUIRE(all["cameras"].size() == deck.steps.size());
        for (size_t c = 0; c < deck.steps.size(); ++c) {
            const Json &camera = all["cameras"][c], &layers = camera["layers"];
            REQUIRE((placeOf(camera["id"]) == c && layers.size() == deck.steps.size()));
            std::vector<PlainView> views;
            for (size_t i = 0; i < deck.steps.size(); ++i) {
                const PlainView& view = views.emplace_back(deck, deck.steps[i], deck.steps[c]);
                CHECK(placeOf(layers[i]["id"]) == i);
                compareLayer(layers[i], view);
                behind += view.outline.empty() ? 1 : 0, cut += view.outline.size() % 2;
            }
            for (const Json& hit : camera["hits"]) compareHit(hit, views), hits += hit["layers"].size();
        }
    }
    CHECK((behind > 0 && cut > 0 && hits > 0));
}

TEST_CASE("scene: each layer of a real deck fills its own view") {
    for (const std::string deck :
         {ZAN_SCENE_REAL_DECK, ZAN_SCENE_DECKS "/gallery.html", ZAN_SCENE_DECKS "/zoom.html"}) {
        const Json all = Json::parse(runScene({deck, "--all", "--json=-", "--window=1000x600", "--layer=500x300"}).out);
        const Json zoom = all["cameras"][0]["layers"][0]["outline"][2];
        CHECK(all["cameras"].size() > 5);
        for (size_t i = 0; i < all["cameras"].size(); ++i) {
            const Json& outline = all["cameras"][i]["layers"][i]["outline"];
            CHECK((outline.size() == 4 && std::abs(point(outline[2]) - point(zoom)) < 1e-6L));
            CHECK(std::abs(point(outline[0]) + point(zoom) - P2(1000, 600)) < 1e-6L);
        }
    }
}

// Outlines, flags and hits of whole decks, compared with a second, plain computation: single turns of single points in
// long double, read from the page by a regular expression.
#include <array>
#include <catch2/catch.hpp>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>

#include "scene_run.h"

namespace {

using Json = nlohmann::json;
using Real = long double;
using P2 = std::array<Real, 2>;
using P3 = std::array<Real, 3>;

struct Step {
    std::string id, order = "xyz";
    std::map<char, Real> at, turn;
    Real scale = 1;
};

struct PlainDeck {
    Real width = 1024, height = 768, perspective = 1000, minScale = 0, maxScale = 1;
    std::vector<Step> steps;

    explicit PlainDeck(const std::string& page) {
        const std::regex tag("<[a-z]+ [^>]*>"), attribute(R"(([a-z-]+)="([^"]*)\")"), step("(^| )step( |$)");
        for (std::sregex_iterator t(page.begin(), page.end(), tag), end; t != end; ++t) {
            std::map<std::string, std::string> has;
            const std::string text = t->str();
            for (std::sregex_iterator a(text.begin(), text.end(), attribute); a != end; ++a) has[a->str(1)] = a->str(2);
            const auto number = [&](const char* name, Real otherwise) {
                return has.count(name) ? static_cast<Real>(std::stod(has[name])) : otherwise;
            };
            if (has["id"] == "impress") {
                width = number("data-width", width), height = number("data-height", height);
                perspective = number("data-perspective", perspective);
                minScale = number("data-min-scale", minScale), maxScale = number("data-max-scale", maxScale);
            }
            if (!std::regex_search(has["class"], step)) continue;
            Step s;
            s.id = has["id"].empty() ? "step-" + std::to_string(steps.size() + 1) : has["id"];
            for (const char axis : {'x', 'y', 'z'}) {
                s.at[axis] = number((std::string("data-") + axis).c_str(), steps.empty() ? 0 : steps.back().at[axis]);
                s.turn[axis] = number((std::string("data-rotate-") + axis).c_str(), 0);
            }
            if (!has.count("data-rotate-z")) s.turn['z'] = number("data-rotate", 0);
            if (has.count("data-rotate-order")) s.order = has["data-rotate-order"];
            s.scale = number("data-scale", 1);
            steps.push_back(s);
        }
    }
};

P3 turned(P3 p, char axis, Real degrees) {
    const Real angle = degrees * 3.14159265358979323846264338327950288L / 180;
    const size_t u = axis == 'x' ? 1 : axis == 'y' ? 2 : 0, v = (u + 1) % 3;
    const Real a = p[u], b = p[v];
    p[u] = a * std::cos(angle) - b * std::sin(angle);
    p[v] = a * std::sin(angle) + b * std::cos(angle);
    return p;
}

Real dot(P3 a, P3 b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Real length(P2 a) { return std::sqrt(a[0] * a[0] + a[1] * a[1]); }

// One layer through one camera.
struct PlainView {
    Real windowWidth, windowHeight, zoom, distance;
    std::array<P3, 4> eye;
    std::vector<P2> outline;
    std::vector<std::array<P2, 2>> edges;  // the visible parts of the layer's own
    P3 normal;

    PlainView(const PlainDeck& deck, Step layer, Step camera, P2 window, P2 size)
        : windowWidth(window[0]), windowHeight(window[1]) {
        Real f = std::min(window[0] / deck.width, window[1] / deck.height);
        if (deck.maxScale != 0 && f > deck.maxScale) f = deck.maxScale;
        if (deck.minScale != 0 && f < deck.minScale) f = deck.minScale;
        zoom = f / camera.scale;
        distance = deck.perspective * camera.scale / f;
        for (size_t i = 0; i < 4; ++i) {
            P3 p{(i == 1 || i == 2 ? 1 : -1) * size[0] / 2 * layer.scale, (i < 2 ? -1 : 1) * size[1] / 2 * layer.scale,
                 0};
            for (size_t k = 3; k-- > 0;) p = turned(p, layer.order[k], layer.turn[layer.order[k]]);
            for (size_t k = 0; k < 3; ++k) p[k] += layer.at["xyz"[k]] - camera.at["xyz"[k]];
            for (const char axis : camera.order) p = turned(p, axis, -camera.turn[axis]);
            eye[i] = {p[0], p[1], distance - p[2]};
        }
        for (size_t i = 0; i < 4; ++i) {
            const P3 a = eye[i], b = eye[(i + 1) % 4];
            if (behind(i) && behind((i + 1) % 4)) continue;
            const Real t = (0.1L - a[2]) / (b[2] - a[2]);
            const P3 crossing{a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t, 0.1L};
            const P2 start = toScreen(behind(i) ? crossing : a);
            const P2 end = toScreen(behind((i + 1) % 4) ? crossing : b);
            outline.push_back(start);
            if (behind((i + 1) % 4)) outline.push_back(end);
            edges.push_back({start, end});
        }
        P3 u, v;
        for (size_t k = 0; k < 3; ++k) u[k] = eye[1][k] - eye[0][k], v[k] = eye[3][k] - eye[0][k];
        normal = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
    }
    bool behind(size_t i) const { return eye[i][2] < 0.1L; }
    P2 toScreen(P3 p) const {
        return {windowWidth / 2 + p[0] * distance / p[2] * zoom, windowHeight / 2 + p[1] * distance / p[2] * zoom};
    }
    // The cosine between the line to the middle and the normal.
    Real facing() const {
        P3 middle{};
        for (const P3& p : eye) {
            for (size_t k = 0; k < 3; ++k) middle[k] += p[k] / 4;
        }
        return dot(middle, normal) / std::sqrt(dot(middle, middle) * dot(normal, normal));
    }
    // Distance to an edge; a foot that lies further from the start than the edge is long does not count.
    static Real toEdge(P2 p, const std::array<P2, 2>& edge) {
        const P2 d{edge[1][0] - edge[0][0], edge[1][1] - edge[0][1]}, v{p[0] - edge[0][0], p[1] - edge[0][1]};
        const Real along = (d[0] * v[0] + d[1] * v[1]) / length(d);
        if (along >= 0 && length(v) <= length(d)) return std::abs(d[0] * v[1] - d[1] * v[0]) / length(d);
        return std::min(length(v), length({p[0] - edge[1][0], p[1] - edge[1][1]}));
    }
    Real toOutline(P2 p) const {
        Real least = -1;
        for (const auto& edge : edges) least = least < 0 ? toEdge(p, edge) : std::min(least, toEdge(p, edge));
        return least;
    }
    // Within the tolerance of the outline, or inside it: crossings of a ray to the right.
    bool contains(P2 p, Real tolerance) const {
        bool inside = false;
        for (size_t i = 0; i < outline.size(); ++i) {
            const P2 a = outline[i], b = outline[(i + 1) % outline.size()];
            if (tolerance > 0 && toEdge(p, {a, b}) <= tolerance) return true;
            if ((a[1] > p[1]) == (b[1] > p[1])) continue;
            if (p[0] < a[0] + (p[1] - a[1]) / (b[1] - a[1]) * (b[0] - a[0])) inside = !inside;
        }
        return inside;
    }
    // Where the ray through a point meets the layer, kept within the layer's own depths.
    Real depth(P2 p) const {
        const P3 ray{(p[0] - windowWidth / 2) / zoom / distance, (p[1] - windowHeight / 2) / zoom / distance, 1};
        Real low = eye[0][2], high = low;
        for (const P3& corner : eye) low = std::min(low, corner[2]), high = std::max(high, corner[2]);
        low = std::max(low, 0.1L);
        const Real t = dot(eye[0], normal) / dot(ray, normal);
        return std::isfinite(t) ? std::min(std::max(t, low), std::max(high, 0.1L)) : low;
    }
};

// The same to a billionth of the size of the numbers.
bool same(Real a, Real b, Real size) { return std::abs(a - b) <= 1e-9L * (1 + size); }

struct Tally {
    int pairs = 0, behind = 0, cut = 0, edgeOn = 0, hits = 0;
};

void compareHit(const Json& hit, const std::vector<PlainView>& views, const std::map<std::string, size_t>& index,
                Tally& tally) {
    const P2 p{hit["point"][0].get<double>(), hit["point"][1].get<double>()};
    const Real tolerance = hit["tolerance"].get<double>();
    CAPTURE(hit.dump());
    std::vector<bool> reported(views.size(), false);
    Real before = 0;
    size_t beforeIndex = views.size();
    for (const Json& id : hit["layers"]) {
        const size_t i = index.at(id.get<std::string>());
        const Real depth = views[i].depth(p);
        const bool onePlane = same(depth, before, 10 * depth);
        CHECK((onePlane ? i < beforeIndex : depth > before));
        before = depth, beforeIndex = i;
        reported[i] = true;
        ++tally.hits;
    }
    Real least = -1;
    for (size_t i = 0; i < views.size(); ++i) {
        const Real distance = views[i].toOutline(p);
        if (distance < 0) {
            CHECK_FALSE(reported[i]);
            continue;
        }
        if (least < 0 || distance < least) least = distance;
        if (std::abs(distance - tolerance) > 1e-6L) CHECK(reported[i] == views[i].contains(p, tolerance));
    }
    CHECK(hit["nearest"].is_null() == (least < 0));
    if (least >= 0) {
        CHECK(same(hit["nearest"]["distance"].get<double>(), least, 1e3));
        CHECK(same(views[index.at(hit["nearest"]["id"].get<std::string>())].toOutline(p), least, 1e3));
    }
}

Tally compareDeck(const std::string& path, P2 window, P2 size, const std::vector<std::string>& options) {
    const PlainDeck deck(readFile(path));
    std::vector<std::string> arguments{path, "--all", "--json", "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    for (int i = 0; i < 24; ++i) {
        const Real x = window[0] * static_cast<Real>(i % 6 * 2 + 1) / 12,
                   y = window[1] * static_cast<Real>(i / 6 * 2 + 1) / 8;
        arguments.push_back("--hit");
        arguments.push_back(std::to_string(x) + "," + std::to_string(y) + (i % 3 == 0 ? ",7.5" : ""));
    }
    const SceneRun run = runScene(arguments);
    CHECK(run.err == "");
    REQUIRE(run.code == 0);
    const Json all = Json::parse(run.out);
    CHECK(all["deck"] == path);
    CHECK(all["window"] == Json({static_cast<double>(window[0]), static_cast<double>(window[1])}));
    CHECK(all["layer"] == Json({static_cast<double>(size[0]), static_cast<double>(size[1])}));
    REQUIRE(all["cameras"].size() == deck.steps.size());
    std::map<std::string, size_t> index;
    for (size_t i = 0; i < deck.steps.size(); ++i) index[deck.steps[i].id] = i;

    Tally tally;
    for (size_t c = 0; c < deck.steps.size(); ++c) {
        const Json& camera = all["cameras"][c];
        CHECK(camera["id"] == deck.steps[c].id);
        REQUIRE(camera["layers"].size() == deck.steps.size());
        std::vector<PlainView> views;
        for (size_t i = 0; i < deck.steps.size(); ++i) {
            const Json& layer = camera["layers"][i];
            CAPTURE(deck.steps[c].id, layer.dump());
            const PlainView& view = views.emplace_back(deck, deck.steps[i], deck.steps[c], window, size);
            CHECK(layer["id"] == deck.steps[i].id);
            bool match = layer["outline"].size() == view.outline.size();
            CHECK(match);
            std::array<Real, 4> bounds{INFINITY, INFINITY, -INFINITY, -INFINITY};
            for (size_t k = 0; match && k < view.outline.size(); ++k) {
                const Json& p = layer["outline"][k];
                const Real x = p[0].get<double>(), y = p[1].get<double>();
                match = same(x, view.outline[k][0], length(view.outline[k])) &&
                        same(y, view.outline[k][1], length(view.outline[k]));
                bounds = {std::min(bounds[0], x), std::min(bounds[1], y), std::max(bounds[2], x),
                          std::max(bounds[3], y)};
            }
            CHECK(match);
            CHECK(layer["bounds"].is_null() == view.outline.empty());
            for (size_t k = 0; k < layer["bounds"].size(); ++k) CHECK(layer["bounds"][k].get<double>() == bounds[k]);
            int behind = 0;
            for (size_t k = 0; k < 4; ++k) {
                CHECK(layer["behind"][k] == view.behind(k));
                behind += view.behind(k) ? 1 : 0;
            }
            CHECK(layer["edgeOn"] == (std::abs(view.facing()) < 1e-3L));
            ++tally.pairs;
            tally.behind += behind == 4 ? 1 : 0;
            tally.cut += behind > 0 && behind < 4 ? 1 : 0;
            tally.edgeOn += layer["edgeOn"] ? 1 : 0;
        }
        for (const Json& hit : camera["hits"]) compareHit(hit, views, index, tally);
    }
    return tally;
}

// Every order, bounds on the window's scale, values taken from the step before.
constexpr const char* kOrders = R"(<body><ol id="impress" data-width="800" data-height="500" data-perspective="700"
  data-min-scale="0.5" data-max-scale="0">
<li class="step" data-x="30" data-y="-20" data-rotate-x="31" data-rotate-y="17" data-rotate-z="53"></li>
<li class="big step" data-z="-400" data-rotate-x="31" data-rotate-y="17" data-rotate="53" data-rotate-order="xzy"></li>
<li class="step" data-rotate-x="31" data-rotate-y="17" data-rotate-z="53" data-rotate-order="yxz" data-scale="0.3"></li>
<li class="step" data-x="-260" data-rotate-x="131" data-rotate-y="-17" data-rotate-z="53" data-rotate-order="yzx"></li>
<li class="step" data-y="280" data-rotate-x="31" data-rotate-y="117" data-rotate-z="-53" data-rotate-order="zxy"></li>
<li class="step" data-z="150" data-rotate-x="-31" data-rotate-y="17" data-rotate-z="253" data-rotate-order="zyx"></li>
</ol>)";

}  // namespace

TEST_CASE("scene: a real deck, every layer through every camera") {
    const Tally tally = compareDeck(ZAN_SCENE_REAL_DECK, {1280, 800}, {1024, 768}, {});
    CHECK(tally.pairs == 29 * 29);
    CHECK(tally.behind > 0);
    CHECK(tally.cut > 0);
    CHECK(tally.edgeOn > 0);
    CHECK(tally.hits > 100);
}

TEST_CASE("scene: our own decks, every layer through every camera") {
    const std::string decks = ZAN_SCENE_DECKS;
    const Tally gallery = compareDeck(decks + "/gallery.html", {1280, 800}, {1024, 768}, {});
    CHECK(gallery.behind > 0);
    CHECK(gallery.cut > 0);
    CHECK(gallery.edgeOn > 0);
    compareDeck(decks + "/gallery.html", {333.5, 701}, {640, 480}, {"--window", "333.5x701", "--layer", "640x480"});
    compareDeck(decks + "/zoom.html", {2000, 1500}, {900, 600}, {"--window", "2000x1500"});
    const InFolder folder;
    folder.write("orders.html", kOrders);
    compareDeck("orders.html", {1920, 1080}, {800, 500}, {"--window", "1920x1080"});
    compareDeck("orders.html", {160, 100}, {800, 500}, {"--window", "160x100"});
}

// Worked by hand.
TEST_CASE("scene: what the first camera sees") {
    const InFolder folder;
    folder.write("deck.html", R"(<div id=impress><p class=step><p class=step data-z=-1000 data-scale=2>
        <p class=step data-z=500 data-rotate-x=90><p class=step id=eye data-z=1000 data-rotate-y=90></div>)");
    const SceneRun run =
        runScene({"deck.html", "--json", "-", "--hit", "600,300", "--hit", "-5,-5", "--hit", "127,-5,3"});
    REQUIRE(run.code == 0);
    const Json camera = Json::parse(run.out)["cameras"][0];
    const Json own = {{128.0, 16.0}, {1152.0, 16.0}, {1152.0, 784.0}, {128.0, 784.0}};
    CHECK(camera["layers"][0]["outline"] == own);
    // Twice as far and twice as large.
    CHECK(camera["layers"][1]["outline"] == own);
    // A level plane through the eye's height: no thickness, from z = 500 - 384 to 500 + 384.
    CHECK(camera["layers"][2]["edgeOn"] == true);
    CHECK(camera["layers"][2]["bounds"][0].get<double>() == Approx(640 - 512 / 0.116));
    CHECK(camera["layers"][2]["bounds"][1].get<double>() == Approx(400));
    // Through the eye itself: half of it is behind.
    CHECK(camera["layers"][3]["behind"] == Json({true, false, false, true}));
    CHECK(camera["hits"][0]["layers"] == Json({"step-1", "step-2"}));
    CHECK(camera["hits"][1]["layers"] == Json::array());
    CHECK(camera["hits"][1]["nearest"]["distance"].get<double>() == Approx(std::hypot(133, 21)));
    CHECK(camera["hits"][2]["layers"] == Json::array());
}

// Outlines, flags, hits and visible parts of whole decks, compared with a second, plain computation: single turns of
// single points in long double, read from the page by a regular expression.
#include <array>
#include <catch2/catch.hpp>
#include <cmath>
#include <complex>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>

#include "scene_run.h"

namespace {

using Json = nlohmann::json;
using Real = long double;
using P2 = std::complex<Real>;
using P3 = std::array<Real, 3>;
constexpr Real kDegree = 3.14159265358979323846264338327950288L / 180;

Real cross(P2 a, P2 b) { return (std::conj(a) * b).imag(); }
Real dot(const P3& a, const P3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
P2 point(const Json& p) { return {p[0].get<double>(), p[1].get<double>()}; }
// To a billionth of the size of the numbers.
bool same(Real a, Real b, Real size) { return std::abs(a - b) <= 1e-9L * (1 + size); }

P3 turned(P3 p, size_t axis, Real angle) {
    const size_t u = (axis + 1) % 3, v = (axis + 2) % 3;
    const Real a = p[u], b = p[v];
    p[u] = a * std::cos(angle) - b * std::sin(angle);
    p[v] = a * std::sin(angle) + b * std::cos(angle);
    return p;
}

struct Step {
    std::string id;
    std::array<size_t, 3> order;  // of the axes 0 to 2
    P3 at, turn;
    Real scale;
};

struct PlainDeck {
    std::map<std::string, Real> root{
        {"width", 1024}, {"height", 768}, {"perspective", 1000}, {"min-scale", 0}, {"max-scale", 1}};
    std::vector<Step> steps;

    explicit PlainDeck(const std::string& page) {
        const std::regex tag("<[a-z]+ [^>]*>"), attribute(R"(([a-z-]+)="([^"]*)\")"), step("(^| )step( |$)");
        for (std::sregex_iterator t(page.begin(), page.end(), tag), end; t != end; ++t) {
            std::map<std::string, std::string> has;
            const std::string text = t->str();
            for (std::sregex_iterator a(text.begin(), text.end(), attribute); a != end; ++a) has[a->str(1)] = a->str(2);
            const auto number = [&](const std::string& name, Real otherwise) {
                return has.count("data-" + name) ? static_cast<Real>(std::stod(has["data-" + name])) : otherwise;
            };
            if (has["id"] == "impress") {
                for (auto& [name, value] : root) value = number(name, value);
            }
            if (!std::regex_search(has["class"], step)) continue;
            Step s{has["id"], {}, {}, {}, number("scale", 1)};
            if (s.id.empty()) s.id = "step-" + std::to_string(steps.size() + 1);
            for (size_t k = 0; k < 3; ++k) {
                s.order[k] =
                    has.count("data-rotate-order") ? static_cast<size_t>(has["data-rotate-order"][k] - 'x') : k;
                const std::string axis(1, "xyz"[k]);
                s.at[k] = number(axis, steps.empty() ? 0 : steps.back().at[k]);
                s.turn[k] = number("rotate-" + axis, k == 2 ? number("rotate", 0) : 0) * kDegree;
            }
            steps.push_back(s);
        }
    }
};

// One layer through one camera.
struct PlainView {
    P2 window;
    Real zoom, distance;
    std::array<P3, 4> eye;
    std::vector<P2> outline;
    std::vector<std::array<P2, 2>> edges;  // the visible parts of the layer's own
    P3 normal{};

    PlainView(PlainDeck& deck, const Step& layer, const Step& camera, P2 windowSize, P2 size) : window(windowSize) {
        Real f = std::min(window.real() / deck.root["width"], window.imag() / deck.root["height"]);
        if (deck.root["max-scale"] != 0) f = std::min(f, deck.root["max-scale"]);
        zoom = std::max(f, deck.root["min-scale"]) / camera.scale;
        distance = deck.root["perspective"] / zoom;
        for (size_t i = 0; i < 4; ++i) {
            P3 p = corner(i, size, layer.scale);
            for (size_t k = 3; k-- > 0;) p = turned(p, layer.order[k], layer.turn[layer.order[k]]);
            for (size_t k = 0; k < 3; ++k) p[k] += layer.at[k] - camera.at[k];
            for (const size_t axis : camera.order) p = turned(p, axis, -camera.turn[axis]);
            eye[i] = {p[0], p[1], distance - p[2]};
        }
        for (size_t i = 0, j = 1; i < 4; ++i, j = (i + 1) % 4) {
            if (behind(i) && behind(j)) continue;
            const Real t = (0.1L - eye[i][2]) / (eye[j][2] - eye[i][2]);
            P3 crossing{0, 0, 0.1L};
            for (size_t k = 0; k < 2; ++k) crossing[k] = eye[i][k] + (eye[j][k] - eye[i][k]) * t;
            edges.push_back({toScreen(behind(i) ? crossing : eye[i]), toScreen(behind(j) ? crossing : eye[j])});
            outline.push_back(edges.back()[0]);
            if (behind(j)) outline.push_back(edges.back()[1]);
        }
        const auto side = [this](size_t i, size_t k) { return eye[i][k % 3] - eye[0][k % 3]; };
        for (size_t k = 0; k < 3; ++k) normal[k] = side(1, k + 1) * side(3, k + 2) - side(1, k + 2) * side(3, k + 1);
    }
    static P3 corner(size_t i, P2 size, Real scale) {
        return {(i == 1 || i == 2 ? 1 : -1) * size.real() / 2 * scale, (i < 2 ? -1 : 1) * size.imag() / 2 * scale, 0};
    }
    bool behind(size_t i) const { return eye[i][2] < 0.1L; }
    P2 toScreen(const P3& p) const { return window / Real(2) + P2(p[0], p[1]) * (distance / p[2] * zoom); }
    // The cosine between the line to the middle and the normal.
    Real facing() const {
        P3 middle{};
        for (size_t k = 0; k < 3; ++k) middle[k] = (eye[0][k] + eye[2][k]) / 2;
        return dot(middle, normal) / std::sqrt(dot(middle, middle) * dot(normal, normal));
    }
    // What the window shows of the outline: cut by its four sides in turn.
    std::vector<P2> inWindow() const {
        std::vector<P2> part = outline;
        for (size_t side = 0; side < 4; ++side) {
            std::vector<P2> kept;
            const auto room = [&](P2 p) {  // inside of the side
                return std::array{p.real(), p.imag(), (window - p).real(), (window - p).imag()}[side];
            };
            for (size_t i = 0; i < part.size(); ++i) {
                const P2 a = part[i], b = part[(i + 1) % part.size()];
                if (room(a) >= 0) kept.push_back(a);
                if ((room(a) >= 0) != (room(b) >= 0)) kept.push_back(a + (b - a) * (room(a) / (room(a) - room(b))));
            }
            part = kept;
        }
        return part;
    }
    static Real area(const std::vector<P2>& polygon) {
        Real sum = 0;
        for (size_t i = 0; i < polygon.size(); ++i) sum += cross(polygon[i], polygon[(i + 1) % polygon.size()]);
        return std::abs(sum) / 2;
    }
    // Distance to an edge; a foot that lies further from the start than the edge is long does not count.
    static Real toEdge(P2 p, P2 a, P2 b) {
        const P2 d = b - a, v = p - a;
        const bool beside = (std::conj(d) * v).real() >= 0 && std::abs(v) <= std::abs(d);
        return beside ? std::abs(cross(d, v)) / std::abs(d) : std::min(std::abs(v), std::abs(p - b));
    }
    Real toOutline(P2 p) const {
        Real least = edges.empty() ? -1 : INFINITY;
        for (const auto& edge : edges) least = std::min(least, toEdge(p, edge[0], edge[1]));
        return least;
    }
    // Within the tolerance of the outline, or inside it: crossings of a ray to the right.
    bool contains(P2 p, Real tolerance) const {
        bool inside = false;
        for (size_t i = 0; i < outline.size(); ++i) {
            const P2 a = outline[i], b = outline[(i + 1) % outline.size()];
            if (tolerance > 0 && toEdge(p, a, b) <= tolerance) return true;
            if ((a.imag() > p.imag()) == (b.imag() > p.imag())) continue;
            if (p.real() < a.real() + (p - a).imag() / (b - a).imag() * (b - a).real()) inside = !inside;
        }
        return inside;
    }
    // Where the ray through a point meets the layer, kept within the layer's own depths.
    Real depth(P2 p) const {
        const P2 way = (p - window / Real(2)) / (zoom * distance);
        Real low = eye[0][2], high = low;
        for (const P3& at : eye) low = std::min(low, at[2]), high = std::max(high, at[2]);
        const Real t = dot(eye[0], normal) / dot({way.real(), way.imag(), 1}, normal);
        return std::isfinite(t) ? std::max(std::min(t, high), std::max(low, 0.1L)) : std::max(low, 0.1L);
    }
};

void compareHit(const Json& hit, const std::vector<PlainView>& views, std::map<std::string, size_t>& index) {
    const P2 p = point(hit["point"]);
    const Real tolerance = hit["tolerance"].get<double>();
    CAPTURE(hit.dump());
    std::vector<bool> reported(views.size(), false);
    Real before = 0;
    size_t beforeIndex = views.size();
    for (const Json& id : hit["layers"]) {
        const size_t i = index[id];
        const Real depth = views[i].depth(p);
        // In one plane, the deck's last lies in front.
        CHECK((same(depth, before, 10 * depth) ? i < beforeIndex : depth > before));
        before = depth, beforeIndex = i;
        reported[i] = true;
    }
    Real least = INFINITY;
    for (size_t i = 0; i < views.size(); ++i) {
        const Real distance = views[i].toOutline(p);
        if (distance >= 0) least = std::min(least, distance);
        if (std::abs(distance - tolerance) > 1e-6L) CHECK(reported[i] == views[i].contains(p, tolerance));
    }
    REQUIRE(hit["nearest"].is_null() == std::isinf(least));
    if (std::isinf(least)) return;
    CHECK(same(hit["nearest"]["distance"].get<double>(), least, 1e3));
    CHECK(same(views[index[hit["nearest"]["id"]]].toOutline(p), least, 1e3));
}

// The parts of a decomposition put together again carry the corners to where the camera's step sees them.
void compareParts(const Json& parts, const PlainView& view, P2 size) {
    for (size_t i = 0; i < 4; ++i) {
        P3 p = PlainView::corner(i, size, parts["scale"][0].get<double>());
        for (size_t k = 3; k-- > 0;) p = turned(p, k, parts["rotation"][k].get<double>());
        for (size_t k = 0; k < 3; ++k) {
            const Real there = k == 2 ? view.distance - view.eye[i][2] : view.eye[i][k];
            CHECK(std::abs(p[k] + parts["translation"][k].get<double>() - there) < 1e-6L);
            CHECK(std::abs(parts["shear"][k].get<double>()) < 1e-9);
        }
    }
}

// Convex, around every point, with a corner at one of them each.
void compareHull(const Json& hull, const std::vector<P2>& points) {
    CHECK(hull.empty() == points.empty());
    for (size_t i = 0; i < hull.size(); ++i) {
        const P2 a = point(hull[i]), b = point(hull[(i + 1) % hull.size()]);
        Real nearest = INFINITY;
        for (const P2& p : points) {
            if (hull.size() > 2) CHECK(cross(b - a, p - a) >= -1e-5L * std::abs(b - a));
            nearest = std::min(nearest, std::abs(p - a));
        }
        CHECK(nearest < 1e-5L);
    }
}

// Compares everything; counts the layers wholly behind, those cut, those edge-on, and the hits.
std::array<int, 4> compareDeck(const std::string& path, P2 window, P2 size, const std::vector<std::string>& options) {
    PlainDeck deck(readFile(path));
    std::vector<std::string> arguments{path, "--all", "--json", "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    for (int i = 0; i < 24; ++i) {
        const Real x = window.real() * static_cast<Real>(i % 6 * 2 + 1) / 12;
        const Real y = window.imag() * static_cast<Real>(i / 6 * 2 + 1) / 8;
        arguments.push_back("--hit=" + std::to_string(x) + "," + std::to_string(y) + (i % 3 == 0 ? ",7.5" : ""));
    }
    const SceneRun run = runScene(arguments);
    // On a busy machine the progress line may show; nothing else may.
    CHECK((run.err.empty() ||
           (run.err.find(" cameras\n") != std::string::npos && run.err.find("error") == std::string::npos)));
    REQUIRE(run.code == 0);
    const Json all = Json::parse(run.out);
    CHECK(all["deck"] == path);
    CHECK((point(all["window"]) == window && point(all["layer"]) == size));
    REQUIRE(all["cameras"].size() == deck.steps.size());
    std::map<std::string, size_t> index;
    for (const Step& step : deck.steps) index.emplace(step.id, index.size());

    std::array<int, 4> tally{};
    for (size_t c = 0; c < deck.steps.size(); ++c) {
        const Json& camera = all["cameras"][c];
        CHECK(camera["id"] == deck.steps[c].id);
        REQUIRE(camera["layers"].size() == deck.steps.size());
        std::vector<PlainView> views;
        std::vector<P2> visible;
        for (size_t i = 0; i < deck.steps.size(); ++i) {
            const Json& layer = camera["layers"][i];
            CAPTURE(deck.steps[c].id, layer.dump());
            const PlainView& view = views.emplace_back(deck, deck.steps[i], deck.steps[c], window, size);
            CHECK(layer["id"] == deck.steps[i].id);
            REQUIRE(layer["outline"].size() == view.outline.size());
            std::array<Real, 4> bounds{INFINITY, INFINITY, -INFINITY, -INFINITY};
            for (size_t k = 0; k < view.outline.size(); ++k) {
                const P2 p = point(layer["outline"][k]);
                CHECK(same(std::abs(p - view.outline[k]), 0, std::abs(p)));
                bounds = {std::min(bounds[0], p.real()), std::min(bounds[1], p.imag()), std::max(bounds[2], p.real()),
                          std::max(bounds[3], p.imag())};
            }
            REQUIRE(layer["bounds"].is_null() == view.outline.empty());
            int behind = 0;
            for (size_t k = 0; k < 4; ++k) {
                if (!view.outline.empty()) CHECK(layer["bounds"][k].get<double>() == bounds[k]);
                CHECK(layer["behind"][k] == view.behind(k));
                behind += view.behind(k) ? 1 : 0;
            }
            CHECK(layer["edgeOn"] == (std::abs(view.facing()) < 1e-3L));
            const std::vector<P2> shown = view.inWindow();
            visible.insert(visible.end(), shown.begin(), shown.end());
            const Real area = PlainView::area(view.outline);
            const Real breadth = area / std::max(bounds[2] - bounds[0], bounds[3] - bounds[1]);
            if (breadth > 2e-6L) CHECK(same(layer["onScreen"].get<double>(), PlainView::area(shown) / area, 10));
            if (!view.outline.empty() && breadth < 0.5e-6L) CHECK(layer["onScreen"].is_null());
            if (view.outline.empty()) CHECK(layer["onScreen"] == 0.0);
            compareParts(layer["decomposition"], view, size);
            tally[0] += behind == 4 ? 1 : 0;
            tally[1] += behind > 0 && behind < 4 ? 1 : 0;
            tally[2] += layer["edgeOn"] ? 1 : 0;
        }
        compareHull(camera["hull"], visible);
        for (const Json& hit : camera["hits"]) {
            compareHit(hit, views, index);
            tally[3] += static_cast<int>(hit["layers"].size());
        }
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

TEST_CASE("scene: whole decks, every layer through every camera") {
    const std::string gallery = ZAN_SCENE_DECKS "/gallery.html";
    for (const std::string& deck : {std::string(ZAN_SCENE_REAL_DECK), gallery}) {
        for (const int seen : compareDeck(deck, {1280, 800}, {1024, 768}, {})) CHECK(seen > 0);
    }
    compareDeck(gallery, {333.5, 701}, {640, 480}, {"--window", "333.5x701", "--layer", "640x480"});
    compareDeck(ZAN_SCENE_DECKS "/zoom.html", {2000, 1500}, {900, 600}, {"--window", "2000x1500"});
    const InFolder folder;
    writeFile("orders.html", kOrders);
    compareDeck("orders.html", {1920, 1080}, {800, 500}, {"--window", "1920x1080"});
    compareDeck("orders.html", {160, 100}, {800, 500}, {"--window", "160x100"});
}

// Worked by hand.
TEST_CASE("scene: what the first camera sees") {
    const InFolder folder;
    writeFile("deck", R"(<div id=impress><p class=step><p class=step data-z=-1000 data-scale=2>
        <p class=step data-z=500 data-rotate-x=90><p class=step id=eye data-z=1000 data-rotate-y=90>
        <p class=step id=wall data-x=10 data-z=-600 data-rotate-y=90></div>)");
    const SceneRun run =
        runScene({"deck", "--json=-", "--hit=600,300", "--hit=-5,-5", "--hit=127,-5,3", "--hit=639,300,10"});
    const Json camera = Json::parse(run.out)["cameras"][0];
    const Json own = {{128.0, 16.0}, {1152.0, 16.0}, {1152.0, 784.0}, {128.0, 784.0}};
    CHECK(camera["layers"][0]["outline"] == own);
    CHECK(camera["layers"][1]["outline"] == own);  // twice as far and twice as large
    // A level plane through the eye's height, from z = 500 - 384 to 500 + 384; one through the eye itself.
    CHECK(camera["layers"][2]["edgeOn"] == true);
    CHECK(camera["layers"][2]["bounds"][0].get<double>() == Approx(640 - 512 / 0.116));
    CHECK(camera["layers"][3]["behind"] == Json({true, false, false, true}));
    CHECK(camera["hits"][0]["layers"] == Json({"step-1", "step-2"}));
    CHECK(camera["hits"][1]["nearest"]["distance"].get<double>() == Approx(std::hypot(133, 21)));
    CHECK(camera["hits"][2]["layers"] == Json::array());
    // The ray misses both upright planes, the wall's behind the eye: each counts with its nearest edge.
    CHECK(camera["hits"][3]["layers"] == Json({"eye", "step-1", "wall", "step-2"}));
    // A layer that fills the window to the last pixel.
    const Json filled = Json::parse(runScene({"deck", "--json=-", "--window=1024x768"}).out)["cameras"][0];
    CHECK(filled["layers"][0]["onScreen"] == 1.0);
    CHECK(filled["hull"] == Json({{0.0, 0.0}, {1024.0, 0.0}, {1024.0, 768.0}, {0.0, 768.0}}));
}

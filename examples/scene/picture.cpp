// The answers as pictures: SVG, and a page that shows them.
#include "picture.h"

#include "text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <iterator>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace scene {
namespace {

using Point = Zan_Vector2T<double>;

constexpr const char* kColours[] = {"#2f6fb0", "#d98a1f", "#3d9a5f", "#7d5bb5", "#a8742a",
                                    "#2a9ba3", "#b85c96", "#5f7f2e", "#5560c8", "#8a6d5c"};
constexpr const char* kCutColour = "#e0202f";
constexpr const char* kStyle =
    "text{font-family:'DejaVu Sans',Verdana,Arial,sans-serif}"
    ".layer polygon{stroke:none;fill-opacity:.06}.hit polygon{fill-opacity:.38}"
    ".layer line{stroke-width:1.5;stroke-linecap:round}.hit line{stroke-width:3}"
    ".layer line.cut{stroke:#e0202f;stroke-width:3;stroke-dasharray:9 6}"
    ".hull{fill:none;stroke:#10141c;stroke-width:2.5;stroke-dasharray:1 7;stroke-linecap:round}"
    ".name{stroke:#fdfcf9;stroke-linejoin:round;paint-order:stroke;text-anchor:middle}"
    ".point text{fill:#10141c}.point path,.point circle{fill:none;stroke:#10141c;stroke-width:2}.point "
    ".halo{stroke:#fdfcf9;stroke-width:5}"
    ".point .tolerance{stroke-dasharray:3 3;stroke-width:1}"
    ".note{fill:#1d2430;font-size:13px}.strip{fill:#fdfcf9;fill-opacity:.85}";

const char* colourOf(size_t layer) { return kColours[layer % std::size(kColours)]; }

/// Text for XML and HTML.
std::string escaped(std::string_view text) {
    std::string safe;
    for (const char c : cleanText(text)) {
        switch (c) {
            case '&':
                safe += "&amp;";
                break;
            case '<':
                safe += "&lt;";
                break;
            case '>':
                safe += "&gt;";
                break;
            case '"':
                safe += "&quot;";
                break;
            default:
                safe += c;
        }
    }
    return safe;
}

std::string number(double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.2f", value);
    return text.data();
}

std::string attribute(const char* name, double value) { return std::string(" ") + name + "=\"" + number(value) + "\""; }

/// A layer close to the near plane extends millions of pixels beyond the window, more than SVG viewers can draw. Clips
/// to a rectangle three times as wide and high as the window, so that the edges of the clip are out of sight.
class DrawingArea {
public:
    explicit DrawingArea(Size window) : rect_{-window.width, -window.height, 2 * window.width, 2 * window.height} {}

    /// The part of an edge to draw; false when there is none.
    [[nodiscard]] bool clip(Point& a, Point& b) const {
        if (a.x != b.x && a.y != b.y) {
            bool visible = false;
            return Zan_ClipLine2Rect(&rect_, &a, &b, &visible) == 0 && visible;
        }
        // The library takes a vertical or horizontal edge that leaves the rectangle as invisible.
        a = {std::clamp(a.x, rect_.left, rect_.right), std::clamp(a.y, rect_.top, rect_.bottom)};
        b = {std::clamp(b.x, rect_.left, rect_.right), std::clamp(b.y, rect_.top, rect_.bottom)};
        return a != b;
    }

    [[nodiscard]] Outline clip(const Outline& outline) const { return clipToRect(outline, rect_); }

private:
    Zan_FloatRect rect_;
};

constexpr double kNoteHeight = 28;

struct Box {
    double left, top, right, bottom;
    [[nodiscard]] bool overlaps(const Box& o) const {
        return left < o.right && o.left < right && top < o.bottom && o.top < bottom;
    }
};

/// Boxes in a grid of cells. A cell holds few of them, since labels are placed where they overlap no other box: a query
/// takes constant time.
class BoxGrid {
public:
    void add(const Box& box) {
        forEachCell(box, [&](Cell cell) {
            cells_[cell].push_back(box);
            return false;
        });
    }
    [[nodiscard]] bool overlaps(const Box& box) const {
        return forEachCell(box, [&](Cell cell) {
            const auto found = cells_.find(cell);
            return found != cells_.end() && std::any_of(found->second.begin(), found->second.end(),
                                                        [&](const Box& other) { return box.overlaps(other); });
        });
    }

private:
    using Cell = std::pair<int64_t, int64_t>;
    struct CellHash {
        size_t operator()(const Cell& cell) const {
            return std::hash<int64_t>()(cell.first * int64_t{0x9E3779B1} ^ cell.second);
        }
    };

    /// Ends at the first cell for which the action returns true.
    template <class Action>
    static bool forEachCell(const Box& box, const Action& action) {
        const auto index = [](double at) { return static_cast<int64_t>(std::floor(at / kCellSize)); };
        for (int64_t x = index(box.left); x <= index(box.right); ++x) {
            for (int64_t y = index(box.top); y <= index(box.bottom); ++y) {
                if (action(Cell{x, y})) return true;
            }
        }
        return false;
    }

    static constexpr double kCellSize = 64;
    std::unordered_map<Cell, std::vector<Box>, CellHash> cells_;
};

/// Places the labels of layers so that they overlap neither each other nor hit points nor the note at the bottom, as
/// far as there is space.
class Labels {
public:
    Labels(Size window, const std::vector<HitAnswer>& hits) : window_(window) {
        for (const HitAnswer& hit : hits) {
            taken_.add({hit.point.x - 13, hit.point.y - 22, hit.point.x + 24, hit.point.y + 13});
        }
    }

    void add(const std::string& label, const char* colour, const Appearance& seen) {
        if (!seen.bounds) return;
        // The label is centred in the part of the bounds that lies in the window.
        const double left = std::max(seen.bounds->left, 0.0);
        const double right = std::min(seen.bounds->right, window_.width);
        const double top = std::max(seen.bounds->top, 0.0);
        const double bottom = std::min(seen.bounds->bottom, window_.height);
        if (!(left <= right && top <= bottom)) return;
        const double size = std::clamp(std::min((right - left) / 7, (bottom - top) / 3), 11.0, 26.0);
        const double halfWidth = size * 0.31 * static_cast<double>(characterCount(label));
        const double x = std::clamp((left + right) / 2, std::min(halfWidth, window_.width / 2),
                                    std::max(window_.width - halfWidth, window_.width / 2));
        // In a window lower than a line of text the upper bound would be below the lower one.
        double y = std::clamp((top + bottom) / 2, size, std::max(size, window_.height - size / 2));
        // Tries places below and above in turn, further away each time. When none is free the label stays where it is.
        for (int attempt = 0; attempt < 40; ++attempt) {
            const int lines = (attempt + 1) / 2;
            const double shifted = y + size * 0.6 * lines * (attempt % 2 == 0 ? 1 : -1);
            const Box box{x - halfWidth, shifted - size * 0.8, x + halfWidth, shifted + size * 0.25};
            if (box.top > 0 && box.bottom < window_.height - kNoteHeight && !taken_.overlaps(box)) {
                taken_.add(box);
                y = shifted;
                break;
            }
        }
        svg_ += std::string("<text class=\"name\" fill=\"") + colour + "\"" + attribute("x", x) + attribute("y", y) +
                attribute("font-size", size) + attribute("stroke-width", size / 7) + ">" + escaped(label) + "</text>\n";
    }
    [[nodiscard]] const std::string& svg() const { return svg_; }

private:
    Size window_;
    BoxGrid taken_;
    std::string svg_;
};

std::string drawLayer(const Layer& layer, size_t index, const Appearance& seen, bool hit, const DrawingArea& area) {
    const char* colour = colourOf(index);
    std::string svg = std::string("<g class=\"layer") + (hit ? " hit" : "") + "\"><title>" + escaped(layer.id) +
                      (seen.edgeOn ? ", edge-on" : "") + "</title>\n<polygon fill=\"" + colour + "\" points=\"";
    for (const Point& p : area.clip(seen.outline)) svg += number(p.x) + "," + number(p.y) + " ";
    svg += "\"/>\n";
    for (size_t i = 0; i < seen.outline.size(); ++i) {
        Point a = seen.outline[i];
        Point b = seen.outline[(i + 1) % seen.outline.size()];
        if (!area.clip(a, b)) continue;
        svg += seen.cut[i] ? "<line class=\"cut\"" : std::string("<line stroke=\"") + colour + "\"";
        svg += attribute("x1", a.x) + attribute("y1", a.y) + attribute("x2", b.x) + attribute("y2", b.y) + "/>\n";
    }
    return svg + "</g>\n";
}

std::string drawPoint(const HitAnswer& hit, size_t index) {
    const std::string cross = "M-13 0H-4M4 0H13M0 -13V-4M0 4V13M-8 0A8 8 0 1 1 8 0A8 8 0 1 1 -8 0";
    std::string svg = "<g class=\"point\" transform=\"translate(" + number(hit.point.x) + " " + number(hit.point.y) +
                      ")\"><path class=\"halo\" d=\"" + cross + "\"/><path d=\"" + cross + "\"/>";
    if (hit.point.tolerance > 0) svg += "<circle class=\"tolerance\"" + attribute("r", hit.point.tolerance) + "/>";
    return svg + "<text class=\"name\" x=\"16\" y=\"-10\" font-size=\"15\" stroke-width=\"3\">" +
           std::to_string(index + 1) + "</text></g>\n";
}

std::string drawHull(const Outline& hull) {
    std::string svg = "<polygon class=\"hull\" points=\"";
    for (const Point& p : hull) svg += number(p.x) + "," + number(p.y) + " ";
    return svg + "\"/>\n";
}

std::string labelOf(const Layer& layer, const Appearance& seen, bool withShare) {
    std::string name = oneLine(layer.id);
    if (!withShare || !seen.share) return name;
    const long percent = std::lround(*seen.share * 100);
    return name + " " + (percent == 0 && *seen.share > 0 ? "<1" : std::to_string(percent)) + "%";
}

std::string drawLegend(const Deck& deck, Size window, const CameraAnswer& answer, bool visible) {
    std::string text = "seen by " + escaped(deck.layers[answer.camera].id);
    if (visible) text += "; dotted: hull of everything visible; percent: share of a layer on screen";
    if (!answer.hits.empty()) text += "; layers under a marked point are filled";
    std::string svg = "<rect class=\"strip\" width=\"100%\"" + attribute("height", kNoteHeight) +
                      attribute("y", window.height - kNoteHeight) + "/>\n<text class=\"note\" x=\"14\"" +
                      attribute("y", window.height - 9) + ">" + text;
    const bool cut = std::any_of(answer.layers.begin(), answer.layers.end(), [](const Appearance& seen) {
        return std::find(seen.cut.begin(), seen.cut.end(), true) != seen.cut.end();
    });
    if (cut) svg += std::string("; <tspan fill=\"") + kCutColour + "\">dashed edges are cut by the near plane</tspan>";
    return svg + "</text>\n";
}

}  // namespace

std::string toSvg(const Deck& deck, Size window, const CameraAnswer& answer, bool visible, const Ticker& tick) {
    std::vector<bool> hit(deck.layers.size(), false);
    for (const HitAnswer& point : answer.hits) {
        for (const size_t i : point.layers) hit[i] = true;
    }
    std::vector<size_t> order(deck.layers.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](size_t a, size_t b) { return answer.layers[a].depth > answer.layers[b].depth; });

    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\"" + attribute("width", window.width) +
                      attribute("height", window.height) + " viewBox=\"0 0 " + number(window.width) + " " +
                      number(window.height) + "\">\n<title>" + escaped(deck.path) + " seen by " +
                      escaped(deck.layers[answer.camera].id) + "</title>\n<style>" + kStyle +
                      "</style>\n<rect width=\"100%\" height=\"100%\" fill=\"#fdfcf9\"/>\n";
    const DrawingArea area(window);
    size_t done = 0;
    const auto count = [&] {
        if (tick) tick(static_cast<double>(++done) / static_cast<double>(2 * order.size()));
    };
    for (const size_t i : order) {
        count();
        if (!answer.layers[i].outline.empty()) {
            svg += drawLayer(deck.layers[i], i, answer.layers[i], hit[i], area);
        }
    }
    if (visible) svg += drawHull(answer.hull);
    Labels labels(window, answer.hits);
    for (auto i = order.rbegin(); i != order.rend(); ++i) {
        count();
        labels.add(labelOf(deck.layers[*i], answer.layers[*i], visible), colourOf(*i), answer.layers[*i]);
    }
    svg += labels.svg();
    for (size_t i = 0; i < answer.hits.size(); ++i) svg += drawPoint(answer.hits[i], i);
    return svg + drawLegend(deck, window, answer, visible) + "</svg>\n";
}

std::string pictureName(const Deck& deck, size_t camera) {
    const size_t digits = std::to_string(deck.layers.size()).size();
    std::string count = std::to_string(camera + 1);
    count.insert(0, digits - count.size(), '0');
    std::string name;
    for (const char c : deck.layers[camera].id.substr(0, 60)) {
        const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-';
        name += plain ? c : '_';
    }
    return count + "-" + name + ".svg";
}

std::string toPage(const Deck& deck, Size window, const std::vector<size_t>& cameras) {
    std::string page = "<!DOCTYPE html>\n<html lang=\"en\">\n<head><meta charset=\"utf-8\"><title>" +
                       escaped(deck.path) +
                       "</title>\n<style>body{margin:2em;font-family:sans-serif;background:#eceae4;color:#1d2430}"
                       "main{display:grid;grid-template-columns:repeat(auto-fill,minmax(min(26em,100%),1fr));gap:1.5em}"
                       "figure{margin:0}img{display:block;width:100%;height:auto;box-shadow:0 1px 4px #0004}"
                       "figcaption{padding:.5em 0}</style></head>\n<body><h1>" +
                       escaped(deck.path) + "</h1>\n<p>" + std::to_string(deck.layers.size()) + " layers, " +
                       std::to_string(cameras.size()) + " cameras, a window of " + number(window.width) + " by " +
                       number(window.height) + ".</p>\n<main>\n";
    for (const size_t camera : cameras) {
        const std::string file = pictureName(deck, camera);
        const std::string id = escaped(deck.layers[camera].id);
        page += "<figure><a href=\"" + file + "\"><img loading=\"lazy\" src=\"" + file + "\" alt=\"The deck seen by " +
                id + "\"></a><figcaption>" + id + "</figcaption></figure>\n";
    }
    return page + "</main></body></html>\n";
}

}  // namespace scene

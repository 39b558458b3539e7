// The answers as a table.
#include "table.h"

#include "mapping.h"
#include "text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace scene {
namespace {

std::string number(double value, const char* format) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

/// A coordinate of the window: two decimals, or scientific notation for large ones.
std::string pixels(double value) { return number(value, std::fabs(value) < 1e6 ? "%.2f" : "%.3e"); }

std::string plain(double value) { return number(value, "%.10g"); }

std::string sized(Size size) { return plain(size.width) + " x " + plain(size.height); }

constexpr size_t kColumns = 10;
using Row = std::array<std::string, kColumns>;

/// The first two columns are left-aligned, the others right-aligned.
void writeRows(std::ostream& out, const std::vector<Row>& rows) {
    std::array<size_t, kColumns> widths{};
    for (const Row& row : rows) {
        for (size_t i = 0; i < kColumns; ++i) widths[i] = std::max(widths[i], characterCount(row[i]));
    }
    for (const Row& row : rows) {
        std::string line;
        for (size_t i = 0; i < kColumns; ++i) {
            const std::string gap(widths[i] - characterCount(row[i]), ' ');
            line += "  " + (i < 2 ? row[i] + gap : gap + row[i]);
        }
        out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
}

enum class Visibility { kInWindow, kOutside, kBehind };

Visibility classify(const Appearance& seen, Size window) {
    if (!seen.bounds) return Visibility::kBehind;
    const bool inside = seen.bounds->left < window.width && seen.bounds->right > 0 &&
                        seen.bounds->top < window.height && seen.bounds->bottom > 0;
    return inside ? Visibility::kInWindow : Visibility::kOutside;
}

Row describe(const Layer& layer, const Appearance& seen, Visibility visibility) {
    constexpr const char* kTexts[] = {"in the window", "outside", "behind"};
    std::string behind;
    for (size_t i = 0; i < seen.behind.size(); ++i) {
        if (seen.behind[i]) behind += std::to_string(i);
    }
    Row row{oneLine(layer.id, 30), kTexts[static_cast<size_t>(visibility)], std::to_string(seen.outline.size())};
    if (seen.bounds) {
        row[3] = pixels(seen.bounds->left), row[4] = pixels(seen.bounds->top);
        row[5] = pixels(seen.bounds->right), row[6] = pixels(seen.bounds->bottom);
    }
    row[7] = seen.share ? number(*seen.share * 100, "%.1f%%") : "-";
    row[8] = behind.empty() ? "-" : behind;
    row[9] = seen.edgeOn ? "yes" : "-";
    return row;
}

}  // namespace

void writeHead(std::ostream& out, const Deck& deck, Size window, Size layerSize, bool layerSizeFromDeck) {
    out << oneLine(deck.path, 1000) << ": " << deck.layers.size()
        << (deck.layers.size() == 1 ? " layer of " : " layers of ") << sized(layerSize)
        << (layerSizeFromDeck ? " (the deck's size)" : " (--layer)") << ", perspective " << plain(deck.perspective)
        << "\nwindow " << sized(window) << ", window scale " << plain(windowScale(deck, window)) << '\n';
}

void writeCamera(std::ostream& out, const Deck& deck, Size window, const CameraAnswer& answer, bool everyLayer) {
    out << "\ncamera " << oneLine(deck.layers[answer.camera].id) << '\n';
    std::vector<Row> rows{
        {"layer", "where", "points", "left", "top", "right", "bottom", "on screen", "corners behind", "edge-on"}};
    size_t outside = 0;
    size_t behind = 0;
    for (size_t i = 0; i < deck.layers.size(); ++i) {
        const Visibility visibility = classify(answer.layers[i], window);
        outside += visibility == Visibility::kOutside ? 1 : 0;
        behind += visibility == Visibility::kBehind ? 1 : 0;
        if (everyLayer || visibility == Visibility::kInWindow)
            rows.push_back(describe(deck.layers[i], answer.layers[i], visibility));
    }
    writeRows(out, rows);
    if (!everyLayer) out << "  outside the window: " << outside << ", behind the near plane: " << behind << '\n';
    for (size_t i = 0; i < answer.hits.size(); ++i) {
        const HitAnswer& hit = answer.hits[i];
        out << "  hit " << i + 1 << " at " << plain(hit.point.x) << ", " << plain(hit.point.y);
        if (hit.point.tolerance > 0) out << " (within " << plain(hit.point.tolerance) << ")";
        out << ": ";
        for (size_t k = 0; k < hit.layers.size(); ++k) {
            out << (k > 0 ? ", " : "") << oneLine(deck.layers[hit.layers[k]].id);
        }
        if (hit.layers.empty()) out << "no layer";
        if (hit.nearest) {
            out << "; nearest outline: " << oneLine(deck.layers[hit.nearest->layer].id) << ", "
                << pixels(hit.nearest->distance) << " away";
        }
        out << '\n';
    }
}

}  // namespace scene

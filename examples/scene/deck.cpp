// Reads a deck: finds the steps in the tree of the page and checks their attributes.
#include "deck.h"

#include "numbers.h"
#include "page.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <set>

namespace scene {
namespace {

const char* find(const GumboElement& element, const char* name) {
    const GumboAttribute* attribute = gumbo_get_attribute(&element.attributes, name);
    return attribute ? attribute->value : nullptr;
}

bool hasClass(const GumboElement& element, std::string_view name) {
    const char* classes = find(element, "class");
    std::string_view rest = classes ? classes : "";
    while (!rest.empty()) {
        const size_t end = std::min(rest.find_first_of(" \t\n\f\r"), rest.size());
        if (rest.substr(0, end) == name) return true;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

/// Visits the elements below a node in document order. Leaves out templates, whose content is not part of the page.
void walk(const GumboNode* top, const std::function<void(const GumboNode&, bool insideStep)>& visit) {
    struct Open {
        const GumboNode* node;
        bool insideStep;
    };
    std::vector<Open> open{{top, false}};
    while (!open.empty()) {
        const Open at = open.back();
        open.pop_back();
        if (at.node->type != GUMBO_NODE_ELEMENT) continue;
        const GumboElement& element = at.node->v.element;
        if (at.node != top) visit(*at.node, at.insideStep);
        const bool inside = at.insideStep || (at.node != top && hasClass(element, "step"));
        for (unsigned i = element.children.length; i-- > 0;) {
            open.push_back({static_cast<const GumboNode*>(element.children.data[i]), inside});
        }
    }
}

std::string describe(const GumboElement& element) {
    std::string name = gumbo_normalized_tagname(element.tag);
    if (element.tag == GUMBO_TAG_UNKNOWN) {
        GumboStringPiece piece = element.original_tag;
        gumbo_tag_from_original_text(&piece);
        name.assign(piece.data ? piece.data : "", piece.length);
    }
    const char* id = find(element, "id");
    const char* classes = find(element, "class");
    const bool named = id && *id;
    std::string text = "<" + oneLine(name);
    if (named || classes) text += " " + (named ? quoted("id", id) : quoted("class", classes));
    return text + ">";
}

/// Reads the attributes of one element and reports errors in them.
class Attributes {
public:
    Attributes(const GumboElement& element, Messages& messages) : element_(element), messages_(messages) {}

    [[nodiscard]] bool has(const char* name) const { return find(element_, name) != nullptr; }

    /// The number in an attribute, or the default when there is no such attribute.
    double number(const char* name, double byDefault) {
        const char* value = find(element_, name);
        if (!value) return byDefault;
        const std::optional<double> number = parseNumber(value);
        if (!number) error(name, "not a number from -1e9 to 1e9");
        return number.value_or(byDefault);
    }
    /// The same for a number that must be at least `smallest`.
    double number(const char* name, double byDefault, double smallest, const char* why) {
        const double value = number(name, byDefault);
        if (value < smallest) error(name, why);
        return value;
    }

    void warning(const char* name, std::string_view assumed) { messages_.warning(place(name), assumed); }
    void error(const char* name, std::string_view why) { messages_.error(place(name), why); }

    [[nodiscard]] Place place(const char* name) const {
        Place place{element_.start_pos.line, describe(element_), ""};
        if (const GumboAttribute* attribute = gumbo_get_attribute(&element_.attributes, name)) {
            place.line = attribute->name_start.line;
            place.attribute = quoted(name, attribute->value);
        }
        return place;
    }

private:
    const GumboElement& element_;
    Messages& messages_;
};

constexpr const char* kRootAttributes[] = {"data-width", "data-height", "data-perspective", "data-min-scale",
                                           "data-max-scale"};
constexpr const char* kStepAttributes[] = {"data-x",        "data-y",        "data-z",
                                           "data-rotate",   "data-rotate-x", "data-rotate-y",
                                           "data-rotate-z", "data-scale",    "data-rotate-order"};

class Reader {
public:
    Reader(std::string_view path, Messages& messages) : messages_(messages) { deck_.path = path; }

    Deck read(const GumboNode* page) {
        const GumboNode* root = nullptr;
        // The first element with the root's id, as a browser finds it.
        walk(page, [&root](const GumboNode& node, bool) {
            const char* id = find(node.v.element, "id");
            if (!root && id && std::string_view(id) == "impress") root = &node;
        });
        if (root) {
            readRoot(root->v.element);
        } else {
            messages_.warning({}, "no element has the id \"impress\"; the whole page is the deck");
            root = page;
        }
        walk(root, [this](const GumboNode& node, bool insideStep) {
            if (hasClass(node.v.element, "step")) readStep(node.v.element, insideStep);
        });
        if (deck_.layers.empty()) messages_.error({}, "no step: no element of the deck has the class \"step\"");
        return std::move(deck_);
    }

private:
    void readRoot(const GumboElement& element) {
        Attributes root(element, messages_);
        deck_.size.width = root.number("data-width", deck_.size.width, kSmallestSize, "a size must be 0.001 or more");
        deck_.size.height =
            root.number("data-height", deck_.size.height, kSmallestSize, "a size must be 0.001 or more");
        deck_.perspective = root.number("data-perspective", deck_.perspective, kSmallestSize,
                                        "must be 0.001 or more: a deck without perspective is not supported");
        deck_.minScale = root.number("data-min-scale", deck_.minScale, 0, "must not be below 0");
        deck_.maxScale = root.number("data-max-scale", deck_.maxScale, 0, "must not be below 0");
        warnAboutUnused(element, kRootAttributes);
    }

    void readStep(const GumboElement& element, bool insideStep) {
        Attributes step(element, messages_);
        if (insideStep) step.error("", "a step inside a step is not supported");
        Layer layer{};
        if (!deck_.layers.empty()) {
            const Layer& before = deck_.layers.back();
            layer.x = before.x, layer.y = before.y, layer.z = before.z;
        }
        layer.x = step.number("data-x", layer.x);
        layer.y = step.number("data-y", layer.y);
        layer.z = step.number("data-z", layer.z);
        layer.rotateX = step.number("data-rotate-x", 0);
        layer.rotateY = step.number("data-rotate-y", 0);
        const double rotate = step.number("data-rotate", 0);
        layer.rotateZ = step.number("data-rotate-z", rotate);
        if (step.has("data-rotate") && layer.rotateZ != rotate) step.warning("data-rotate", "data-rotate-z is used");
        layer.scale = step.number("data-scale", 1, kSmallestScale, "a scale must be 0.00001 or more");
        layer.order = readOrder(step, element);
        checkRelative(step, element);
        warnAboutUnused(element, kStepAttributes);
        layer.id = nameOf(element);
        if (!ids_.insert(layer.id).second) {
            messages_.warning(step.place("id"),
                              "an earlier step has the id \"" + oneLine(layer.id) + "\"; --camera uses that one");
        }
        deck_.layers.push_back(std::move(layer));
    }

    [[nodiscard]] std::string nameOf(const GumboElement& element) const {
        const char* id = find(element, "id");
        return id && *id ? std::string(id) : "step-" + std::to_string(deck_.layers.size() + 1);
    }

    static std::string readOrder(Attributes& step, const GumboElement& element) {
        const char* value = find(element, "data-rotate-order");
        std::string order = value ? value : "xyz";
        std::string letters = order;
        std::sort(letters.begin(), letters.end());
        if (letters != "xyz") step.error("data-rotate-order", "not the letters x, y and z, each once");
        return order;
    }

    /// A relative position is an error, unless there is an absolute one, which the format prefers.
    static void checkRelative(Attributes& step, const GumboElement& element) {
        for (unsigned i = 0; i < element.attributes.length; ++i) {
            const std::string name = static_cast<const GumboAttribute*>(element.attributes.data[i])->name;
            if (name.rfind("data-rel-", 0) != 0) continue;
            const std::string absolute = "data-" + name.substr(9);
            const bool axis = absolute == "data-x" || absolute == "data-y" || absolute == "data-z";
            if (axis && step.has(absolute.c_str())) {
                step.warning(name.c_str(), absolute + " is used");
            } else {
                step.error(name.c_str(), "relative positions are not supported");
            }
        }
    }

    /// Warns about any other data- attribute, once per name, so that misspelt names are noticed.
    template <size_t n>
    void warnAboutUnused(const GumboElement& element, const char* const (&used)[n]) {
        for (unsigned i = 0; i < element.attributes.length; ++i) {
            const std::string name = static_cast<const GumboAttribute*>(element.attributes.data[i])->name;
            if (name.rfind("data-", 0) != 0 || name.rfind("data-rel-", 0) == 0) continue;
            if (std::find(std::begin(used), std::end(used), name) != std::end(used)) continue;
            if (!unused_.insert(name).second) continue;
            messages_.warning(Attributes(element, messages_).place(name.c_str()),
                              "does not place a layer; ignored here and everywhere else");
        }
    }

    Messages& messages_;
    Deck deck_;
    std::set<std::string> ids_;
    std::set<std::string> unused_;
};

}  // namespace

namespace {

/// Stops at the first piece that exceeds the limit on the size of a page; the parser then reports the excess.
std::string readText(std::istream& file, Progress& progress) {
    std::string text;
    std::string piece(size_t{1} << 16, '\0');
    while (text.size() <= kMaxPageBytes && file) {
        file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        text.append(piece, 0, static_cast<size_t>(file.gcount()));
        progress.at("reading", text.size(), kMaxPageBytes);
    }
    return text;
}

Deck parseDeck(const std::string& path, const std::string& text, Messages& messages, Progress& progress) {
    try {
        const Page page(text, progress);
        progress.clear();
        return Reader(path, messages).read(page.root());
    } catch (const PageTooComplex& reason) {
        progress.clear();
        messages.error({}, reason.what());
        return {};
    }
}

}  // namespace

Deck readDeck(const std::string& path, std::ostream& lines, Progress& progress) {
    Messages messages(lines, path);
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    Deck deck;
    if (!std::filesystem::exists(status)) {
        messages.error({}, "no such file");
    } else if (std::filesystem::is_directory(status)) {
        messages.error({}, "a folder; name the page in it, usually index.html");
    } else {
        std::ifstream file(path, std::ios::binary);
        const std::string text = readText(file, progress);
        progress.clear();
        if (!file.is_open() || file.bad()) {
            messages.error({}, "cannot be read");
        } else {
            deck = parseDeck(path, text, messages, progress);
        }
    }
    if (messages.failed()) throw Stop(kBadInput, "");
    return deck;
}

}  // namespace scene

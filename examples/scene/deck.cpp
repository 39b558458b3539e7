// Reads a deck: gumbo parses the page, this picks the steps out of it and checks their attributes.
#include "deck.h"

#include "numbers.h"

#include <gumbo.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <set>

namespace scene {
namespace {

struct FreePage {
    void operator()(GumboOutput* page) const { gumbo_destroy_output(&kGumboDefaultOptions, page); }
};

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

/// Elements below a node in document order, each with whether it stands inside a step. What a template holds is no part
/// of the page. Not recursive: pages may be nested deeper than the stack.
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

/// Reads the attributes of one element and says what is wrong with them.
class Attributes {
public:
    Attributes(const GumboElement& element, Messages& messages) : element_(element), messages_(messages) {}

    [[nodiscard]] bool has(const char* name) const { return find(element_, name) != nullptr; }

    /// The number in an attribute that is there, or the default.
    double number(const char* name, double otherwise) {
        const char* value = find(element_, name);
        if (!value) return otherwise;
        const std::optional<double> number = parseNumber(value);
        if (!number) refuse(name, "not a finite number");
        return number.value_or(otherwise);
    }
    /// The same for what must be at least `lowest`.
    double number(const char* name, double otherwise, double lowest, const char* why) {
        const double value = number(name, otherwise);
        if (!(value >= lowest)) refuse(name, why);
        return value;
    }

    void warn(const char* name, std::string_view assumed) { messages_.warn(place(name), assumed); }
    void refuse(const char* name, std::string_view why) { messages_.refuse(place(name), why); }

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
            messages_.warn({}, "no element has the id \"impress\"; the whole page is taken for the deck");
            root = page;
        }
        walk(root, [this](const GumboNode& node, bool insideStep) {
            if (hasClass(node.v.element, "step")) readStep(node.v.element, insideStep);
        });
        if (deck_.layers.empty()) messages_.refuse({}, "no step: no element of the deck has the class \"step\"");
        return std::move(deck_);
    }

private:
    void readRoot(const GumboElement& element) {
        Attributes root(element, messages_);
        constexpr double kLeast = 1e-9;
        deck_.size.width = root.number("data-width", deck_.size.width, kLeast, "must be above 0");
        deck_.size.height = root.number("data-height", deck_.size.height, kLeast, "must be above 0");
        deck_.perspective = root.number("data-perspective", deck_.perspective, kLeast,
                                        "must be above 0: a deck without perspective is not handled");
        deck_.minScale = root.number("data-min-scale", deck_.minScale, 0, "must not be below 0");
        deck_.maxScale = root.number("data-max-scale", deck_.maxScale, 0, "must not be below 0");
        nameTheUnused(element, kRootAttributes);
    }

    void readStep(const GumboElement& element, bool insideStep) {
        Attributes step(element, messages_);
        if (insideStep) step.refuse("", "a step inside a step is not handled");
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
        if (step.has("data-rotate") && layer.rotateZ != rotate) step.warn("data-rotate", "data-rotate-z is taken");
        layer.scale = step.number("data-scale", 1, kSmallestScale, "a scale must be 0.00001 or more");
        layer.order = readOrder(step, element);
        nameTheRelative(step, element);
        nameTheUnused(element, kStepAttributes);
        layer.id = nameOf(element);
        if (!ids_.insert(layer.id).second) {
            messages_.warn(step.place("id"),
                           "another step has the name \"" + oneLine(layer.id) + "\" already; --camera takes the first");
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
        if (letters != "xyz") step.refuse("data-rotate-order", "not the letters x, y and z, each once");
        return order;
    }

    /// Relative placing is not handled; where the place is given as well, the format itself ignores it.
    static void nameTheRelative(Attributes& step, const GumboElement& element) {
        for (unsigned i = 0; i < element.attributes.length; ++i) {
            const std::string name = static_cast<const GumboAttribute*>(element.attributes.data[i])->name;
            if (name.rfind("data-rel-", 0) != 0) continue;
            const std::string absolute = "data-" + name.substr(9);
            const bool axis = absolute == "data-x" || absolute == "data-y" || absolute == "data-z";
            if (axis && step.has(absolute.c_str())) {
                step.warn(name.c_str(), absolute + " is taken");
            } else {
                step.refuse(name.c_str(), "relative placing is not handled");
            }
        }
    }

    /// Any other data- attribute is named once in a deck, so that a slip of the pen shows.
    template <size_t n>
    void nameTheUnused(const GumboElement& element, const char* const (&used)[n]) {
        for (unsigned i = 0; i < element.attributes.length; ++i) {
            const std::string name = static_cast<const GumboAttribute*>(element.attributes.data[i])->name;
            if (name.rfind("data-", 0) != 0 || name.rfind("data-rel-", 0) == 0) continue;
            if (std::find(std::begin(used), std::end(used), name) != std::end(used)) continue;
            if (!unused_.insert(name).second) continue;
            messages_.warn(Attributes(element, messages_).place(name.c_str()),
                           "places no layer; ignored, here and wherever else it stands");
        }
    }

    Messages& messages_;
    Deck deck_;
    std::set<std::string> ids_;
    std::set<std::string> unused_;
};

}  // namespace

Deck parseDeck(std::string_view path, std::string_view page, Messages& messages) {
    const std::unique_ptr<GumboOutput, FreePage> parsed(
        gumbo_parse_with_options(&kGumboDefaultOptions, page.data(), page.size()));
    return Reader(path, messages).read(parsed->root);
}

Deck readDeck(const std::string& path, std::ostream& lines) {
    Messages messages(lines, path);
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        messages.refuse({}, "no such file");
    } else if (std::filesystem::is_directory(status)) {
        messages.refuse({}, "a folder; name the page in it, as a rule index.html");
    }
    std::ifstream file;
    if (!messages.refused()) file.open(path, std::ios::binary);
    const std::string page{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!messages.refused() && (!file.is_open() || file.bad())) messages.refuse({}, "cannot be read");
    Deck deck;
    if (!messages.refused()) deck = parseDeck(path, page, messages);
    if (messages.refused()) throw Stop(kBadInput, "");
    return deck;
}

}  // namespace scene

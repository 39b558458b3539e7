// Parses a page with gumbo, within limits.
#include "page.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <csetjmp>
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <new>
#include <string>
#include <utility>

namespace scene {
namespace {

/// Gives out memory that is freed all at once. Gumbo's own destructor recurses once per level of the tree.
class Arena {
public:
    Arena() = default;
    ~Arena() {
        while (chunks_ != nullptr) std::free(std::exchange(chunks_, chunks_->next));
    }
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    /// Zeroed memory, aligned for every type; null when there is none.
    void* allocate(size_t bytes) noexcept {
        bytes = (bytes + sizeof(Chunk) - 1) / sizeof(Chunk) * sizeof(Chunk);
        if (bytes > kChunkBytes / 4) return addChunk(bytes);
        if (bytes > left_) {
            next_ = static_cast<std::byte*>(addChunk(kChunkBytes));
            left_ = next_ != nullptr ? kChunkBytes : 0;
            if (next_ == nullptr) return nullptr;
        }
        left_ -= bytes;
        return std::exchange(next_, next_ + bytes);
    }
    [[nodiscard]] size_t bytes() const { return bytes_; }

private:
    struct alignas(std::max_align_t) Chunk {
        Chunk* next;
    };
    static constexpr size_t kChunkBytes = size_t{256} << 10;

    void* addChunk(size_t bytes) noexcept {
        auto* chunk = static_cast<Chunk*>(std::calloc(1, sizeof(Chunk) + bytes));
        if (chunk == nullptr) return nullptr;
        chunk->next = std::exchange(chunks_, chunk);
        bytes_ += bytes;
        return chunk + 1;
    }

    Chunk* chunks_ = nullptr;
    std::byte* next_ = nullptr;
    size_t left_ = 0;
    size_t bytes_ = 0;
};

bool isLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r'; }

bool startsWithName(std::string_view text, std::string_view name) {
    return text.size() >= name.size() && std::equal(name.begin(), name.end(), text.begin(), [](char a, char b) {
               return a == std::tolower(static_cast<unsigned char>(b));
           });
}

/// Finds tags with too many attributes before gumbo spends quadratic time on them. Reads the text as HTML's tokenizer
/// does, as far as it takes to tell tags from comments and from the text of scripts and the like.
class TagScanner {
public:
    explicit TagScanner(std::string_view text) : text_(text) {}

    /// The largest number of attributes in one tag.
    size_t maxAttributes() {
        size_t most = 0;
        while ((at_ = text_.find('<', at_)) < text_.size()) {
            ++at_;
            if (rest().substr(0, 3) == "!--") {
                skipPast("-->");
            } else if (at_ < text_.size() && isLetter(text_[at_])) {
                const std::string_view name = rest();
                most = std::max(most, readTag());
                for (const std::string_view raw : kRawText) {
                    if (startsWithName(name, raw) && !isNameCharacter(name, raw.size())) skipRawText(raw);
                }
            }
        }
        return most;
    }

private:
    static constexpr std::array<std::string_view, 8> kRawText = {"script", "style",  "textarea", "title",
                                                                 "xmp",    "iframe", "noembed",  "noframes"};

    static bool isNameCharacter(std::string_view text, size_t i) {
        return i < text.size() && !isBlank(text[i]) && text[i] != '/' && text[i] != '>';
    }
    [[nodiscard]] std::string_view rest() const { return text_.substr(std::min(at_, text_.size())); }

    void skipPast(std::string_view end) {
        const size_t found = text_.find(end, at_);
        at_ = found < text_.size() ? found + end.size() : text_.size();
    }
    void skipRawText(std::string_view name) {
        while ((at_ = text_.find("</", at_)) < text_.size()) {
            if (startsWithName(rest().substr(2), name)) return;
            at_ += 2;
        }
    }
    /// Reads to the end of the tag.
    size_t readTag() {
        size_t attributes = 0;
        bool inName = true;  // of the element, then of attributes
        for (; at_ < text_.size() && text_[at_] != '>'; ++at_) {
            const char c = text_[at_];
            if (isBlank(c) || c == '/') {
                inName = false;
            } else if (c == '=') {
                readValue();
                inName = false;
            } else if (!inName) {
                inName = true;
                ++attributes;
            }
        }
        return attributes;
    }
    /// Reads to the last character of an attribute's value.
    void readValue() {
        while (at_ + 1 < text_.size() && isBlank(text_[at_ + 1])) ++at_;
        if (at_ + 1 >= text_.size()) return;
        const char quote = text_[at_ + 1];
        if (quote == '"' || quote == '\'') {
            at_ = std::min(text_.find(quote, at_ + 2), text_.size() - 1);
            return;
        }
        while (at_ + 1 < text_.size() && !isBlank(text_[at_ + 1]) && text_[at_ + 1] != '>') ++at_;
    }

    std::string_view text_;
    size_t at_ = 0;
};

constexpr const char* kTooManyAttributes = "an element has more than 1000 attributes";

double processorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

const GumboVector* childrenOf(const GumboNode& node) {
    switch (node.type) {
        case GUMBO_NODE_DOCUMENT:
            return &node.v.document.children;
        case GUMBO_NODE_ELEMENT:
        case GUMBO_NODE_TEMPLATE:
            return &node.v.element.children;
        default:
            return nullptr;
    }
}

bool isElement(const GumboNode& node) { return node.type == GUMBO_NODE_ELEMENT || node.type == GUMBO_NODE_TEMPLATE; }

}  // namespace

/// One run of gumbo. Every limit is checked where gumbo asks for memory, which it does for every element. A run that
/// exceeds one is left by longjmp: gumbo has no way to report failure, its frames are plain C, and the arena frees what
/// they held.
class Page::Parser {
public:
    Parser(std::string_view text, Progress& progress) : text_(text), progress_(progress) {}

    const GumboNode* run() {
        if (text_.size() > kMaxPageBytes) throw PageTooComplex("larger than 64 MiB");
        if (TagScanner(text_).maxAttributes() > kMaxAttributes) {
            throw PageTooComplex(kTooManyAttributes);
        }
        start_ = processorSeconds();
        const GumboNode* root = parse();
        if (root != nullptr) return root;
        if (failure_ == nullptr) throw std::bad_alloc();
        throw PageTooComplex(failure_);
    }

private:
    /// No object with a destructor may live here or in allocate() when longjmp leaves them.
    const GumboNode* parse() {
        GumboOptions options = kGumboDefaultOptions;
        options.max_errors = 0;  // each would hold a copy of the stack of open elements
        options.userdata = this;
        options.allocator = [](void* parser, size_t bytes) { return static_cast<Parser*>(parser)->allocate(bytes); };
        options.deallocator = [](void*, void*) {};
        // NOLINTNEXTLINE(cert-err52-cpp,modernize-avoid-setjmp-longjmp): see above
        if (setjmp(leave_) != 0) return nullptr;
        return gumbo_parse_with_options(&options, text_.data(), text_.size())->root;
    }

    void* allocate(size_t bytes) noexcept {
        const bool check = ++allocations_ % kAllocationsPerCheck == 0;
        if (check || bytes > kMaxParserBytes) failure_ = exceededLimit(bytes);
        void* memory = failure_ == nullptr ? arena_.allocate(bytes) : nullptr;
        // NOLINTNEXTLINE(cert-err52-cpp,modernize-avoid-setjmp-longjmp): see above
        if (memory == nullptr) longjmp(leave_, 1);
        // Gumbo allocates its result first. The tree can be read through it while it grows.
        if (result_ == nullptr && bytes == sizeof(GumboOutput)) result_ = static_cast<const GumboOutput*>(memory);
        return memory;
    }

    /// The message for the limit that is exceeded; null when no limit is.
    const char* exceededLimit(size_t bytes) noexcept {
        if (bytes > kMaxParserBytes || arena_.bytes() > kMaxParserBytes) return "its tree needs more than 1 GiB";
        const double seconds = kMaxParserSeconds + kMaxParserSecondsPerByte * static_cast<double>(text_.size());
        if (processorSeconds() - start_ > seconds) return "it takes too long to parse";
        return result_ != nullptr && result_->document != nullptr ? checkOpenElements() : nullptr;
    }

    /// Walks from the document to the element that was opened last: from last child to last child. What does not belong
    /// into an open table is inserted before the table, so at a table the walk follows the sibling before it as well.
    const char* checkOpenElements() noexcept {
        struct Step {
            const GumboNode* node;
            size_t depth;
        };
        std::array<Step, 2 * kMaxElementDepth> open{};
        size_t count = 0;
        open[count++] = {result_->document, 0};
        size_t offset = 0;
        for (size_t visits = 0; count > 0 && visits < 2 * kMaxElementDepth; ++visits) {
            const Step at = open[--count];
            if (at.depth > kMaxElementDepth) return "elements are nested deeper than 512";
            if (isElement(*at.node)) {
                const GumboElement& element = at.node->v.element;
                if (element.attributes.length > kMaxAttributes) return kTooManyAttributes;
                offset = std::max<size_t>(offset, element.start_pos.offset);
            }
            const GumboVector* children = childrenOf(*at.node);
            if (children == nullptr) continue;
            // Looks at the last four children only: comments may follow the element, and there may be any number of
            // them.
            const unsigned last = children->length;
            for (unsigned i = last; i-- > 0 && last - i <= 4;) {
                const auto* child = static_cast<const GumboNode*>(children->data[i]);
                if (!isElement(*child) || count == open.size()) continue;
                open[count++] = {child, at.depth + 1};
                if (child->v.element.tag != GUMBO_TAG_TABLE) break;
            }
        }
        progress_.at("parsing", offset, text_.size());
        return nullptr;
    }

    static constexpr size_t kAllocationsPerCheck = 64;

    std::string_view text_;
    Progress& progress_;
    Arena arena_;
    std::jmp_buf leave_{};
    const char* failure_ = nullptr;
    const GumboOutput* result_ = nullptr;
    size_t allocations_ = 0;
    double start_ = 0;
};

Page::Page(std::string_view text, Progress& progress)
    : parser_(std::make_unique<Parser>(text, progress)), root_(parser_->run()) {}

Page::~Page() = default;

}  // namespace scene

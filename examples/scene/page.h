// Parses a page with gumbo, within limits on size, depth, attributes, memory and time.
#ifndef ZAN_SCENE_PAGE_H
#define ZAN_SCENE_PAGE_H

#include "progress.h"

#include <gumbo.h>

#include <memory>
#include <stdexcept>
#include <string_view>

namespace scene {

/// Gumbo walks the stack of open elements for many tags and compares each attribute of an element with all before it,
/// so that its time is quadratic in both. The limits keep it linear in the size of the page.
inline constexpr size_t kMaxPageBytes = size_t{64} << 20;
inline constexpr size_t kMaxElementDepth = 512;
inline constexpr size_t kMaxAttributes = 1000;  ///< of one element
inline constexpr size_t kMaxParserBytes = size_t{1} << 30;
inline constexpr double kMaxParserSeconds = 10;  ///< processor time, plus:
inline constexpr double kMaxParserSecondsPerByte = 1e-6;

/// The page exceeds a limit; what() says which.
class PageTooComplex : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The tree of a page. It refers to the text, which must outlive it.
class Page {
public:
    /// @throws PageTooComplex; std::bad_alloc
    Page(std::string_view text, Progress& progress);
    ~Page();
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    /// The `html` element.
    [[nodiscard]] const GumboNode* root() const { return root_; }

private:
    class Parser;
    std::unique_ptr<Parser> parser_;  ///< owns the memory of the tree
    const GumboNode* root_;
};

}  // namespace scene

#endif  // ZAN_SCENE_PAGE_H

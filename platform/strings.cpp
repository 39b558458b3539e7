// Message texts: the translation from the host's catalogue, or the English text of the module's table.
#include "platform/handler.h"
#include "zan/platform/bel.h"

#include <cstring>
#include <string_view>

namespace {

// The layout of a module's table, as in Zan_MessageTable. The cache fields are not used.
struct Entry {
    const char* key;
    void* cache[3];
};
struct Table {
    const char* module;
    uintptr_t entryCount;  // the messages and a terminator
    const Entry* entries;
    void* reserved;
};

zan_platform::Handler<Bel_Catalogue> catalogue;

// Removes the start of a printf format up to the end of its next conversion and returns the conversion, from the '%' to
// the letter; empty if there is none. Skips "%%", which reads no argument. A '%' without a letter returns the rest of
// the text, which never equals a conversion of an English text.
std::string_view takeConversion(std::string_view& text) {
    for (size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 2)) {
        if (text.substr(at, 2) == "%%") continue;
        const size_t letter = text.find_first_not_of("-+ #0123456789.*$'hlLjztqwI", at + 1);
        const size_t end = letter < text.size() ? letter + 1 : text.size();
        const std::string_view conversion = text.substr(at, end - at);
        text.remove_prefix(end);
        return conversion;
    }
    return {};
}

// True if two printf formats have the same conversions in the same order, so that they read the same arguments.
bool sameConversions(std::string_view a, std::string_view b) {
    for (;;) {
        const std::string_view next = takeConversion(a);
        if (next != takeConversion(b)) return false;
        if (next.empty()) return true;
    }
}

}  // namespace

void Bel_SetCatalogue(Bel_Catalogue function, void* context) { catalogue.set(function, context); }

const char* Bel_ZLookupLStrCache(const void* zref, int32_t index, int32_t /*zero1*/, int32_t /*zero2*/) {
    const auto* table = static_cast<const Table*>(zref);
    if (index < 0 || static_cast<uintptr_t>(index) + 1 >= table->entryCount) return "";
    const char* keyAndText = table->entries[index].key;
    const char* equals = std::strchr(keyAndText, '=');
    if (equals == nullptr) return "";
    const char* english = equals + 1;

    const auto installed = catalogue.get();
    if (installed.function == nullptr) return english;
    char key[64];  // on the stack: a report of a failed allocation must not allocate
    const auto length = static_cast<size_t>(equals - keyAndText);
    if (length >= sizeof key) return english;
    std::memcpy(key, keyAndText, length);
    key[length] = '\0';
    const char* text = installed.function(installed.context, table->module, key);
    return text != nullptr && sameConversions(text, english) ? text : english;
}

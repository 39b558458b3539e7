// Message texts: the English of a module's table, or what the host's catalogue has for the key.
#include "platform/bel.h"
#include "platform/handler.h"

#include <cstring>
#include <string>

namespace {

// The layout in which a module hands over its table. The cache fields are not used: nothing here is worth caching.
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

// The conversions of a printf text, in order: "%s" gives "s", "%-5d and %s" gives "ds". "%%" takes no argument.
std::string conversions(const char* text) {
    std::string found;
    while ((text = std::strchr(text, '%')) != nullptr) {
        ++text;
        if (*text == '%') {
            ++text;
            continue;
        }
        text += std::strspn(text, "-+ #0123456789.");
        found += *text;  // a text that ends in '%' gives a '\0', which no English text has
        if (*text == '\0') break;
    }
    return found;
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
    const std::string key(keyAndText, equals);
    const char* text = installed.function(installed.context, table->module, key.c_str());
    if (text == nullptr || conversions(text) != conversions(english)) return english;
    return text;
}

// The message table in the layout that the host's string service reads, and the lookup of a text.
#include "frame/messages.h"

#include "zan/frame.h"
#include "zan/platform/bel.h"

#include <array>
#include <iterator>
#include <string_view>

namespace {

constexpr std::string_view kKeyPrefix = "$$$/Ko/Zan/LStr/";

// Builds a table key: "$$$/Ko/Zan/LStr/", four digits, "=", the English text.
template <size_t TextSize>
constexpr auto makeKey(int index, const char (&text)[TextSize]) {
    std::array<char, kKeyPrefix.size() + 5 + TextSize> key{};
    size_t at = 0;
    for (const char c : kKeyPrefix) key[at++] = c;
    for (int unit = 1000; unit != 0; unit /= 10) key[at++] = static_cast<char>('0' + index / unit % 10);
    key[at++] = '=';
    for (const char c : text) key[at++] = c;
    return key;
}

#define ZAN_MESSAGE(index, name, text) constexpr auto key##name = makeKey(index, text);
#include "frame/messages.def"
#undef ZAN_MESSAGE

constinit Zan_MessageEntry entries[] = {
#define ZAN_MESSAGE(index, name, text) {key##name.data(), 0, 0, 0},
#include "frame/messages.def"
#undef ZAN_MESSAGE
    {nullptr, UINTPTR_MAX, UINTPTR_MAX, 0},
};

// Messages are looked up by their position, so messages.def must list the indexes in order.
constexpr int kIndexes[] = {
#define ZAN_MESSAGE(index, name, text) index,
#include "frame/messages.def"
#undef ZAN_MESSAGE
};
constexpr bool indexesInOrder() {
    for (size_t i = 0; i < std::size(kIndexes); ++i) {
        if (kIndexes[i] != static_cast<int>(i)) return false;
    }
    return true;
}
static_assert(indexesInOrder());
static_assert(std::size(entries) == std::size(kIndexes) + 1);  // the terminator

constinit Zan_MessageTable table = {"Zan", std::size(entries), entries, 0};

}  // namespace

const void* const Zan_G_zref = &table;

const char* zan::messageText(Message message) {
    return Bel_ZLookupLStrCache(Zan_G_zref, static_cast<int16_t>(message), 0, 0);
}

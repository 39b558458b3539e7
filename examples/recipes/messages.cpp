// Prints the table of the library's texts and their keys, from the message table that a host's string service reads.
#include <zan/zan.h>

#include <cstdio>
#include <string_view>

int main() {
    const auto* table = static_cast<const Zan_MessageTable*>(Zan_G_zref);
    std::puts("| Key | English text |\n|---|---|");
    for (uintptr_t i = 0; table->entries[i].key != nullptr; ++i) {
        const std::string_view key = table->entries[i].key;
        const size_t slash = key.rfind('/', key.find('='));
        const size_t equals = key.find('=');
        std::printf("| %.*s | %s |\n", static_cast<int>(equals - slash - 1), key.data() + slash + 1,
                    key.data() + equals + 1);
    }
}

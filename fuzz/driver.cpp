// Checks properties on the cases of the corpus and on seeded ones, or on those that libFuzzer makes. Nothing may be
// reported meanwhile.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "choices.h"
#include "tests/host_reports.h"

namespace {

bool check(const Property& property, Choices choices) {
    HostReports host;
    const bool kind = property.check(choices);
    must(host.takeAll().empty());
    return kind;
}

}  // namespace

#ifdef ZAN_FUZZER

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::string name = std::getenv("ZAN_PROPERTY");
    const Property* property = Property::first;
    while (property->name != name) property = property->next;
    static const uint8_t none = 0;
    check(*property, {size == 0 ? &none : data, size});
    return 0;
}

#else

// zan_properties [NAME]: all whose name begins so; the program fails where there is none.
int main(int argc, char** argv) {
    const std::string wanted = argc > 1 ? argv[1] : "";
    int32_t checked = 0;
    for (const Property* p = Property::first; p != nullptr; p = p->next) {
        if (std::string(p->name).compare(0, wanted.size(), wanted) != 0) continue;
        std::string place = "its corpus";
        int32_t ofTheOneKind = 0;
        try {
            for (const auto& file : std::filesystem::directory_iterator(std::string(ZAN_CORPUS "/") + p->name)) {
                place = file.path().string();
                std::ifstream stream(file.path(), std::ios::binary);
                const std::string bytes(std::istreambuf_iterator<char>(stream), {});
                check(*p, {reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()});
            }
            for (int32_t seed = 0; seed < p->rounds; ++seed) {
                place = "seed " + std::to_string(seed);
                ofTheOneKind += check(*p, Choices(static_cast<uint64_t>(seed)));
            }
            place = std::to_string(ofTheOneKind) + " of the one kind";
            must(std::min(ofTheOneKind, p->rounds - ofTheOneKind) >= p->rounds / 10);
        } catch (...) {
            std::fprintf(stderr, "%s: %s\n", p->name, place.c_str());
            return 1;
        }
        ++checked;
        std::printf("%-24s %6d seeds, %d of the one kind\n", p->name, p->rounds, ofTheOneKind);
    }
    return checked > 0 ? 0 : 2;
}

#endif

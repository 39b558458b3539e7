// Checks properties on the cases of the corpus and on seeded ones, or on those that libFuzzer makes. Nothing may be
// reported meanwhile.
#include "property.h"
#include "tests/support/host_reports.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

static bool check(const Property& property, Choices choices) {
    HostReports host;
    const bool kind = property.check(choices);
    must(host.takeAll().empty());
    return kind;
}

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
    std::string place = "no such property";
    try {
        for (const Property* p = Property::first; p != nullptr; p = p->next) {
            if (argc > 1 && std::string(p->name).find(argv[1]) != 0) continue;
            for (const auto& file : std::filesystem::directory_iterator(ZAN_CORPUS / std::filesystem::path(p->name))) {
                place = file.path().string();
                std::ifstream stream(file.path(), std::ios::binary);
                const std::string bytes(std::istreambuf_iterator<char>(stream), {});
                check(*p, {reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()});
            }
            int32_t ofTheOneKind = 0;
            for (int32_t seed = 0; seed < p->rounds; ++seed) {
                place = std::string(p->name) + ", seed " + std::to_string(seed);
                ofTheOneKind += check(*p, Choices(static_cast<uint64_t>(seed)));
            }
            std::printf("%-24s %6d seeds, %d of the one kind\n", p->name, p->rounds, ofTheOneKind);
            must(std::min(ofTheOneKind, p->rounds - ofTheOneKind) >= p->rounds / 20);
            place.clear();
        }
    } catch (const std::string& line) {
        place += ": this does not hold: " + line;
    }
    std::fprintf(stderr, "%s\n", place.c_str());
    return place.empty() ? 0 : 1;
}

#endif

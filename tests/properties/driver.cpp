// Runs properties: on the files of their corpus and on seeded cases, or on the cases that libFuzzer generates. No case
// may report an error that the property does not expect.
#include "property.h"
#include "tests/support/host_reports.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

// Returns whether the case is in the first of the property's two classes (property.h).
static bool check(const Property& property, Choices choices) {
    HostReports host;
    const bool inFirstClass = property.check(choices);
    must(host.takeAll().empty());
    return inFirstClass;
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

// zan_properties [PREFIX]: runs the properties whose name begins with PREFIX, or all. Fails if there is none.
int main(int argc, char** argv) {
    const std::string prefix = argc > 1 ? argv[1] : "";
    bool found = false;
    std::string where;
    try {
        for (const Property* p = Property::first; p != nullptr; p = p->next) {
            const std::string name = p->name;
            if (name.compare(0, prefix.size(), prefix) != 0) continue;
            found = true;
            for (const auto& file : std::filesystem::directory_iterator(std::filesystem::path(ZAN_CORPUS) / name)) {
                where = file.path().string();
                std::ifstream stream(file.path(), std::ios::binary);
                const std::string bytes(std::istreambuf_iterator<char>(stream), {});
                check(*p, {reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()});
            }
            int32_t inFirstClass = 0;
            for (int32_t seed = 0; seed < p->seeds; ++seed) {
                where = name + ", seed " + std::to_string(seed);
                inFirstClass += check(*p, Choices(static_cast<uint64_t>(seed)));
            }
            std::printf("%-24s %6d seeds, %d of them in the first of the property's two classes\n", p->name, p->seeds,
                        inFirstClass);
            where = name + ", how many seeds are in each of its two classes";
            must(std::min(inFirstClass, p->seeds - inFirstClass) >= p->seeds / 20);
        }
    } catch (const std::string& place) {
        std::fprintf(stderr, "%s: the condition at %s does not hold\n", where.c_str(), place.c_str());
        return 1;
    }
    if (!found) std::fprintf(stderr, "no property has a name that begins with %s\n", prefix.c_str());
    return found ? 0 : 1;
}

#endif

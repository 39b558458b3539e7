// Lookup tables beside the arithmetic that they replace: one lookup, and 256 from the prepare to the unprepare call.
#include "entries.h"
#include "zan/scalar.h"

namespace zan_bench {
namespace {

struct BytePair {
    uint8_t a, b;
};

float sineByHand(uint8_t step) { return static_cast<float>(std::sin(step / 255.0 * 1.5707963267948966)); }

/// 256 table lookups between the prepare and the unprepare call, as a host makes them.
float sumByTable(const uint8_t* steps) {
    bool ok = false;
    float* sines = nullptr;
    float sum = 0;
    if (Zan_PrepareFTrig(true, false, &ok, &sines) != 0 || !ok) return -1;
    for (int i = 0; i < 256; ++i) sum += sines[steps[i]];
    Zan_UnprepareFTrig();
    return sum;
}
float sumByHand(const uint8_t* steps) {
    float sum = 0;
    for (int i = 0; i < 256; ++i) sum += sineByHand(steps[i]);
    return sum;
}

}  // namespace

void addScalarTables() {
    static const auto pairs = inputs(kInputs, 1, [](Random& random) {
        return BytePair{static_cast<uint8_t>(random.bits()), static_cast<uint8_t>(random.bits())};
    });
    static const auto steps = inputs(kInputs, 2, [](Random& random) { return static_cast<uint8_t>(random.bits()); });
    bool ok = false;
    uint8_t *products = nullptr, *quotients = nullptr;
    float* sines = nullptr;
    // Kept prepared until the program ends.
    if (Zan_PrepareFCMD(true, false, &ok, &products, &quotients) != 0 || !ok) return;
    if (Zan_PrepareFTrig(true, false, &ok, &sines) != 0 || !ok) return;

    const BytePair* p = pairs.data();
    const uint8_t* s = steps.data();
    Entry("table: 8-bit product", kInputs, [=](size_t i) {
        return products[p[i].a * 256 + p[i].b];
    }).peer("multiply and divide", [=](size_t i) { return static_cast<uint8_t>((p[i].a * p[i].b + 127) / 255); });
    Entry("table: 8-bit quotient", kInputs, [=](size_t i) {
        return quotients[p[i].a * 256 + p[i].b];
    }).peer("divide", [=](size_t i) {
        const unsigned a = p[i].a, b = p[i].b;
        return b >= a ? uint8_t{255} : static_cast<uint8_t>((b * 255 + a / 2) / a);
    });
    Entry("table: sine", kInputs, [=](size_t i) { return sines[s[i]]; }).peer("std::sin", [=](size_t i) {
        return sineByHand(s[i]);
    });
    Entry("table: 256 sines, prepare to unprepare", kInputs / 256, [=](size_t i) {
        return sumByTable(s + i * 256);
    }).peer("std::sin", [=](size_t i) { return sumByHand(s + i * 256); });
}

}  // namespace zan_bench

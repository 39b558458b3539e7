// Prints what each function that C can call answers to arguments from a seed, a line for each call. bindings.test.js
// makes the same calls in JavaScript. Numbers in double precision are printed as their bits.
#include "zan/platform/bel.h"
#include "zan/zan.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

constexpr uint32_t kCalls = 300;

uint32_t call;
uint32_t state;
bool quiet;
uint32_t reported;

uint32_t draw() {
    state = state * 1664525 + 1013904223;
    return state ^ (state >> 16);
}

// Zeros in the first call, the same number everywhere in every tenth one, else by call % 3 a few values that coincide,
// small ones, or numbers of any size.
template <class T>
T make() {
    const uint32_t bits = call % 10 == 1 ? call * 2654435761 : draw();
    if (call == 0) return T{};
    if constexpr (sizeof(T) == 1) return static_cast<T>(bits & (std::is_same_v<T, bool> ? 1 : 3));
    const int32_t any = static_cast<int32_t>(bits) >> (call % 23);
    const auto small = static_cast<int32_t>(call % 3 == 0 ? bits % 5 : bits % 33) - 2;
    if constexpr (std::is_floating_point_v<T>)
        return call % 3 == 2 ? any / (call % 2 == 0 ? 65536.0 : 0.25) : small / 2.0;
    return static_cast<T>(call % 3 == 2 ? any : small);
}

void show(bool value) { std::printf(" %d", value); }
void show(uint8_t value) { std::printf(" %d", value); }
void show(int16_t value) { std::printf(" %d", value); }
void show(int32_t value) { std::printf(" %d", value); }
void show(uint32_t value) { std::printf(" %u", value); }
void show(int64_t value) { std::printf(" %lld", value); }
void show(double value) {
    uint64_t bits = 0x7FF8000000000000;
    if (value == value) std::memcpy(&bits, &value, sizeof bits);
    std::printf(" %016llx", bits);
}

bool failed(int32_t code) {
    if (reported == 0 && (code == 0 || quiet)) return false;
    std::printf(" error %u %d", reported, code);
    return true;
}

template <class Function>
void answer(const char* name, bool isQuiet, Function function) {
    quiet = isQuiet;
    for (call = 0; call < kCalls; ++call) {
        state = call;
        reported = 0;
        std::printf("%s", name);
        function();
        std::printf("\n");
    }
}

#include "answers.inc"

}  // namespace

int main() {
    Bel_SetReportHandler([](void*, const Bel_Report* report) { reported = report->errorNumber; }, nullptr);
    answerAll();
}

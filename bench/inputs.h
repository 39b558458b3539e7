// The inputs that zan and its peers share: from fixed seeds, the same in every run, and so many that the branch
// predictor cannot learn them.
#ifndef ZAN_BENCH_INPUTS_H
#define ZAN_BENCH_INPUTS_H

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace zan_bench {

/// Inputs of an entry.
inline constexpr size_t kMany = 4096;
/// Inputs of an entry where each is a matrix or larger: all of them fit into a second-level cache.
inline constexpr size_t kManyLarge = 1024;
/// Points of a long array.
inline constexpr int32_t kPoints = 1000;

/// Numbers from a seed, the same with every standard library.
class Random {
public:
    explicit Random(uint32_t seed) : engine_(seed) {}

    uint32_t bits() { return static_cast<uint32_t>(engine_()); }
    /// Uniform in [low, high).
    double real(double low, double high) { return low + (high - low) * (bits() * 0x1p-32); }
    /// Uniform in low ... high, the ends included.
    int32_t whole(int32_t low, int32_t high) {
        const uint64_t span = static_cast<uint64_t>(static_cast<int64_t>(high) - low) + 1;
        return static_cast<int32_t>(low + static_cast<int64_t>(bits() % span));
    }
    /// Any sign, and as many bits as chance says: small numbers are as frequent as large ones.
    int32_t anyWidth() { return static_cast<int32_t>(bits()) >> whole(0, 31); }

private:
    std::mt19937 engine_;
};

/// count values that make(Random&) gives.
template <class Make>
auto inputs(size_t count, uint32_t seed, Make make) {
    Random random(seed);
    std::vector<decltype(make(random))> values;
    values.reserve(count);
    for (size_t i = 0; i < count; ++i) values.push_back(make(random));
    return values;
}

}  // namespace zan_bench

#endif  // ZAN_BENCH_INPUTS_H

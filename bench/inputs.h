// The random inputs that zan and its peers share: from fixed seeds, the same in every run; too many for the branch
// predictor to learn where branches depend on them.
#ifndef ZAN_BENCH_INPUTS_H
#define ZAN_BENCH_INPUTS_H

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace zan_bench {

/// Inputs of an entry.
inline constexpr size_t kInputs = 4096;
/// Inputs of an entry with branches that depend on their values: the branch predictor learns 4,096 of these.
inline constexpr size_t kManyInputs = 65536;
/// Points of a long array.
inline constexpr size_t kPoints = 4096;

/// Numbers from a seed, the same with every standard library.
class Random {
public:
    explicit Random(uint32_t seed) : engine_(seed) {}

    uint32_t bits() { return static_cast<uint32_t>(engine_()); }
    /// Uniform in [low, high).
    double real(double low, double high) { return low + (high - low) * (bits() * 0x1p-32); }
    /// Uniform in [low, high].
    int32_t integer(int32_t low, int32_t high) {
        const uint64_t span = static_cast<uint64_t>(static_cast<int64_t>(high) - low) + 1;
        return static_cast<int32_t>(low + static_cast<int64_t>(bits() % span));
    }
    /// Any sign, with a uniform number of significant bits: small magnitudes are as frequent as large ones.
    int32_t anyMagnitude() { return static_cast<int32_t>(bits()) >> integer(0, 31); }

private:
    std::mt19937 engine_;
};

/// The name of an entry that holds a count: "hull of 10,000 points".
inline std::string nameWithCount(const char* before, size_t count, const char* after) {
    std::string digits = std::to_string(count);
    for (size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, 1, ',');
    std::string name = before;
    name += digits;
    name += after;
    return name;
}

/// count values of make(Random&).
template <class Make>
auto inputs(size_t count, uint32_t seed, Make make) {
    Random random(seed);
    std::vector<decltype(make(random))> values;
    values.reserve(count);
    for (size_t i = 0; i < count; ++i) values.push_back(make(random));
    return values;
}

/// The same bytes as records of another library. zan's matrices are for row vectors and stored by rows; glm's and
/// Eigen's are for column vectors and stored by columns. So the same bytes are the same transform.
template <class To, class From>
std::vector<To> copiedBytes(const std::vector<From>& from) {
    static_assert(sizeof(To) == sizeof(From));
    std::vector<To> to(from.size());
    std::memcpy(static_cast<void*>(to.data()), from.data(), from.size() * sizeof(From));
    return to;
}

/// A layer's transform in the plane: scale, skew, rotation, translation. For row vectors, stored by rows.
inline std::array<double, 9> planeTransform(Random& random) {
    const double angle = random.real(-3.1, 3.1), skew = random.real(-0.5, 0.5);
    const double sx = random.real(0.3, 3), sy = random.real(0.3, 3), c = std::cos(angle), s = std::sin(angle);
    return {
        sx * c, sx * s, 0, sy * (skew * c - s), sy * (skew * s + c), 0, random.real(-500, 500), random.real(-500, 500),
        1};
}

/// A unit quaternion x, y, z, w, uniform over all rotations.
inline std::array<double, 4> rotation(Random& random) {
    double q[4], square = 0;
    do {
        square = 0;
        for (double& component : q) {
            component = random.real(-1, 1);
            square += component * component;
        }
    } while (square > 1 || square < 0.01);
    const double norm = std::sqrt(square);
    return {q[0] / norm, q[1] / norm, q[2] / norm, q[3] / norm};
}

/// A layer's transform in space: scale, rotation, translation. For row vectors, stored by rows.
inline std::array<double, 16> spaceTransform(Random& random) {
    const auto [x, y, z, w] = rotation(random);
    const double sx = random.real(0.3, 3), sy = random.real(0.3, 3), sz = random.real(0.3, 3);
    return {sx * (1 - 2 * (y * y + z * z)), sx * 2 * (x * y + z * w),       sx * 2 * (x * z - y * w),       0,
            sy * 2 * (x * y - z * w),       sy * (1 - 2 * (x * x + z * z)), sy * 2 * (y * z + x * w),       0,
            sz * 2 * (x * z + y * w),       sz * 2 * (y * z - x * w),       sz * (1 - 2 * (x * x + y * y)), 0,
            random.real(-500, 500),         random.real(-500, 500),         random.real(-500, 500),         1};
}

/// The same with a perspective projection; for points in [-1, 1]^3 w is at least 0.7.
inline std::array<double, 16> cameraTransform(Random& random) {
    std::array<double, 16> m = spaceTransform(random);
    for (size_t row = 0; row < 4; ++row) m[row * 4 + 3] = random.real(-0.1, 0.1);
    m[15] = random.real(1, 2);
    return m;
}

}  // namespace zan_bench

#endif  // ZAN_BENCH_INPUTS_H

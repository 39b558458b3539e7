// The same matrices as records of zan, glm, Eigen and cglm. cglm is single precision only, so the table shows its time
// but leaves it out of the ratios.
#ifndef ZAN_BENCH_MATRIX_INPUTS_H
#define ZAN_BENCH_MATRIX_INPUTS_H

#include "entries.h"
#include "peers_glm.h"
#include "tests/support/vectors.h"
#include "zan/matrix.h"

#include <Eigen/Dense>
#include <cglm/cglm.h>

#include <array>
#include <cstring>
#include <vector>

namespace zan_bench {

/// cglm's matrix, in single precision.
struct SingleMatrix {
    alignas(32) mat4 m;
};
inline SingleMatrix singlePrecision(const Zan_Matrix4& m) {
    double numbers[16];
    std::memcpy(numbers, &m, sizeof m);
    SingleMatrix to;
    for (size_t i = 0; i < 16; ++i) to.m[i / 4][i % 4] = static_cast<float>(numbers[i]);
    return to;
}
/// Equal up to the error of single precision.
struct NearSingle {
    bool operator()(const Zan_Matrix4& zan, const SingleMatrix& peer) const {
        double ours[16];
        std::memcpy(ours, &zan, sizeof ours);
        for (size_t i = 0; i < 16; ++i) {
            if (!Near{2e-3}(ours[i], peer.m[i / 4][i % 4])) return false;
        }
        return true;
    }
    bool operator()(double zan, float peer) const { return Near{2e-3}(zan, peer); }
};
inline const char* const kCglm = "cglm, single precision";

/// kInputs transforms of the plane, the same for each library.
struct Matrices3 {
    std::vector<Zan_Matrix3> zan;
    std::vector<glm::dmat3> glm;
    std::vector<Eigen::Matrix3d> eigen;

    explicit Matrices3(uint32_t seed)
        : zan(copiedBytes<Zan_Matrix3>(inputs(kInputs, seed, planeTransform))),
          glm(copiedBytes<glm::dmat3>(zan)),
          eigen(copiedBytes<Eigen::Matrix3d>(zan)) {}
};
/// kInputs transforms in space, the same for each library.
struct Matrices4 {
    std::vector<Zan_Matrix4> zan;
    std::vector<glm::dmat4> glm;
    std::vector<Eigen::Matrix4d> eigen;
    std::vector<SingleMatrix> cglm;

    explicit Matrices4(uint32_t seed, std::array<double, 16> (*make)(Random&) = spaceTransform)
        : zan(copiedBytes<Zan_Matrix4>(inputs(kInputs, seed, make))),
          glm(copiedBytes<glm::dmat4>(zan)),
          eigen(copiedBytes<Eigen::Matrix4d>(zan)),
          cglm(zan.size()) {
        for (size_t i = 0; i < zan.size(); ++i) cglm[i] = singlePrecision(zan[i]);
    }
};

}  // namespace zan_bench

#endif  // ZAN_BENCH_MATRIX_INPUTS_H

// Decomposition of transforms, and quaternions, beside glm and Eigen.
#include "matrix_inputs.h"

namespace zan_bench {
namespace {

struct GlmDecomposition {
    glm::dvec3 scale, translation, skew;
    glm::dquat orientation;
    glm::dvec4 perspective;
};

}  // namespace

void addMatrixDecompositions() {
    static const Matrices4 all(96);
    static const Matrices4 rotations(97, [](Random& random) {
        const auto [x, y, z, w] = rotation(random);
        return std::array<double, 16>{1 - 2 * (y * y + z * z),
                                      2 * (x * y + z * w),
                                      2 * (x * z - y * w),
                                      0,
                                      2 * (x * y - z * w),
                                      1 - 2 * (x * x + z * z),
                                      2 * (y * z + x * w),
                                      0,
                                      2 * (x * z + y * w),
                                      2 * (y * z - x * w),
                                      1 - 2 * (x * x + y * y),
                                      0,
                                      0,
                                      0,
                                      0,
                                      1};
    });
    static const auto first = inputs(kInputs, 98, rotation), second = inputs(kInputs, 99, rotation);
    static const auto zan1 = copiedBytes<Zan_Quat>(first), zan2 = copiedBytes<Zan_Quat>(second);
    // Both libraries store x, y, z, w in this order.
    static const auto glm1 = copiedBytes<glm::dquat>(first), glm2 = copiedBytes<glm::dquat>(second);
    static const auto eigen1 = copiedBytes<Eigen::Quaterniond>(first), eigen2 = copiedBytes<Eigen::Quaterniond>(second);
    const Zan_Matrix4 *m = all.zan.data(), *t = rotations.zan.data();
    const glm::dmat4 *g = all.glm.data(), *gt = rotations.glm.data();
    const Eigen::Matrix4d* et = rotations.eigen.data();
    const Zan_Quat *q1 = zan1.data(), *q2 = zan2.data();
    const glm::dquat *g1 = glm1.data(), *g2 = glm2.data();
    const Eigen::Quaterniond *e1 = eigen1.data(), *e2 = eigen2.data();

    Entry("4x4 decomposition", kInputs,
          [=](size_t i) {
              Zan_Matrix4Decomp parts;
              unsigned char failed = 0;
              static_cast<void>(Zan_DecomposeMatrix4(&m[i], &parts, &failed));
              return parts;
          })
        .peer(
            "glm::decompose",
            [=](size_t i) {
                GlmDecomposition parts;
                glm::decompose(g[i], parts.scale, parts.orientation, parts.translation, parts.skew, parts.perspective);
                return parts;
            },
            [](const Zan_Matrix4Decomp& zan, const GlmDecomposition& peer) {
                return Near().arrays(&zan.tx, &peer.translation, 3) && Near().arrays(&zan.sx, &peer.scale, 3);
            });
    Entry("quaternion to matrix", kInputs,
          [=](size_t i) {
              Zan_Matrix4 matrix;
              Zan_QuatToMatrix4(&q1[i], &matrix);
              return matrix;
          })
        .peer(
            "glm", [=](size_t i) { return glm::mat4_cast(g1[i]); }, Near())
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix4d {
                Eigen::Matrix4d matrix = Eigen::Matrix4d::Identity();
                matrix.topLeftCorner<3, 3>() = e1[i].toRotationMatrix();
                return matrix;
            },
            Near());
    // q and -q are the same rotation.
    const auto sameRotation = [](const Zan_Quat& zan, const auto& peer) {
        const double sign = zan.w * peer.w() < 0 ? -1 : 1, tolerance = 1e-9;
        return std::abs(zan.x - sign * peer.x()) < tolerance && std::abs(zan.y - sign * peer.y()) < tolerance &&
               std::abs(zan.z - sign * peer.z()) < tolerance && std::abs(zan.w - sign * peer.w()) < tolerance;
    };
    const auto sameGlmRotation = [=](const Zan_Quat& zan, const glm::dquat& peer) {
        return sameRotation(zan, Eigen::Quaterniond(peer.w, peer.x, peer.y, peer.z));
    };
    Entry("matrix to quaternion", kInputs,
          [=](size_t i) {
              Zan_Quat q;
              Zan_Matrix4ToQuat(&t[i], &q);
              return q;
          })
        .peer(
            "glm", [=](size_t i) { return glm::quat_cast(gt[i]); }, sameGlmRotation)
        .peer(
            "Eigen", [=](size_t i) { return Eigen::Quaterniond(et[i].topLeftCorner<3, 3>()); }, sameRotation);
    Entry("slerp", kInputs,
          [=](size_t i) {
              Zan_Quat q;
              Zan_Slerp(&q1[i], &q2[i], 0.3, &q);
              return q;
          })
        .peer(
            "glm", [=](size_t i) { return glm::slerp(g1[i], g2[i], 0.3); }, sameGlmRotation)
        .peer(
            "Eigen", [=](size_t i) { return e1[i].slerp(0.3, e2[i]); }, sameRotation);
}

}  // namespace zan_bench

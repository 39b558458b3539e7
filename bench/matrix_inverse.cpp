// Inverses and normal matrices, beside glm, Eigen and cglm.
#include "matrix_inputs.h"

namespace zan_bench {

void addMatrixInverses() {
    static const Matrices3 all3(94);
    static const Matrices4 all4(95);
    const Zan_Matrix3* m3 = all3.zan.data();
    const glm::dmat3* g3 = all3.glm.data();
    const Eigen::Matrix3d* e3 = all3.eigen.data();
    const Zan_Matrix4* m4 = all4.zan.data();
    const glm::dmat4* g4 = all4.glm.data();
    const Eigen::Matrix4d* e4 = all4.eigen.data();
    const SingleMatrix* c4 = all4.cglm.data();

    Entry("3x3 inverse", kInputs,
          [=](size_t i) {
              Zan_Matrix3 inverse;
              static_cast<void>(Zan_InverseMatrixQuiet(&m3[i], &inverse, nullptr));
              return inverse;
          })
        .peer(
            "glm", [=](size_t i) { return glm::inverse(g3[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix3d { return e3[i].inverse(); }, Near())
        .peer(
            "Eigen, partial pivoting", [=](size_t i) -> Eigen::Matrix3d { return e3[i].partialPivLu().inverse(); },
            Near());
    Entry("4x4 inverse", kInputs,
          [=](size_t i) {
              Zan_Matrix4 inverse;
              static_cast<void>(Zan_InverseMatrix4Quiet(&m4[i], &inverse, nullptr));
              return inverse;
          })
        .peer(
            "glm", [=](size_t i) { return glm::inverse(g4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return e4[i].inverse(); }, Near())
        .peer(
            kCglm,
            [=](size_t i) {
                SingleMatrix inverse, m = c4[i];
                glm_mat4_inv(m.m, inverse.m);
                return inverse;
            },
            NearSingle())
        .hasKernels();
    Entry("4x4 normal matrix", kInputs,
          [=](size_t i) {
              Zan_Matrix4 normal;
              static_cast<void>(Zan_CalcNormalMatrix4Quiet(&m4[i], &normal, nullptr));
              return normal;
          })
        .peer(
            "glm", [=](size_t i) { return glm::inverseTranspose(g4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return e4[i].inverse().transpose(); }, Near());
}

}  // namespace zan_bench

// Products, determinants, transposes and comparisons of matrices beside glm, Eigen and cglm.
#include "matrix_inputs.h"

namespace zan_bench {

void addMatrixProducts() {
    static const Matrices3 first3(31), second3(32);
    static const Matrices4 first4(33), second4(34);
    const Zan_Matrix3 *a3 = first3.zan.data(), *b3 = second3.zan.data();
    const glm::dmat3 *ga3 = first3.glm.data(), *gb3 = second3.glm.data();
    const Eigen::Matrix3d *ea3 = first3.eigen.data(), *eb3 = second3.eigen.data();
    const Zan_Matrix4 *a4 = first4.zan.data(), *b4 = second4.zan.data();
    const glm::dmat4 *ga4 = first4.glm.data(), *gb4 = second4.glm.data();
    const Eigen::Matrix4d *ea4 = first4.eigen.data(), *eb4 = second4.eigen.data();
    const SingleMatrix *ca4 = first4.cglm.data(), *cb4 = second4.cglm.data();

    Entry("3x3 product", kInputs,
          [=](size_t i) {
              Zan_Matrix3 product = a3[i];
              Zan_ConcatMatrix(&b3[i], &product);
              return product;
          })
        .peer(
            "glm", [=](size_t i) { return gb3[i] * ga3[i]; }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix3d { return eb3[i] * ea3[i]; }, Near());
    Entry("4x4 product", kInputs,
          [=](size_t i) {
              Zan_Matrix4 product;
              Zan_ConcatMatrix4(&a4[i], &b4[i], &product);
              return product;
          })
        .peer(
            "glm", [=](size_t i) { return gb4[i] * ga4[i]; }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return eb4[i] * ea4[i]; }, Near())
        .peer(
            kCglm,
            [=](size_t i) {
                SingleMatrix product, a = ca4[i], b = cb4[i];
                glm_mat4_mul(b.m, a.m, product.m);
                return product;
            },
            NearSingle())
        .hasKernels();
    Entry("3x3 determinant", kInputs, [=](size_t i) { return a3[i].Determinant(); })
        .peer(
            "glm", [=](size_t i) { return glm::determinant(ga3[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) { return ea3[i].determinant(); }, Near());
    Entry("4x4 determinant", kInputs,
          [=](size_t i) {
              double determinant = 0;
              Zan_GetMatrix4Determinant(&a4[i], &determinant);
              return determinant;
          })
        .peer(
            "glm", [=](size_t i) { return glm::determinant(ga4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) { return ea4[i].determinant(); }, Near())
        .peer(
            kCglm,
            [=](size_t i) {
                SingleMatrix m = ca4[i];
                return glm_mat4_det(m.m);
            },
            NearSingle())
        .hasKernels();
    Entry("4x4 transpose", kInputs,
          [=](size_t i) {
              Zan_Matrix4 transposed;
              Zan_TransposeMatrix4(&a4[i], &transposed);
              return transposed;
          })
        .peer(
            "glm", [=](size_t i) { return glm::transpose(ga4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return ea4[i].transpose(); }, Near());
    Entry("4x4 comparison within a tolerance", kInputs, [=](size_t i) {
        return Zan_EqualMatrixWithinEpsilon(a4[i], a4[i & 1 ? i : 0], 1e-9);
    }).peer("glm", [=](size_t i) {
          return glm::all(glm::equal(ga4[i], ga4[i & 1 ? i : 0], 1e-9));
      }).peer("Eigen", [=](size_t i) { return ((ea4[i] - ea4[i & 1 ? i : 0]).array().abs() <= 1e-9).all(); });
}

}  // namespace zan_bench

// Matrices and what goes through them, beside glm and Eigen in double precision. Those libraries inline into the host;
// zan is called in its shared library, as a host calls it.
#include <Eigen/Dense>

#include "entries.h"
#include "peers_glm.h"
#include "zan/matrix.h"

namespace zan_bench {
namespace {

/// The same matrices in each library.
struct Matrices3 {
    std::vector<Zan_Matrix3> zan;
    std::vector<glm::dmat3> glm;
    std::vector<Eigen::Matrix3d> eigen;

    explicit Matrices3(uint32_t seed)
        : zan(sameBytes<Zan_Matrix3>(inputs(kManyLarge, seed, planeTransform))),
          glm(sameBytes<glm::dmat3>(zan)),
          eigen(sameBytes<Eigen::Matrix3d>(zan)) {}
};
struct Matrices4 {
    std::vector<Zan_Matrix4> zan;
    std::vector<glm::dmat4> glm;
    std::vector<Eigen::Matrix4d> eigen;

    explicit Matrices4(uint32_t seed, std::array<double, 16> (*make)(Random&) = spaceTransform)
        : zan(sameBytes<Zan_Matrix4>(inputs(kManyLarge, seed, make))),
          glm(sameBytes<glm::dmat4>(zan)),
          eigen(sameBytes<Eigen::Matrix4d>(zan)) {}
};

void addValues() {
    static const Matrices3 first3(31), second3(32);
    static const Matrices4 first4(33), second4(34);
    const Zan_Matrix3 *a3 = first3.zan.data(), *b3 = second3.zan.data();
    const glm::dmat3 *ga3 = first3.glm.data(), *gb3 = second3.glm.data();
    const Eigen::Matrix3d *ea3 = first3.eigen.data(), *eb3 = second3.eigen.data();
    const Zan_Matrix4 *a4 = first4.zan.data(), *b4 = second4.zan.data();
    const glm::dmat4 *ga4 = first4.glm.data(), *gb4 = second4.glm.data();
    const Eigen::Matrix4d *ea4 = first4.eigen.data(), *eb4 = second4.eigen.data();

    Entry("3x3 product", kManyLarge,
          [=](size_t i) {
              Zan_Matrix3 product = a3[i];
              Zan_ConcatMatrix(&b3[i], &product);
              return product;
          })
        .peer(
            "glm", [=](size_t i) { return gb3[i] * ga3[i]; }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix3d { return eb3[i] * ea3[i]; }, Near());
    Entry("4x4 product", kManyLarge,
          [=](size_t i) {
              Zan_Matrix4 product;
              Zan_ConcatMatrix4(&a4[i], &b4[i], &product);
              return product;
          })
        .peer(
            "glm", [=](size_t i) { return gb4[i] * ga4[i]; }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return eb4[i] * ea4[i]; }, Near());
    Entry("3x3 determinant", kManyLarge, [=](size_t i) { return a3[i].Determinant(); })
        .peer(
            "glm", [=](size_t i) { return glm::determinant(ga3[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) { return ea3[i].determinant(); }, Near());
    Entry("4x4 determinant", kManyLarge,
          [=](size_t i) {
              double determinant = 0;
              Zan_GetMatrix4Determinant(&a4[i], &determinant);
              return determinant;
          })
        .peer(
            "glm", [=](size_t i) { return glm::determinant(ga4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) { return ea4[i].determinant(); }, Near());
    Entry("4x4 transpose", kManyLarge,
          [=](size_t i) {
              Zan_Matrix4 transposed;
              Zan_TransposeMatrix4(&a4[i], &transposed);
              return transposed;
          })
        .peer(
            "glm", [=](size_t i) { return glm::transpose(ga4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return ea4[i].transpose(); }, Near());
    Entry("4x4 comparison within a tolerance", kManyLarge, [=](size_t i) {
        return Zan_EqualMatrixWithinEpsilon(a4[i], a4[i & 1 ? i : 0], 1e-9);
    }).peer("glm", [=](size_t i) {
          return glm::all(glm::equal(ga4[i], ga4[i & 1 ? i : 0], 1e-9));
      }).peer("Eigen", [=](size_t i) { return ((ea4[i] - ea4[i & 1 ? i : 0]).array().abs() <= 1e-9).all(); });
}

}  // namespace

void addMatrixEntries() { addValues(); }

}  // namespace zan_bench

// Building transforms, beside glm and Eigen.
#include "matrix_inputs.h"

namespace zan_bench {
namespace {

struct Rotation {
    glm::dvec3 axis, angles;
    double radians;
};

}  // namespace

void addMatrixBuilders() {
    static const Matrices3 all3(91);
    static const Matrices4 all4(92);
    static const auto rotations = inputs(kInputs, 93, [](Random& random) {
        const auto [x, y, z, w] = rotation(random);
        return Rotation{{x, y, z + 0.1}, {random.real(-3, 3), random.real(-1.5, 1.5), random.real(-3, 3)}, 3 * w};
    });
    const Zan_Matrix3* m3 = all3.zan.data();
    const Eigen::Matrix3d* e3 = all3.eigen.data();
    const Zan_Matrix4* m4 = all4.zan.data();
    const glm::dmat4* g4 = all4.glm.data();
    const Eigen::Matrix4d* e4 = all4.eigen.data();
    const Rotation* r = rotations.data();

    Entry("append a turn about a centre, 3x3", kInputs,
          [=](size_t i) {
              Zan_Matrix3 m = m3[i];
              Zan_RotateMatrix(&m, r[i].radians * 57.29577951308232, 10, 20);
              return m;
          })
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix3d {
                Eigen::Affine2d m(e3[i]);
                m.pretranslate(Eigen::Vector2d(-10, -20)).prerotate(r[i].radians).pretranslate(Eigen::Vector2d(10, 20));
                return m.matrix();
            },
            Near());
    Entry("append a translation, 4x4", kInputs,
          [=](size_t i) {
              Zan_Matrix4 m = m4[i];
              Zan_TranslateMatrix4(r[i].axis.x, r[i].axis.y, r[i].axis.z, &m);
              return m;
          })
        .peer(
            "glm", [=](size_t i) { return glm::translate(glm::dmat4(1), r[i].axis) * g4[i]; }, Near())
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix4d {
                Eigen::Affine3d m(e4[i]);
                m.pretranslate(Eigen::Vector3d(r[i].axis.x, r[i].axis.y, r[i].axis.z));
                return m.matrix();
            },
            Near());
    Entry("append a turn about an axis, 4x4", kInputs,
          [=](size_t i) {
              Zan_Matrix4 m = m4[i];
              static_cast<void>(Zan_RotateMatrix4(r[i].axis.x, r[i].axis.y, r[i].axis.z, r[i].radians, &m));
              return m;
          })
        .peer(
            "glm", [=](size_t i) { return glm::rotate(glm::dmat4(1), r[i].radians, r[i].axis) * g4[i]; }, Near())
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix4d {
                Eigen::Affine3d m(e4[i]);
                const Eigen::Vector3d axis(r[i].axis.x, r[i].axis.y, r[i].axis.z);
                m.prerotate(Eigen::AngleAxisd(r[i].radians, axis.normalized()));
                return m.matrix();
            },
            Near());
    Entry("append turns by three angles, 4x4", kInputs,
          [=](size_t i) {
              Zan_Matrix4 m = m4[i];
              Zan_RotateMatrix4XYZ(r[i].angles.x, r[i].angles.y, r[i].angles.z, &m);
              return m;
          })
        .peer(
            "glm", [=](size_t i) { return glm::eulerAngleXYZ(r[i].angles.x, r[i].angles.y, r[i].angles.z) * g4[i]; },
            Near());
    Entry("look at a point", kInputs,
          [=](size_t i) {
              const Vector3 eye(r[i].axis.x, r[i].axis.y, r[i].axis.z), up(0, 1, 0);
              const Vector3 target(r[i].angles.x, r[i].angles.y, r[i].angles.z);
              return Zan_LookAtMatrix(eye, target, up);
          })
        .peer(
            "glm", [=](size_t i) { return glm::lookAtLH(r[i].axis, r[i].angles, glm::dvec3(0, 1, 0)); },
            // glm returns the inverse rotation, with a translation. Compare the rotations.
            [](const Zan_Matrix4& zan, const glm::dmat4& peer) {
                const glm::dmat3 inverse(glm::transpose(peer));
                const double rows[9] = {zan.m00, zan.m01, zan.m02, zan.m10, zan.m11,
                                        zan.m12, zan.m20, zan.m21, zan.m22};
                return Near().arrays(rows, &inverse, 9);
            });
}

}  // namespace zan_bench

// Matrices and what goes through them, beside glm and Eigen, which inline into the host, and loops by hand. zan is
// called in its shared library, as a host calls it. cglm has single precision alone: it is shown and not counted.
#include "zan/matrix.h"

#include "entries.h"
#include "peers_glm.h"

#include <Eigen/Dense>
#include <cglm/cglm.h>

#ifdef ZAN_BENCH_PIXMAN
#include <pixman.h>
#endif

namespace zan_bench {
namespace {

/// cglm's matrix.
struct SingleMatrix {
    alignas(32) mat4 m;
};
SingleMatrix single(const Zan_Matrix4& m) {
    double numbers[16];
    std::memcpy(numbers, &m, sizeof m);
    SingleMatrix to;
    for (size_t i = 0; i < 16; ++i) to.m[i / 4][i % 4] = static_cast<float>(numbers[i]);
    return to;
}
/// The numbers are as near as single precision allows.
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
const char* const kCglm = "cglm, single precision";

/// The same matrices in each library.
struct Matrices3 {
    std::vector<Zan_Matrix3> zan;
    std::vector<glm::dmat3> glm;
    std::vector<Eigen::Matrix3d> eigen;

    explicit Matrices3(uint32_t seed)
        : zan(sameBytes<Zan_Matrix3>(inputs(kMany, seed, planeTransform))),
          glm(sameBytes<glm::dmat3>(zan)),
          eigen(sameBytes<Eigen::Matrix3d>(zan)) {}
};
struct Matrices4 {
    std::vector<Zan_Matrix4> zan;
    std::vector<glm::dmat4> glm;
    std::vector<Eigen::Matrix4d> eigen;
    std::vector<SingleMatrix> cglm;

    explicit Matrices4(uint32_t seed, std::array<double, 16> (*make)(Random&) = spaceTransform)
        : zan(sameBytes<Zan_Matrix4>(inputs(kMany, seed, make))),
          glm(sameBytes<glm::dmat4>(zan)),
          eigen(sameBytes<Eigen::Matrix4d>(zan)),
          cglm(zan.size()) {
        for (size_t i = 0; i < zan.size(); ++i) cglm[i] = single(zan[i]);
    }
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
    const SingleMatrix *ca4 = first4.cglm.data(), *cb4 = second4.cglm.data();

    Entry("3x3 product", kMany,
          [=](size_t i) {
              Zan_Matrix3 product = a3[i];
              Zan_ConcatMatrix(&b3[i], &product);
              return product;
          })
        .peer(
            "glm", [=](size_t i) { return gb3[i] * ga3[i]; }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix3d { return eb3[i] * ea3[i]; }, Near());
    Entry("4x4 product", kMany,
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
        .kernels();
    Entry("3x3 determinant", kMany, [=](size_t i) { return a3[i].Determinant(); })
        .peer(
            "glm", [=](size_t i) { return glm::determinant(ga3[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) { return ea3[i].determinant(); }, Near());
    Entry("4x4 determinant", kMany,
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
        .kernels();
    Entry("4x4 transpose", kMany,
          [=](size_t i) {
              Zan_Matrix4 transposed;
              Zan_TransposeMatrix4(&a4[i], &transposed);
              return transposed;
          })
        .peer(
            "glm", [=](size_t i) { return glm::transpose(ga4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return ea4[i].transpose(); }, Near());
    Entry("4x4 comparison within a tolerance", kMany, [=](size_t i) {
        return Zan_EqualMatrixWithinEpsilon(a4[i], a4[i & 1 ? i : 0], 1e-9);
    }).peer("glm", [=](size_t i) {
          return glm::all(glm::equal(ga4[i], ga4[i & 1 ? i : 0], 1e-9));
      }).peer("Eigen", [=](size_t i) { return ((ea4[i] - ea4[i & 1 ? i : 0]).array().abs() <= 1e-9).all(); });
}

// Points go through a matrix, then in the same place through its inverse, so that they stay what they are. A long array
// meets two matrices; short ones meet thousands, each first all blocks of kBlocks, which then meet the inverses.
constexpr size_t kBlocks = 256;

template <class Matrix>
std::vector<Matrix> withInverses(const std::vector<Matrix>& matrices) {
    constexpr int n = sizeof(Matrix) == sizeof(Zan_Matrix3) ? 3 : 4;
    std::vector<Matrix> all;
    for (size_t first = 0; first < matrices.size(); first += kBlocks) {
        const size_t last = std::min(first + kBlocks, matrices.size());
        all.insert(all.end(), &matrices[first], &matrices[first] + (last - first));
        for (size_t i = first; i < last; ++i) {
            Eigen::Matrix<double, n, n> m;
            std::memcpy(m.data(), &matrices[i], sizeof(Matrix));
            const Eigen::Matrix<double, n, n> inverse = m.inverse();
            std::memcpy(static_cast<void*>(&all.emplace_back()), inverse.data(), sizeof(Matrix));
        }
    }
    return all;
}

/// The same numbers as points of one side; the others have their own, since each side changes its points.
template <class Point>
std::vector<Point> pointsOf(size_t count, uint32_t seed) {
    Random random(seed);
    std::vector<Point> points(count);
    for (Point& point : points) {
        double numbers[sizeof(Point) / sizeof(double)];
        for (double& number : numbers) number = random.real(-1, 1);
        // A homogeneous point in front of the camera.
        if (std::size(numbers) == 4) numbers[std::size(numbers) - 1] = 1;
        std::memcpy(static_cast<void*>(&point), numbers, sizeof point);
    }
    return points;
}
template <int Size>
using EigenPoints = Eigen::Matrix<double, Size, Eigen::Dynamic>;
template <int Size>
EigenPoints<Size> eigenPoints(size_t count, uint32_t seed) {
    const auto points = pointsOf<std::array<double, Size>>(count, seed);
    EigenPoints<Size> columns(Size, points.size());
    std::memcpy(columns.data(), points.data(), points.size() * sizeof points[0]);
    return columns;
}

/// Matrices and their inverses, half of the count each.
struct Pairs3 {
    std::vector<Zan_Matrix3> zan;
    std::vector<glm::dmat3> glm;
    std::vector<Eigen::Matrix3d> eigen;

    explicit Pairs3(uint32_t seed, size_t count = 2)
        : zan(withInverses(sameBytes<Zan_Matrix3>(inputs(count / 2, seed, planeTransform)))),
          glm(sameBytes<glm::dmat3>(zan)),
          eigen(sameBytes<Eigen::Matrix3d>(zan)) {}
};
struct Pairs4 {
    std::vector<Zan_Matrix4> zan;
    std::vector<glm::dmat4> glm;
    std::vector<Eigen::Matrix4d> eigen;

    Pairs4(uint32_t seed, std::array<double, 16> (*make)(Random&), size_t count = 2)
        : zan(withInverses(sameBytes<Zan_Matrix4>(inputs(count / 2, seed, make)))),
          glm(sameBytes<glm::dmat4>(zan)),
          eigen(sameBytes<Eigen::Matrix4d>(zan)) {}
};

// Loops by hand and with glm, over points of the host's own.

struct Plain2 {
    double x, y;
};
struct Plain3 {
    double x, y, z;
};
struct Plain4 {
    double x, y, z, w;
};
void transformByHand(const Zan_Matrix3& m, size_t count, Plain2* points) {
    const double a = m.m00, b = m.m01, c = m.m10, d = m.m11, tx = m.m20, ty = m.m21;
    for (size_t i = 0; i < count; ++i) {
        const auto [x, y] = points[i];
        points[i] = {x * a + y * c + tx, x * b + y * d + ty};
    }
}
void divideByHand(const Zan_Matrix4& from, size_t count, Plain3* points) {
    const Zan_Matrix4 m = from;
    for (size_t i = 0; i < count; ++i) {
        const auto [x, y, z] = points[i];
        const double r = 1 / (x * m.m03 + y * m.m13 + z * m.m23 + m.m33);
        points[i] = {(x * m.m00 + y * m.m10 + z * m.m20 + m.m30) * r, (x * m.m01 + y * m.m11 + z * m.m21 + m.m31) * r,
                     (x * m.m02 + y * m.m12 + z * m.m22 + m.m32) * r};
    }
}
void transformByHand(const Zan_Matrix4& from, size_t count, Plain4* points) {
    const Zan_Matrix4 m = from;
    for (size_t i = 0; i < count; ++i) {
        const auto [x, y, z, w] = points[i];
        points[i] = {x * m.m00 + y * m.m10 + z * m.m20 + w * m.m30, x * m.m01 + y * m.m11 + z * m.m21 + w * m.m31,
                     x * m.m02 + y * m.m12 + z * m.m22 + w * m.m32, x * m.m03 + y * m.m13 + z * m.m23 + w * m.m33};
    }
}
void transformByGlm(const glm::dmat3& m, size_t count, glm::dvec2* points) {
    for (size_t i = 0; i < count; ++i) points[i] = glm::dvec2(m * glm::dvec3(points[i], 1.0));
}
void transformByGlm(const glm::dmat4& m, size_t count, glm::dvec3* points) {
    for (size_t i = 0; i < count; ++i) points[i] = glm::dvec3(m * glm::dvec4(points[i], 1.0));
}
void divideByGlm(const glm::dmat4& m, size_t count, glm::dvec3* points) {
    for (size_t i = 0; i < count; ++i) {
        const glm::dvec4 p = m * glm::dvec4(points[i], 1.0);
        points[i] = glm::dvec3(p) / p.w;
    }
}

// What an entry calls for its input i: matrix i and the points that it meets.
template <class Matrix, class Point, class Loop>
auto onArray(const std::vector<Matrix>& matrices, std::vector<Point>& points, Loop loop) {
    return [&matrices, &points, loop](size_t i) {
        loop(matrices[i], points.size(), points.data());
        return arrayOf(points);
    };
}
template <class Matrix, class Point, class Loop>
auto onBlocks(const std::vector<Matrix>& matrices, std::vector<Point>& points, Loop loop) {
    const size_t size = points.size() / kBlocks;
    return [&matrices, &points, loop, size](size_t i) {
        Point* block = &points[i % kBlocks * size];
        loop(matrices[i], size, block);
        return Array<Point>{block, size};
    };
}
// And for Eigen, whose points are columns.
template <class Matrix, class Points, class Loop>
auto onColumns(const std::vector<Matrix>& matrices, Points& points, Loop loop) {
    return [&matrices, &points, loop](size_t i) {
        loop(matrices[i], points);
        return Array<double>{points.data(), static_cast<size_t>(points.size())};
    };
}
/// The numbers of an array of records are near those of a plain array.
struct NearColumns {
    template <class A>
    bool operator()(const Array<A>& a, const Array<double>& b) const {
        return a.count * sizeof(A) == b.count * sizeof(double) && Near().arrays(a.data, b.data, b.count);
    }
};

const auto kZan2 = [](const Zan_Matrix3& m, size_t count, Zan_Vector2T<double>* points) {
    Zan_TransformFloatPoints(&m, static_cast<int32_t>(count), points);
};
const auto kGlm = [](const auto& m, size_t count, auto* points) { transformByGlm(m, count, points); };
const auto kHand = [](const auto& m, size_t count, auto* points) { transformByHand(m, count, points); };

void addPoints2() {
    static const Pairs3 two(35), many(36, kMany);
    static auto ours = pointsOf<Zan_Vector2T<double>>(kPoints, 41), ours16 = ours;
    static auto glms = pointsOf<glm::dvec2>(kPoints, 41), glms16 = glms;
    static auto hand = pointsOf<Plain2>(kPoints, 41), hand16 = hand;
    static auto eigens = eigenPoints<2>(kPoints, 41), eigens16 = eigens;
    static_assert(kPoints == 16 * kBlocks);

    Entry("2D points, 16", kMany, onBlocks(many.zan, ours16, kZan2), 16)
        .peer("by hand", onBlocks(many.zan, hand16, kHand), NearArrays())
        .peer("glm", onBlocks(many.glm, glms16, kGlm), NearArrays())
        .peer(
            "Eigen, all at once",
            [](size_t i) {
                auto block = eigens16.middleCols<16>(static_cast<Eigen::Index>(i % kBlocks * 16));
                block = ((many.eigen[i].topLeftCorner<2, 2>() * block).colwise() + many.eigen[i].topRightCorner<2, 1>())
                            .eval();
                return Array<double>{block.data(), 32};
            },
            NearColumns())
        .kernels();
    Entry("2D points, 4,096", 2, onArray(two.zan, ours, kZan2), kPoints)
        .peer("by hand", onArray(two.zan, hand, kHand), NearArrays())
        .peer("glm", onArray(two.glm, glms, kGlm), NearArrays())
        .peer("Eigen, all at once",
              onColumns(two.eigen, eigens,
                        [](const Eigen::Matrix3d& m, auto& points) {
                            points = (m.topLeftCorner<2, 2>() * points).colwise() + m.topRightCorner<2, 1>();
                        }),
              NearColumns())
        .kernels();
}

void addPoints3() {
    static const Pairs4 affine(37, spaceTransform), camera(38, cameraTransform), cameras(39, cameraTransform, kMany);
    static auto ours = pointsOf<Zan_Vector3T<double>>(kPoints, 43), divided = ours;
    static auto glms = pointsOf<glm::dvec3>(kPoints, 43), glmsDivided = glms;
    static auto handDivided = pointsOf<Plain3>(kPoints, 43);
    static auto eigens = eigenPoints<3>(kPoints, 43), eigensDivided = eigens;
    static auto ours4 = pointsOf<Zan_Vector3T<double>>(4 * kBlocks, 44);
    static auto glms4 = pointsOf<glm::dvec3>(4 * kBlocks, 44);
    static auto hand4 = pointsOf<Plain3>(4 * kBlocks, 44);
    const auto zan = [](const Zan_Matrix4& m, size_t count, Zan_Vector3T<double>* points) {
        Zan_Transform3DFloatPoints(&m, static_cast<int32_t>(count), points);
    };
    const auto glmDivide = [](const auto& m, size_t count, auto* points) { divideByGlm(m, count, points); };
    const auto handDivide = [](const auto& m, size_t count, auto* points) { divideByHand(m, count, points); };

    Entry("3D points, divided, 4", kMany, onBlocks(cameras.zan, ours4, zan), 4)
        .peer("by hand", onBlocks(cameras.zan, hand4, handDivide), NearArrays())
        .peer("glm", onBlocks(cameras.glm, glms4, glmDivide), NearArrays())
        .kernels();
    Entry("3D points, divided, 4,096", 2, onArray(camera.zan, divided, zan), kPoints)
        .peer("by hand", onArray(camera.zan, handDivided, handDivide), NearArrays())
        .peer("glm", onArray(camera.glm, glmsDivided, glmDivide), NearArrays())
        .peer("Eigen, all at once",
              onColumns(camera.eigen, eigensDivided,
                        [](const Eigen::Matrix4d& m, auto& points) {
                            points = (m * points.colwise().homogeneous()).colwise().hnormalized().eval();
                        }),
              NearColumns())
        .kernels();
    Entry("3D points, affine, 4,096", 2,
          onArray(affine.zan, ours,
                  [](const Zan_Matrix4& m, size_t count, Zan_Vector3T<double>* points) {
                      m.TransformPoints(static_cast<int32_t>(count), points);
                  }),
          kPoints)
        .peer("glm", onArray(affine.glm, glms, kGlm), NearArrays())
        .peer("Eigen, all at once",
              onColumns(affine.eigen, eigens,
                        [](const Eigen::Matrix4d& m, auto& points) {
                            points = (m.topLeftCorner<3, 3>() * points).colwise() + m.topRightCorner<3, 1>();
                        }),
              NearColumns())
        .kernels();
}

void addPoints4() {
    static const Pairs4 two(40, cameraTransform);
    static const SingleMatrix singles[2] = {single(two.zan[0]), single(two.zan[1])};
    static auto ours = pointsOf<Zan_Vector4T<double>>(kPoints, 45), divided = ours;
    static auto glms = pointsOf<glm::dvec4>(kPoints, 45), glmsDivided = glms;
    static auto hand = pointsOf<Plain4>(kPoints, 45);
    static auto eigens = eigenPoints<4>(kPoints, 45), eigensDivided = eigens;
    struct Single4 {
        alignas(16) vec4 v;
    };
    static std::vector<Single4> cglms;
    for (const Plain4& p : hand) {
        cglms.push_back({{static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z), 1}});
    }

    Entry("4D vectors, 4,096", 2,
          onArray(two.zan, ours,
                  [](const Zan_Matrix4& m, size_t count, Zan_Vector4T<double>* points) {
                      Zan_TransformVector4NoDivide(&m, static_cast<int32_t>(count), points);
                  }),
          kPoints)
        .peer("by hand", onArray(two.zan, hand, kHand), NearArrays())
        .peer("glm",
              onArray(two.glm, glms,
                      [](const glm::dmat4& m, size_t count, glm::dvec4* points) {
                          for (size_t i = 0; i < count; ++i) points[i] = m * points[i];
                      }),
              NearArrays())
        .peer("Eigen, all at once",
              onColumns(two.eigen, eigens, [](const Eigen::Matrix4d& m, auto& points) { points = m * points; }),
              NearColumns())
        .peer(
            kCglm,
            [](size_t i) {
                SingleMatrix m = singles[i];
                for (Single4& p : cglms) glm_mat4_mulv(m.m, p.v, p.v);
                return arrayOf(cglms);
            },
            [](const Array<Zan_Vector4T<double>>& zan, const Array<Single4>& peer) {
                for (size_t i = 0; i < zan.count; ++i) {
                    if (!Near{2e-3}(zan.data[i].x, peer.data[i].v[0])) return false;
                }
                return true;
            })
        .kernels();
    Entry("4D vectors, divided, 4,096", 2,
          onArray(two.zan, divided,
                  [](const Zan_Matrix4& m, size_t count, Zan_Vector4T<double>* points) {
                      Zan_TransformVector4(&m, static_cast<int32_t>(count), points);
                  }),
          kPoints)
        .peer("glm",
              onArray(two.glm, glmsDivided,
                      [](const glm::dmat4& m, size_t count, glm::dvec4* points) {
                          for (size_t i = 0; i < count; ++i) {
                              points[i] = m * points[i];
                              points[i] /= points[i].w;
                          }
                      }),
              NearArrays())
        .peer("Eigen, all at once",
              onColumns(two.eigen, eigensDivided,
                        [](const Eigen::Matrix4d& m, auto& points) {
                            points = (m * points).colwise().hnormalized().eval().colwise().homogeneous();
                        }),
              NearColumns())
        .kernels();
}

// Points of whole numbers: turned about the origin, moved, and back. The numbers of the matrices are 16.16, so that
// pixman can have the same.

int32_t fixedOf(double number) { return static_cast<int32_t>(std::lround(number * 65536)); }

/// The numbers differ by no more than a step, which is where a half is rounded to.
struct WithinOne {
    template <class Zan, class Peer>
    bool operator()(const Array<Zan>& zan, const Array<Peer>& peer) const {
        for (size_t i = 0; i < zan.count; ++i) {
            const auto near = [](int64_t a, int64_t b) { return std::abs(a - b) <= 1; };
            if (!near(zan.data[i].h, peer.data[i].h) || !near(zan.data[i].v, peer.data[i].v)) return false;
        }
        return true;
    }
};
/// The next whole number, or the nearest end of the range.
int32_t byLround(double value, double limit) {
    return static_cast<int32_t>(std::lround(std::clamp(value, -limit, limit)));
}
int32_t byCast(double value, double limit) {
    const double inside = std::clamp(value, -limit, limit);
    return static_cast<int32_t>(inside + std::copysign(0.5, inside));
}
template <int32_t (*kRound)(double, double), class Point, class Number>
void transformWhole(const Zan_Matrix3& m, size_t count, Point* points, double unit, Number limit) {
    const double a = m.m00, b = m.m01, c = m.m10, d = m.m11, tx = m.m20 * unit, ty = m.m21 * unit;
    for (size_t i = 0; i < count; ++i) {
        const double x = points[i].h, y = points[i].v;
        points[i].h = static_cast<Number>(kRound(x * a + y * c + tx, limit));
        points[i].v = static_cast<Number>(kRound(x * b + y * d + ty, limit));
    }
}
template <int32_t (*kRound)(double, double)>
auto whole16(const std::vector<Zan_Matrix3>& turns, std::vector<Zan_Point>& points) {
    return onArray(turns, points, [](const Zan_Matrix3& m, size_t count, Zan_Point* p) {
        transformWhole<kRound, Zan_Point, int16_t>(m, count, p, 1, 32767);
    });
}
template <int32_t (*kRound)(double, double)>
auto wholeFixed(const std::vector<Zan_Matrix3>& turns, std::vector<Zan_FixedPoint>& points) {
    return onArray(turns, points, [](const Zan_Matrix3& m, size_t count, Zan_FixedPoint* p) {
        transformWhole<kRound, Zan_FixedPoint, int32_t>(m, count, p, 65536, 2147483647);
    });
}

void addIntegerPoints() {
    static const auto turns = [] {
        auto m = withInverses(sameBytes<Zan_Matrix3>(inputs(1, 50, [](Random& random) {
            const double angle = random.real(0.3, 1.2), c = std::cos(angle), s = std::sin(angle);
            return std::array<double, 9>{c, s, 0, -s, c, 0, 3.25, 4.5, 1};
        })));
        for (Zan_Matrix3& turn : m) {
            for (double* number : {&turn.m00, &turn.m01, &turn.m10, &turn.m11, &turn.m20, &turn.m21}) {
                *number = fixedOf(*number) / 65536.0;
            }
        }
        return m;
    }();
    static auto shorts = inputs(kPoints, 46, [](Random& random) {
        return Zan_Point{static_cast<int16_t>(random.whole(-20000, 20000)),
                         static_cast<int16_t>(random.whole(-20000, 20000))};
    });
    static auto shortsLround = shorts, shortsCast = shorts;
    static auto fixed = inputs(kPoints, 47, [](Random& random) {
        return Zan_FixedPoint{random.whole(-0x20000000, 0x20000000), random.whole(-0x20000000, 0x20000000)};
    });
    static auto fixedLround = fixed, fixedCast = fixed;

    Entry("16-bit points, 4,096", 2,
          onArray(turns, shorts,
                  [](const Zan_Matrix3& m, size_t count, Zan_Point* points) {
                      static_cast<void>(Zan_TransformPoints(&m, static_cast<int32_t>(count), points));
                  }),
          kPoints)
        .peer("by hand, std::lround", whole16<byLround>(turns, shortsLround), WithinOne())
        .peer("by hand, a cast", whole16<byCast>(turns, shortsCast), WithinOne())
        .kernels();
    Entry fixedEntry("16.16 points, 4,096", 2,
                     onArray(turns, fixed,
                             [](const Zan_Matrix3& m, size_t count, Zan_FixedPoint* points) {
                                 static_cast<void>(Zan_TransformFixPoints(&m, static_cast<int32_t>(count), points));
                             }),
                     kPoints);
    fixedEntry.peer("by hand, std::lround", wholeFixed<byLround>(turns, fixedLround), WithinOne())
        .peer("by hand, a cast", wholeFixed<byCast>(turns, fixedCast), WithinOne())
        .kernels();
#ifdef ZAN_BENCH_PIXMAN
    struct PixmanPoint {
        int32_t h, v, one;
    };
    static_assert(sizeof(PixmanPoint) == sizeof(pixman_vector_t));
    static auto pixmans = [] {
        std::vector<PixmanPoint> points;
        for (const Zan_FixedPoint& p : fixed) points.push_back({p.h, p.v, pixman_fixed_1});
        return points;
    }();
    static const auto pixmanTurns = [] {
        std::vector<pixman_transform_t> all;
        for (const Zan_Matrix3& m : turns) {
            all.push_back({{{fixedOf(m.m00), fixedOf(m.m10), fixedOf(m.m20)},
                            {fixedOf(m.m01), fixedOf(m.m11), fixedOf(m.m21)},
                            {0, 0, pixman_fixed_1}}});
        }
        return all;
    }();
    fixedEntry.peer("pixman",
                    onArray(pixmanTurns, pixmans,
                            [](const pixman_transform_t& m, size_t count, PixmanPoint* points) {
                                for (size_t i = 0; i < count; ++i) {
                                    pixman_vector_t v = {{points[i].h, points[i].v, points[i].one}};
                                    pixman_transform_point_3d(&m, &v);
                                    points[i] = {v.vector[0], v.vector[1], v.vector[2]};
                                }
                            }),
                    WithinOne());
#endif
}

/// The box around a transformed rectangle.
Zan_FloatRect boxByGlm(const glm::dmat3& m, double left, double top, double right, double bottom) {
    const glm::dvec3 p[4] = {m * glm::dvec3(left, top, 1), m * glm::dvec3(right, top, 1),
                             m * glm::dvec3(right, bottom, 1), m * glm::dvec3(left, bottom, 1)};
    const glm::dvec3 low = glm::min(glm::min(p[0], p[1]), glm::min(p[2], p[3]));
    const glm::dvec3 high = glm::max(glm::max(p[0], p[1]), glm::max(p[2], p[3]));
    return {low.x, low.y, high.x, high.y};
}

void addRectangles() {
    static const Matrices3 all(48);
    static const auto rects = inputs(kMany, 49, [](Random& random) {
        const int32_t left = random.whole(-1000, 1000), top = random.whole(-1000, 1000);
        return Zan_LRect{left, top, left + random.whole(1, 1000), top + random.whole(1, 1000)};
    });
    const Zan_Matrix3* m = all.zan.data();
    const glm::dmat3* g = all.glm.data();
    const Zan_LRect* r = rects.data();

    Entry("box of a rectangle, double", kMany,
          [=](size_t i) {
              Zan_FloatRect box = {static_cast<double>(r[i].left), static_cast<double>(r[i].top),
                                   static_cast<double>(r[i].right), static_cast<double>(r[i].bottom)};
              Zan_TransformFloatRect(&m[i], &box, nullptr, nullptr);
              return box;
          })
        .peer(
            "glm", [=](size_t i) { return boxByGlm(g[i], r[i].left, r[i].top, r[i].right, r[i].bottom); }, Near());
    Entry("box of a rectangle, 32-bit", kMany, [=](size_t i) { return Zan_TransformBounds(m[i], r[i]); })
        .peer(
            "glm, std::floor, std::ceil",
            [=](size_t i) {
                const Zan_FloatRect box = boxByGlm(g[i], r[i].left, r[i].top, r[i].right, r[i].bottom);
                return Zan_LRect{static_cast<int32_t>(std::floor(box.left)), static_cast<int32_t>(std::floor(box.top)),
                                 static_cast<int32_t>(std::ceil(box.right)),
                                 static_cast<int32_t>(std::ceil(box.bottom))};
            },
            [](const Zan_LRect& zan, const Zan_LRect& peer) {
                return zan.left == peer.left && zan.top == peer.top && zan.right == peer.right &&
                       zan.bottom == peer.bottom;
            });
}

struct Turn {
    glm::dvec3 axis, angles;
    double radians;
};

void addBuilders() {
    static const Matrices3 all3(91);
    static const Matrices4 all4(92);
    static const auto turns = inputs(kMany, 93, [](Random& random) {
        const auto [x, y, z, w] = rotation(random);
        return Turn{{x, y, z + 0.1}, {random.real(-3, 3), random.real(-1.5, 1.5), random.real(-3, 3)}, 3 * w};
    });
    const Zan_Matrix3* m3 = all3.zan.data();
    const Eigen::Matrix3d* e3 = all3.eigen.data();
    const Zan_Matrix4* m4 = all4.zan.data();
    const glm::dmat4* g4 = all4.glm.data();
    const Eigen::Matrix4d* e4 = all4.eigen.data();
    const Turn* t = turns.data();

    Entry("append a turn about a centre, 3x3", kMany,
          [=](size_t i) {
              Zan_Matrix3 m = m3[i];
              Zan_RotateMatrix(&m, t[i].radians * 57.29577951308232, 10, 20);
              return m;
          })
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix3d {
                Eigen::Affine2d m(e3[i]);
                m.pretranslate(Eigen::Vector2d(-10, -20)).prerotate(t[i].radians).pretranslate(Eigen::Vector2d(10, 20));
                return m.matrix();
            },
            Near());
    Entry("append a translation, 4x4", kMany,
          [=](size_t i) {
              Zan_Matrix4 m = m4[i];
              Zan_TranslateMatrix4(t[i].axis.x, t[i].axis.y, t[i].axis.z, &m);
              return m;
          })
        .peer(
            "glm", [=](size_t i) { return glm::translate(glm::dmat4(1), t[i].axis) * g4[i]; }, Near())
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix4d {
                Eigen::Affine3d m(e4[i]);
                m.pretranslate(Eigen::Vector3d(t[i].axis.x, t[i].axis.y, t[i].axis.z));
                return m.matrix();
            },
            Near());
    Entry("append a turn about an axis, 4x4", kMany,
          [=](size_t i) {
              Zan_Matrix4 m = m4[i];
              static_cast<void>(Zan_RotateMatrix4(t[i].axis.x, t[i].axis.y, t[i].axis.z, t[i].radians, &m));
              return m;
          })
        .peer(
            "glm", [=](size_t i) { return glm::rotate(glm::dmat4(1), t[i].radians, t[i].axis) * g4[i]; }, Near())
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix4d {
                Eigen::Affine3d m(e4[i]);
                const Eigen::Vector3d axis(t[i].axis.x, t[i].axis.y, t[i].axis.z);
                m.prerotate(Eigen::AngleAxisd(t[i].radians, axis.normalized()));
                return m.matrix();
            },
            Near());
    Entry("append turns by three angles, 4x4", kMany,
          [=](size_t i) {
              Zan_Matrix4 m = m4[i];
              Zan_RotateMatrix4XYZ(t[i].angles.x, t[i].angles.y, t[i].angles.z, &m);
              return m;
          })
        .peer(
            "glm", [=](size_t i) { return glm::eulerAngleXYZ(t[i].angles.x, t[i].angles.y, t[i].angles.z) * g4[i]; },
            Near());
    Entry("look at a point", kMany,
          [=](size_t i) {
              const Zan_Vector3T<double> eye(t[i].axis.x, t[i].axis.y, t[i].axis.z), up(0, 1, 0);
              const Zan_Vector3T<double> target(t[i].angles.x, t[i].angles.y, t[i].angles.z);
              return Zan_LookAtMatrix(eye, target, up);
          })
        .peer(
            "glm", [=](size_t i) { return glm::lookAtLH(t[i].axis, t[i].angles, glm::dvec3(0, 1, 0)); },
            // glm gives the transform in the other direction, with the way to the eye in it.
            [](const Zan_Matrix4& zan, const glm::dmat4& peer) {
                const glm::dmat3 turn(glm::transpose(peer));
                const double rows[9] = {zan.m00, zan.m01, zan.m02, zan.m10, zan.m11,
                                        zan.m12, zan.m20, zan.m21, zan.m22};
                return Near().arrays(rows, &turn, 9);
            });
}

void addInverses() {
    static const Matrices3 all3(94);
    static const Matrices4 all4(95);
    const Zan_Matrix3* m3 = all3.zan.data();
    const glm::dmat3* g3 = all3.glm.data();
    const Eigen::Matrix3d* e3 = all3.eigen.data();
    const Zan_Matrix4* m4 = all4.zan.data();
    const glm::dmat4* g4 = all4.glm.data();
    const Eigen::Matrix4d* e4 = all4.eigen.data();
    const SingleMatrix* c4 = all4.cglm.data();

    Entry("3x3 inverse", kMany,
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
    Entry("4x4 inverse", kMany,
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
        .kernels();
    Entry("4x4 normal matrix", kMany,
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

struct GlmDecomposition {
    glm::dvec3 scale, translation, skew;
    glm::dquat orientation;
    glm::dvec4 perspective;
};

void addRotations() {
    static const Matrices4 all(96), turns(97, [](Random&random) {
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
    static const auto first = inputs(kMany, 98, rotation), second = inputs(kMany, 99, rotation);
    static const auto zan1 = sameBytes<Zan_Quat>(first), zan2 = sameBytes<Zan_Quat>(second);
    // Both keep x, y, z, w in this order.
    static const auto glm1 = sameBytes<glm::dquat>(first), glm2 = sameBytes<glm::dquat>(second);
    static const auto eigen1 = sameBytes<Eigen::Quaterniond>(first), eigen2 = sameBytes<Eigen::Quaterniond>(second);
    const Zan_Matrix4 *m = all.zan.data(), *t = turns.zan.data();
    const glm::dmat4 *g = all.glm.data(), *gt = turns.glm.data();
    const Eigen::Matrix4d* et = turns.eigen.data();
    const Zan_Quat *q1 = zan1.data(), *q2 = zan2.data();
    const glm::dquat *g1 = glm1.data(), *g2 = glm2.data();
    const Eigen::Quaterniond *e1 = eigen1.data(), *e2 = eigen2.data();

    Entry("4x4 decomposition", kMany,
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
    Entry("quaternion to matrix", kMany,
          [=](size_t i) {
              Zan_Matrix4 turn;
              Zan_QuatToMatrix4(&q1[i], &turn);
              return turn;
          })
        .peer(
            "glm", [=](size_t i) { return glm::mat4_cast(g1[i]); }, Near())
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix4d {
                Eigen::Matrix4d turn = Eigen::Matrix4d::Identity();
                turn.topLeftCorner<3, 3>() = e1[i].toRotationMatrix();
                return turn;
            },
            Near());
    const auto sameTurn = [](const Zan_Quat& zan, const auto& peer) {
        const double sign = zan.w * peer.w() < 0 ? -1 : 1, tolerance = 1e-9;
        return std::abs(zan.x - sign * peer.x()) < tolerance && std::abs(zan.y - sign * peer.y()) < tolerance &&
               std::abs(zan.z - sign * peer.z()) < tolerance && std::abs(zan.w - sign * peer.w()) < tolerance;
    };
    const auto sameGlmTurn = [=](const Zan_Quat& zan, const glm::dquat& peer) {
        return sameTurn(zan, Eigen::Quaterniond(peer.w, peer.x, peer.y, peer.z));
    };
    Entry("matrix to quaternion", kMany,
          [=](size_t i) {
              Zan_Quat q;
              Zan_Matrix4ToQuat(&t[i], &q);
              return q;
          })
        .peer(
            "glm", [=](size_t i) { return glm::quat_cast(gt[i]); }, sameGlmTurn)
        .peer(
            "Eigen", [=](size_t i) { return Eigen::Quaterniond(et[i].topLeftCorner<3, 3>()); }, sameTurn);
    Entry("slerp", kMany,
          [=](size_t i) {
              Zan_Quat q;
              Zan_Slerp(&q1[i], &q2[i], 0.3, &q);
              return q;
          })
        .peer(
            "glm", [=](size_t i) { return glm::slerp(g1[i], g2[i], 0.3); }, sameGlmTurn)
        .peer(
            "Eigen", [=](size_t i) { return e1[i].slerp(0.3, e2[i]); }, sameTurn);
}

}  // namespace

void addMatrixEntries() {
    addValues();
    addPoints2();
    addPoints3();
    addPoints4();
    addIntegerPoints();
    addRectangles();
    addBuilders();
    addInverses();
    addRotations();
}

}  // namespace zan_bench
